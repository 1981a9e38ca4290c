// Saving the settings file at exit: which keys are written and how, read back with a
// plain QSettings and as raw INI text; when the file is written at all; its permissions.
#include "windowsettingstests.h"

#include "windowsettings.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QMoveEvent>
#include <QResizeEvent>
#include <QtTest>

#include <memory>

using namespace settingsfiles;

namespace {

#ifdef Q_OS_WIN
// Windows keeps a profile's files to their owner through the folders' access lists,
// which QFile::permissions does not read: what it shows is a file that is not
// read-only, so the next run can write it again.
const QFileDevice::Permissions kSavedPermissions =
    QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ReadUser | QFileDevice::WriteUser
    | QFileDevice::ReadGroup | QFileDevice::WriteGroup | QFileDevice::ReadOther | QFileDevice::WriteOther;
#else
const QFileDevice::Permissions kSavedPermissions =
    QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ReadUser | QFileDevice::WriteUser;
#endif

void setText(const MainWindow &window, const char *name, const QString &text)
{
    widget<QLineEdit>(window, name)->setText(text);
}

void setChecked(const MainWindow &window, const char *name, bool on)
{
    widget<QWidget>(window, name)->setProperty("checked", on);
}

// Everything the file can hold, filled in as a user would leave it.
void fillEverything(MainWindow &window)
{
    // As the window system reports a move and a resize of the window.
    QMoveEvent move(QPoint(130, 90), QPoint(40, 65));
    QCoreApplication::sendEvent(&window, &move);
    QResizeEvent resize(QSize(1050, 560), QSize(720, 470));
    QCoreApplication::sendEvent(&window, &resize);
    setText(window, "line_Snapshot_Delay", "15");
    setChecked(window, "check_EnhancedCapture", true);
    setChecked(window, "check_Remember_My_Info", true);
    setText(window, "line_Name", "Ada Lovelace");
    setText(window, "line_Email", "ada@example.com");
    setChecked(window, "check_NDA", true);
    setText(window, "line_HTTP_Destination", "http://127.0.0.1:8080/feedback");
    setChecked(window, "group_Proxy_Settings", true);
    setText(window, "line_Proxy_Server", "proxy.local");
    setText(window, "line_Proxy_Port", "3128");
    setText(window, "line_Proxy_User_Name", "ada");
    setText(window, "line_Proxy_Password", "s3cret");
    QComboBox *titles = widget<QComboBox>(window, "combo_Title");
    titles->addItems({"Newest title", "Older title"});
}

QStringList sorted(QStringList list)
{
    list.sort();
    return list;
}

} // namespace

// The key table in the save direction, with the exact stored values.
void WindowSettingsTests::everyKeyIsWritten()
{
    {
        MainWindow window;
        fillEverything(window);
        window.slot_set_modified();
    }
    QSettings file(newFile(), QSettings::IniFormat);
    QCOMPARE(file.childGroups(), QStringList{"application"});
    QCOMPARE(file.allKeys(),
             sorted({"application/window_pos", "application/window_size", "application/snapshot_delay",
                     "application/enhanced_capture", "application/remember_me", "application/user_name",
                     "application/email", "application/nda", "application/http_destination", "application/http_proxy",
                     "application/http_proxy_server", "application/http_proxy_port", "application/http_proxy_username",
                     "application/http_proxy_password", "application/title_items"}));
    file.beginGroup("application");
    QCOMPARE(file.value("window_pos"), QVariant(QPoint(130, 90)));
    QCOMPARE(file.value("window_size"), QVariant(QSize(1050, 560)));
    QCOMPARE(file.value("snapshot_delay"), QVariant("15"));
    QCOMPARE(file.value("enhanced_capture").toBool(), true);
    QCOMPARE(file.value("remember_me").toBool(), true);
    QCOMPARE(file.value("user_name"), QVariant("Ada Lovelace"));
    QCOMPARE(file.value("email"), QVariant("ada@example.com"));
    QCOMPARE(file.value("nda").toBool(), true);
    QCOMPARE(file.value("http_destination"), QVariant("http://127.0.0.1:8080/feedback"));
    QCOMPARE(file.value("http_proxy").toBool(), true);
    QCOMPARE(file.value("http_proxy_server"), QVariant("proxy.local"));
    QCOMPARE(file.value("http_proxy_port"), QVariant("3128"));
    QCOMPARE(file.value("http_proxy_username"), QVariant("ada"));
    QCOMPARE(file.value("http_proxy_password"), QVariant("s3cret")); // plain text, as typed
    QCOMPARE(file.value("title_items").toStringList(), (QStringList{"Newest title", "Older title"}));
}

