// The window as the constructor leaves it: title and icon, the single-instance guard,
// the settings file it picks, its thumbnail folder, the intro screen, and the form's
// signals it listens to.
#include "windowstartuptests.h"

#include "form/mainwindow.h"
#include "support/mainwindowprobe.h"
#include "support/modalanswerer.h"
#include "support/testenv.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QEventLoop>
#include <QLineEdit>
#include <QListWidget>
#include <QDataStream>
#include <QProcess>
#include <QDir>
#include <QFile>
#include <QPushButton>
#include <QTcpServer>
#include <QTcpSocket>
#include <QtTest>

#ifdef Q_OS_WIN
#include <shlobj.h>
#include <windows.h>

#include <string>
#endif

#include <memory>

namespace {

const QString kTitle = QString::fromUtf8("Korvane 3D\u00AE Feedback Agent\u2122  Build 3126 (Win64) 21-Jun-2019");

} // namespace

void WindowStartupTests::titleAndIcon()
{
    MainWindow window;
    QCOMPARE(window.windowTitle(), kTitle);
    QCOMPARE(MainWindowProbe::titleText(window), kTitle);
    QCOMPARE(kTitle.toUtf8(),
             QByteArray("Korvane 3D\xC2\xAE Feedback Agent\xE2\x84\xA2  Build 3126 (Win64) 21-Jun-2019"));
    QVERIFY(!window.windowIcon().isNull());
    const QImage icon = window.windowIcon().pixmap(64, 64).toImage();
    const QImage expected = QIcon(":/images/FB_logo.png").pixmap(64, 64).toImage();
    QCOMPARE(icon, expected);
    QVERIFY(window.acceptDrops());
    QCOMPARE(window.centralWidget()->objectName(), QString("centralWidget"));
}

void WindowStartupTests::guardListensOnAllInterfaces()
{
    MainWindow window;
    QVERIFY(MainWindowProbe::instanceGuardListening(window));
    QTcpSocket socket;
    socket.connectToHost(QHostAddress::LocalHost, 23709);
    QVERIFY(socket.waitForConnected(2000));
    socket.abort();
}

void WindowStartupTests::guardTakenShowsTheCriticalBoxAndExitsWithZero()
{
    QTcpServer other;
    QVERIFY(other.listen(QHostAddress::Any, 23709));
    const QString record = env.root() + "/guard-child.bin";
    QProcess child;
    child.start(QCoreApplication::applicationFilePath(), {"--guard-child", record});
    QVERIFY(child.waitForFinished(20000));
    QCOMPARE(child.exitStatus(), QProcess::NormalExit);
    QCOMPARE(child.exitCode(), 0);

    QFile in(record);
    QVERIFY(in.open(QIODevice::ReadOnly));
    QDataStream stream(&in);
    ModalSnapshot shown;
    stream >> shown.className >> shown.windowTitle >> shown.text >> shown.icon >> shown.buttons >> shown.hasWindowIcon
        >> shown.windowIconImage;
    QCOMPARE(shown.className, QString("QMessageBox"));
    QCOMPARE(shown.windowTitle, kTitle);
    QCOMPARE(shown.text, QString("Another instance of Feedback Agent seems to be running."));
    QCOMPARE(shown.icon, int(QMessageBox::Critical));
    QCOMPARE(shown.buttons, QStringList{"OK"});
    QVERIFY(shown.hasWindowIcon);
    QCOMPARE(shown.windowIconImage.convertToFormat(QImage::Format_ARGB32),
             QIcon(":/images/FB_logo.png").pixmap(32, 32).toImage().convertToFormat(QImage::Format_ARGB32));
    // It ended before the thumbnail folder or the suite folder were made.
    QVERIFY(!QFileInfo::exists(env.thumbnailFolder()));
    QVERIFY(!QFileInfo::exists(suite()));
}

void WindowStartupTests::guardIsFreedByTheDestructor()
{
    {
        MainWindow window;
    }
    QTcpServer probe;
    QVERIFY(probe.listen(QHostAddress::Any, 23709));
}

void WindowStartupTests::settingsFileWithNeitherFile()
{
    MainWindow window;
    QCOMPARE(MainWindowProbe::configPath(window), newFile());
    QVERIFY(QFileInfo(suite()).isDir()); // created with its parents
    QVERIFY(!QFile::exists(newFile())); // nothing written yet
}

