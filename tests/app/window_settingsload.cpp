// Loading the settings file: every key of the "application" group into the form and
// the window geometry, from files written by a plain QSettings and from raw INI text.
#include "windowsettingstests.h"

#include "windowsettings.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QScreen>
#include <QtTest>

using namespace settingsfiles;

namespace {

QStringList comboItems(const MainWindow &window)
{
    QStringList items;
    const QComboBox *combo = widget<QComboBox>(window, "combo_Title");
    for (int i = 0; i < combo->count(); ++i)
        items.append(combo->itemText(i));
    return items;
}

QString text(const MainWindow &window, const char *name)
{
    return widget<QLineEdit>(window, name)->text();
}

// Check boxes and the checkable proxy group alike.
bool checked(const MainWindow &window, const char *name)
{
    return widget<QWidget>(window, name)->property("checked").toBool();
}

} // namespace

void WindowSettingsTests::offscreenScreenIsTheAssumedOne()
{
    // The default position below is computed from this screen.
    QCOMPARE(QGuiApplication::primaryScreen()->geometry(), QRect(0, 0, 800, 600));
}

void WindowSettingsTests::noFileKeepsTheFormAndComputesDefaults()
{
    MainWindow window;
    QCOMPARE(MainWindowProbe::configPath(window), newFile());
    QCOMPARE(MainWindowProbe::savedSize(window), QSize(720, 470));
    QCOMPARE(MainWindowProbe::savedPos(window), QPoint(40, 65)); // ((800 - 720) / 2, (600 - 470) / 2)
    QCOMPARE(window.geometry(), QRect(0, 0, 720, 470)); // as the form gives it
    QCOMPARE(widget<QComboBox>(window, "combo_Title")->maxCount(), 5);
    QVERIFY(checked(window, "check_Remember_My_Info")); // the form's default stays
    QVERIFY(!checked(window, "group_Proxy_Settings"));
    QCOMPARE(text(window, "line_Snapshot_Delay"), QString());
    QVERIFY(!MainWindowProbe::settingsModified(window));
}

// Every key of the table, as a plain QSettings writes it.
void WindowSettingsTests::everyKeyLoads()
{
    writeApplicationGroup(newFile(), {{"window_pos", QPoint(100, 50)},
                                      {"window_size", QSize(1100, 640)},
                                      {"snapshot_delay", "10"},
                                      {"enhanced_capture", true},
                                      {"remember_me", true},
                                      {"user_name", "Ada Lovelace"},
                                      {"email", "ada at example"},
                                      {"nda", true},
                                      {"http_destination", "http://127.0.0.1:8080/feedback"},
                                      {"http_proxy", true},
                                      {"http_proxy_server", "proxy.local"},
                                      {"http_proxy_port", "3128"},
                                      {"http_proxy_username", "ada"},
                                      {"http_proxy_password", "p@ss, w0rd;=\"x\""},
                                      {"title_items", QStringList{"Crash on export", "Slow viewport, again", "@odd"}}});
    MainWindow window;
    QCOMPARE(MainWindowProbe::savedPos(window), QPoint(100, 50));
    QCOMPARE(MainWindowProbe::savedSize(window), QSize(1100, 640));
    QCOMPARE(window.geometry(), QRect(100, 50, 1100, 640));
    QCOMPARE(text(window, "line_Snapshot_Delay"), QString("10"));
    QVERIFY(checked(window, "check_EnhancedCapture"));
    QVERIFY(checked(window, "check_Remember_My_Info"));
    QCOMPARE(text(window, "line_Name"), QString("Ada Lovelace"));
    QCOMPARE(text(window, "line_Email"), QString("ada at example"));
    QVERIFY(checked(window, "check_NDA"));
    QCOMPARE(text(window, "line_HTTP_Destination"), QString("http://127.0.0.1:8080/feedback"));
    QVERIFY(checked(window, "group_Proxy_Settings"));
    QCOMPARE(text(window, "line_Proxy_Server"), QString("proxy.local"));
    QCOMPARE(text(window, "line_Proxy_Port"), QString("3128"));
    QCOMPARE(text(window, "line_Proxy_User_Name"), QString("ada"));
    QCOMPARE(text(window, "line_Proxy_Password"), QString("p@ss, w0rd;=\"x\""));
    QCOMPARE(comboItems(window), (QStringList{"Crash on export", "Slow viewport, again", "@odd"}));
    QCOMPARE(widget<QComboBox>(window, "combo_Title")->currentText(), QString()); // none preselected
    // Loading alone changes nothing that is saved.
    QVERIFY(!MainWindowProbe::settingsModified(window));
}