// Qt's own INI encodings, so that files of earlier versions and this one agree.
void WindowSettingsTests::rawIniTextOnSave()
{
    {
        MainWindow window;
        fillEverything(window);
        window.slot_set_modified();
    }
    QCOMPARE(QString::fromUtf8(bytes(newFile())),
             QString::fromUtf8(iniFile(
                 "application",
                 {"window_pos=@Point(130 90)", "window_size=@Size(1050 560)", "snapshot_delay=15",
                  "enhanced_capture=true", "remember_me=true", "user_name=Ada Lovelace", "email=ada@example.com",
                  "nda=true", "http_destination=http://127.0.0.1:8080/feedback", "http_proxy=true",
                  "http_proxy_server=proxy.local", "http_proxy_port=3128", "http_proxy_username=ada",
                  "http_proxy_password=s3cret", "title_items=Newest title, Older title"})));
}

void WindowSettingsTests::rawIniTextOfTheSmallestFile()
{
    {
        MainWindow window;
        setChecked(window, "check_Remember_My_Info", false);
        QCOMPARE(MainWindowProbe::settingsModified(window), true); // the box is connected
    }
    // Nothing remembered, no delay typed, no destination, no proxy, no titles: the
    // defaults of the load, and an empty delay written as an empty string.
    QCOMPARE(bytes(newFile()), iniFile("application", {"window_pos=@Point(40 65)", "window_size=@Size(720 470)",
                                                       "snapshot_delay=", "enhanced_capture=false", "remember_me=false",
                                                       "nda=false", "http_proxy=false", "title_items=@Invalid()"}));
    QSettings file(newFile(), QSettings::IniFormat);
    QCOMPARE(file.value("application/title_items").toStringList(), QStringList());
    QCOMPARE(file.value("application/snapshot_delay"), QVariant(QString("")));
}

void WindowSettingsTests::rawIniTextOfQuotedAndEscapedValues()
{
    {
        MainWindow window;
        setText(window, "line_Name", "Grace \"Amazing\" Hopper");
        setText(window, "line_HTTP_Destination", "http://127.0.0.1/a;b=c");
        widget<QComboBox>(window, "combo_Title")->addItems({"one, two", "@at", "  padded"});
        window.slot_set_modified();
    }
    const QByteArray text = bytes(newFile());
    QVERIFY2(text.contains(iniLines("\nuser_name=Grace \\\"Amazing\\\" Hopper\n")), text.constData());
    QVERIFY2(text.contains(iniLines("\nhttp_destination=\"http://127.0.0.1/a;b=c\"\n")), text.constData());
    QVERIFY2(text.contains(iniLines("\ntitle_items=\"one, two\", @@at, \"  padded\"\n")), text.constData());
    QSettings file(newFile(), QSettings::IniFormat);
    QCOMPARE(file.value("application/user_name"), QVariant("Grace \"Amazing\" Hopper"));
    QCOMPARE(file.value("application/http_destination"), QVariant("http://127.0.0.1/a;b=c"));
    QCOMPARE(file.value("application/title_items").toStringList(), (QStringList{"one, two", "@at", "  padded"}));
}