void WindowStartupTests::settingsFileWithBothFiles()
{
    QVERIFY(QDir().mkpath(suite()));
    QVERIFY(!writeTestFile(newFile()).isEmpty());
    QVERIFY(!writeTestFile(oldFile()).isEmpty());
    MainWindow window;
    QCOMPARE(MainWindowProbe::configPath(window), newFile());
    QVERIFY(!QFile::exists(oldFile())); // dropped, not merged
    QVERIFY(QFile::exists(newFile()));
}

void WindowStartupTests::settingsFileWithOnlyTheOldFile()
{
    QVERIFY(!writeTestFile(oldFile(), "[application]\n").isEmpty());
    MainWindow window;
    QCOMPARE(MainWindowProbe::configPath(window), oldFile());
    QVERIFY(QFile::exists(oldFile()));
    QVERIFY(!QFile::exists(newFile()));
    QVERIFY(QFileInfo(suite()).isDir());
}

void WindowStartupTests::settingsFileWithOnlyTheNewFile()
{
    QVERIFY(QDir().mkpath(suite()));
    QVERIFY(!writeTestFile(newFile()).isEmpty());
    MainWindow window;
    QCOMPARE(MainWindowProbe::configPath(window), newFile());
}

#ifdef Q_OS_WIN
namespace {

// The account's roaming application-data folder moved elsewhere while it lives, where
// Windows keeps it: the user's shell folders in the registry.
struct RoamingFolderMoved
{
    explicit RoamingFolderMoved(const QString &elsewhere)
    {
        if (RegOpenKeyExW(HKEY_CURRENT_USER, kShellFolders, 0, KEY_QUERY_VALUE | KEY_SET_VALUE, &key) != ERROR_SUCCESS)
            return;
        wchar_t value[MAX_PATH * 2] = {};
        DWORD size = sizeof value - sizeof(wchar_t);
        if (RegQueryValueExW(key, L"AppData", nullptr, &type, reinterpret_cast<BYTE *>(value), &size) != ERROR_SUCCESS)
            return;
        saved = value;
        const std::wstring moved = elsewhere.toStdWString();
        ok = RegSetValueExW(key, L"AppData", 0, REG_EXPAND_SZ, reinterpret_cast<const BYTE *>(moved.c_str()),
                            DWORD((moved.size() + 1) * sizeof(wchar_t)))
             == ERROR_SUCCESS;
    }
    ~RoamingFolderMoved()
    {
        if (!saved.empty())
            RegSetValueExW(key, L"AppData", 0, type, reinterpret_cast<const BYTE *>(saved.c_str()),
                           DWORD((saved.size() + 1) * sizeof(wchar_t)));
        if (key)
            RegCloseKey(key);
    }
    RoamingFolderMoved(const RoamingFolderMoved &) = delete;
    RoamingFolderMoved &operator=(const RoamingFolderMoved &) = delete;

    static constexpr const wchar_t *kShellFolders =
        L"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\User Shell Folders";
    HKEY key = nullptr;
    DWORD type = REG_EXPAND_SZ;
    std::wstring saved;
    bool ok = false;
};

} // namespace
#endif

void WindowStartupTests::settingsFolderThatCannotBeCreatedFallsBackToTheOldFile()
{
#ifdef Q_OS_WIN
    // The account's roaming folder moved onto a regular file for a moment (the tests
    // that read it take turns with this one), so the suite folder cannot exist.
    const QString blocker = env.root() + "/blocker";
    QVERIFY(!writeTestFile(blocker).isEmpty());
    std::unique_ptr<MainWindow> window;
    {
        RoamingFolderMoved moved(QDir::toNativeSeparators(blocker));
        QVERIFY(moved.ok);
        window.reset(new MainWindow);
    }
#else
    // A regular file where the config folder should be: the suite folder cannot exist.
    const QString blocker = env.root() + "/blocker";
    QVERIFY(!writeTestFile(blocker).isEmpty());
    const QByteArray saved = qgetenv(kSettingsBaseVariable);
    qputenv(kSettingsBaseVariable, QDir::toNativeSeparators(blocker).toLocal8Bit());
    std::unique_ptr<MainWindow> window(new MainWindow);
    qputenv(kSettingsBaseVariable, saved);
#endif
    QCOMPARE(MainWindowProbe::configPath(*window), oldFile());
    QVERIFY(!QFile::exists(oldFile()));
}

