// Sends one report with one attachment through the real MainWindow and reports how
// long the upload took, the processor time it cost, how much memory it added, and how
// late a timer on the GUI thread fired while it ran.
// Usage: bench_upload_driver <destination url> <attachment> [--lateness]
//        bench_upload_driver --idle <seconds>     the timer alone, with no send
// The timer runs only with --lateness, since its own wake-ups cost processor time.
// Prints one line of figures:
//   "<seconds from Send to the outcome box> <idle RSS KiB> <peak RSS KiB during the send>
//    <processor seconds, user + system, of the whole program during the send>
//    <worst lateness of a 5 ms timer on the GUI thread, ms (0 without --lateness)>"
#include "bench/support/latenessprobe.h"
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

#include <sys/resource.h>

#include <algorithm>
#include <cstdio>
#include <functional>

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

double processorSeconds()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return double(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec)
           + double(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e6;
}

// Calls back once, when the first message box is shown.
class OutcomeBoxWatch : public QObject
{
public:
    explicit OutcomeBoxWatch(std::function<void(QMessageBox *)> onShown)
        : onShown(std::move(onShown))
    {
    }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Show && onShown) {
            if (QMessageBox *box = qobject_cast<QMessageBox *>(watched)) {
                onShown(box);
                onShown = nullptr;
            }
        }
        return false;
    }

private:
    std::function<void(QMessageBox *)> onShown;
};

int measureIdle(double seconds)
{
    MainWindow window;
    window.show();
    LatenessProbe probe(5);
    double before = 0;
    QTimer::singleShot(500, [&] {
        before = processorSeconds();
        probe.start();
    });
    QTimer::singleShot(500 + int(seconds * 1000), [&] {
        probe.stop();
        QCoreApplication::quit();
    });
    QApplication::exec();
    std::printf("%.3f 0 0 %.3f %.2f\n", seconds, processorSeconds() - before, probe.worstLatenessMs());
    return 0;
}

template <typename T>
T *child(const MainWindow &window, const char *name)
{
    return window.findChild<T *>(QString::fromLatin1(name));
}

} // namespace

int main(int argc, char *argv[])
{
    if (argc != 3 && !(argc == 4 && qstrcmp(argv[3], "--lateness") == 0)) {
        std::fprintf(stderr, "usage: %s <destination url> <attachment> [--lateness] | --idle <seconds>\n", argv[0]);
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
    if (qstrcmp(argv[1], "--idle") == 0)
        return measureIdle(QByteArray(argv[2]).toDouble());
    const bool withLateness = argc == 4;
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
    double cpuAtSend = 0;
    double cpuSeconds = -1;
    long idleKiB = 0;
    QString outcome;
    LatenessProbe probe(5);

    // The outcome box ends the measurement; closing it lets the program quit as usual.
    // It is noticed by the event that shows it, not by polling, which would cost the
    // GUI thread wake-ups of its own during the send.
    OutcomeBoxWatch boxWatch([&](QMessageBox *box) {
        seconds = clock.nsecsElapsed() / 1e9;
        cpuSeconds = processorSeconds() - cpuAtSend;
        probe.stop();
        outcome = box->windowTitle();
        QTimer::singleShot(0, box, &QMessageBox::accept);
    });
    app.installEventFilter(&boxWatch);

    QTimer::singleShot(500, [&] {
        QFile clear(QStringLiteral("/proc/self/clear_refs"));
        if (clear.open(QIODevice::WriteOnly))
            clear.write("5"); // restart the peak from here
        idleKiB = statusKiB("VmRSS:");
        if (withLateness)
            probe.start();
        cpuAtSend = processorSeconds();
        clock.start();
        child<QPushButton>(window, "button_Send")->click();
    });
    QTimer::singleShot(30 * 60 * 1000, [] { QCoreApplication::exit(3); });
    const int result = app.exec();
    if (outcome != QLatin1String("Report Submitted")) {
        std::fprintf(stderr, "no success: \"%s\" (loop %d)\n", qPrintable(outcome), result);
        return 1;
    }
    std::printf("%.3f %ld %ld %.3f %.2f\n", seconds, idleKiB, statusKiB("VmHWM:"), cpuSeconds, probe.worstLatenessMs());
    return 0;
}
