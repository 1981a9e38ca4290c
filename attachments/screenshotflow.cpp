// Take Screen Shot: minimise, wait, grab the screen under the pointer, select, name.
#include "attachments/screenshotflow.h"

#include "attachments/clipboard.h"
#include "attachments/screenshot.h"
#include "form/mainwindow.h"
#include "form/reporttab.h"
#include "ui_mainwindow.h"

#include <QCursor>
#include <QGuiApplication>
#include <QInputDialog>
#include <QScreen>
#include <QTimer>
#include <QWindow>

int screenShotDelayMs(const QString &delayText)
{
    const qint64 milliseconds = qint64(delayText.toInt()) * 1000;
    if (milliseconds == 0)
        return 2000;
    // A timer with a negative timeout never fires, which would leave the window
    // minimised for good.
    return int(qBound(qint64(0), milliseconds, qint64(60000)));
}

void MainWindow::slot_process_screen_shot()
{
    geometryPinned = true;
    showMinimized();
    QTimer::singleShot(screenShotDelayMs(ui->line_Snapshot_Delay->text()), this, SLOT(slot_screen_shot()));
}

void MainWindow::slot_screen_shot()
{
    // The window manager iconifies asynchronously: the window state says minimised at
    // once, but the window is gone from the screen only when it is no longer exposed.
    const bool minimised = isMinimized() && !(windowHandle() && windowHandle()->isExposed());
    if (!minimised) {
        QTimer::singleShot(100, this, SLOT(slot_screen_shot()));
        return;
    }

    QScreen *screen = windowHandle() ? windowHandle()->screen() : nullptr;
    const QPoint pointer = QCursor::pos();
    const QList<QScreen *> screens = QGuiApplication::screens();
    for (QScreen *candidate : screens) {
        if (candidate->geometry().contains(pointer)) {
            screen = candidate;
            break;
        }
    }

    ScreenShot overlay(ui->check_EnhancedCapture->isChecked());
    const QPixmap picture = overlay.capture(screen);

    QString name;
    if (!picture.isNull()) {
        bool accepted = false;
        name = QInputDialog::getText(this, tr("Name Screen Shot"), tr("Name:"), QLineEdit::Normal, QString(),
                                     &accepted);
        if (!accepted)
            name.clear();
    }
    if (!name.isEmpty()) {
        add_attachment_item(name, picture);
        copy_pixmap_to_clipboard(picture, this);
        ui->tabWidget->setCurrentIndex(tabIndex(ReportTab::Attachments));
    }

    showNormal();
    activateWindow();
    raise();
    geometryPinned = false;
    slot_set_control_states();
}
