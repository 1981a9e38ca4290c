#include "app/application.h"

#include "app/display.h"
#include "app/startuptrace.h"

#include "form/mainwindow.h"
#include "sysinfo/gathersysinfo.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QScreen>
#include <QTranslator>

namespace {

// The diagnostics provider takes a few seconds on a slow machine.
constexpr int kSummaryJobExitWaitMs = 15000;

void installTranslator(QApplication &app, QTranslator &translator, const QString &prefix)
{
    // A missing file leaves the translator empty and the texts untranslated.
    const bool loaded =
        translator.load(prefix + QLocale::system().name(), QLibraryInfo::location(QLibraryInfo::TranslationsPath));
    Q_UNUSED(loaded)
    app.installTranslator(&translator);
}

} // namespace

int runFeedbackAgent(int argc, char **argv)
{
    startuptrace::start();
    setHighDpiAttributes();
    QApplication app(argc, argv);
    startuptrace::mark("application");

    QTranslator qtTranslator;
    installTranslator(app, qtTranslator, QStringLiteral("qt_"));
    QTranslator feedbackTranslator;
    installTranslator(app, feedbackTranslator, QStringLiteral("feedback_"));
    startuptrace::mark("translators");

    int exitCode = 0;
    {
        MainWindow window; // may end the process when another instance holds the guard
        const QScreen *primary = QGuiApplication::primaryScreen();
        if (primary)
            window.move(centredPosition(primary->geometry().size(), window.size()));
        startuptrace::markFirstPaint(&window);
        window.show();
        startuptrace::mark("shown");
        exitCode = app.exec();
    }
    // The window may close while the machine summary is still being gathered; the
    // process ends once that job is done, or after a bounded wait.
    GatherSysInfo::finishJobsBeforeExit(kSummaryJobExitWaitMs);
    return exitCode;
}
