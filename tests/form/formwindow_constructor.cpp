// What the window's constructor does to its form, checked on the window: the title,
// the size with no settings, the validators, the area list, the title history, and
// the intro screen it leaves showing. Every other property of every named widget is
// the Designer form's own (tst_form_layout.cpp checks those on the bare form); the
// constructor changes only the ones listed in constructorChanges.
#include "formwindowtests.h"

#include "form/mainwindow.h"
#include "ui_mainwindow.h"

#include "formimages.h"
#include "support/mainwindowprobe.h"
#include "support/testenv.h"

#include <QComboBox>
#include <QCryptographicHash>
#include <QFont>
#include <QIcon>
#include <QLineEdit>
#include <QListWidget>
#include <QMainWindow>
#include <QMetaProperty>
#include <QPixmap>
#include <QPushButton>
#include <QRegExpValidator>
#include <QSizePolicy>
#include <QtTest>

namespace {

const QString kFullTitle = QStringLiteral("Korvane 3D\u00AE Feedback Agent\u2122  Build 3126 (Win64) 21-Jun-2019");

const QStringList &productAreas()
{
    static const QStringList areas = {
        "Animation",
        "Asset Browser",
        "Audio",
        "Cameras",
        "Cloth Simulation",
        "Content Library",
        "Crashes / Hangs",
        "Documentation",
        "Dynamics",
        "Export",
        "Fur and Hair",
        "Geometry Editing",
        "Import",
        "Installation",
        "Interface",
        "Keyframes",
        "Licensing",
        "Lights",
        "Materials",
        "Modeling",
        "Morphs",
        "Motion Capture",
        "Network Rendering",
        "Node Editor",
        "Particles",
        "Performance",
        "Physics",
        "Plug-ins",
        "Posing",
        "Python Scripting",
        "Render Settings",
        "Rendering",
        "Rigging",
        "Scene Management",
        "Sculpting",
        "Shaders",
        "Skinning",
        "Terrain",
        "Textures",
        "Timeline",
        "UV Mapping",
        "Undo / Redo",
        "Viewport",
        "Volumetrics",
        "Web Export",
        "Other",
    };
    return areas;
}

// Properties that follow from where a widget is placed and laid out, or from whether
// its window is shown or active, rather than from the form.
bool isPlacementProperty(const char *name)
{
    static const QSet<QByteArray> placement = {
        "geometry",
        "frameGeometry",
        "normalGeometry",
        "x",
        "y",
        "pos",
        "frameSize",
        "size",
        "rect",
        "childrenRect",
        "childrenRegion",
        "sizeHint",
        "minimumSizeHint",
        "isActiveWindow",
        "focus",
        "visible",
        "frameRect",
        "contentsRect",
    };
    return placement.contains(QByteArray(name));
}

QString describe(const QVariant &value)
{
    switch (value.userType()) {
    case QMetaType::QSize: {
        const QSize size = value.toSize();
        return QStringLiteral("%1x%2").arg(size.width()).arg(size.height());
    }
    case QMetaType::QSizePolicy: {
        const QSizePolicy policy = value.value<QSizePolicy>();
        return QStringLiteral("%1/%2 %3/%4")
            .arg(policy.horizontalPolicy())
            .arg(policy.verticalPolicy())
            .arg(policy.horizontalStretch())
            .arg(policy.verticalStretch());
    }
    case QMetaType::QFont:
        return value.value<QFont>().toString();
    case QMetaType::QPixmap: {
        const QImage image = asArgb(value.value<QPixmap>().toImage());
        return QString::fromLatin1(
            QCryptographicHash::hash(
                QByteArray(reinterpret_cast<const char *>(image.constBits()), int(image.sizeInBytes())),
                QCryptographicHash::Sha1)
                .toHex());
    }
    case QMetaType::QIcon:
        return value.value<QIcon>().isNull() ? QStringLiteral("no icon") : QStringLiteral("icon");
    default:
        break;
    }
    if (value.canConvert<QString>())
        return value.toString();
    return QStringLiteral("(%1)").arg(QString::fromLatin1(value.typeName()));
}

// Every named widget under the central widget with its class, its parent and every
// property that is not about placement, plus whether it is hidden: one line each.
QMap<QString, QString> formProperties(const QMainWindow &window)
{
    QMap<QString, QString> properties;
    const QWidget *central = window.findChild<QWidget *>(QStringLiteral("centralWidget"));
    for (const QWidget *widget : central->findChildren<QWidget *>()) {
        const QString name = widget->objectName();
        if (name.isEmpty() || name.startsWith(QLatin1String("qt_")))
            continue;
        properties.insert(name + ".class", QString::fromLatin1(widget->metaObject()->className()));
        properties.insert(name + ".parent", widget->parentWidget()->objectName());
        properties.insert(name + ".hidden", widget->isHidden() ? "true" : "false");
        const QMetaObject *meta = widget->metaObject();
        for (int i = 0; i < meta->propertyCount(); ++i) {
            const QMetaProperty property = meta->property(i);
            if (!property.isReadable() || isPlacementProperty(property.name()))
                continue;
            properties.insert(name + "." + property.name(), describe(property.read(widget)));
        }
    }
    return properties;
}

} // namespace

