// The settings file's rules without a window: raw INI text read into values, and values
// written out as exact INI bytes.
#include "settingsfiles.h"

#include "app/storedsettings.h"
#include "attachments/screenshotflow.h"

#include <QTemporaryDir>
#include <QtTest>

using namespace settingsfiles;

namespace {

const QPoint kFallbackPos(600, 305);
const QSize kFallbackSize(720, 470);

// Every value on one line, so that a row states all of them at once.
QString describe(const StoredSettings &s)
{
    const auto flag = [](bool on) { return on ? QStringLiteral("yes") : QStringLiteral("no"); };
    return QStringLiteral("pos %1,%2 size %3x%4 delay '%5' enhanced %6 remember %7 name '%8' email '%9' nda %10 "
                          "destination '%11' proxy %12 server '%13' port '%14' user '%15' password '%16' titles [%17]")
        .arg(s.windowPos.x())
        .arg(s.windowPos.y())
        .arg(s.windowSize.width())
        .arg(s.windowSize.height())
        .arg(s.snapshotDelay, flag(s.enhancedCapture), flag(s.rememberMe), s.userName, s.email, flag(s.nda),
             s.httpDestination, flag(s.httpProxy), s.proxyServer)
        .arg(s.proxyPort, s.proxyUserName, s.proxyPassword, s.titleItems.join(QStringLiteral("|")));
}

StoredSettings everything()
{
    StoredSettings s;
    s.windowPos = QPoint(130, 90);
    s.windowSize = QSize(1050, 560);
    s.snapshotDelay = QStringLiteral("15");
    s.enhancedCapture = true;
    s.rememberMe = true;
    s.userName = QStringLiteral("Ada Lovelace");
    s.email = QStringLiteral("ada@example.com");
    s.nda = true;
    s.httpDestination = QStringLiteral("http://127.0.0.1:8080/feedback");
    s.httpProxy = true;
    s.proxyServer = QStringLiteral("proxy.local");
    s.proxyPort = QStringLiteral("3128");
    s.proxyUserName = QStringLiteral("ada");
    s.proxyPassword = QStringLiteral("s3cret");
    s.titleItems = QStringList{QStringLiteral("newest"), QStringLiteral("older")};
    return s;
}

} // namespace

class TestStoredSettings : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir folder;
    int fileNumber = 0;

    QString nextPath() { return folder.filePath(QStringLiteral("settings-%1.cfg").arg(++fileNumber)); }

