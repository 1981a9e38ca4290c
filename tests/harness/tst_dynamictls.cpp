// The sanitizer runtimes misread a dynamic TLS block that starts 16 bytes into a page
// (see app/sanitizerdefaults.cpp). A small program loads a library with a large
// thread-local block; max_redzone=16 makes ASan place that block exactly there, which
// the real program meets only by the chance of its heap's history. With the build's
// defaults the leak check at exit works; with the interception turned back on,
// LeakSanitizer's tracer dies as it did under the real program.
#include "support/testenv.h"

#include <QProcess>
#include <QtTest>

class TestDynamicTls : public QObject
{
    Q_OBJECT

private slots:
    void leakCheckAtExit_data()
    {
        QTest::addColumn<QString>("asanOptions");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<bool>("tracerDies");

        QTest::newRow("build defaults") << "max_redzone=16" << 0 << false;
        QTest::newRow("interception on") << "max_redzone=16:intercept_tls_get_addr=1" << 1 << true;
    }

    void leakCheckAtExit()
    {
        QFETCH(QString, asanOptions);
        QFETCH(int, exitCode);
        QFETCH(bool, tracerDies);

        QProcess program;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("ASAN_OPTIONS", asanOptions);
        environment.insert("LSAN_OPTIONS", "");
        program.setProcessEnvironment(environment);
        program.setProcessChannelMode(QProcess::MergedChannels);
        program.start(QStringLiteral(FB_DYNAMIC_TLS_PROGRAM), {QStringLiteral(FB_DYNAMIC_TLS_MODULE)});
        QVERIFY(program.waitForFinished(60000));
        const QByteArray output = program.readAll();

        QVERIFY2(output.startsWith("offset in page: 16\n"), output.constData());
        QCOMPARE(program.exitStatus(), QProcess::NormalExit);
        QCOMPARE(program.exitCode(), exitCode);
        QCOMPARE(output.contains("Tracer caught signal 11"), tracerDies);
        QCOMPARE(output.contains("LeakSanitizer has encountered a fatal error"), tracerDies);
    }
};

FB_TEST_MAIN(TestDynamicTls)
#include "tst_dynamictls.moc"