// The window against the bare form, polished alike: what differs is exactly this.
void FormWindowTests::constructorChanges()
{
    QMainWindow bare;
    Ui::MainWindow ui;
    ui.setupUi(&bare);
    bare.ensurePolished();
    window->ensurePolished();
    const QMap<QString, QString> form = formProperties(bare);
    const QMap<QString, QString> built = formProperties(*window);
    QCOMPARE(built.keys(), form.keys());
    QStringList changes;
    for (auto it = form.cbegin(); it != form.cend(); ++it) {
        if (built.value(it.key()) != it.value())
            changes << it.key() + ": " + it.value() + " -> " + built.value(it.key());
    }
    const QStringList expected = {
        // The tab bar's scroll arrows take no Tab stop: the arrow keys scroll the tabs.
        "ScrollLeftButton.focusPolicy: 1 -> 0",
        "ScrollRightButton.focusPolicy: 1 -> 0",
        // The intro screen: no kind chosen yet, so nothing to send.
        "button_Send.enabled: true -> false",
        "button_Send.toolTip: <html><head/><body><p>Submit the report.</p></body></html> -> Select a feedback "
        "type to submit a report",
        "button_Start_Over.hidden: false -> true",
        // The title history is kept by the window alone, five titles at most.
        "combo_Title.insertPolicy: 3 -> 0",
        "combo_Title.maxCount: 2147483647 -> 5",
        // Locked until the user unlocks it.
        "frame_Settings.hidden: false -> true",
        "layout_banner_bug_2.hidden: false -> true",
        "layout_banner_feature_2.hidden: false -> true",
        // The build number and the validators.
        "line_Build.cursorPosition: 0 -> 4",
        "line_Build.displayText:  -> 3126",
        "line_Build.text:  -> 3126",
        "line_Snapshot_Delay.acceptableInput: true -> false",
        "list_Area.count: 0 -> 46",
        "progressBar.hidden: false -> true",
        "tabWidget.hidden: false -> true",
    };
    QCOMPARE(changes, expected);
}

void FormWindowTests::topLevelWindow()
{
    QCOMPARE(window->objectName(), QStringLiteral("MainWindow"));
    QCOMPARE(QString::fromLatin1(window->metaObject()->className()), QStringLiteral("MainWindow"));
    QCOMPARE(window->windowTitle(), kFullTitle);
    QCOMPARE(MainWindowProbe::titleText(*window), kFullTitle);
    QCOMPARE(window->styleSheet(), QString());
    QVERIFY(window->acceptDrops());

    QWidget *central = find<QWidget>("centralWidget");
    QVERIFY(central);
    QCOMPARE(window->centralWidget(), central);
    QCOMPARE(QString::fromLatin1(central->metaObject()->className()), QStringLiteral("QWidget"));
    QVERIFY(!central->acceptDrops());
    QCOMPARE(window->findChildren<QWidget *>(QStringLiteral("centralWidget")).size(), 1);

    const QImage logo = resourceImage(":/images/FB_logo.png");
    QVERIFY(!logo.isNull());
    QVERIFY(!window->windowIcon().isNull());
    QCOMPARE(asArgb(window->windowIcon().pixmap(logo.size()).toImage()), logo);
}