void WindowStartupTests::thumbnailFolderLivesAsLongAsTheWindow()
{
    QString folder;
    {
        MainWindow window;
        folder = MainWindowProbe::thumbnailFolder(window);
        QCOMPARE(folder, env.thumbnailFolder());
        QVERIFY(QFileInfo(folder).isDir());
        QVERIFY(QDir().mkpath(folder + "/sub/deeper"));
        QVERIFY(!writeTestFile(folder + "/shot.png").isEmpty());
        QVERIFY(!writeTestFile(folder + "/.hidden").isEmpty());
        QVERIFY(!writeTestFile(folder + "/sub/.hidden-too").isEmpty());
        QVERIFY(!writeTestFile(folder + "/sub/deeper/file.bin").isEmpty());
    }
    QVERIFY(!QFileInfo::exists(folder));
}

void WindowStartupTests::leftoverThumbnailFolderIsReused()
{
    QVERIFY(QDir().mkpath(env.thumbnailFolder()));
    QVERIFY(!writeTestFile(env.thumbnailFolder() + "/old.png").isEmpty());
    MainWindow window;
    QVERIFY(QFile::exists(env.thumbnailFolder() + "/old.png"));
}

void WindowStartupTests::removeDirectoryTreeOfAMissingFolderSucceeds()
{
    MainWindow window;
    QVERIFY(window.removeDirectoryTree(env.root() + "/does-not-exist"));
}

void WindowStartupTests::removeDirectoryTreeRemovesNestedFolders()
{
    MainWindow window;
    const QString tree = env.root() + "/tree";
    QVERIFY(QDir().mkpath(tree + "/a/b"));
    QVERIFY(!writeTestFile(tree + "/a/b/file").isEmpty());
    QVERIFY(!writeTestFile(tree + "/a/.hidden").isEmpty());
    QVERIFY(!writeTestFile(tree + "/c").isEmpty());
    QVERIFY(window.removeDirectoryTree(tree));
    QVERIFY(!QFileInfo::exists(tree));
}

void WindowStartupTests::introScreenAfterConstruction()
{
    MainWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window, kEventWaitMs));
    QCOMPARE(MainWindowProbe::formState(window), qint32(FormState::Choosing));
    QCOMPARE(MainWindowProbe::reportKind(window), qint32(ReportKind::None));
    auto *tabs = MainWindowProbe::widget<QWidget>(window, "tabWidget");
    auto *bug = MainWindowProbe::widget<QWidget>(window, "button_Bug_Report");
    auto *feature = MainWindowProbe::widget<QWidget>(window, "button_Feature_Request");
    auto *send = MainWindowProbe::widget<QPushButton>(window, "button_Send");
    QVERIFY(tabs && bug && feature && send);
    QVERIFY(!tabs->isVisible());
    QVERIFY(bug->isVisible());
    QVERIFY(feature->isVisible());
    QVERIFY(!MainWindowProbe::widget<QWidget>(window, "progressBar")->isVisible());
    QVERIFY(!MainWindowProbe::widget<QWidget>(window, "button_Start_Over")->isVisible());
    QVERIFY(MainWindowProbe::widget<QWidget>(window, "layout_banner_main_2")->isVisible());
    QVERIFY(!MainWindowProbe::widget<QWidget>(window, "layout_banner_bug_2")->isVisible());
    QVERIFY(!MainWindowProbe::widget<QWidget>(window, "layout_banner_feature_2")->isVisible());
    QCOMPARE(send->text(), QString("Send..."));
    QCOMPARE(send->toolTip(), QString("Select a feedback type to submit a report"));
    QVERIFY(!send->isEnabled());
}

// Form signals the window listens to, checked by their effect: the signal is
// emitted as a user's action emits it, and what the slot does follows.
void WindowStartupTests::emailTimerDrivesTheDomainCheck()
{
    MainWindow window;
    const QTimer &timer = MainWindowProbe::emailTimer(window);
    QCOMPARE(timer.interval(), 2000);
    QVERIFY(!timer.isActive());
    QVERIFY(!timer.isSingleShot());
    QVERIFY(QObject::disconnect(&timer, &QTimer::timeout, &window, &MainWindow::slot_validate_email_domain));
}

