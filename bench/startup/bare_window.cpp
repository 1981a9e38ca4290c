// The smallest Qt program that shows a main window of the agent's size.
#include <QApplication>
#include <QMainWindow>

int main(int argc, char *argv[])
{
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling, true);
    QApplication app(argc, argv);
    QMainWindow window;
    window.resize(720, 470);
    window.setWindowTitle(QStringLiteral("Bare window"));
    window.show();
    return app.exec();
}