void FormWindowTests::windowSize()
{
    // No settings file exists in the test's home, so the form's own size stands.
    QCOMPARE(window->size(), QSize(720, 470));
}

void FormWindowTests::titleCombo()
{
    QComboBox *combo = find<QComboBox>("combo_Title");
    QVERIFY(combo);
    QVERIFY(combo->isEditable());
    QVERIFY(combo->lineEdit());
    QCOMPARE(combo->lineEdit()->maxLength(), 70);
    QCOMPARE(combo->maxCount(), 5);
    QCOMPARE(combo->count(), 0);
    QCOMPARE(combo->currentText(), QString());
}

void FormWindowTests::buildField()
{
    QLineEdit *build = find<QLineEdit>("line_Build");
    QVERIFY(build);
    QCOMPARE(build->text(), QStringLiteral("3126"));
    QVERIFY(build->validator());
    QVERIFY(find<QLineEdit>("line_Snapshot_Delay")->validator());
}

// The build number takes 1 to 4 digits and the delay 1 to 3, neither with a leading
// zero; what the user types beyond that never reaches the field.
void FormWindowTests::numberFieldsTakeOnlyTheirDigits_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("shown");
    const QString build = QStringLiteral("[1-9]\\d{0,3}");
    const QString delay = QStringLiteral("[1-9]\\d{0,2}");
    QTest::newRow("build 3126") << "line_Build" << build << "3126"
                                << "3126";
    QTest::newRow("build 12345") << "line_Build" << build << "12345"
                                 << "1234";
    QTest::newRow("build 0") << "line_Build" << build << "0"
                             << "";
    QTest::newRow("build 0123") << "line_Build" << build << "0123"
                                << "123";
    QTest::newRow("build letters") << "line_Build" << build << "3a1b"
                                   << "31";
    QTest::newRow("build -5") << "line_Build" << build << "-5"
                              << "5";
    QTest::newRow("delay 999") << "line_Snapshot_Delay" << delay << "999"
                               << "999";
    QTest::newRow("delay 1000") << "line_Snapshot_Delay" << delay << "1000"
                                << "100";
    QTest::newRow("delay 0") << "line_Snapshot_Delay" << delay << "0"
                             << "";
    QTest::newRow("delay 05") << "line_Snapshot_Delay" << delay << "05"
                              << "5";
    QTest::newRow("delay 2.5") << "line_Snapshot_Delay" << delay << "2.5"
                               << "25";
}

void FormWindowTests::numberFieldsTakeOnlyTheirDigits()
{
    QFETCH(QString, field);
    QFETCH(QString, pattern);
    QFETCH(QString, typed);
    QFETCH(QString, shown);
    QLineEdit *edit = find<QLineEdit>(field.toLatin1().constData());
    QVERIFY(edit);
    const QRegExpValidator *validator = qobject_cast<const QRegExpValidator *>(edit->validator());
    QVERIFY(validator);
    QCOMPARE(validator->regExp().pattern(), pattern);
    edit->clear();
    QTest::keyClicks(edit, typed);
    QCOMPARE(edit->text(), shown);
}

void FormWindowTests::productAreaCount()
{
    QListWidget *list = find<QListWidget>("list_Area");
    QVERIFY(list);
    QCOMPARE(productAreas().size(), 46);
    QCOMPARE(list->count(), 46);
    QCOMPARE(list->item(45)->text(), QStringLiteral("Other"));
    QVERIFY(list->selectedItems().isEmpty());
    QVERIFY(list->isEnabled());
    QCOMPARE(list->selectionMode(), QAbstractItemView::SingleSelection);
}

