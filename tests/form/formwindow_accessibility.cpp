// What a screen reader learns from the real window through Qt's accessibility layer:
// the role, name and state of every control on every screen and tab page, and the
// order in which Tab and Shift+Tab visit them.
#include "formwindowtests.h"

#include "form/formwidgets.h"
#include "form/mainwindow.h"
#include "support/mainwindowprobe.h"
#include "support/testenv.h"

#include <QAccessible>
#include <QApplication>
#include <QMetaEnum>
#include <QTabBar>
#include <QtTest>

namespace {

// One control as a line: object name, role, quoted name and the states that matter
// to a keyboard user, so that a difference shows which part of which control it is.
QString describe(QWidget *widget)
{
    QAccessibleInterface *iface = QAccessible::queryAccessibleInterface(widget);
    if (!iface)
        return widget->objectName() + " (no accessible interface)";
    const QAccessible::State state = iface->state();
    QString line = QStringLiteral("%1 %2 \"%3\"")
                       .arg(widget->objectName(),
                            QString::fromLatin1(QMetaEnum::fromType<QAccessible::Role>().valueToKey(iface->role())),
                            iface->text(QAccessible::Name));
    if (state.focusable)
        line += " focusable";
    if (state.disabled)
        line += " disabled";
    if (state.invisible)
        line += " invisible";
    if (state.checkable)
        line += state.checked ? " checked" : " unchecked";
    if (state.passwordEdit)
        line += " password";
    return line;
}

QString focusName()
{
    QWidget *focus = QApplication::focusWidget();
    return focus ? focus->objectName() : QStringLiteral("(none)");
}

// Presses Tab (or Shift+Tab) from the start widget until the focus comes back to it,
// and returns the object names in the order they took the focus, the start last.
QString walk(QWidget *start, bool backwards)
{
    start->setFocus(Qt::OtherFocusReason);
    if (!QTest::qWaitFor([start] { return QApplication::focusWidget() == start; }, kEventWaitMs))
        return QStringLiteral("the focus never reached ") + start->objectName();
    QStringList visited;
    do {
        QTest::keyClick(QApplication::focusWidget(), backwards ? Qt::Key_Backtab : Qt::Key_Tab,
                        backwards ? Qt::ShiftModifier : Qt::NoModifier);
        visited << focusName();
    } while (QApplication::focusWidget() != start && visited.size() < 40);
    return visited.join(", ");
}

// The focus cycle from the last widget's (the start's) point of view, both ways: the
// backward walk visits the others in the reverse order.
void compareWalks(QWidget *start, QStringList cycle)
{
    QCOMPARE(walk(start, false), cycle.join(", "));
    const QString self = cycle.takeLast();
    std::reverse(cycle.begin(), cycle.end());
    QCOMPARE(walk(start, true), (cycle << self).join(", "));
}

} // namespace

QWidget *FormWindowTests::find(const char *name) const
{
    return f->find<QWidget>(name);
}

void FormWindowTests::compareControls(const QStringList &expected)
{
    for (const QString &line : expected) {
        const QString name = line.section(' ', 0, 0);
        QWidget *widget = find(name.toLatin1().constData());
        QVERIFY2(widget, qPrintable("no widget " + name));
        QCOMPARE(describe(widget), line);
    }
}

void FormWindowTests::showTab(int index)
{
    f->tabs->setCurrentIndex(index);
    QCOMPARE(f->tabs->currentIndex(), index);
}

void FormWindowTests::composeBugReportOn(int tab)
{
    QTest::mouseClick(f->bug, Qt::LeftButton);
    QCOMPARE(MainWindowProbe::formState(*window), qint32(FormState::Composing));
    showTab(tab);
}

void FormWindowTests::introScreenAccessibility()
{
    compareControls({
        "button_Bug_Report Button \"Bug Report (Crashes / Issues)\" focusable",
        "button_Feature_Request Button \"Feature Request (Features / Workflow)\" focusable",
        "button_Cancel Button \"Cancel\" focusable",
        "button_Start_Over Button \"Start Over\" focusable invisible",
        "button_Send Button \"Send...\" focusable disabled",
        "progressBar ProgressBar \"Upload progress\" invisible",
    });
    const QStringList cycle = {"button_Feature_Request", "button_Cancel", "button_Bug_Report"};
    compareWalks(f->bug, cycle);
}