void WindowSettingsTests::oneTitleIsStillAList()
{
    {
        MainWindow window;
        widget<QComboBox>(window, "combo_Title")->addItem("Only one, with comma");
        window.slot_set_modified();
    }
    QVERIFY(bytes(newFile()).contains(iniLines("\ntitle_items=\"Only one, with comma\"\n")));
    MainWindow window;
    const QComboBox *titles = widget<QComboBox>(window, "combo_Title");
    QCOMPARE(titles->count(), 1);
    QCOMPARE(titles->itemText(0), QString("Only one, with comma"));
}

void WindowSettingsTests::identityIsNotWrittenWithoutRemember()
{
    {
        MainWindow window;
        fillEverything(window);
        setChecked(window, "check_Remember_My_Info", false);
    }
    QSettings file(newFile(), QSettings::IniFormat);
    QVERIFY(!file.contains("application/user_name"));
    QVERIFY(!file.contains("application/email"));
    QCOMPARE(file.value("application/remember_me").toBool(), false);
    QVERIFY(!bytes(newFile()).contains("Ada"));
}

void WindowSettingsTests::proxyDetailsGoWithTheGroup()
{
    {
        MainWindow window;
        fillEverything(window);
        setChecked(window, "group_Proxy_Settings", false);
        window.slot_set_modified();
    }
    {
        QSettings file(newFile(), QSettings::IniFormat);
        QCOMPARE(file.value("application/http_proxy"), QVariant("false"));
        for (const char *key : {"http_proxy_server", "http_proxy_port", "http_proxy_username", "http_proxy_password"})
            QVERIFY2(!file.contains(QString("application/") + key), key);
        QVERIFY(!bytes(newFile()).contains("s3cret"));
    }
    // The next run: checking the group shows empty proxy fields.
    MainWindow window;
    QVERIFY(!widget<QGroupBox>(window, "group_Proxy_Settings")->isChecked());
    widget<QGroupBox>(window, "group_Proxy_Settings")->setChecked(true);
    for (const char *name : {"line_Proxy_Server", "line_Proxy_Port", "line_Proxy_User_Name", "line_Proxy_Password"})
        QCOMPARE(widget<QLineEdit>(window, name)->text(), QString());
}

void WindowSettingsTests::snapshotDelayOnSave_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<bool>("written");
    QTest::newRow("2 is not written") << "2" << false;
    QTest::newRow("empty is written empty") << "" << true;
    QTest::newRow("10 is written") << "10" << true;
    QTest::newRow("3 is written") << "3" << true;
}

void WindowSettingsTests::snapshotDelayOnSave()
{
    QFETCH(QString, field);
    QFETCH(bool, written);
    {
        MainWindow window;
        setText(window, "line_Snapshot_Delay", field);
        window.slot_set_modified();
    }
    QSettings file(newFile(), QSettings::IniFormat);
    QCOMPARE(file.contains("application/snapshot_delay"), written);
    if (written)
        QCOMPARE(file.value("application/snapshot_delay"), QVariant(field));
}

void WindowSettingsTests::destinationOnlyWhenFilled()
{
    {
        MainWindow window;
        setText(window, "line_HTTP_Destination", "");
        window.slot_set_modified();
    }
    QSettings file(newFile(), QSettings::IniFormat);
    QVERIFY(!file.contains("application/http_destination"));
}

void WindowSettingsTests::duplicateTitlesAreWrittenOnce()
{
    {
        MainWindow window;
        widget<QComboBox>(window, "combo_Title")->addItems({"Crash", "crash", "Crash", "Hang", "crash"});
        window.slot_set_modified();
    }
    QSettings file(newFile(), QSettings::IniFormat);
    QCOMPARE(file.value("application/title_items").toStringList(), (QStringList{"Crash", "crash", "Hang"}));
}

