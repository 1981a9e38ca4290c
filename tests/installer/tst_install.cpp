// The Windows installer as a user meets it: a silent install for this user alone,
// the registry keys it writes, the program started through the kvfb: link's
// registered command with nothing but the installed files to run on, and a silent
// uninstall that takes away all of that and nothing else.

#include "app/windowdriver.h"
#include "resources/resources.h"
#include "support/testenv.h"

#include <QDir>
#include <QDirIterator>
#include <QGuiApplication>
#include <QImage>
#include <QPixmap>
#include <QProcess>
#include <QRegularExpression>
#include <QScreen>
#include <QStandardPaths>
#include <QtTest>

#include <windows.h>
#include <shlobj.h>
#include <shobjidl.h>

namespace {

const char kLink[] = "kvfb://mode=bug,area=Other,lockarea/";
const QString kSchemeKey = QStringLiteral("HKCU\\Software\\Classes\\kvfb");
const QString kUninstallKey =
    QStringLiteral("HKCU\\Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\KorvaneFeedback Agent");

// Where the installer puts the program for the user, by the system's own folders.
QString localAppData()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
}
QString vendorFolder()
{
    return localAppData() + "/Programs/Korvane";
}
QString installFolder()
{
    return vendorFolder() + "/Feedback Agent";
}
QString nativeInstallFolder()
{
    return QDir::toNativeSeparators(installFolder());
}
QString menuFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::ApplicationsLocation) + "/Korvane";
}

struct Run
{
    int exitCode = -1;
    QString output;
};

Run run(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, arguments);
    Run result;
    if (process.waitForStarted(kEventWaitMs) && process.waitForFinished(kEventWaitMs)
        && process.exitStatus() == QProcess::NormalExit)
        result.exitCode = process.exitCode();
    result.output = QString::fromLocal8Bit(process.readAll());
    return result;
}

// One key and its subkeys (values by name) as reg.exe's query lists them, without
// trailing blanks and without the empty lines between keys; exit code 1 when the key
// is not there. Read through the registry functions: reg.exe writes its report in the
// console's code page, which need not hold every letter of a user's name.
Run regQuery(const QString &key)
{
    Run result;
    const int slash = key.indexOf('\\');
    const QString rootName = key.left(slash);
    const HKEY root = rootName == "HKLM" || rootName == "HKEY_LOCAL_MACHINE" ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER;
    const QString rootText = root == HKEY_LOCAL_MACHINE ? "HKEY_LOCAL_MACHINE" : "HKEY_CURRENT_USER";
    QStringList lines;
    std::function<bool(const QString &)> list = [&](const QString &path) {
        HKEY handle = nullptr;
        if (RegOpenKeyExW(root, reinterpret_cast<const wchar_t *>(path.utf16()), 0, KEY_READ, &handle) != ERROR_SUCCESS)
            return false;
        lines << rootText + "\\" + path;
        QMap<QString, QString> values; // reg.exe lists them by name
        for (DWORD index = 0;; ++index) {
            wchar_t name[16384];
            DWORD nameLength = 16384;
            DWORD type = 0;
            BYTE data[65536];
            DWORD size = sizeof data - 2;
            if (RegEnumValueW(handle, index, name, &nameLength, nullptr, &type, data, &size) != ERROR_SUCCESS)
                break;
            data[size] = data[size + 1] = 0;
            QString text;
            QString typeName;
            if (type == REG_DWORD) {
                typeName = "REG_DWORD";
                text = "0x" + QString::number(*reinterpret_cast<const quint32 *>(data), 16);
            } else {
                typeName = type == REG_EXPAND_SZ ? "REG_EXPAND_SZ" : "REG_SZ";
                text = QString::fromWCharArray(reinterpret_cast<const wchar_t *>(data));
            }
            const QString shown = nameLength == 0 ? "(Default)" : QString::fromWCharArray(name, int(nameLength));
            QString line = "    " + shown + "    " + typeName + "    " + text;
            while (line.endsWith(' '))
                line.chop(1);
            values.insert(nameLength == 0 ? QString() : shown, line);
        }
        lines << values.values();
        QStringList subkeys;
        for (DWORD index = 0;; ++index) {
            wchar_t name[256];
            DWORD nameLength = 256;
            if (RegEnumKeyExW(handle, index, name, &nameLength, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS)
                break;
            subkeys << QString::fromWCharArray(name, int(nameLength));
        }
        RegCloseKey(handle);
        subkeys.sort(Qt::CaseInsensitive);
        for (const QString &subkey : subkeys)
            list(path + "\\" + subkey);
        return true;
    };
    result.exitCode = list(key.mid(slash + 1)) ? 0 : 1;
    result.output = lines.join('\n');
    return result;
}

// The file a shell link points at, from its item list.
QString shortcutTarget(const QString &link)
{
    QString target;
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    IShellLinkW *shellLink = nullptr;
    if (SUCCEEDED(CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER, IID_IShellLinkW,
                                   reinterpret_cast<void **>(&shellLink)))) {
        IPersistFile *file = nullptr;
        if (SUCCEEDED(shellLink->QueryInterface(IID_IPersistFile, reinterpret_cast<void **>(&file)))) {
            PIDLIST_ABSOLUTE items = nullptr;
            wchar_t path[MAX_PATH] = {};
            if (SUCCEEDED(file->Load(reinterpret_cast<LPCOLESTR>(QDir::toNativeSeparators(link).utf16()), STGM_READ))
                && SUCCEEDED(shellLink->GetIDList(&items)) && SHGetPathFromIDListW(items, path))
                target = QString::fromWCharArray(path);
            CoTaskMemFree(items);
            file->Release();
        }
        shellLink->Release();
    }
    CoUninitialize();
    return target;
}

