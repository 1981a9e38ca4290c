// Options the suite passes when it starts the agent.
#include "app/launchoptionparser.h"
#include "form/mainwindow.h"
#include "ui_mainwindow.h"

#include <QCoreApplication>
#include <QFile>
#include <QPixmap>

void MainWindow::applyLaunchOptions()
{
    const QStringList arguments = QCoreApplication::arguments().mid(1); // without the program path

    // Each option takes effect as it comes; the area is chosen once all are known.
    for (const LaunchOption &option : parseLaunchOptions(arguments)) {
        const QString &key = option.first;
        const QString &value = option.second;
        if (key == QLatin1String("mode")) {
            // Started by the suite for one kind of report: no way back to the choice.
            ui->button_Start_Over->setEnabled(false);
            ui->button_Start_Over->setVisible(false);
            if (value == QLatin1String("bug"))
                slot_show_bug_report();
            else if (value == QLatin1String("feature"))
                slot_show_feature_request();
        } else if (key == QLatin1String("attach")) {
            if (QFile::exists(value))
                add_attachment_item(value, QPixmap());
        } else if (key == QLatin1String("area")) {
            launchArea = value;
        } else if (key == QLatin1String("lockarea")) {
            lockArea = true; // whatever the value, "lockarea=0" too
        }
    }

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
