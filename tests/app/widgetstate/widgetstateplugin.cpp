// Test-only generic plugin: loaded into the real feedbackagent executable through
// QT_QPA_GENERIC_PLUGINS=fbwidgetstate (with QT_PLUGIN_PATH naming the folder above
// "generic/"), it waits until the main window is shown, writes the state of its named
// widgets as JSON to the file that FB_WIDGET_STATE_FILE names, and quits the program
// the ordinary way, so that the window's destructor runs as after a user's Cancel.
#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QFile>
#include <QGenericPlugin>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QTabWidget>
#include <QTimer>
#include <QTreeWidget>
#include <QWindow>

namespace {

QJsonArray texts(const QList<QListWidgetItem *> &items)
{
    QJsonArray result;
    for (const QListWidgetItem *item : items)
        result.append(item->text());
    return result;
}

QJsonObject describe(const QWidget *widget)
{
    QJsonObject state;
    state["class"] = QString::fromLatin1(widget->metaObject()->className());
    state["visible"] = widget->isVisible();
    state["enabled"] = widget->isEnabled();
    if (const auto *button = qobject_cast<const QAbstractButton *>(widget)) {
        state["text"] = button->text();
        state["checked"] = button->isChecked();
    } else if (const auto *label = qobject_cast<const QLabel *>(widget)) {
        state["text"] = label->text();
    } else if (const auto *edit = qobject_cast<const QLineEdit *>(widget)) {
        state["text"] = edit->text();
    } else if (const auto *list = qobject_cast<const QListWidget *>(widget)) {
        state["selected"] = texts(list->selectedItems());
        state["count"] = list->count();
    } else if (const auto *tree = qobject_cast<const QTreeWidget *>(widget)) {
        QJsonArray rows;
        for (int i = 0; i < tree->topLevelItemCount(); ++i)
            rows.append(QJsonArray{tree->topLevelItem(i)->text(0), tree->topLevelItem(i)->text(1)});
        state["rows"] = rows;
    } else if (const auto *combo = qobject_cast<const QComboBox *>(widget)) {
        QJsonArray items;
        for (int i = 0; i < combo->count(); ++i)
            items.append(combo->itemText(i));
        state["items"] = items;
        state["text"] = combo->currentText();
    } else if (const auto *tabs = qobject_cast<const QTabWidget *>(widget)) {
        state["currentIndex"] = tabs->currentIndex();
    }
    return state;
}

class WidgetStateWriter : public QObject
{
    Q_OBJECT

public:
    explicit WidgetStateWriter(const QString &outputPath)
        : m_outputPath(outputPath)
    {
        connect(&m_poll, &QTimer::timeout, this, &WidgetStateWriter::poll);
        m_poll.start(20);
    }

private:
    void poll()
    {
        for (QWidget *top : QApplication::topLevelWidgets()) {
            if (top->objectName() == QLatin1String("MainWindow") && top->isVisible() && top->windowHandle()
                && top->windowHandle()->isExposed()) {
                m_poll.stop();
                write(top);
                QCoreApplication::quit();
                return;
            }
        }
    }

    void write(const QWidget *window) const
    {
        QJsonObject widgets;
        for (const QWidget *child : window->findChildren<QWidget *>()) {
            if (!child->objectName().isEmpty() && !child->objectName().startsWith(QLatin1String("qt_")))
                widgets[child->objectName()] = describe(child);
        }
        QJsonObject root;
        root["windowTitle"] = window->windowTitle();
        root["widgets"] = widgets;
        QFile file(m_outputPath);
        if (file.open(QIODevice::WriteOnly))
            file.write(QJsonDocument(root).toJson());
    }

    QString m_outputPath;
    QTimer m_poll;
};

} // namespace

class WidgetStatePlugin : public QGenericPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "widgetstate.json")

public:
    QObject *create(const QString &key, const QString &) override
    {
        const QString output = qEnvironmentVariable("FB_WIDGET_STATE_FILE");
        if (key.compare(QLatin1String("fbwidgetstate"), Qt::CaseInsensitive) != 0 || output.isEmpty())
            return nullptr;
        return new WidgetStateWriter(output); // the application deletes it at exit
    }
};

#include "widgetstateplugin.moc"
