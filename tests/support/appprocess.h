#pragma once

#include <QProcess>
#include <QProcessEnvironment>
#include <QStringList>

// Starts the real feedbackagent executable, so that start-up and shut-down rules are
// tested end to end. It inherits this test's isolated environment (HOME, XDG, TMPDIR).
class AppProcess
{
public:
    AppProcess();
    ~AppProcess();

    QProcessEnvironment &environment() { return m_env; }
    void start(const QStringList &arguments = QStringList());
    // Waits until the program listens on the instance guard port (its window is built).
    bool waitUntilGuardTaken(int timeoutMs = 15000);
    bool waitForFinished(int timeoutMs = 15000);
    // Ends the program the way a user does: the window is closed through the window manager
    // when one runs, otherwise with SIGTERM (which skips the destructor).
    void terminate();
    int exitCode() const { return m_process.exitCode(); }
    QProcess::ExitStatus exitStatus() const { return m_process.exitStatus(); }
    QByteArray output() { return m_output += m_process.readAll(); }
    QProcess &process() { return m_process; }
    qint64 pid() const { return m_process.processId(); }

    static QString executable();
    static bool portInUse(quint16 port);

private:
    QProcess m_process;
    QProcessEnvironment m_env;
    QByteArray m_output;
};
