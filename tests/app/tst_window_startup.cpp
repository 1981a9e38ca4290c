// The start-up checks of tests/app/windowstartuptests.h: their main, which doubles as
// the child that finds the single-instance guard taken, and their fixture.
#include "windowstartuptests.h"

#include "form/mainwindow.h"
#include "settingsfiles.h"
#include "support/modalanswerer.h"
#include "support/testenv.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDataStream>
#include <QFile>
#include <QtTest>

void WindowStartupTests::init()
{
    // No settings file of either kind and no thumbnail folder: the window starts as it
    // does the first time.
    settingsfiles::removeAll();
}

// Started as a child by guardTakenShowsTheCriticalBoxAndExitsWithZero: it builds the
// window while the port is held elsewhere and writes down the box that appears before
// answering it; the guard then ends the process.
static void writeGuardChildRecord(const QString &path, QWidget *modal)
{
    ModalSnapshot shown = ModalAnswerer::snapshot(modal);
    QFile out(path);
    if (!out.open(QIODevice::WriteOnly))
        return;
    QDataStream stream(&out);
    stream << shown.className << shown.windowTitle << shown.text << shown.icon << shown.buttons << shown.hasWindowIcon
           << modal->windowIcon().pixmap(32, 32).toImage();
}

int main(int argc, char *argv[])
{
    // The guard child keeps the environment of the test that started it (HOME, XDG and
    // TMPDIR point at that test's private folder), so the test can see whether the
    // child made its thumbnail or suite folder.
    const bool guardChild = argc == 3 && QByteArray(argv[1]) == "--guard-child";
    if (!guardChild)
        TestEnvironment::instance();
    int status = 0;
    {
        QApplication app(argc, argv);
        if (guardChild) {
            const QString record = QString::fromLocal8Bit(argv[2]);
            ModalAnswerer answerer;
            answerer.then([record](QWidget *modal) {
                writeGuardChildRecord(record, modal);
                for (QAbstractButton *button : modal->findChildren<QAbstractButton *>())
                    button->click();
            });
            MainWindow window; // the guard ends the process here
            return 3;
        }
        // As FB_TEST_MAIN has it.
        app.setAttribute(Qt::AA_Use96Dpi, true);
        WindowStartupTests tc;
        QTEST_SET_MAIN_SOURCE_PATH
        status = execTests(&tc, argc, argv);
    }
    endTestProcess(status);
}