void FormWindowTests::introductionTab()
{
    QTest::mouseClick(f->bug, Qt::LeftButton);
    QCOMPARE(MainWindowProbe::formState(*window), qint32(FormState::Composing));
    showTab(0);
    compareControls({
        "qt_tabwidget_tabbar PageTabList \"Introduction\" focusable",
        "label_Video StaticText \"Tips video\"",
        "button_Cancel Button \"Cancel\" focusable",
        "button_Start_Over Button \"Start Over\" focusable",
        "button_Send Button \"Completed 1/7\" focusable disabled",
        "progressBar ProgressBar \"Upload progress\" invisible",
    });
    // The tabs themselves, as a screen reader lists them.
    QAccessibleInterface *tabList = QAccessible::queryAccessibleInterface(f->tabs->tabBar());
    QStringList tabs;
    for (int i = 0; i < tabList->childCount(); ++i) {
        QAccessibleInterface *tab = tabList->child(i);
        if (tab->role() == QAccessible::PageTab)
            tabs << tab->text(QAccessible::Name);
    }
    QCOMPARE(tabs, QStringList({"Introduction", "Step 1: Identity", "Step 2: Details", "Step 3: Description",
                                "Step 4: Attachments", "Feedback Agent Settings"}));
    // Nothing on the page takes the focus from the keyboard: the video is a link for the mouse.
    const QStringList cycle = {"button_Cancel", "button_Start_Over", "qt_tabwidget_tabbar"};
    compareWalks(f->tabs->tabBar(), cycle);
}

// The pages whose controls all take the keyboard focus in the order of the layout;
// each walk starts at the page's first control (last in the cycle).
void FormWindowTests::composeTabs_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QStringList>("controls");
    QTest::addColumn<QStringList>("cycle");
    QTest::newRow("identity") << 1
                              << QStringList{"line_Name EditableText \"Your name:\" focusable",
                                             "line_Email EditableText \"Email address:\" focusable",
                                             "check_Remember_My_Info CheckBox \"Remember My Information\" "
                                             "focusable checked"}
                              << QStringList{"line_Email",        "check_Remember_My_Info", "button_Cancel",
                                             "button_Start_Over", "qt_tabwidget_tabbar",    "line_Name"};
    // Qt's item views report no focusable state; the walk shows that Tab reaches them.
    QTest::newRow("details") << 2
                             << QStringList{"list_Area List \"Area:\"", "line_Build EditableText \"Build:\" focusable",
                                            "check_Include_System_Info CheckBox \"Include My System "
                                            "Information\" focusable checked"}
                             << QStringList{"line_Build",        "check_Include_System_Info", "button_Cancel",
                                            "button_Start_Over", "qt_tabwidget_tabbar",       "list_Area"};
    QTest::newRow("attachments")
        << 4
        << QStringList{"button_Attach_File Button \"Attach File(s)...\" focusable",
                       "button_Remove_Entry Button \"Remove Selected\" focusable",
                       "button_Clear_All Button \"Clear All\" focusable",
                       "tree_Attachments Tree \"Attachments\"",
                       "check_NDA CheckBox \"Privatize content (NDA)\" focusable unchecked",
                       "check_EnhancedCapture CheckBox \"Enhanced capture\" focusable unchecked",
                       "button_Screen_Shot Button \"Take Screen Shot...\" focusable",
                       "line_Snapshot_Delay EditableText \"Delay:\" focusable"}
        << QStringList{"button_Remove_Entry",   "button_Clear_All",    "tree_Attachments",    "check_NDA",
                       "check_EnhancedCapture", "button_Screen_Shot",  "line_Snapshot_Delay", "button_Cancel",
                       "button_Start_Over",     "qt_tabwidget_tabbar", "button_Attach_File"};
}

void FormWindowTests::composeTabs()
{
    QFETCH(int, index);
    QFETCH(QStringList, controls);
    QFETCH(QStringList, cycle);
    composeBugReportOn(index);
    compareControls(controls);
    compareWalks(find(cycle.constLast().toLatin1().constData()), cycle);
}