QStringList filesUnder(const QString &folder)
{
    QStringList files;
    QDirIterator it(folder, QDir::Files | QDir::Hidden | QDir::System, QDirIterator::Subdirectories);
    while (it.hasNext())
        files << QDir(folder).relativeFilePath(it.next());
    files.sort();
    return files;
}

// Where `part` lies in `image`, pixel for pixel; an invalid point when nowhere.
QPoint find(const QImage &image, const QImage &part)
{
    const QImage haystack = image.convertToFormat(QImage::Format_RGB32);
    const QImage needle = part.convertToFormat(QImage::Format_RGB32);
    const int rowBytes = needle.width() * 4;
    for (int y = 0; y + needle.height() <= haystack.height(); ++y) {
        for (int x = 0; x + needle.width() <= haystack.width(); ++x) {
            bool same = true;
            for (int row = 0; same && row < needle.height(); ++row)
                same = memcmp(haystack.constScanLine(y + row) + x * 4, needle.constScanLine(row), rowBytes) == 0;
            if (same)
                return QPoint(x, y);
        }
    }
    return QPoint(-1, -1);
}

// What the window shows on the screen, its frame left out.
QImage shotOfClientArea(HWND window)
{
    RECT client = {};
    GetClientRect(window, &client);
    POINT origin = {0, 0};
    ClientToScreen(window, &origin);
    return QGuiApplication::primaryScreen()
        ->grabWindow(0, origin.x, origin.y, client.right - client.left, client.bottom - client.top)
        .toImage();
}

} // namespace

class TestInstall : public QObject
{
    Q_OBJECT

private:
    TestEnvironment &env = TestEnvironment::instance();
    QString m_registeredCommand;

private slots:
    void initTestCase()
    {
        initFeedbackResources();
        QVERIFY2(QFileInfo(FB_INSTALLER_FILE).isFile(), FB_INSTALLER_FILE " is missing: the installer/package "
                                                                          "test makes it (cpack)");
        // What an earlier run in this prefix may have left.
        QDir(installFolder()).removeRecursively();
        QDir(vendorFolder()).rmdir(".");
        QDir(menuFolder()).removeRecursively();
        run("reg", {"delete", kSchemeKey, "/f"});
        run("reg", {"delete", kUninstallKey, "/f"});
    }

