#include "app/application.h"

#include "app/startuptrace.h"

#include "form/mainwindow.h"
#include "sysinfo/gathersysinfo.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QScreen>
#include <QTranslator>

QPoint centredPosition(const QSize &screenSize, const QSize &windowSize)
{
    return QPoint((screenSize.width() - windowSize.width()) >> 1, (screenSize.height() - windowSize.height()) >> 1);
}

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

void setHighDpiAttributes()
{
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling, true);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps, true);
#ifdef Q_OS_WIN
    // Qt 5 rounds the system's factor to a whole number unless told otherwise: a window
    // at 150 % would be drawn at 200 %, and one at 125 % at 100 %. Windows users choose
    // their factor; Qt 5 on X11 would take one from the monitor's physical size (1.04,
    // 0.97), so Linux keeps whole factors.
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
#endif
}

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