void WindowSettingsTests::falseFlagsLoad()
{
    writeApplicationGroup(newFile(), {{"enhanced_capture", false},
                                      {"remember_me", false},
                                      {"user_name", "Ada"},
                                      {"email", "ada@example.com"},
                                      {"nda", false},
                                      {"http_proxy", false},
                                      {"http_proxy_server", "proxy.local"},
                                      {"http_proxy_port", "3128"},
                                      {"http_proxy_username", "ada"},
                                      {"http_proxy_password", "secret"}});
    MainWindow window;
    QVERIFY(!checked(window, "check_EnhancedCapture"));
    QVERIFY(!checked(window, "check_Remember_My_Info"));
    QVERIFY(!checked(window, "check_NDA"));
    QVERIFY(!checked(window, "group_Proxy_Settings"));
    // Not read while their box is off, even though the file holds them.
    QCOMPARE(text(window, "line_Name"), QString());
    QCOMPARE(text(window, "line_Email"), QString());
    QCOMPARE(widget<QLabel>(window, "label_Invalid_Email")->text(), QString());
    QCOMPARE(text(window, "line_Proxy_Server"), QString());
    QCOMPARE(text(window, "line_Proxy_Port"), QString());
    QCOMPARE(text(window, "line_Proxy_User_Name"), QString());
    QCOMPARE(text(window, "line_Proxy_Password"), QString());
    // Unchecking "Remember My Information" is a change of a connected box, and
    // so marks the settings for saving.
    QVERIFY(MainWindowProbe::settingsModified(window));
}

// One key makes the group: every other key takes its default, so the box that the
// form checks goes off.
void WindowSettingsTests::missingKeysTakeDefaults()
{
    QVERIFY(writeBytes(newFile(), "[application]\nnda=true\n"));
    MainWindow window;
    QCOMPARE(MainWindowProbe::savedPos(window), QPoint(40, 65));
    QCOMPARE(MainWindowProbe::savedSize(window), QSize(720, 470));
    QCOMPARE(window.geometry(), QRect(40, 65, 720, 470));
    QVERIFY(!checked(window, "check_Remember_My_Info"));
    QVERIFY(!checked(window, "check_EnhancedCapture"));
    QVERIFY(!checked(window, "group_Proxy_Settings"));
    QVERIFY(checked(window, "check_NDA"));
    QCOMPARE(text(window, "line_HTTP_Destination"), QString());
    QCOMPARE(text(window, "line_Snapshot_Delay"), QString());
    QCOMPARE(comboItems(window), QStringList());
}

// A group without keys is no group to QSettings: nothing is read.
void WindowSettingsTests::emptyGroupReadsNothing()
{
    QVERIFY(writeBytes(newFile(), "[application]\n"));
    MainWindow window;
    QCOMPARE(window.geometry(), QRect(0, 0, 720, 470));
    QCOMPARE(MainWindowProbe::savedPos(window), QPoint(40, 65));
    QVERIFY(checked(window, "check_Remember_My_Info"));
}

void WindowSettingsTests::missingDestinationShowsThePlaceholder()
{
    writeApplicationGroup(newFile(), {{"nda", true}});
    MainWindow window;
    const QLineEdit *destination = widget<QLineEdit>(window, "line_HTTP_Destination");
    QCOMPARE(destination->text(), QString());
    QVERIFY(!destination->placeholderText().isEmpty());
    QVERIFY(destination->placeholderText().startsWith("http"));
}