    void silentInstallDeploysTheProgramForThisUser()
    {
        const Run install = run(QStringLiteral(FB_INSTALLER_FILE), {"/S"});
        QCOMPARE(install.exitCode, 0);
        const QStringList expected{
            "Qt5Core.dll",
            "Qt5Gui.dll",
            "Qt5Network.dll",
            "Qt5Widgets.dll",
            "Uninstall.exe",
            "feedbackagent.exe",
            "imageformats/qgif.dll",
            "imageformats/qico.dll",
            "imageformats/qjpeg.dll",
            "libgcc_s_seh-1.dll",
            "libstdc++-6.dll",
            "libwinpthread-1.dll",
            "platforms/qwindows.dll",
            "qt.conf",
            "styles/qwindowsvistastyle.dll",
            "translations/feedback_de.qm",
            "translations/qt_de.qm",
        };
        QCOMPARE(filesUnder(installFolder()), expected);
        // The Start-menu entry is there and starts the installed program. Its target is
        // read as the shell reads it, from the link's item list: Wine keeps the path
        // beside it in the installer's code page, which is not this process's.
        QCOMPARE(QDir(menuFolder()).entryList(QDir::Files | QDir::System), QStringList{"Feedback Agent.lnk"});
        QCOMPARE(shortcutTarget(menuFolder() + "/Feedback Agent.lnk"), nativeInstallFolder() + "\\feedbackagent.exe");
    }

    void keysAreTheUsersOwn()
    {
        const QString program = nativeInstallFolder() + "\\feedbackagent.exe";
        const Run scheme = regQuery(kSchemeKey);
        QCOMPARE(scheme.exitCode, 0);
        const QStringList schemeLines{
            "HKEY_CURRENT_USER\\Software\\Classes\\kvfb",
            "    (Default)    REG_SZ    URL:Korvane Feedback Agent",
            "    URL Protocol    REG_SZ",
            "HKEY_CURRENT_USER\\Software\\Classes\\kvfb\\DefaultIcon",
            "    (Default)    REG_SZ    \"" + program + "\",0",
            "HKEY_CURRENT_USER\\Software\\Classes\\kvfb\\shell",
            "HKEY_CURRENT_USER\\Software\\Classes\\kvfb\\shell\\open",
            "HKEY_CURRENT_USER\\Software\\Classes\\kvfb\\shell\\open\\command",
            "    (Default)    REG_SZ    \"" + program + "\" \"%1\"",
        };
        QCOMPARE(scheme.output, schemeLines.join('\n'));
        m_registeredCommand = schemeLines.last().section("REG_SZ    ", 1);

        const QString uninstaller = nativeInstallFolder() + "\\Uninstall.exe";
        const Run uninstall = regQuery(kUninstallKey);
        QCOMPARE(uninstall.exitCode, 0);
        const QStringList uninstallLines{
            "HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\KorvaneFeedback Agent",
            "    DisplayIcon    REG_SZ    \"" + program + "\",0",
            "    DisplayName    REG_SZ    Korvane Feedback Agent",
            "    DisplayVersion    REG_SZ    1.0.0",
            "    InstallLocation    REG_SZ    " + nativeInstallFolder(),
            "    NoModify    REG_DWORD    0x1",
            "    NoRepair    REG_DWORD    0x1",
            "    Publisher    REG_SZ    Korvane",
            "    QuietUninstallString    REG_SZ    \"" + uninstaller + "\" /S",
            "    UninstallString    REG_SZ    \"" + uninstaller + "\"",
        };
        QCOMPARE(uninstall.output, uninstallLines.join('\n'));

        // Nothing for the whole machine.
        QCOMPARE(regQuery("HKLM\\Software\\Classes\\kvfb").exitCode, 1);
    }

