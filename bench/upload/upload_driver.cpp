// Sends one report with one attachment through the real MainWindow and reports how
// long the upload took and how much memory it added.
// Usage: bench_upload_driver <destination url> <attachment>
// Prints: "<seconds from Send to the outcome box> <idle RSS KiB> <peak RSS KiB during the send>"
#include "form/mainwindow.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QElapsedTimer>
#include <QFile>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPixmap>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTcpServer>
#include <QTimer>

#include <cstdio>

namespace {

long statusKiB(const char *field)
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return -1;
    for (const QByteArray &line : status.readAll().split('\n'))
        if (line.startsWith(field))
            return line.mid(int(qstrlen(field))).trimmed().split(' ').value(0).toLong();
    return -1;
}

template <typename T>
T *child(const MainWindow &window, const char *name)
{
    return window.findChild<T *>(QString::fromLatin1(name));
}

} // namespace

int main(int argc, char *argv[])
{
    if (argc != 3) {
        std::fprintf(stderr, "usage: %s <destination url> <attachment>\n", argv[0]);
        return 2;
    }
    QApplication app(argc, argv);
    {
        // A second instance would stop at the modal "already running" box; say so instead.
        QTcpServer guard;
        if (!guard.listen(QHostAddress::Any, 23709)) {
            std::fprintf(stderr, "port 23709 is taken: another agent or test is running\n");
            return 1;
        }
    }
    MainWindow window;
    window.show();

    child<QPushButton>(window, "button_Feature_Request")->click();
    child<QLineEdit>(window, "line_Name")->setText(QStringLiteral("Bench"));
    child<QLineEdit>(window, "line_Email")->setText(QStringLiteral("bench@example.com"));
    child<QListWidget>(window, "list_Area")->item(0)->setSelected(true);
    child<QCheckBox>(window, "check_Include_System_Info")->setChecked(false);
    child<QComboBox>(window, "combo_Title")->setEditText(QStringLiteral("Upload bench"));
    child<QPlainTextEdit>(window, "edit_Description")->setPlainText(QStringLiteral("One large attachment."));
    child<QLineEdit>(window, "line_HTTP_Destination")->setText(QString::fromLocal8Bit(argv[1]));
    window.add_attachment_item(QString::fromLocal8Bit(argv[2]), QPixmap());
    window.slot_set_control_states();

    QElapsedTimer clock;
    double seconds = -1;
    long idleKiB = 0;
    QString outcome;

    // The outcome box ends the measurement; closing it lets the program quit as usual.
    QTimer boxWatch;
    boxWatch.setInterval(5);
    QObject::connect(&boxWatch, &QTimer::timeout, [&] {
        if (QMessageBox *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget())) {
            seconds = clock.nsecsElapsed() / 1e9;
            outcome = box->windowTitle();
            boxWatch.stop();
            box->accept();
        }
    });

    QTimer::singleShot(500, [&] {
        QFile clear(QStringLiteral("/proc/self/clear_refs"));
        if (clear.open(QIODevice::WriteOnly))
            clear.write("5"); // restart the peak from here
        idleKiB = statusKiB("VmRSS:");
        boxWatch.start();
        clock.start();
        child<QPushButton>(window, "button_Send")->click();
    });
    QTimer::singleShot(30 * 60 * 1000, [] { QCoreApplication::exit(3); });
    const int result = app.exec();
    if (outcome != QLatin1String("Report Submitted")) {
        std::fprintf(stderr, "no success: \"%s\" (loop %d)\n", qPrintable(outcome), result);
        return 1;
    }
    std::printf("%.3f %ld %ld\n", seconds, idleKiB, statusKiB("VmHWM:"));
    return 0;
}