void WindowSettingsTests::snapshotDelay_data()
{
    QTest::addColumn<QVariant>("stored");
    QTest::addColumn<QString>("field");
    QTest::newRow("10 is put into the field") << QVariant("10") << "10";
    QTest::newRow("2 leaves the placeholder") << QVariant("2") << "";
    QTest::newRow("empty leaves the placeholder") << QVariant("") << "";
    QTest::newRow("absent leaves the placeholder") << QVariant() << "";
    QTest::newRow("3 is put into the field") << QVariant("3") << "3";
    QTest::newRow("a number type reads as its text") << QVariant(45) << "45";
}

void WindowSettingsTests::snapshotDelay()
{
    QFETCH(QVariant, stored);
    QFETCH(QString, field);
    QVariantMap values{{"nda", false}};
    if (stored.isValid())
        values.insert("snapshot_delay", stored);
    writeApplicationGroup(newFile(), values);
    MainWindow window;
    QCOMPARE(text(window, "line_Snapshot_Delay"), field);
    QCOMPARE(widget<QLineEdit>(window, "line_Snapshot_Delay")->placeholderText(), QString("2"));
}

void WindowSettingsTests::sevenTitlesKeepTheFirstFive()
{
    writeApplicationGroup(newFile(), {{"title_items", QStringList{"t1", "t2", "t3", "t4", "t5", "t6", "t7"}}});
    MainWindow window;
    QCOMPARE(comboItems(window), (QStringList{"t1", "t2", "t3", "t4", "t5"}));
    QCOMPARE(widget<QComboBox>(window, "combo_Title")->currentText(), QString());
}

void WindowSettingsTests::negativePositionIsBroughtBack_data()
{
    QTest::addColumn<QPoint>("stored");
    QTest::addColumn<QPoint>("loaded");
    QTest::newRow("left of the screen") << QPoint(-50, 30) << QPoint(0, 30);
    QTest::newRow("above the screen") << QPoint(30, -1) << QPoint(30, 0);
    QTest::newRow("both") << QPoint(-5, -7) << QPoint(0, 0);
    QTest::newRow("beyond right and bottom stays") << QPoint(5000, 4000) << QPoint(5000, 4000);
}

void WindowSettingsTests::negativePositionIsBroughtBack()
{
    QFETCH(QPoint, stored);
    QFETCH(QPoint, loaded);
    writeApplicationGroup(newFile(), {{"window_pos", stored}, {"window_size", QSize(900, 500)}});
    MainWindow window;
    QCOMPARE(MainWindowProbe::savedPos(window), loaded);
    QCOMPARE(window.geometry(), QRect(loaded, QSize(900, 500)));
}

// Files as earlier versions and other tools wrote them, read as raw INI text.
void WindowSettingsTests::rawIniText()
{
    QVERIFY(writeBytes(newFile(), "[General]\n"
                                  "window_pos=@Point(1 1)\n"
                                  "\n"
                                  "[application]\n"
                                  "window_pos=@Point(12 34)\n"
                                  "window_size=@Size(980 520)\n"
                                  "snapshot_delay=7\n"
                                  "enhanced_capture=true\n"
                                  "remember_me=true\n"
                                  "user_name=Grace Hopper\n"
                                  "email=grace\n"
                                  "nda=true\n"
                                  "http_destination=http://127.0.0.1/\n"
                                  "http_proxy=true\n"
                                  "http_proxy_server=10.0.0.1\n"
                                  "http_proxy_port=8081\n"
                                  "http_proxy_username=\"grace, admiral\"\n"
                                  "http_proxy_password=\\\"quoted\\\"\n"
                                  "title_items=first, second, \"third, with comma\"\n"
                                  "\n"
                                  "[other]\n"
                                  "nda=false\n"));
    MainWindow window;
    QCOMPARE(MainWindowProbe::savedPos(window), QPoint(12, 34));
    QCOMPARE(MainWindowProbe::savedSize(window), QSize(980, 520));
    QCOMPARE(text(window, "line_Snapshot_Delay"), QString("7"));
    QVERIFY(checked(window, "check_EnhancedCapture"));
    QCOMPARE(text(window, "line_Name"), QString("Grace Hopper"));
    QCOMPARE(text(window, "line_Email"), QString("grace"));
    QVERIFY(checked(window, "check_NDA")); // the group "other" is not read
    QCOMPARE(text(window, "line_HTTP_Destination"), QString("http://127.0.0.1/"));
    QCOMPARE(text(window, "line_Proxy_Server"), QString("10.0.0.1"));
    QCOMPARE(text(window, "line_Proxy_Port"), QString("8081"));
    QCOMPARE(text(window, "line_Proxy_User_Name"), QString("grace, admiral"));
    QCOMPARE(text(window, "line_Proxy_Password"), QString("\"quoted\""));
    QCOMPARE(comboItems(window), (QStringList{"first", "second", "third, with comma"}));
}