// Every key is cleared first: keys and groups that are not written again disappear.
void WindowSettingsTests::staleKeysDisappear()
{
    QVERIFY(writeBytes(newFile(), "[General]\nleft=over\n\n"
                                  "[application]\nremember_me=true\nuser_name=Old Name\nemail=old\n"
                                  "http_destination=http://old/\nretired_key=1\n\n"
                                  "[other]\nx=1\n"));
    {
        MainWindow window;
        setChecked(window, "check_Remember_My_Info", false);
        setText(window, "line_HTTP_Destination", "");
    }
    QSettings file(newFile(), QSettings::IniFormat);
    QCOMPARE(file.childGroups(), QStringList{"application"});
    QCOMPARE(file.allKeys(), sorted({"application/enhanced_capture", "application/http_proxy", "application/nda",
                                     "application/remember_me", "application/snapshot_delay", "application/title_items",
                                     "application/window_pos", "application/window_size"}));
}

void WindowSettingsTests::nothingIsWrittenWithoutAChange()
{
    {
        MainWindow window;
        // Boxes that are not connected to the modified flag change nothing on their own.
        setChecked(window, "check_NDA", true);
        setChecked(window, "check_EnhancedCapture", true);
        QVERIFY(!MainWindowProbe::settingsModified(window));
    }
    QVERIFY(!QFile::exists(newFile()));
    QVERIFY(!QFile::exists(oldFile()));
}

void WindowSettingsTests::anUnchangedFileIsLeftAsItIs()
{
    const QByteArray original = "[application]\nremember_me=true\nnda=true\nretired_key=1\n";
    QVERIFY(writeBytes(newFile(), original));
    QVERIFY(QFile::setPermissions(newFile(), QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ReadGroup
                                                 | QFileDevice::ReadOther));
    {
        MainWindow window;
        QVERIFY(!MainWindowProbe::settingsModified(window));
    }
    QCOMPARE(bytes(newFile()), original);
    QCOMPARE(QFile::permissions(newFile()) & QFileDevice::ReadOther, QFileDevice::ReadOther); // not touched
}

void WindowSettingsTests::whatWasSavedLoadsAgain()
{
    {
        MainWindow window;
        fillEverything(window);
        window.slot_set_modified();
    }
    MainWindow window;
    QCOMPARE(MainWindowProbe::savedPos(window), QPoint(130, 90));
    QCOMPARE(MainWindowProbe::savedSize(window), QSize(1050, 560));
    QCOMPARE(widget<QLineEdit>(window, "line_Snapshot_Delay")->text(), QString("15"));
    QCOMPARE(widget<QLineEdit>(window, "line_Name")->text(), QString("Ada Lovelace"));
    QCOMPARE(widget<QLineEdit>(window, "line_Email")->text(), QString("ada@example.com"));
    QCOMPARE(widget<QLineEdit>(window, "line_Proxy_Password")->text(), QString("s3cret"));
    QCOMPARE(widget<QComboBox>(window, "combo_Title")->itemText(1), QString("Older title"));
    QVERIFY(widget<QCheckBox>(window, "check_NDA")->isChecked());
}

void WindowSettingsTests::permissions_data()
{
    QTest::addColumn<bool>("useOldFile");
    QTest::addColumn<bool>("existsBefore");
    QTest::newRow("new file") << false << false;
    QTest::newRow("existing file readable by all") << false << true;
    QTest::newRow("old home file readable by all") << true << true;
}

// The file holds the proxy password in plain text: only its owner may read it.
void WindowSettingsTests::permissions()
{
    QFETCH(bool, useOldFile);
    QFETCH(bool, existsBefore);
    const QString path = useOldFile ? oldFile() : newFile();
    if (existsBefore) {
        QVERIFY(writeBytes(path, "[application]\nnda=true\n"));
        QVERIFY(QFile::setPermissions(path, QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ReadGroup
                                                | QFileDevice::ReadOther));
    }
    {
        MainWindow window;
        QCOMPARE(MainWindowProbe::configPath(window), path);
        fillEverything(window);
        window.slot_set_modified();
    }
    QVERIFY(bytes(path).contains("http_proxy_password=s3cret"));
    QCOMPARE(QFile::permissions(path), kSavedPermissions);
    QVERIFY(!QFile::exists(path + ".lock"));
    if (useOldFile)
        QVERIFY(!QFile::exists(newFile())); // the old file keeps being the one
}
