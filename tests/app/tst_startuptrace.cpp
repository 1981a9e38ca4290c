// The start-up marks: silent unless their logging category is switched on, then one
// line per mark with the milliseconds since the clock started, and the first paint of
// a window marked once.
#include "app/startuptrace.h"
#include "support/testenv.h"

#include <QApplication>
#include <QLoggingCategory>
#include <QRegularExpression>
#include <QWidget>
#include <QtTest>

namespace {

QStringList captured;

void capture(QtMsgType, const QMessageLogContext &context, const QString &message)
{
    if (qstrcmp(context.category, "feedbackagent.startup") == 0)
        captured << message;
}

} // namespace

class TestStartupTrace : public QObject
{
    Q_OBJECT

private:
    QtMessageHandler previousHandler = nullptr;

private slots:
    void init()
    {
        captured.clear();
        previousHandler = qInstallMessageHandler(capture);
    }
    void cleanup()
    {
        qInstallMessageHandler(previousHandler);
        QLoggingCategory::setFilterRules(QString());
    }

    void silentByDefault()
    {
        startuptrace::start();
        startuptrace::mark("stage one");
        QWidget window;
        startuptrace::markFirstPaint(&window);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        window.repaint();
        QCOMPARE(captured, QStringList());
    }

    void marksWhenSwitchedOn()
    {
        QLoggingCategory::setFilterRules(QStringLiteral("feedbackagent.startup.debug=true"));
        startuptrace::start();
        startuptrace::mark("stage one");
        startuptrace::mark("window: stage two");
        QCOMPARE(captured.size(), 2);
        const QRegularExpression line(QStringLiteral("^startup (\\d+\\.\\d\\d) (.*)$"));
        const QRegularExpressionMatch first = line.match(captured.at(0));
        const QRegularExpressionMatch second = line.match(captured.at(1));
        QVERIFY2(first.hasMatch(), qPrintable(captured.at(0)));
        QVERIFY2(second.hasMatch(), qPrintable(captured.at(1)));
        QCOMPARE(first.captured(2), QStringLiteral("stage one"));
        QCOMPARE(second.captured(2), QStringLiteral("window: stage two"));
        QVERIFY(first.captured(1).toDouble() <= second.captured(1).toDouble());
    }

    void firstPaintMarkedOnce()
    {
        QLoggingCategory::setFilterRules(QStringLiteral("feedbackagent.startup.debug=true"));
        startuptrace::start();
        QWidget window;
        startuptrace::markFirstPaint(&window);
        window.resize(200, 100);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QTRY_COMPARE(captured.size(), 1);
        window.repaint();
        window.repaint();
        QCoreApplication::processEvents();
        QCOMPARE(captured.size(), 1);
        QVERIFY2(captured.at(0).endsWith(QLatin1String(" first paint")), qPrintable(captured.at(0)));
    }
};

FB_TEST_MAIN(TestStartupTrace)
#include "tst_startuptrace.moc"
