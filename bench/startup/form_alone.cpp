// The program's own form alone: the Designer form (form/mainwindow.ui) set up on a bare
// QMainWindow, with the same images, style sheets and high-DPI attributes, and nothing
// else (no translators, settings, instance guard, e-mail timer, machine-summary worker
// or launch options). The yardstick for start-up time: what the program adds to it is
// the program's own start-up work. Prints the same start-up marks as the program
// (app/startuptrace.h), where the two have them.
#include "app/startuptrace.h"
#include "ui_mainwindow.h"

#include <QApplication>
#include <QMainWindow>

int main(int argc, char *argv[])
{
    startuptrace::start();
    // As setHighDpiAttributes() in app/display.cpp.
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling, true);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps, true);
#ifdef Q_OS_WIN
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
#endif
    QApplication app(argc, argv);
    startuptrace::mark("application");

    QMainWindow window;
    Ui::MainWindow form;
    form.setupUi(&window);
    startuptrace::mark("window: form built");
    startuptrace::markFirstPaint(&window);
    window.show();
    startuptrace::mark("shown");
    return app.exec();
}
