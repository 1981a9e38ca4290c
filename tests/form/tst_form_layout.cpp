#include "ui_mainwindow.h"

#include "attachments/richtextpushbutton.h"
#include "formdump.h"
#include "formimages.h"
#include "support/testenv.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFrame>
#include <QGroupBox>
#include <QHash>
#include <QImage>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QListWidget>
#include <QMainWindow>
#include <QPixmap>
#include <QPointer>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRegExpValidator>
#include <QSpacerItem>
#include <QTabBar>
#include <QTabWidget>
#include <QTranslator>
#include <QTreeWidget>
#include <QValidator>
#include <QtTest>

#include <vector>

// The form of the main window as its Designer file builds it, on a plain QMainWindow:
// every widget and layout by object name, class and place, every static text, tool
// tip, placeholder and style, and the fixed properties. What the window's constructor
// changes on top is checked with the window itself (formwindow_constructor.cpp).
// Every expected value is written out here; nothing is read back from the program.

namespace {

const QString kBugStyle = QStringLiteral("QPushButton#button_Bug_Report:!pressed {\n"
                                         "background-color: rgb(232,164,19);\n"
                                         "border-radius: 10px;\n"
                                         "border-color: rgb(232, 164,19);\n"
                                         "min-width: 10em;\n"
                                         "padding: 6px;\n"
                                         "color: rgb(255, 255, 255);\n"
                                         "}\n"
                                         "\n"
                                         "QPushButton#button_Bug_Report:pressed {\n"
                                         "background-color: rgb(202,134,0);\n"
                                         "border-radius: 10px;\n"
                                         "border-color: rgb(202,134,0);\n"
                                         "min-width: 10em;\n"
                                         "padding: 6px;\n"
                                         "color: rgb(255, 255, 255);\n"
                                         "}");

const QString kFeatureStyle = QStringLiteral("QPushButton#button_Feature_Request:!pressed {\n"
                                             "background-color: rgb(19, 149, 232);\n"
                                             "border-radius: 10px;\n"
                                             "border-color: rgb(19, 149, 232);\n"
                                             "min-width: 10em;\n"
                                             "padding: 6px;\n"
                                             "color: rgb(255, 255, 255);\n"
                                             "}\n"
                                             "\n"
                                             "QPushButton#button_Feature_Request:pressed {\n"
                                             "background-color: rgb(0, 119, 202);\n"
                                             "border-radius: 10px;\n"
                                             "border-color: rgb(0, 119, 202);\n"
                                             "min-width: 10em;\n"
                                             "padding: 6px;\n"
                                             "color: rgb(255, 255, 255);\n"
                                             "}\n");

const QString kIntroLineStyle = QStringLiteral("color: rgb(48, 48, 48);");

// The labels of long texts wrap, so that longer translations fit the first window size.
const QStringList kWrappedLabels{"label_Intro_Line_2", "label_Intro_1",  "label_Intro_2",      "label_Intro_3",
                                 "label_Intro_4",      "label_Intro_5",  "label_25",           "label_Title",
                                 "label_Description",  "label_Settings", "label_Invalid_Email"};

const QString kBugCaption = QStringLiteral(
    "<html><head/><body><p align=\"center\"><span style=\"color: rgb(255, 255, 255); font-family:'MS Sans Serif'; "
    "font-style:normal;\"><font size=\"+3\">Bug Report</font></span></p><p align=\"center\"><span style=\" color: "
    "rgb(255, 255, 255); font-family:'MS Sans Serif'; font-style:normal;\">(Crashes / "
    "Issues)</span></p></body></html>");

const QString kFeatureCaption = QStringLiteral(
    "<html><head/><body><p align=\"center\"><span style=\"color: rgb(255, 255, 255); font-family:'MS Sans Serif'; "
    "font-style:normal;\"><font size=\"+3\">Feature Request</font></span></p><p align=\"center\"><span style=\" "
    "color: rgb(255, 255, 255); font-family:'MS Sans Serif'; font-style:normal;\">(Features / "
    "Workflow)</span></p></body></html>");

const QString kSettingsNote = QStringLiteral(
    "<html><head/><body><p align=\"center\"><span style=\" font-size:12pt; font-weight:600; "
    "color:#aa0000;\">Note</span><span style=\" font-size:12pt;\">: You should </span><span style=\" "
    "font-size:12pt; font-weight:600; font-style:italic;\">only</span><span style=\" font-size:12pt;\"> modify "
    "these settings if you have a special need.</span></p><p align=\"center\"><span style=\" "
    "font-size:12pt;\">The defaults should be used for most situations.</span></p></body></html>");

const QString kVideoLink =
    QStringLiteral("<html><head/><body><p><a href=\"https://videos.korvane3d.com/watch/feedback-agent-tips\"><img "
                   "src=\":/images/FB_video_logo.jpg\"/></a></p></body></html>");

// Tool tips of the form, by widget. Every other widget has none.
QHash<QString, QString> formToolTips()
{
    return {
        {"line_Name", "<html><head/><body><p>Please enter your name here</p></body></html>"},
        {"line_Email",
         "<html><head/><body><p>Please enter your contact information in case Customer Service needs more "
         "information.</p></body></html>"},
        {"edit_Description",
         "<html><head/><body><p>Please enter a detailed description of the issue here.  If this issue deals with "
         "Scripting, code snippets may be included here, but full script files should be attached to the "
         "report.</p></body></html>"},
        {"button_Attach_File", "<html><head/><body><p>Select a file to attach to the report.  The file may be text or "
                               "binary.</p></body></html>"},
        {"button_Remove_Entry",
         "<html><head/><body><p>Remove the selected entry from the attachments.</p></body></html>"},
        {"button_Clear_All", "<html><head/><body><p>Clear all attachments from the report.</p></body></html>"},
        {"button_Screen_Shot",
         "<html><head/><body><p>This option will allow you to take a screen shot of a selected window to attach to "
         "the report.</p></body></html>"},
        {"button_Cancel", "<html><head/><body><p>Cancel sending of this report.</p></body></html>"},
        {"button_Send", "<html><head/><body><p>Submit the report.</p></body></html>"},
    };
}

// Placeholders of the form's line edits. Every other line edit has none.
QHash<QString, QString> formPlaceholders()
{
    return {
        {"line_Snapshot_Delay", "2"},
        {"line_HTTP_Destination", "http://feedback.korvane3d.com/"},
        {"line_Proxy_Port", "8080"},
    };
}

// Style sheets of the form, by widget. Every other widget has an empty one.
QHash<QString, QString> formStyleSheets()
{
    return {
        {"label_Intro_Line_1", kIntroLineStyle},
        {"label_Intro_Line_2", kIntroLineStyle},
        {"button_Bug_Report", kBugStyle},
        {"button_Feature_Request", kFeatureStyle},
    };
}

struct FormWidget
{
    const char *name;
    const char *className;
    const char *parent; // nearest ancestor of the form (Qt's internal containers skipped)
};

// Every widget under the central widget, in form order.
const std::vector<FormWidget> &formWidgets()
{
    static const std::vector<FormWidget> widgets = {
        {"layout_banner_main_2", "QWidget", "centralWidget"},
        {"label_Banner", "QLabel", "layout_banner_main_2"},
        {"layout_banner_bug_2", "QWidget", "centralWidget"},
        {"label_Banner_Bug_Report", "QLabel", "layout_banner_bug_2"},
        {"layout_banner_feature_2", "QWidget", "centralWidget"},
        {"label_Banner_Feature_Request", "QLabel", "layout_banner_feature_2"},
        {"label_Intro_Line_1", "QLabel", "centralWidget"},
        {"label_Intro_Line_2", "QLabel", "centralWidget"},
        {"layout_selecting_buttons_2", "QWidget", "centralWidget"},
        {"button_Bug_Report", "RichTextPushButton", "layout_selecting_buttons_2"},
        {"button_Feature_Request", "RichTextPushButton", "layout_selecting_buttons_2"},
        {"tabWidget", "QTabWidget", "centralWidget"},
        // page 0
        {"tab_7", "QWidget", "tabWidget"},
        {"label_Intro_1", "QLabel", "tab_7"},
        {"label_Intro_2", "QLabel", "tab_7"},
        {"label_12", "QLabel", "tab_7"},
        {"label_Intro_3", "QLabel", "tab_7"},
        {"label_Intro_4", "QLabel", "tab_7"},
        {"label_Intro_5", "QLabel", "tab_7"},
        {"label_25", "QLabel", "tab_7"},
        {"label_Video", "QLabel", "tab_7"},
        // page 1
        {"tab_6", "QWidget", "tabWidget"},
        {"label_13", "QLabel", "tab_6"},
        {"label", "QLabel", "tab_6"},
        {"line_Name", "QLineEdit", "tab_6"},
        {"label_14", "QLabel", "tab_6"},
        {"label_2", "QLabel", "tab_6"},
        {"line_Email", "QLineEdit", "tab_6"},
        {"label_22", "QLabel", "tab_6"},
        {"label_Invalid_Email_Icon", "QLabel", "tab_6"},
        {"label_Invalid_Email", "QLabel", "tab_6"},
        {"label_23", "QLabel", "tab_6"},
        {"check_Remember_My_Info", "QCheckBox", "tab_6"},
        // page 2
        {"tab_2", "QWidget", "tabWidget"},
        {"label_5", "QLabel", "tab_2"},
        {"list_Area", "QListWidget", "tab_2"},
        {"label_8", "QLabel", "tab_2"},
        {"line_Build", "QLineEdit", "tab_2"},
        {"label_9", "QLabel", "tab_2"},
        {"check_Include_System_Info", "QCheckBox", "tab_2"},
        // page 3
        {"tab_5", "QWidget", "tabWidget"},
        {"label_Title", "QLabel", "tab_5"},
        {"combo_Title", "QComboBox", "tab_5"},
        {"label_Description", "QLabel", "tab_5"},
        {"edit_Description", "QPlainTextEdit", "tab_5"},
        // page 4
        {"tab", "QWidget", "tabWidget"},
        {"button_Attach_File", "QPushButton", "tab"},
        {"button_Remove_Entry", "QPushButton", "tab"},
        {"line", "QFrame", "tab"},
        {"button_Clear_All", "QPushButton", "tab"},
        {"tree_Attachments", "QTreeWidget", "tab"},
        {"check_NDA", "QCheckBox", "tab"},
        {"check_EnhancedCapture", "QCheckBox", "tab"},
        {"button_Screen_Shot", "QPushButton", "tab"},
        {"label_4", "QLabel", "tab"},
        {"line_Snapshot_Delay", "QLineEdit", "tab"},
        {"label_6", "QLabel", "tab"},
        // page 5
        {"tab_4", "QWidget", "tabWidget"},
        {"label_Settings", "QLabel", "tab_4"},
        {"label_SettingsPad", "QLabel", "tab_4"},
        {"check_Settings", "QCheckBox", "tab_4"},
        {"frame_Settings", "QFrame", "tab_4"},
        {"label_15", "QLabel", "frame_Settings"},
        {"line_HTTP_Destination", "QLineEdit", "frame_Settings"},
        {"label_26", "QLabel", "frame_Settings"},
        {"group_Proxy_Settings", "QGroupBox", "frame_Settings"},
        {"label_16", "QLabel", "group_Proxy_Settings"},
        {"line_Proxy_Server", "QLineEdit", "group_Proxy_Settings"},
        {"label_17", "QLabel", "group_Proxy_Settings"},
        {"line_Proxy_Port", "QLineEdit", "group_Proxy_Settings"},
        {"label_18", "QLabel", "group_Proxy_Settings"},
        {"line_Proxy_User_Name", "QLineEdit", "group_Proxy_Settings"},
        {"label_19", "QLabel", "group_Proxy_Settings"},
        {"line_Proxy_Password", "QLineEdit", "group_Proxy_Settings"},
        // bottom row and progress
        {"button_Cancel", "QPushButton", "centralWidget"},
        {"button_Start_Over", "QPushButton", "centralWidget"},
        {"button_Send", "QPushButton", "centralWidget"},
        {"progressBar", "QProgressBar", "centralWidget"},
    };
    return widgets;
}

// Nearest ancestor that belongs to the form; Qt's own containers (the tab widget's
// stacked widget, scroll area viewports) are named "qt_..." and skipped.
QString formParentName(const QWidget *widget)
{
    const QWidget *parent = widget->parentWidget();
    while (parent && parent->objectName().startsWith(QLatin1String("qt_")))
        parent = parent->parentWidget();
    return parent ? parent->objectName() : QString();
}

// One layout entry as text: a widget or nested layout by object name, a spacer by its
// direction and size hint ("hspacer 40x20" grows sideways, "vspacer 20x40" grows down).
QString describeItem(QLayoutItem *item)
{
    if (QWidget *widget = item->widget())
        return widget->objectName();
    if (QLayout *layout = item->layout())
        return layout->objectName();
    if (QSpacerItem *spacer = item->spacerItem()) {
        const QSizePolicy policy = spacer->sizePolicy();
        QString kind = QStringLiteral("spacer");
        if (policy.horizontalPolicy() == QSizePolicy::Expanding && policy.verticalPolicy() == QSizePolicy::Minimum)
            kind = QStringLiteral("hspacer");
        else if (policy.horizontalPolicy() == QSizePolicy::Minimum && policy.verticalPolicy() == QSizePolicy::Expanding)
            kind = QStringLiteral("vspacer");
        return QStringLiteral("%1 %2x%3").arg(kind).arg(spacer->sizeHint().width()).arg(spacer->sizeHint().height());
    }
    return QStringLiteral("?");
}

QStringList describeLayout(QLayout *layout)
{
    QStringList items;
    for (int i = 0; i < layout->count(); ++i)
        items << describeItem(layout->itemAt(i));
    return items;
}

// Answers every lookup of the "MainWindow" context with a marked copy of the source
// text, so that a text that reaches the screen unmarked did not go through translation.
class MarkingTranslator : public QTranslator
{
public:
    QString translate(const char *context, const char *sourceText, const char *disambiguation = nullptr,
                      int n = -1) const override
    {
        Q_UNUSED(disambiguation)
        Q_UNUSED(n)
        if (qstrcmp(context, "MainWindow") == 0)
            return QStringLiteral("[tr]") + QString::fromUtf8(sourceText);
        return QString();
    }
    bool isEmpty() const override { return false; }
};

} // namespace