// Keys outside the group "application" are never read.
void WindowSettingsTests::otherGroupsAreNotRead()
{
    QVERIFY(writeBytes(newFile(), "[General]\nnda=true\nremember_me=true\n"
                                  "[Application]\nnda=true\n"
                                  "[application_old]\nnda=true\n"));
    MainWindow window;
    QVERIFY(!checked(window, "check_NDA"));
    QVERIFY(checked(window, "check_Remember_My_Info")); // no "application" group: the form's state
    QCOMPARE(window.geometry(), QRect(0, 0, 720, 470));
}

void WindowSettingsTests::rememberedAddressIsCheckedAtStart()
{
    writeApplicationGroup(newFile(), {{"remember_me", true}, {"email", "not an address"}});
    MainWindow window;
    // No edit happened: the check ran from the load itself.
    QCOMPARE(widget<QLabel>(window, "label_Invalid_Email")->text(),
             QString("Your email address is incorrectly formatted."));
    QCOMPARE(widget<QLineEdit>(window, "line_Email")->styleSheet(), QString("background-color: rgb(255, 245, 245);"));
    QVERIFY(!MainWindowProbe::emailValid(window));
    QVERIFY(!MainWindowProbe::lookupPending(window));
}

void WindowSettingsTests::emptyRememberedAddressIsNotChecked()
{
    writeApplicationGroup(newFile(), {{"remember_me", true}, {"email", ""}});
    MainWindow window;
    QCOMPARE(widget<QLabel>(window, "label_Invalid_Email")->text(), QString());
    QCOMPARE(MainWindowProbe::hostInfo(window).error(), QHostInfo::NoError); // untouched
}

void WindowSettingsTests::malformedFileLoadsWhatItCan()
{
    // Embedded NUL bytes included: the length is the array's, not up to the first NUL.
    static const char raw[] = "\xff\xfe[application\n=\n==x\nnda=true\n[application]\n"
                              "window_pos=@Point(oops)\nwindow_size=@Size(1 2 3)\n"
                              "title_items=@Invalid()\nremember_me=maybe\n\0\0garbage";
    QVERIFY(writeBytes(newFile(), QByteArray(raw, sizeof(raw) - 1)));
    MainWindow window;
    // Whatever QSettings yields: an unreadable point is a null point, the size is
    // invalid, and every value is taken as it comes.
    QCOMPARE(MainWindowProbe::savedPos(window), QPoint(0, 0));
    QCOMPARE(MainWindowProbe::savedSize(window), QSize());
    QCOMPARE(comboItems(window), QStringList());
    QVERIFY(checked(window, "check_Remember_My_Info")); // a non-empty text other than "false" or "0"
}

void WindowSettingsTests::onlyTheOldFileIsRead()
{
    writeApplicationGroup(oldFile(), {{"nda", true}, {"title_items", QStringList{"old"}}});
    MainWindow window;
    QCOMPARE(MainWindowProbe::configPath(window), oldFile());
    QVERIFY(checked(window, "check_NDA"));
    QCOMPARE(comboItems(window), QStringList{"old"});
}

void WindowSettingsTests::theNewFileWinsAndTheOldGoes()
{
    writeApplicationGroup(oldFile(), {{"nda", true}});
    writeApplicationGroup(newFile(), {{"title_items", QStringList{"new"}}});
    MainWindow window;
    QCOMPARE(MainWindowProbe::configPath(window), newFile());
    QVERIFY(!checked(window, "check_NDA"));
    QCOMPARE(comboItems(window), QStringList{"new"});
    QVERIFY(!QFile::exists(oldFile()));
}
