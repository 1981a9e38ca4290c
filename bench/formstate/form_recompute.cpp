// Times slot_set_control_states on the compose screen, called directly and as the
// consequence of keystrokes. Prints "measure microseconds" lines:
// the median over rounds of the mean per call within a round.
#include "form/mainwindow.h"

#include <QApplication>
#include <QComboBox>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTcpServer>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <vector>

namespace {

const int kRounds = 15;
const int kCallsPerRound = 400;

double medianMicroseconds(const std::function<void()> &call)
{
    std::vector<double> means;
    for (int round = 0; round < kRounds; ++round) {
        QElapsedTimer timer;
        timer.start();
        for (int i = 0; i < kCallsPerRound; ++i)
            call();
        means.push_back(double(timer.nsecsElapsed()) / kCallsPerRound / 1000.0);
    }
    std::sort(means.begin(), means.end());
    return means[means.size() / 2];
}

template <typename T>
T *widget(MainWindow &window, const char *name)
{
    T *found = window.findChild<T *>(QLatin1String(name));
    if (!found)
        qFatal("no widget %s", name);
    return found;
}

void press(QWidget *target, int key, const QString &text)
{
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, text);
    QCoreApplication::sendEvent(target, &event);
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    {
        // The window would stop at the single-instance message box and wait for a click.
        QTcpServer guard;
        if (!guard.listen(QHostAddress::Any, 23709)) {
            std::fprintf(stderr, "port 23709 is taken: another Feedback Agent runs\n");
            return 1;
        }
    }
    MainWindow window;
    window.show();
    QCoreApplication::processEvents();
    widget<QPushButton>(window, "button_Bug_Report")->click();

    std::printf("recompute_empty %.2f\n", medianMicroseconds([&] { window.slot_set_control_states(); }));

    // Typing the description while the other tabs still miss input.
    QPlainTextEdit *description = widget<QPlainTextEdit>(window, "edit_Description");
    description->setPlainText(QStringLiteral("Steps"));
    description->moveCursor(QTextCursor::End);
    const double describing = medianMicroseconds([&] {
        press(description, Qt::Key_A, QStringLiteral("a"));
        press(description, Qt::Key_Backspace, QString());
    });
    std::printf("keystroke_description_incomplete %.2f\n", describing / 2);

    QLineEdit *name = widget<QLineEdit>(window, "line_Name");
    name->setText(QStringLiteral("Ann Example"));
    widget<QLineEdit>(window, "line_Email")->setText(QStringLiteral("ann@example.com"));
    widget<QListWidget>(window, "list_Area")->setCurrentRow(3);
    widget<QComboBox>(window, "combo_Title")->setEditText(QStringLiteral("Crash when saving"));
    description->setPlainText(QString(2000, QLatin1Char('x')));
    window.add_attachment_item(QCoreApplication::applicationFilePath(), QPixmap());
    window.slot_set_control_states();
    if (!widget<QPushButton>(window, "button_Send")->isEnabled())
        qFatal("the report should be complete");

    std::printf("recompute_complete %.2f\n", medianMicroseconds([&] { window.slot_set_control_states(); }));

    // A typed character and its Backspace: two edits, two recomputes.
    name->end(false);
    const double pair = medianMicroseconds([&] {
        press(name, Qt::Key_A, QStringLiteral("a"));
        press(name, Qt::Key_Backspace, QString());
    });
    std::printf("keystroke_name_complete %.2f\n", pair / 2);
    return 0;
}