void WindowStartupTests::nameEditingFinishedRecomputesAndMarksModified()
{
    // Not shown: the platform's placing of a shown window is a move that marks the
    // settings modified by itself.
    MainWindow window;
    MainWindowProbe::widget<QPushButton>(window, "button_Feature_Request")->click();
    auto *name = MainWindowProbe::widget<QLineEdit>(window, "line_Name");
    QCOMPARE(name->styleSheet(), QString("border: 1px solid rgb(200, 150, 150)"));
    QVERIFY(!MainWindowProbe::settingsModified(window));
    // setText emits no textEdited; only editingFinished reaches the window.
    name->setText("Ann");
    QCOMPARE(name->styleSheet(), QString("border: 1px solid rgb(200, 150, 150)"));
    emit name->editingFinished();
    QCOMPARE(name->styleSheet(), QString());
    QVERIFY(MainWindowProbe::settingsModified(window));
}

void WindowStartupTests::nameTextEditedRecomputes()
{
    MainWindow window;
    MainWindowProbe::widget<QPushButton>(window, "button_Feature_Request")->click();
    auto *name = MainWindowProbe::widget<QLineEdit>(window, "line_Name");
    name->setFocus();
    QTest::keyClicks(name, "A");
    QCOMPARE(name->styleSheet(), QString());
    QVERIFY(!MainWindowProbe::settingsModified(window));
}

void WindowStartupTests::areaSelectionRecomputes()
{
    MainWindow window;
    MainWindowProbe::widget<QPushButton>(window, "button_Feature_Request")->click();
    auto *area = MainWindowProbe::widget<QListWidget>(window, "list_Area");
    QCOMPARE(area->styleSheet(), QString("border: 1px solid rgb(200, 150, 150)"));
    area->setCurrentRow(3);
    QCOMPARE(area->styleSheet(), QString());
}

void WindowStartupTests::settingsCheckBoxUnlocksTheFrame()
{
    MainWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window, kEventWaitMs));
    auto *frame = MainWindowProbe::widget<QWidget>(window, "frame_Settings");
    QVERIFY(frame->isHidden());
    MainWindowProbe::widget<QCheckBox>(window, "check_Settings")->setChecked(true);
    QVERIFY(!frame->isHidden());
}

void WindowStartupTests::rememberBoxMarksModified()
{
    MainWindow window;
    QVERIFY(!MainWindowProbe::settingsModified(window));
    MainWindowProbe::widget<QCheckBox>(window, "check_Remember_My_Info")->setChecked(false);
    QVERIFY(MainWindowProbe::settingsModified(window));
}

void WindowStartupTests::bigButtonsChooseTheKind()
{
    MainWindow window;
    MainWindowProbe::widget<QPushButton>(window, "button_Bug_Report")->click();
    QCOMPARE(MainWindowProbe::reportKind(window), qint32(ReportKind::BugReport));
    QCOMPARE(MainWindowProbe::formState(window), qint32(FormState::Composing));
    MainWindowProbe::widget<QPushButton>(window, "button_Start_Over")->click();
    QCOMPARE(MainWindowProbe::reportKind(window), qint32(ReportKind::None));
    QCOMPARE(MainWindowProbe::formState(window), qint32(FormState::Choosing));
    MainWindowProbe::widget<QPushButton>(window, "button_Feature_Request")->click();
    QCOMPARE(MainWindowProbe::reportKind(window), qint32(ReportKind::FeatureRequest));
}

void WindowStartupTests::cancelOnTheIntroScreenQuits()
{
    MainWindow window;
    QEventLoop loop;
    QTimer::singleShot(0, &window, [&] { MainWindowProbe::widget<QPushButton>(window, "button_Cancel")->click(); });
    QTimer::singleShot(5000, &loop, [&] { loop.exit(99); });
    QCOMPARE(loop.exec(), 0);
}

void WindowStartupTests::tabChangeMovesTheFocus()
{
    MainWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window, kEventWaitMs));
    window.activateWindow();
    MainWindowProbe::widget<QPushButton>(window, "button_Feature_Request")->click();
    auto *tabs = MainWindowProbe::widget<QTabWidget>(window, "tabWidget");
    tabs->setCurrentIndex(3);
    auto *title = MainWindowProbe::widget<QComboBox>(window, "combo_Title");
    QTRY_VERIFY(QApplication::focusWidget() == title || QApplication::focusWidget() == title->lineEdit());
}
