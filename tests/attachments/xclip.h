#pragma once

// xclip as the other program on the X clipboard. Every wait spins the event loop:
// while this process owns the clipboard, xclip's request can only be answered from
// our event loop, so blocking it (QProcess::waitForFinished) would deadlock both.

#include "support/testenv.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QProcess>
#include <QStringList>
#include <QtTest>

#include <memory>

class Xclip
{
public:
    ~Xclip() { stopServing(); }

    // Runs xclip to completion and returns its standard output; ok tells whether it
    // exited normally with status 0.
    static QByteArray run(const QStringList &arguments, bool *ok = nullptr, int timeoutMs = 10000)
    {
        QProcess process;
        process.start(QStringLiteral("xclip"), arguments);
        const bool finished = QTest::qWaitFor([&] { return process.state() == QProcess::NotRunning; }, timeoutMs);
        if (!finished) {
            process.kill();
            (void)QTest::qWaitFor([&] { return process.state() == QProcess::NotRunning; }, kEventWaitMs);
        }
        if (ok)
            *ok = finished && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
        return process.readAllStandardOutput();
    }

    // The clipboard's content of the given type, as another program reads it.
    static QByteArray read(const QString &type, bool *ok = nullptr)
    {
        return run({"-o", "-selection", "clipboard", "-t", type}, ok);
    }

    // Starts xclip owning the clipboard with these bytes of the given X target; it
    // serves them until another program takes the clipboard or stopServing() is
    // called. Returns once Qt lists the content under qtFormat (the MIME type Qt makes
    // of the target: "text/plain" for UTF8_STRING).
    bool serve(const QByteArray &content, const QString &type, const QString &qtFormat = QString())
    {
        const QString expected = qtFormat.isEmpty() ? type : qtFormat;
        stopServing();
        m_server.reset(new QProcess);
        m_server->start(QStringLiteral("xclip"), {"-quiet", "-selection", "clipboard", "-t", type, "-i"});
        if (!m_server->waitForStarted(5000))
            return false;
        m_server->write(content);
        m_server->closeWriteChannel();
        return QTest::qWaitFor(
            [&] {
                const QMimeData *data = QGuiApplication::clipboard()->mimeData();
                return data && data->formats().contains(expected);
            },
            kEventWaitMs);
    }

    void stopServing()
    {
        if (!m_server)
            return;
        if (m_server->state() != QProcess::NotRunning) {
            m_server->kill();
            (void)QTest::qWaitFor([&] { return m_server->state() == QProcess::NotRunning; }, kEventWaitMs);
        }
        m_server.reset();
        // Let Qt notice that the owner is gone before the next test looks.
        (void)QTest::qWaitFor(
            [] {
                const QMimeData *data = QGuiApplication::clipboard()->mimeData();
                return !data || data->formats().isEmpty();
            },
            kEventWaitMs);
    }

private:
    std::unique_ptr<QProcess> m_server;
};