    // As the Windows shell does with a kvfb: link: the registered command with %1
    // replaced by the link, run as it stands. Only the installed files are there to
    // run on: no Qt folder on the path and no plugin path.
    void registeredCommandOpensTheBugReport()
    {
        QVERIFY(!m_registeredCommand.isEmpty());
        const QStringList command = QProcess::splitCommand(QString(m_registeredCommand).replace("%1", kLink));
        QCOMPARE(command, (QStringList{nativeInstallFolder() + "\\feedbackagent.exe", kLink}));

        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        const QString windows = qEnvironmentVariable("SystemRoot");
        environment.insert("PATH", windows + "\\system32;" + windows);
        environment.remove("WINEPATH");
        for (const QString &name : environment.keys()) {
            if (name.startsWith("QT_"))
                environment.remove(name);
        }
        QProcess program;
        program.setProcessEnvironment(environment);
        program.setProcessChannelMode(QProcess::MergedChannels);
        program.start(command.first(), command.mid(1));
        QVERIFY(program.waitForStarted(kEventWaitMs));

        const QString id = windowdriver::waitForWindowOf(program.processId());
        QVERIFY2(!id.isEmpty(), program.readAll().constData());
        QVERIFY(windowdriver::title(id).contains("Feedback Agent"));
        const HWND window = reinterpret_cast<HWND>(quintptr(id.toULongLong()));

        // The bug report's banner, as drawn on the screen; not the neutral one.
        const QImage bugBanner(":/images/Banner-Bug.png");
        const QImage neutralBanner(":/images/Banner.png");
        QVERIFY(!bugBanner.isNull() && !neutralBanner.isNull());
        QImage shot;
        const bool bannerShown = QTest::qWaitFor(
            [&] {
                shot = shotOfClientArea(window);
                return find(shot, bugBanner).x() >= 0;
            },
            kEventWaitMs);
        if (!bannerShown) {
            const QString saved = env.root() + "/installed-window.png";
            shot.save(saved);
            QFAIL(qPrintable("no bug banner in the window; its picture: " + saved));
        }
        QCOMPARE(find(shot, neutralBanner), QPoint(-1, -1));

        QVERIFY(windowdriver::pressInWindow(id, windowdriver::Key::AltF4));
        QVERIFY2(program.waitForFinished(kEventWaitMs),
                 qPrintable(windowdriver::describeStillRunning(program.processId())));
        QCOMPARE(program.exitStatus(), QProcess::NormalExit);
        QCOMPARE(program.exitCode(), 0);
    }

    void silentUninstallLeavesOnlyTheSettings()
    {
        // The user's settings are not the installer's to remove.
        if (!QFileInfo::exists(env.settingsFile()))
            QVERIFY(!writeTestFile(env.settingsFile(), "[application]\n").isEmpty());
        QFile settings(env.settingsFile());
        QVERIFY(settings.open(QIODevice::ReadOnly));
        const QByteArray settingsBefore = settings.readAll();
        settings.close();

        // The uninstaller runs on from a copy of itself and returns at once; its keys go
        // last.
        QCOMPARE(run(installFolder() + "/Uninstall.exe", {"/S"}).exitCode, 0);
        QVERIFY2(QTest::qWaitFor([] { return regQuery(kUninstallKey).exitCode == 1; }, kEventWaitMs),
                 qPrintable(filesUnder(installFolder()).join(", ")));
        QVERIFY(!QFileInfo::exists(installFolder()));
        QVERIFY(!QFileInfo::exists(vendorFolder()));
        QVERIFY(!QFileInfo::exists(menuFolder()));
        QCOMPARE(regQuery(kSchemeKey).exitCode, 1);

        QVERIFY(settings.open(QIODevice::ReadOnly));
        QCOMPARE(settings.readAll(), settingsBefore);
    }
};

FB_TEST_MAIN(TestInstall)
#include "tst_install.moc"