class TestFormLayout : public QObject
{
    Q_OBJECT

private:
    // The form, polished as it is once shown: the big buttons' style sheets then set
    // their minimum width.
    QMainWindow *host = nullptr;

    template <typename T>
    T *find(const char *name) const
    {
        return host->findChild<T *>(QString::fromLatin1(name));
    }
    template <typename T>
    T *find(const QString &name) const
    {
        return host->findChild<T *>(name);
    }

private slots:
    void initTestCase()
    {
        host = new QMainWindow;
        Ui::MainWindow ui;
        ui.setupUi(host);
        host->ensurePolished();
    }

    void cleanupTestCase()
    {
        delete host;
        host = nullptr;
    }

    // ---- the form as a whole, against its checked-in record ---------------------------

    void formMatchesTheCheckedInDump()
    {
        const QStringList actual = formDumpLines();
        QString error;
        // tools/update-form-dump.sh sets this to write the record anew.
        const QString writeTo = qEnvironmentVariable("FB_FORM_DUMP_WRITE");
        if (!writeTo.isEmpty()) {
#ifdef Q_OS_WIN
            QFAIL("the record holds Linux's geometry: write it with tools/update-form-dump.sh on Linux");
#endif
            QVERIFY2(writeFormDump(writeTo, actual, &error), qPrintable(error));
        }
        QStringList expected;
        QVERIFY2(readFormDump(checkedInFormDumpPath(), &expected, &error), qPrintable(error));
#ifdef Q_OS_WIN
        // Under Wine the offscreen platform has other fonts and another style than on
        // Linux, so what follows from them (geometry, sizes once shown, drawn captions)
        // is Linux's alone; every other line must be the same.
        const bool withFontDependentLines = false;
#else
        const bool withFontDependentLines = true;
#endif
        const QString report = formDumpReport(expected, actual, withFontDependentLines);
        if (!report.isEmpty()) {
            // QtTest cuts a failure message short, so the differences go out on their own.
            qInfo().noquote() << QStringLiteral("the form differs from %1; ").arg(checkedInFormDumpPath()) + report;
            QFAIL("the form differs from its checked-in record (the lines above); after a change in Designer, "
                  "tools/update-form-dump.sh writes the record anew and git diff shows what changed");
        }
    }