void FormWindowTests::descriptionTab()
{
    composeBugReportOn(3);
    // The labels change with the kind of report, and the names with them.
    compareControls({
        "combo_Title ComboBox \"Please provide a short title for the bug/issue (70 characters max):\" focusable",
        "edit_Description EditableText \"Please provide a description of the bug/issue:\" focusable",
    });
    // Tab leaves the description rather than typing a tab into it.
    const QStringList cycle = {"edit_Description", "button_Cancel", "button_Start_Over", "qt_tabwidget_tabbar",
                               "combo_Title"};
    compareWalks(f->title, cycle);
    QCOMPARE(f->description->toPlainText(), QString());
}

void FormWindowTests::settingsTabLocked()
{
    composeBugReportOn(5);
    compareControls({
        "check_Settings CheckBox \"I understand.  Let me modify the settings.\" focusable unchecked",
        "line_HTTP_Destination EditableText \"HTTP destination:\" focusable invisible",
        "group_Proxy_Settings CheckBox \"HTTP Proxy Settings\" focusable invisible unchecked",
    });
    const QStringList cycle = {"button_Cancel", "button_Start_Over", "qt_tabwidget_tabbar", "check_Settings"};
    QWidget *lock = find("check_Settings");
    compareWalks(lock, cycle);
}

void FormWindowTests::settingsTabUnlocked()
{
    composeBugReportOn(5);
    // Unlocking from the keyboard: Space on the focused check box.
    QWidget *lock = find("check_Settings");
    lock->setFocus();
    QTest::keyClick(lock, Qt::Key_Space);
    QTRY_VERIFY_WITH_TIMEOUT(!window->findChild<QWidget *>("check_Settings"), kEventWaitMs);
    compareControls({
        "line_HTTP_Destination EditableText \"HTTP destination:\" focusable",
        "group_Proxy_Settings CheckBox \"HTTP Proxy Settings\" focusable unchecked",
        // The proxy fields are disabled while the proxy is off.
        "label_16 StaticText \"Server:\" disabled",
        "line_Proxy_Server EditableText \"Server:\" focusable disabled",
        "line_Proxy_Port EditableText \"Port:\" focusable disabled",
        "line_Proxy_User_Name EditableText \"User name:\" focusable disabled",
        "line_Proxy_Password EditableText \"Password:\" focusable disabled password",
    });
    QWidget *destination = find("line_HTTP_Destination");
    compareWalks(destination, {"group_Proxy_Settings", "button_Cancel", "button_Start_Over", "qt_tabwidget_tabbar",
                               "line_HTTP_Destination"});

    find("group_Proxy_Settings")->setFocus();
    QTest::keyClick(find("group_Proxy_Settings"), Qt::Key_Space);
    compareControls({
        "group_Proxy_Settings CheckBox \"HTTP Proxy Settings\" focusable checked",
        "line_Proxy_Server EditableText \"Server:\" focusable",
        "line_Proxy_Port EditableText \"Port:\" focusable",
        "line_Proxy_User_Name EditableText \"User name:\" focusable",
        "line_Proxy_Password EditableText \"Password:\" focusable password",
    });
    const QStringList cycle = {"group_Proxy_Settings", "line_Proxy_Server",   "line_Proxy_Port",
                               "line_Proxy_User_Name", "line_Proxy_Password", "button_Cancel",
                               "button_Start_Over",    "qt_tabwidget_tabbar", "line_HTTP_Destination"};
    compareWalks(destination, cycle);
}

void FormWindowTests::sendingScreenAccessibility()
{
    composeBugReportOn(1);
    f->enterScreen(FormState::Sending);
    compareControls({
        "line_Name EditableText \"Your name:\" focusable disabled",
        "button_Cancel Button \"Abort\" focusable",
        "button_Start_Over Button \"Start Over\" focusable disabled",
        "button_Send Button \"Completed 1/7\" focusable disabled",
        "progressBar ProgressBar \"Upload progress\"",
    });
    // Abort is the one control left.
    compareWalks(f->cancel, {"button_Cancel"});
}

// The field names follow the labels that a feature request puts up.
void FormWindowTests::namesFollowTheFeatureRequest()
{
    QTest::mouseClick(f->feature, Qt::LeftButton);
    showTab(3);
    compareControls({
        "combo_Title ComboBox \"Please provide a short title for the feature request (70 characters max):\" "
        "focusable",
        "edit_Description EditableText \"Please provide a description of the feature request:\" focusable",
    });
}
