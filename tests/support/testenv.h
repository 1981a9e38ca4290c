#pragma once

#include <QString>
#include <QTemporaryDir>

// Points HOME, the XDG folders and TMPDIR at a fresh folder for the whole test
// process, so that no test reads or writes the real home folder or settings.
// Construct it before the application object (FB_TEST_MAIN does).
class TestEnvironment
{
public:
    TestEnvironment();

    static TestEnvironment &instance();

    QString root() const { return m_root.path(); }
    QString home() const { return m_root.path() + "/home"; }
    QString configHome() const { return m_root.path() + "/config"; }
    QString temp() const { return m_root.path() + "/tmp"; }
    // The suite settings folder the program uses in this environment.
    QString suiteFolder() const { return configHome() + "/Korvane"; }
    QString thumbnailFolder() const { return temp() + "/fb_thumbnails"; }
    // Every window saves what it was told to remember when it closes; tests that need a
    // window as it starts the first time call this first.
    void forgetSettings() const;

private:
    QTemporaryDir m_root;
};

// How long a test waits for an event from the window system or another process: a
// window exposed or active, a minimise, a clipboard owner, a process ending. Generous,
// because a loaded machine can take seconds; a wait ends as soon as the event comes.
constexpr int kEventWaitMs = 60000;

// Writes a file (creating its folder) and returns its absolute path, or an empty
// string when it cannot be written.
QString writeTestFile(const QString &path, const QByteArray &content = "x");

// Like QTEST_MAIN, but isolates the environment before QApplication exists.
#define FB_TEST_MAIN(TestObject)                                                                                       \
    int main(int argc, char *argv[])                                                                                   \
    {                                                                                                                  \
        TestEnvironment::instance();                                                                                   \
        QApplication app(argc, argv);                                                                                  \
        app.setAttribute(Qt::AA_Use96Dpi, true);                                                                       \
        TestObject tc;                                                                                                 \
        QTEST_SET_MAIN_SOURCE_PATH                                                                                     \
        return QTest::qExec(&tc, argc, argv);                                                                          \
    }
