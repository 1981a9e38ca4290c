// Take Screen Shot: minimise, wait, grab the screen under the pointer, select, name.
#include "form/mainwindow.h"

void MainWindow::slot_process_screen_shot()
{
}

void MainWindow::slot_screen_shot()
{
}