private slots:
    void read_data()
    {
        QTest::addColumn<QByteArray>("ini");
        QTest::addColumn<QString>("expected"); // empty: no settings at all

        const QString defaults = QStringLiteral(
            "pos 600,305 size 720x470 delay '' enhanced no remember no name '' email '' nda no destination '' "
            "proxy no server '' port '' user '' password '' titles []");
        QTest::newRow("empty file") << QByteArray() << QString();
        QTest::newRow("other groups only") << QByteArray("[General]\nnda=true\n[other]\nx=1\n") << QString();
        // QSettings lists no group without keys: as good as no file.
        QTest::newRow("empty group") << QByteArray("[application]\n") << QString();
        QTest::newRow("one key") << QByteArray("[application]\nnda=false\n") << defaults;
        QTest::newRow("everything")
            << QByteArray("[application]\nwindow_pos=@Point(130 90)\nwindow_size=@Size(1050 560)\n"
                          "snapshot_delay=15\nenhanced_capture=true\nremember_me=true\nuser_name=Ada Lovelace\n"
                          "email=ada@example.com\nnda=true\nhttp_destination=http://127.0.0.1:8080/feedback\n"
                          "http_proxy=true\nhttp_proxy_server=proxy.local\nhttp_proxy_port=3128\n"
                          "http_proxy_username=ada\nhttp_proxy_password=s3cret\ntitle_items=newest, older\n")
            << QStringLiteral("pos 130,90 size 1050x560 delay '15' enhanced yes remember yes name 'Ada Lovelace' "
                              "email 'ada@example.com' nda yes destination 'http://127.0.0.1:8080/feedback' "
                              "proxy yes server 'proxy.local' port '3128' user 'ada' password 's3cret' "
                              "titles [newest|older]");
        QTest::newRow("identity without remember_me is not read")
            << QByteArray("[application]\nremember_me=false\nuser_name=Ada\nemail=ada@example.com\n") << defaults;
        QTest::newRow("proxy texts without http_proxy are not read")
            << QByteArray("[application]\nhttp_proxy_server=proxy.local\nhttp_proxy_port=3128\n") << defaults;
        QTest::newRow("remember_me with no identity keys") << QByteArray("[application]\nremember_me=true\n")
                                                           << QString(defaults).replace("remember no", "remember yes");
        QTest::newRow("position off the left and top edges")
            << QByteArray("[application]\nwindow_pos=@Point(-40 -7)\n") << QString(defaults).replace("600,305", "0,0");
        QTest::newRow("position off the left edge only") << QByteArray("[application]\nwindow_pos=@Point(-1 250)\n")
                                                         << QString(defaults).replace("600,305", "0,250");
        QTest::newRow("the default delay is read as it stands")
            << QByteArray("[application]\nsnapshot_delay=2\n") << QString(defaults).replace("delay ''", "delay '2'");
        QTest::newRow("quoted values and one title with a comma")
            << QByteArray("[application]\nhttp_destination=\"http://127.0.0.1/a;b=c\"\n"
                          "title_items=\"Only one, with comma\"\n")
            << QString(defaults)
                   .replace("destination ''", "destination 'http://127.0.0.1/a;b=c'")
                   .replace("titles []", "titles [Only one, with comma]");
        QTest::newRow("group name is exact") << QByteArray("[Application]\nnda=true\n") << QString();
    }
    void read()
    {
        QFETCH(QByteArray, ini);
        QFETCH(QString, expected);
        const QString path = nextPath();
        QVERIFY(writeBytes(path, ini));
        QSettings settings(path, QSettings::IniFormat);
        const std::optional<StoredSettings> stored = StoredSettings::read(settings, kFallbackPos, kFallbackSize);
        QCOMPARE(stored.has_value(), !expected.isEmpty());
        if (stored)
            QCOMPARE(describe(*stored), expected);
    }

    void write_data()
    {
        QTest::addColumn<int>("variant");
        QTest::addColumn<QByteArray>("expected");

        QTest::newRow("everything") << 0
                                    << iniFile("application",
                                               {"window_pos=@Point(130 90)", "window_size=@Size(1050 560)",
                                                "snapshot_delay=15", "enhanced_capture=true", "remember_me=true",
                                                "user_name=Ada Lovelace", "email=ada@example.com", "nda=true",
                                                "http_destination=http://127.0.0.1:8080/feedback", "http_proxy=true",
                                                "http_proxy_server=proxy.local", "http_proxy_port=3128",
                                                "http_proxy_username=ada", "http_proxy_password=s3cret",
                                                "title_items=newest, older"});
        QTest::newRow("switches off: identity and proxy texts left out")
            << 1
            << iniFile("application", {"window_pos=@Point(130 90)", "window_size=@Size(1050 560)", "snapshot_delay=15",
                                       "enhanced_capture=true", "remember_me=false", "nda=true",
                                       "http_destination=http://127.0.0.1:8080/feedback", "http_proxy=false",
                                       "title_items=newest, older"});
        QTest::newRow("defaults: no delay, no destination, no titles")
            << 2
            << iniFile("application",
                       {"window_pos=@Point(130 90)", "window_size=@Size(1050 560)", "enhanced_capture=false",
                        "remember_me=false", "nda=false", "http_proxy=false", "title_items=@Invalid()"});
        QTest::newRow("an empty delay is written; repeated titles once")
            << 3
            << iniFile("application",
                       {"window_pos=@Point(130 90)", "window_size=@Size(1050 560)",
                        "snapshot_delay=", "enhanced_capture=true", "remember_me=true", "user_name=Ada Lovelace",
                        "email=ada@example.com", "nda=true", "http_destination=http://127.0.0.1:8080/feedback",
                        "http_proxy=true", "http_proxy_server=proxy.local", "http_proxy_port=3128",
                        "http_proxy_username=ada", "http_proxy_password=s3cret", "title_items=a, A, b"});
    }
    void write()
    {
        QFETCH(int, variant);
        QFETCH(QByteArray, expected);
        StoredSettings stored = everything();
        if (variant == 1) {
            stored.rememberMe = false;
            stored.httpProxy = false;
        } else if (variant == 2) {
            stored = StoredSettings();
            stored.windowPos = QPoint(130, 90);
            stored.windowSize = QSize(1050, 560);
            stored.snapshotDelay = snapshotdelay::defaultText();
        } else if (variant == 3) {
            stored.snapshotDelay.clear();
            stored.titleItems = QStringList{"a", "A", "a", "b", "A"};
        }
        const QString path = nextPath();
        // What was in the file before goes, other groups included.
        QVERIFY(writeBytes(path, "[General]\nleft=over\n\n[application]\nretired_key=1\n\n[other]\nx=1\n"));
        {
            QSettings settings(path, QSettings::IniFormat);
            stored.write(settings);
        }
        QCOMPARE(bytes(path), expected);
    }

    void writtenValuesReadBack()
    {
        const QString path = nextPath();
        const StoredSettings stored = everything();
        {
            QSettings settings(path, QSettings::IniFormat);
            stored.write(settings);
        }
        QSettings settings(path, QSettings::IniFormat);
        const std::optional<StoredSettings> back = StoredSettings::read(settings, kFallbackPos, kFallbackSize);
        QVERIFY(back.has_value());
        QCOMPARE(describe(*back), describe(stored));
    }
};

FB_TEST_MAIN(TestStoredSettings)
#include "tst_storedsettings.moc"
