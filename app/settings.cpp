// Settings kept between runs, and the window geometry that they record.
#include "form/mainwindow.h"
#include "ui_mainwindow.h"

#include <QMoveEvent>
#include <QResizeEvent>

void MainWindow::loadSettings()
{
    ui->combo_Title->setMaxCount(5);
}

void MainWindow::saveSettings()
{
}

void MainWindow::moveEvent(QMoveEvent *event)
{
    QMainWindow::moveEvent(event);
}

void MainWindow::resizeEvent(QResizeEvent *event)
{
    QMainWindow::resizeEvent(event);
}