void FormWindowTests::productAreaOrder_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<QString>("text");
    for (int i = 0; i < productAreas().size(); ++i)
        QTest::addRow("%02d %s", i, qPrintable(productAreas().at(i))) << i << productAreas().at(i);
}

void FormWindowTests::productAreaOrder()
{
    QFETCH(int, row);
    QFETCH(QString, text);
    QListWidget *list = find<QListWidget>("list_Area");
    QVERIFY(list);
    QVERIFY(list->item(row));
    QCOMPARE(list->item(row)->text(), text);
}

void FormWindowTests::introScreen_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("visible");
    const auto row = [](const char *name, bool visible) {
        QTest::newRow(name) << QString::fromLatin1(name) << visible;
    };
    row("layout_banner_main_2", true);
    row("label_Banner", true);
    row("label_Intro_Line_1", true);
    row("label_Intro_Line_2", true);
    row("layout_selecting_buttons_2", true);
    row("button_Bug_Report", true);
    row("button_Feature_Request", true);
    row("button_Cancel", true);
    row("button_Send", true);
    row("layout_banner_bug_2", false);
    row("layout_banner_feature_2", false);
    row("tabWidget", false);
    row("progressBar", false);
    row("button_Start_Over", false);
    row("frame_Settings", false);
}

void FormWindowTests::introScreen()
{
    QFETCH(QString, name);
    QFETCH(bool, visible);
    QWidget *widget = find<QWidget>(name);
    QVERIFY(widget);
    QCOMPARE(widget->isVisibleTo(window), visible);
}

void FormWindowTests::introScreenState()
{
    QCOMPARE(MainWindowProbe::formState(*window), qint32(0));
    QCOMPARE(MainWindowProbe::reportKind(*window), qint32(0));
    QPushButton *send = find<QPushButton>("button_Send");
    QVERIFY(send);
    QVERIFY(!send->isEnabled());
    QVERIFY(find<QPushButton>("button_Cancel")->isEnabled());
}

void FormWindowTests::settingsLock()
{
    // The settings frame is hidden until the user unlocks it; the lock widgets show.
    QVERIFY(find<QWidget>("frame_Settings")->isHidden());
    QVERIFY(!find<QWidget>("label_Settings")->isHidden());
    QVERIFY(!find<QWidget>("label_SettingsPad")->isHidden());
    QVERIFY(!find<QWidget>("check_Settings")->isHidden());
    QVERIFY(!find<QWidget>("group_Proxy_Settings")->isHidden());
}

void FormWindowTests::shownIntroScreen()
{
    window->show();
    QVERIFY(QTest::qWaitForWindowExposed(window, kEventWaitMs));

    QCOMPARE(window->size(), QSize(720, 470));
    for (const char *name : {"layout_banner_main_2", "label_Banner", "label_Intro_Line_1", "label_Intro_Line_2",
                             "layout_selecting_buttons_2", "button_Bug_Report", "button_Feature_Request",
                             "button_Cancel", "button_Send"}) {
        QWidget *widget = find<QWidget>(name);
        QVERIFY2(widget && widget->isVisible(), name);
    }
    for (const char *name : {"layout_banner_bug_2", "layout_banner_feature_2", "tabWidget", "progressBar",
                             "button_Start_Over", "frame_Settings"}) {
        QWidget *widget = find<QWidget>(name);
        QVERIFY2(widget && !widget->isVisible(), name);
    }

    QCOMPARE(find<QWidget>("label_Banner")->size(), QSize(680, 72));
    QWidget *bug = find<QWidget>("button_Bug_Report");
    QWidget *feature = find<QWidget>("button_Feature_Request");
    QCOMPARE(bug->height(), 202);
    QCOMPARE(feature->height(), 202);
    QCOMPARE(bug->size(), feature->size());
    QVERIFY(bug->width() >= 142 && bug->width() <= 344);
}
