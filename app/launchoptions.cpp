// Options the suite passes when it starts the agent.
#include "form/mainwindow.h"

void MainWindow::applyLaunchOptions()
{
}