    // ---- widgets: names, classes, places ----------------------------------------------

    void widgetClassAndParent_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("className");
        QTest::addColumn<QString>("parent");
        for (const FormWidget &w : formWidgets())
            QTest::newRow(w.name) << QString::fromLatin1(w.name) << QString::fromLatin1(w.className)
                                  << QString::fromLatin1(w.parent);
    }

    void widgetClassAndParent()
    {
        QFETCH(QString, name);
        QFETCH(QString, className);
        QFETCH(QString, parent);
        const QList<QWidget *> matches = host->findChildren<QWidget *>(name);
        QCOMPARE(matches.size(), 1);
        QWidget *widget = matches.first();
        QCOMPARE(QString::fromLatin1(widget->metaObject()->className()), className);
        QCOMPARE(formParentName(widget), parent);
        QVERIFY(host->findChild<QWidget *>(QStringLiteral("centralWidget"))->isAncestorOf(widget));
    }

    void widgetCount()
    {
        QCOMPARE(int(formWidgets().size()), 78);
    }

    void noOtherNamedWidgets()
    {
        // Everything named under the central widget is one of the form's widgets;
        // unnamed helpers and Qt's own "qt_" children are not the form's.
        QStringList expected;
        for (const FormWidget &w : formWidgets())
            expected << QString::fromLatin1(w.name);
        QStringList found;
        const QWidget *central = host->findChild<QWidget *>(QStringLiteral("centralWidget"));
        QVERIFY(central);
        for (const QWidget *widget : central->findChildren<QWidget *>()) {
            const QString name = widget->objectName();
            if (name.isEmpty() || name.startsWith(QLatin1String("qt_")))
                continue;
            if (qobject_cast<QTabBar *>(widget->parentWidget()))
                continue; // the tab bar's own scroll buttons
            found << name;
        }
        QStringList unexpected;
        for (const QString &name : qAsConst(found)) {
            if (!expected.contains(name))
                unexpected << name;
        }
        QStringList missing;
        for (const QString &name : qAsConst(expected)) {
            if (!found.contains(name))
                missing << name;
        }
        QVERIFY2(unexpected.isEmpty(), qPrintable("not in the form: " + unexpected.join(", ")));
        QVERIFY2(missing.isEmpty(), qPrintable("missing: " + missing.join(", ")));
        QCOMPARE(found.size(), expected.size());
    }

    // ---- layouts ------------------------------------------------------------------

    void layoutContents_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("className");
        QTest::addColumn<QString>("owner");
        QTest::addColumn<bool>("ownerIsWidget");
        QTest::addColumn<QStringList>("items");

        const QString h40 = QStringLiteral("hspacer 40x20");
        const auto row = [](const char *name, const char *cls, const char *owner, bool ownerIsWidget,
                            const QStringList &items) {
            QTest::newRow(name) << QString::fromLatin1(name) << QString::fromLatin1(cls) << QString::fromLatin1(owner)
                                << ownerIsWidget << items;
        };

        row("verticalLayout_10", "QVBoxLayout", "centralWidget", true, {"verticalLayout_8", "progressBar"});
        row("verticalLayout_8", "QVBoxLayout", "verticalLayout_10", false,
            {"layout_banner_main_2", "layout_banner_bug_2", "layout_banner_feature_2", "label_Intro_Line_1",
             "label_Intro_Line_2", "layout_selecting_buttons_2", "tabWidget", "vspacer 20x40", "horizontalLayout_12"});
        row("layout_banner_main", "QHBoxLayout", "layout_banner_main_2", true, {h40, "label_Banner", h40});
        row("layout_banner_bug", "QHBoxLayout", "layout_banner_bug_2", true, {h40, "label_Banner_Bug_Report", h40});
        row("layout_banner_feature", "QHBoxLayout", "layout_banner_feature_2", true,
            {h40, "label_Banner_Feature_Request", h40});
        row("layout_selecting_buttons", "QHBoxLayout", "layout_selecting_buttons_2", true,
            {"button_Bug_Report", "button_Feature_Request"});
        row("horizontalLayout_12", "QHBoxLayout", "verticalLayout_8", false,
            {"button_Cancel", h40, "button_Start_Over", h40, "button_Send"});

        // page 0
        row("verticalLayout_17", "QVBoxLayout", "tab_7", true, {"horizontalLayout_25", "vspacer 20x40"});
        row("horizontalLayout_25", "QHBoxLayout", "verticalLayout_17", false,
            {"verticalLayout_14", "label_Video", h40});
        row("verticalLayout_14", "QVBoxLayout", "horizontalLayout_25", false,
            {"horizontalLayout_22", "vspacer 20x13", "horizontalLayout_23", "vspacer 20x13", "horizontalLayout_21",
             "vspacer 20x13", "horizontalLayout_24"});
        row("horizontalLayout_22", "QHBoxLayout", "verticalLayout_14", false, {"label_Intro_1", h40});
        row("horizontalLayout_23", "QHBoxLayout", "verticalLayout_14", false, {"label_Intro_2", h40});
        row("horizontalLayout_21", "QHBoxLayout", "verticalLayout_14", false, {"label_12", "verticalLayout_12", h40});
        row("verticalLayout_12", "QVBoxLayout", "horizontalLayout_21", false,
            {"label_Intro_3", "label_Intro_4", "label_Intro_5"});
        row("horizontalLayout_24", "QHBoxLayout", "verticalLayout_14", false, {"label_25", h40});

        // page 1
        row("verticalLayout_13", "QVBoxLayout", "tab_6", true,
            {"horizontalLayout_3", "horizontalLayout_4", "horizontalLayout", "horizontalLayout_26", "vspacer 20x156"});
        row("horizontalLayout_3", "QHBoxLayout", "verticalLayout_13", false, {"label_13", "label", "line_Name"});
        row("horizontalLayout_4", "QHBoxLayout", "verticalLayout_13", false, {"label_14", "label_2", "line_Email"});
        row("horizontalLayout", "QHBoxLayout", "verticalLayout_13", false,
            {"label_22", "label_Invalid_Email_Icon", "label_Invalid_Email", h40});
        row("horizontalLayout_26", "QHBoxLayout", "verticalLayout_13", false,
            {"label_23", "check_Remember_My_Info", h40});

        // page 2
        row("horizontalLayout_7", "QHBoxLayout", "tab_2", true, {"horizontalLayout_5", "verticalLayout_9"});
        row("horizontalLayout_5", "QHBoxLayout", "horizontalLayout_7", false, {"verticalLayout_2", "list_Area"});
        row("verticalLayout_2", "QVBoxLayout", "horizontalLayout_5", false, {"label_5", "vspacer 20x24"});
        row("verticalLayout_9", "QVBoxLayout", "horizontalLayout_7", false,
            {"horizontalLayout_9", "horizontalLayout_10", "vspacer 20x40"});
        row("horizontalLayout_9", "QHBoxLayout", "verticalLayout_9", false, {"label_8", "line_Build"});
        row("horizontalLayout_10", "QHBoxLayout", "verticalLayout_9", false, {"label_9", "check_Include_System_Info"});

        // page 3
        row("verticalLayout", "QVBoxLayout", "tab_5", true,
            {"label_Title", "combo_Title", "label_Description", "edit_Description"});

        // page 4
        row("verticalLayout_4", "QVBoxLayout", "tab", true, {"horizontalLayout_8", "horizontalLayout_13"});
        row("horizontalLayout_8", "QHBoxLayout", "verticalLayout_4", false, {"verticalLayout_3", "tree_Attachments"});
        row("verticalLayout_3", "QVBoxLayout", "horizontalLayout_8", false,
            {"button_Attach_File", "button_Remove_Entry", "line", "button_Clear_All", "vspacer 20x40"});
        row("horizontalLayout_13", "QHBoxLayout", "verticalLayout_4", false,
            {"check_NDA", h40, "check_EnhancedCapture", "button_Screen_Shot", "label_4", "line_Snapshot_Delay",
             "label_6", h40});

        // page 5
        row("verticalLayout_7", "QVBoxLayout", "tab_4", true,
            {"label_Settings", "label_SettingsPad", "horizontalLayout_11", "frame_Settings", "vspacer 20x40"});
        row("horizontalLayout_11", "QHBoxLayout", "verticalLayout_7", false, {h40, "check_Settings", h40});
        row("verticalLayout_6", "QVBoxLayout", "frame_Settings", true, {"layout_Settings1", "layout_Settings2"});
        row("layout_Settings1", "QHBoxLayout", "verticalLayout_6", false, {"label_15", "line_HTTP_Destination"});
        row("layout_Settings2", "QHBoxLayout", "verticalLayout_6", false, {"label_26", "group_Proxy_Settings", h40});
        row("verticalLayout_5", "QVBoxLayout", "group_Proxy_Settings", true,
            {"horizontalLayout_14", "horizontalLayout_15", "horizontalLayout_16", "horizontalLayout_18"});
        row("horizontalLayout_14", "QHBoxLayout", "verticalLayout_5", false, {"label_16", "line_Proxy_Server"});
        row("horizontalLayout_15", "QHBoxLayout", "verticalLayout_5", false, {"label_17", "line_Proxy_Port"});
        row("horizontalLayout_16", "QHBoxLayout", "verticalLayout_5", false, {"label_18", "line_Proxy_User_Name"});
        row("horizontalLayout_18", "QHBoxLayout", "verticalLayout_5", false, {"label_19", "line_Proxy_Password"});
    }

    void layoutContents()
    {
        QFETCH(QString, name);
        QFETCH(QString, className);
        QFETCH(QString, owner);
        QFETCH(bool, ownerIsWidget);
        QFETCH(QStringList, items);

        const QList<QLayout *> matches = host->findChildren<QLayout *>(name);
        QCOMPARE(matches.size(), 1);
        QLayout *layout = matches.first();
        QCOMPARE(QString::fromLatin1(layout->metaObject()->className()), className);
        QVERIFY(layout->parent());
        QCOMPARE(layout->parent()->objectName(), owner);
        if (ownerIsWidget) {
            QWidget *ownerWidget = qobject_cast<QWidget *>(layout->parent());
            QVERIFY(ownerWidget);
            QCOMPARE(ownerWidget->layout(), layout);
        } else {
            QVERIFY(qobject_cast<QLayout *>(layout->parent()));
        }
        QCOMPARE(describeLayout(layout), items);
    }

    // ---- tabs ---------------------------------------------------------------------

    void tabPages_data()
    {
        QTest::addColumn<int>("index");
        QTest::addColumn<QString>("page");
        QTest::addColumn<QString>("text");
        QTest::newRow("0") << 0 << "tab_7"
                           << "Introduction";
        QTest::newRow("1") << 1 << "tab_6"
                           << "Step 1: Identity";
        QTest::newRow("2") << 2 << "tab_2"
                           << "Step 2: Details";
        QTest::newRow("3") << 3 << "tab_5"
                           << "Step 3: Description";
        QTest::newRow("4") << 4 << "tab"
                           << "Step 4: Attachments";
        QTest::newRow("5") << 5 << "tab_4"
                           << "Feedback Agent Settings";
    }

    void tabPages()
    {
        QFETCH(int, index);
        QFETCH(QString, page);
        QFETCH(QString, text);
        QTabWidget *tabs = find<QTabWidget>("tabWidget");
        QVERIFY(tabs);
        QVERIFY(tabs->widget(index));
        QCOMPARE(tabs->widget(index)->objectName(), page);
        QCOMPARE(tabs->tabText(index), text);
        QCOMPARE(tabs->tabToolTip(index), QString());
        QVERIFY(tabs->isTabEnabled(index));
        QVERIFY(tabs->tabIcon(index).isNull());
    }

    void tabWidgetState()
    {
        QTabWidget *tabs = find<QTabWidget>("tabWidget");
        QVERIFY(tabs);
        QCOMPARE(tabs->count(), 6);
        QCOMPARE(tabs->currentIndex(), 0);
        QCOMPARE(tabs->currentWidget()->objectName(), QStringLiteral("tab_7"));
    }

    // ---- texts --------------------------------------------------------------------

    void texts_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("property");
        QTest::addColumn<QString>("expected");
        const auto row = [](const char *name, const char *property, const QString &expected) {
            QTest::addRow("%s.%s", name, property) << QString::fromLatin1(name) << QByteArray(property) << expected;
        };
        const QString none;

        row("label_Intro_Line_1", "text", "Welcome to the Korvane Feedback Agent");
        row("label_Intro_Line_2", "text", "Please Choose the Type of Feedback You Wish to Provide");
        row("label_Banner", "text", none);
        row("label_Banner_Bug_Report", "text", none);
        row("label_Banner_Feature_Request", "text", none);

        row("label_Intro_1", "text", "Please take a moment to review how to collect and submit a good bug report.");
        row("label_Intro_2", "text",
            "The following tips help make a good report that will aid developers in recreating your issue:");
        row("label_12", "text", none);
        row("label_Intro_3", "text", "1) Ensure only the content needed to recreate the issue is attached");
        row("label_Intro_4", "text", "2) Lower any settings in Scenes that are not critical to showing the issue");
        row("label_Intro_5", "text",
            "3) Provide detailed steps the developer can folow in order to recreate the issue");
        row("label_25", "text", "For further advice and tips, please click the link to the video.");
        row("label_Video", "text", kVideoLink);

        row("label_13", "text", none);
        row("label", "text", "Your name:");
        row("line_Name", "text", none);
        row("label_14", "text", none);
        row("label_2", "text", "Email address:");
        row("line_Email", "text", none);
        row("label_22", "text", none);
        row("label_Invalid_Email_Icon", "text", none);
        row("label_Invalid_Email", "text", none);
        row("label_23", "text", none);
        row("check_Remember_My_Info", "text", "Remember My Information");

        row("label_5", "text", "Area:");
        row("label_8", "text", "Build:");
        row("line_Build", "text", none); // the window fills in the build number
        row("label_9", "text", none);
        row("check_Include_System_Info", "text", "Include My System Information");

        row("label_Title", "text", "Please provide a short title of the bug/issue  (70 characters max):");
        row("label_Description", "text", "Please provide a description of the bug/issue:");
        row("edit_Description", "plainText", none);

        row("button_Attach_File", "text", "Attach File(s)...");
        row("button_Remove_Entry", "text", "Remove Selected");
        row("button_Clear_All", "text", "Clear All");
        row("check_NDA", "text", "Privatize content (NDA)");
        row("check_EnhancedCapture", "text", "Enhanced capture");
        row("button_Screen_Shot", "text", "Take Screen Shot...");
        row("label_4", "text", "Delay:");
        row("line_Snapshot_Delay", "text", none);
        row("label_6", "text", "seconds");

        row("label_Settings", "text", kSettingsNote);
        row("label_SettingsPad", "text", none);
        row("check_Settings", "text", "I understand.  Let me modify the settings.");
        row("label_15", "text", "HTTP destination:");
        row("line_HTTP_Destination", "text", none);
        row("label_26", "text", none);
        row("group_Proxy_Settings", "title", "HTTP Proxy Settings");
        row("label_16", "text", "Server:");
        row("line_Proxy_Server", "text", none);
        row("label_17", "text", "Port:");
        row("line_Proxy_Port", "text", none);
        row("label_18", "text", "User name:");
        row("line_Proxy_User_Name", "text", none);
        row("label_19", "text", "Password:");
        row("line_Proxy_Password", "text", none);

        row("button_Cancel", "text", "Cancel");
        row("button_Start_Over", "text", "Start Over");
        row("button_Send", "text", "Send...");
    }

    void texts()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, property);
        QFETCH(QString, expected);
        QWidget *widget = find<QWidget>(name);
        QVERIFY(widget);
        const QVariant value = widget->property(property.constData());
        QVERIFY(value.isValid());
        QCOMPARE(value.toString(), expected);
    }

    void toolTips_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("expected");
        const QHash<QString, QString> tips = formToolTips();
        for (const FormWidget &w : formWidgets())
            QTest::newRow(w.name) << QString::fromLatin1(w.name) << tips.value(QString::fromLatin1(w.name));
    }

    void toolTips()
    {
        QFETCH(QString, name);
        QFETCH(QString, expected);
        QWidget *widget = find<QWidget>(name);
        QVERIFY(widget);
        QCOMPARE(widget->toolTip(), expected);
    }

    void placeholders_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("expected");
        const QHash<QString, QString> placeholders = formPlaceholders();
        for (const FormWidget &w : formWidgets()) {
            if (qstrcmp(w.className, "QLineEdit") == 0)
                QTest::newRow(w.name) << QString::fromLatin1(w.name) << placeholders.value(QString::fromLatin1(w.name));
        }
        QTest::newRow("combo_Title line edit") << QStringLiteral("combo_Title") << QString();
    }

    void placeholders()
    {
        QFETCH(QString, name);
        QFETCH(QString, expected);
        QLineEdit *edit = find<QLineEdit>(name);
        if (name == QLatin1String("combo_Title")) {
            QComboBox *combo = find<QComboBox>(name);
            QVERIFY(combo);
            edit = combo->lineEdit();
        }
        QVERIFY(edit);
        QCOMPARE(edit->placeholderText(), expected);
    }

    void styleSheets_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("expected");
        const QHash<QString, QString> sheets = formStyleSheets();
        for (const FormWidget &w : formWidgets())
            QTest::newRow(w.name) << QString::fromLatin1(w.name) << sheets.value(QString::fromLatin1(w.name));
        QTest::newRow("centralWidget") << QStringLiteral("centralWidget") << QString();
    }

    void styleSheets()
    {
        QFETCH(QString, name);
        QFETCH(QString, expected);
        QWidget *widget = find<QWidget>(name);
        QVERIFY(widget);
        QCOMPARE(widget->styleSheet(), expected);
    }

    void bigButtonStyleSheetEnds()
    {
        // The bug button's sheet ends at its closing brace, the feature button's with a line break.
        QWidget *bug = find<QWidget>("button_Bug_Report");
        QWidget *feature = find<QWidget>("button_Feature_Request");
        QVERIFY(bug);
        QVERIFY(feature);
        QVERIFY(bug->styleSheet().endsWith(QLatin1String("}")));
        QVERIFY(feature->styleSheet().endsWith(QLatin1String("}\n")));
        QCOMPARE(bug->styleSheet().count(QLatin1Char('\n')), 16);
        QCOMPARE(feature->styleSheet().count(QLatin1Char('\n')), 17);
    }

    // ---- fonts and label formats ---------------------------------------------------

    void fonts_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("family");
        QTest::addColumn<int>("pointSize");
        QTest::addColumn<int>("weight");
        QTest::addColumn<bool>("italic");
        QTest::addColumn<bool>("preferAntialias");
        QTest::newRow("label_Intro_Line_1") << "label_Intro_Line_1"
                                            << "Tahoma" << 13 << int(QFont::Normal) << false << false;
        QTest::newRow("label_Intro_Line_2") << "label_Intro_Line_2"
                                            << "Tahoma" << 13 << int(QFont::Normal) << false << false;
        QTest::newRow("button_Bug_Report") << "button_Bug_Report"
                                           << "MS Sans Serif" << 26 << 50 << false << true;
        QTest::newRow("button_Feature_Request") << "button_Feature_Request"
                                                << "MS Sans Serif" << 26 << 50 << false << true;
    }

    void fonts()
    {
        QFETCH(QString, name);
        QFETCH(QString, family);
        QFETCH(int, pointSize);
        QFETCH(int, weight);
        QFETCH(bool, italic);
        QFETCH(bool, preferAntialias);
        QWidget *widget = find<QWidget>(name);
        QVERIFY(widget);
        QVERIFY(widget->testAttribute(Qt::WA_SetFont));
        const QFont font = widget->font();
        QCOMPARE(font.family(), family);
        QCOMPARE(font.pointSize(), pointSize);
        QCOMPARE(font.weight(), weight);
        QCOMPARE(font.italic(), italic);
        QCOMPARE(font.bold(), false);
        QCOMPARE(bool(font.styleStrategy() & QFont::PreferAntialias), preferAntialias);
        if (preferAntialias)
            QCOMPARE(font.styleStrategy(), QFont::PreferAntialias);
    }

    void otherWidgetsKeepTheDefaultFont_data()
    {
        QTest::addColumn<QString>("name");
        const QStringList withFont = {"label_Intro_Line_1", "label_Intro_Line_2", "button_Bug_Report",
                                      "button_Feature_Request"};
        for (const FormWidget &w : formWidgets()) {
            if (!withFont.contains(QString::fromLatin1(w.name)))
                QTest::newRow(w.name) << QString::fromLatin1(w.name);
        }
    }

    void otherWidgetsKeepTheDefaultFont()
    {
        QFETCH(QString, name);
        QWidget *widget = find<QWidget>(name);
        QVERIFY(widget);
        QVERIFY(!widget->testAttribute(Qt::WA_SetFont));
    }

    void labels_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("alignment");
        QTest::addColumn<int>("textFormat");
        const int left = int(Qt::AlignLeft | Qt::AlignVCenter);
        const int right = int(Qt::AlignRight | Qt::AlignVCenter);
        const int centre = int(Qt::AlignCenter);
        const QHash<QString, int> alignments = {
            {"label_Intro_Line_1", centre},
            {"label_Intro_Line_2", centre},
            {"label", right},
            {"label_2", right},
            {"label_16", right},
            {"label_17", right},
            {"label_18", right},
            {"label_19", right},
        };
        for (const FormWidget &w : formWidgets()) {
            if (qstrcmp(w.className, "QLabel") != 0)
                continue;
            const QString name = QString::fromLatin1(w.name);
            const bool rich = name == QLatin1String("label_Video") || name == QLatin1String("label_Settings");
            QTest::newRow(w.name) << name << alignments.value(name, left) << int(rich ? Qt::RichText : Qt::AutoText);
        }
    }

    void labels()
    {
        QFETCH(QString, name);
        QFETCH(int, alignment);
        QFETCH(int, textFormat);
        QLabel *label = find<QLabel>(name);
        QVERIFY(label);
        QCOMPARE(int(label->alignment()), alignment);
        QCOMPARE(int(label->textFormat()), textFormat);
        QCOMPARE(label->wordWrap(), kWrappedLabels.contains(name));
        QCOMPARE(label->openExternalLinks(), false);
        // Links react to the mouse only; no label text can be selected or edited.
        QCOMPARE(label->textInteractionFlags(), Qt::TextInteractionFlags(Qt::LinksAccessibleByMouse));
    }

    // ---- images ---------------------------------------------------------------------

    void banners_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("image");
        QTest::newRow("label_Banner") << "label_Banner"
                                      << ":/images/Banner.png";
        QTest::newRow("label_Banner_Bug_Report") << "label_Banner_Bug_Report"
                                                 << ":/images/Banner-Bug.png";
        QTest::newRow("label_Banner_Feature_Request") << "label_Banner_Feature_Request"
                                                      << ":/images/Banner-Feature.png";
    }

    void banners()
    {
        QFETCH(QString, name);
        QFETCH(QString, image);
        QLabel *label = find<QLabel>(name);
        QVERIFY(label);
        // The banner keeps its image's size: minimum and maximum are both 680 x 72.
        QCOMPARE(label->minimumSize(), QSize(680, 72));
        QCOMPARE(label->maximumSize(), QSize(680, 72));
        QVERIFY(!label->hasScaledContents());
        const QPixmap pixmap = label->property("pixmap").value<QPixmap>();
        QVERIFY(!pixmap.isNull());
        const QImage expected = asArgb(QImage(image));
        QVERIFY(!expected.isNull());
        QCOMPARE(asArgb(pixmap.toImage()), expected);
    }

    void videoLink()
    {
        QLabel *video = find<QLabel>("label_Video");
        QVERIFY(video);
        QCOMPARE(video->text(), kVideoLink);
        QCOMPARE(video->textFormat(), Qt::RichText);
        QCOMPARE(video->openExternalLinks(), false);
        QCOMPARE(video->textInteractionFlags(), Qt::TextInteractionFlags(Qt::LinksAccessibleByMouse));
        QCOMPARE(video->minimumSize(), QSize(200, 113));
        QCOMPARE(video->maximumSize(), QSize(200, 113));
        QVERIFY(!QImage(QStringLiteral(":/images/FB_video_logo.jpg")).isNull());
    }

    // ---- the two big buttons ----------------------------------------------------------

    void bigButtons_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("html");
        QTest::addColumn<QString>("plain");
        QTest::newRow("button_Bug_Report") << "button_Bug_Report" << kBugCaption << "Bug Report\n(Crashes / Issues)";
        QTest::newRow("button_Feature_Request")
            << "button_Feature_Request" << kFeatureCaption << "Feature Request\n(Features / Workflow)";
    }

    void bigButtons()
    {
        QFETCH(QString, name);
        QFETCH(QString, html);
        QFETCH(QString, plain);
        RichTextPushButton *button = find<RichTextPushButton>(name);
        QVERIFY(button);
        QCOMPARE(QString::fromLatin1(button->metaObject()->className()), QStringLiteral("RichTextPushButton"));
        QCOMPARE(QString::fromLatin1(button->metaObject()->superClass()->className()), QStringLiteral("QPushButton"));
        QCOMPARE(button->htmlText(), html);
        QCOMPARE(button->text(), plain);
        // The caption went through the renderer: the plain button text stays empty and
        // the HTML became the icon.
        QCOMPARE(static_cast<QPushButton *>(button)->text(), QString());
        QVERIFY(!button->icon().isNull());
        QVERIFY(button->iconSize().width() > 0);
        QVERIFY(button->iconSize().height() > 0);
        // The form sets 142 x 202 to 344 x 202 (see bareForm). Once the button is polished,
        // its style sheet's "min-width: 10em" with the padding replaces the minimum width,
        // by a value that depends on the default font; the height stays 202 and the
        // maximum stays.
        QCOMPARE(button->maximumSize(), QSize(344, 202));
        QCOMPARE(button->minimumHeight(), 202);
        QVERIFY(button->minimumWidth() >= 142);
        QVERIFY(button->minimumWidth() <= 344);
        QCOMPARE(button->toolTip(), QString());
        QVERIFY(button->isEnabled());
    }

    // ---- fixed properties ------------------------------------------------------------

    void checkStates_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("checkable");
        QTest::addColumn<bool>("checked");
        QTest::newRow("check_Remember_My_Info") << "check_Remember_My_Info" << true << true;
        QTest::newRow("check_Include_System_Info") << "check_Include_System_Info" << true << true;
        QTest::newRow("check_NDA") << "check_NDA" << true << false;
        QTest::newRow("check_EnhancedCapture") << "check_EnhancedCapture" << true << false;
        QTest::newRow("check_Settings") << "check_Settings" << true << false;
        QTest::newRow("group_Proxy_Settings") << "group_Proxy_Settings" << true << false;
        QTest::newRow("button_Bug_Report") << "button_Bug_Report" << false << false;
        QTest::newRow("button_Feature_Request") << "button_Feature_Request" << false << false;
        QTest::newRow("button_Attach_File") << "button_Attach_File" << false << false;
        QTest::newRow("button_Remove_Entry") << "button_Remove_Entry" << false << false;
        QTest::newRow("button_Clear_All") << "button_Clear_All" << false << false;
        QTest::newRow("button_Screen_Shot") << "button_Screen_Shot" << false << false;
        QTest::newRow("button_Cancel") << "button_Cancel" << false << false;
        QTest::newRow("button_Start_Over") << "button_Start_Over" << false << false;
        QTest::newRow("button_Send") << "button_Send" << false << false;
    }

    void checkStates()
    {
        QFETCH(QString, name);
        QFETCH(bool, checkable);
        QFETCH(bool, checked);
        QWidget *widget = find<QWidget>(name);
        QVERIFY(widget);
        QCOMPARE(widget->property("checkable").toBool(), checkable);
        QCOMPARE(widget->property("checked").toBool(), checked);
        if (QCheckBox *box = qobject_cast<QCheckBox *>(widget))
            QVERIFY(!box->isTristate());
    }

    void echoModes_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("echoMode");
        for (const FormWidget &w : formWidgets()) {
            if (qstrcmp(w.className, "QLineEdit") != 0)
                continue;
            const bool password = qstrcmp(w.name, "line_Proxy_Password") == 0;
            QTest::newRow(w.name) << QString::fromLatin1(w.name)
                                  << int(password ? QLineEdit::PasswordEchoOnEdit : QLineEdit::Normal);
        }
    }

    void echoModes()
    {
        QFETCH(QString, name);
        QFETCH(int, echoMode);
        QLineEdit *edit = find<QLineEdit>(name);
        QVERIFY(edit);
        QCOMPARE(int(edit->echoMode()), echoMode);
        QVERIFY(!edit->isReadOnly());
    }

    void frames()
    {
        QFrame *settings = find<QFrame>("frame_Settings");
        QVERIFY(settings);
        QCOMPARE(settings->frameShape(), QFrame::StyledPanel);
        QCOMPARE(settings->frameShadow(), QFrame::Raised);

        QFrame *line = find<QFrame>("line");
        QVERIFY(line);
        QCOMPARE(line->frameShape(), QFrame::HLine);
        QCOMPARE(line->frameShadow(), QFrame::Sunken);
    }

    void fixedSizeLabels_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("label_13") << "label_13";
        QTest::newRow("label_SettingsPad") << "label_SettingsPad";
    }

    void fixedSizeLabels()
    {
        QFETCH(QString, name);
        QLabel *label = find<QLabel>(name);
        QVERIFY(label);
        QVERIFY(!label->minimumSize().isEmpty());
        QCOMPARE(label->minimumSize(), label->maximumSize());
        QCOMPARE(label->hasScaledContents(), name == QLatin1String("label_13"));
    }

    void progressBar()
    {
        QProgressBar *bar = find<QProgressBar>("progressBar");
        QVERIFY(bar);
        QCOMPARE(bar->value(), 0);
        QCOMPARE(bar->minimum(), 0);
        QCOMPARE(bar->maximum(), 100);
        QVERIFY(!bar->isTextVisible());
    }

    void attachmentTree()
    {
        QTreeWidget *tree = find<QTreeWidget>("tree_Attachments");
        QVERIFY(tree);
        QCOMPARE(tree->columnCount(), 2);
        QVERIFY(tree->headerItem());
        QCOMPARE(tree->headerItem()->text(0), QStringLiteral("Type"));
        QCOMPARE(tree->headerItem()->text(1), QStringLiteral("Data"));
        QCOMPARE(tree->selectionMode(), QAbstractItemView::ExtendedSelection);
        QCOMPARE(tree->topLevelItemCount(), 0);
    }

    // ---- the bare form, before the window adjusts it -------------------------------------

    void bareForm()
    {
        QMainWindow bare;
        Ui::MainWindow ui;
        ui.setupUi(&bare);

        QCOMPARE(bare.objectName(), QStringLiteral("MainWindow"));
        QCOMPARE(bare.windowTitle(), QStringLiteral("Korvane Feedback Agent"));
        QCOMPARE(bare.size(), QSize(720, 470));
        QCOMPARE(bare.styleSheet(), QString());
        QCOMPARE(bare.centralWidget(), ui.centralWidget);
        QVERIFY(!ui.centralWidget->acceptDrops());
        const QImage logo = resourceImage(":/images/FB_logo.png");
        QCOMPARE(asArgb(bare.windowIcon().pixmap(logo.size()).toImage()), logo);

        // What the window's constructor adds is not in the form itself.
        QCOMPARE(ui.list_Area->count(), 0);
        QCOMPARE(ui.line_Build->text(), QString());
        QVERIFY(!ui.line_Build->validator());
        QCOMPARE(ui.combo_Title->lineEdit()->maxLength(), 32767);
        QVERIFY(!ui.frame_Settings->isHidden());
        QVERIFY(!ui.tabWidget->isHidden());
        QVERIFY(!ui.button_Start_Over->isHidden());
        QVERIFY(ui.button_Send->isEnabled());
        QCOMPARE(ui.button_Send->text(), QStringLiteral("Send..."));
        QCOMPARE(ui.button_Send->toolTip(), formToolTips().value(QStringLiteral("button_Send")));
        QCOMPARE(ui.button_Cancel->toolTip(), formToolTips().value(QStringLiteral("button_Cancel")));
        QCOMPARE(ui.tabWidget->currentIndex(), 0);
        // Sizes of the two big buttons as the form sets them, before any polish.
        for (QPushButton *button : {static_cast<QPushButton *>(ui.button_Bug_Report),
                                    static_cast<QPushButton *>(ui.button_Feature_Request)}) {
            QVERIFY(!button->testAttribute(Qt::WA_WState_Polished));
            QCOMPARE(button->minimumSize(), QSize(142, 202));
            QCOMPARE(button->maximumSize(), QSize(344, 202));
        }
        QCOMPARE(ui.button_Bug_Report->htmlText(), kBugCaption);
        QCOMPARE(ui.button_Feature_Request->htmlText(), kFeatureCaption);
        QCOMPARE(ui.button_Bug_Report->styleSheet(), kBugStyle);
        QCOMPARE(ui.button_Feature_Request->styleSheet(), kFeatureStyle);
        QCOMPARE(ui.progressBar->value(), 0);
        QVERIFY(!ui.progressBar->isTextVisible());
        QVERIFY(ui.check_Remember_My_Info->isChecked());
        QVERIFY(ui.check_Include_System_Info->isChecked());
        QVERIFY(ui.group_Proxy_Settings->isCheckable());
        QVERIFY(!ui.group_Proxy_Settings->isChecked());
        QVERIFY(ui.combo_Title->isEditable());
    }

    void everyFormTextIsTranslated()
    {
        // Every text, tool tip, placeholder, title, tab text and header of the form is
        // looked up in the "MainWindow" context; style sheets are not translated.
        QMainWindow bare;
        Ui::MainWindow ui;
        ui.setupUi(&bare);

        struct Entry
        {
            QPointer<QWidget> widget;
            QByteArray property;
            QString before;
        };
        QList<Entry> entries;
        QHash<QString, QString> sheetsBefore;
        const QList<QByteArray> properties = {"text", "toolTip", "placeholderText", "title"};
        for (QWidget *widget : bare.findChildren<QWidget *>()) {
            if (widget->objectName().isEmpty() || widget->objectName().startsWith(QLatin1String("qt_")))
                continue;
            if (qobject_cast<QProgressBar *>(widget))
                continue; // its "text" is the computed percentage
            sheetsBefore.insert(widget->objectName(), widget->styleSheet());
            for (const QByteArray &property : properties) {
                const QVariant value = widget->property(property.constData());
                if (value.isValid() && !value.toString().isEmpty())
                    entries.append({widget, property, value.toString()});
            }
        }
        // 35 texts, 9 tool tips, 3 placeholders and 1 group title (the two big buttons'
        // captions are checked below through htmlText()).
        QCOMPARE(entries.size(), 48);

        QStringList tabTexts;
        for (int i = 0; i < ui.tabWidget->count(); ++i)
            tabTexts << ui.tabWidget->tabText(i);

        MarkingTranslator translator;
        QVERIFY(QCoreApplication::installTranslator(&translator));
        ui.retranslateUi(&bare);
        QCoreApplication::removeTranslator(&translator);

        for (const Entry &entry : qAsConst(entries)) {
            QVERIFY(entry.widget);
            QCOMPARE(entry.widget->property(entry.property.constData()).toString(),
                     QStringLiteral("[tr]") + entry.before);
        }
        for (auto it = sheetsBefore.cbegin(); it != sheetsBefore.cend(); ++it)
            QCOMPARE(bare.findChild<QWidget *>(it.key())->styleSheet(), it.value());

        QCOMPARE(bare.windowTitle(), QStringLiteral("[tr]Korvane Feedback Agent"));
        for (int i = 0; i < ui.tabWidget->count(); ++i)
            QCOMPARE(ui.tabWidget->tabText(i), QStringLiteral("[tr]") + tabTexts.at(i));
        QCOMPARE(ui.tree_Attachments->headerItem()->text(0), QStringLiteral("[tr]Type"));
        QCOMPARE(ui.tree_Attachments->headerItem()->text(1), QStringLiteral("[tr]Data"));
        QCOMPARE(ui.button_Bug_Report->htmlText(), QStringLiteral("[tr]") + kBugCaption);
        QCOMPARE(ui.button_Feature_Request->htmlText(), QStringLiteral("[tr]") + kFeatureCaption);
    }
};

FB_TEST_MAIN(TestFormLayout)
#include "tst_form_layout.moc"
