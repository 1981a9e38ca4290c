// Options the suite passes when it starts the agent.
#include "app/launchoptionparser.h"
#include "form/mainwindow.h"
#include "ui_mainwindow.h"

#include <QCoreApplication>
#include <QFile>
#include <QPixmap>

void MainWindow::applyLaunchOptions()
{
    const LaunchRequest request = launchRequest(parseLaunchOptions(QCoreApplication::arguments().mid(1)));
    for (const LaunchRequest::Step &step : request.steps) {
        switch (step.action) {
        case LaunchRequest::Action::FixKind:
            ui->button_Start_Over->setEnabled(false);
            ui->button_Start_Over->setVisible(false);
            break;
        case LaunchRequest::Action::ShowBugReport:
            slot_show_bug_report();
            break;
        case LaunchRequest::Action::ShowFeatureRequest:
            slot_show_feature_request();
            break;
        case LaunchRequest::Action::Attach:
            if (QFile::exists(step.file))
                add_attachment_item(step.file, QPixmap());
            break;
        }
    }
    launchArea = request.area;
    lockArea = request.lockArea;

    if (launchArea.isEmpty())
        return;
    // The list holds the source-language names (see form/productareas.h). The value
    // goes through tr() in the MainWindow context first, so with a translation loaded
    // an area whose name that context translates is not found.
    const QString text = tr(launchArea.toLocal8Bit().constData());
    const QList<QListWidgetItem *> found = ui->list_Area->findItems(text, Qt::MatchExactly);
    if (!found.isEmpty())
        ui->list_Area->setCurrentItem(found.first());
    ui->list_Area->setDisabled(lockArea);
}
