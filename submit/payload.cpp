// The report body: one multipart form built from the whole form.
#include "form/mainwindow.h"

#include <QHttpMultiPart>

QHttpMultiPart *MainWindow::build_payload()
{
    return nullptr;
}
