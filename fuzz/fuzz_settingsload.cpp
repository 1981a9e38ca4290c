// Fuzzes the loading of the settings file: the input bytes are the file, and the real
// MainWindow::loadSettings() reads them on a window built once under the offscreen
// platform. What was loaded is then saved and loaded again: the second save must give
// the bytes of the first, so that a file the program wrote always reads back as written.
#include "form/mainwindow.h"
#include "support/mainwindowprobe.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QGroupBox>
#include <QLineEdit>
#include <QTcpServer>

#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace {

MainWindow *window = nullptr;
QString settingsPath;
QString rootFolder;

void removeRootFolder()
{
    QDir(rootFolder).removeRecursively();
}

[[noreturn]] void fail(const char *what)
{
    std::fprintf(stderr, "settings load: %s\n", what);
    std::abort();
}

// A private home, configuration and temporary folder for this process.
void isolateEnvironment()
{
    // On a memory file system when there is one: every save syncs the file to disk.
    QByteArray pattern =
        QDir(QStringLiteral("/dev/shm")).exists() ? "/dev/shm/fuzz-settings-XXXXXX" : "/tmp/fuzz-settings-XXXXXX";
    const char *root = mkdtemp(pattern.data());
    if (!root)
        fail("no temporary folder");
    const QByteArray base(root);
    rootFolder = QString::fromLocal8Bit(base);
    std::atexit(removeRootFolder);
    for (const char *sub : {"home", "config", "tmp", "runtime"})
        QDir().mkpath(QString::fromLocal8Bit(base + "/" + sub));
    QFile::setPermissions(QString::fromLocal8Bit(base + "/runtime"),
                          QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    qputenv("HOME", base + "/home");
    qputenv("XDG_CONFIG_HOME", base + "/config");
    qputenv("XDG_RUNTIME_DIR", base + "/runtime");
    qputenv("TMPDIR", base + "/tmp");
    qputenv("QT_QPA_PLATFORM", "offscreen");
}

// The form as a fresh window has it, so that every input starts from the same state.
void resetForm()
{
    for (QLineEdit *field : window->findChildren<QLineEdit *>())
        field->clear();
    MainWindowProbe::widget<QComboBox>(*window, "combo_Title")->clear();
    MainWindowProbe::widget<QCheckBox>(*window, "check_Remember_My_Info")->setChecked(true);
    MainWindowProbe::widget<QCheckBox>(*window, "check_NDA")->setChecked(false);
    MainWindowProbe::widget<QCheckBox>(*window, "check_EnhancedCapture")->setChecked(false);
    MainWindowProbe::widget<QGroupBox>(*window, "group_Proxy_Settings")->setChecked(false);
}

bool writeFile(const QByteArray &bytes)
{
    QFile file(settingsPath);
    return file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(bytes) == bytes.size();
}

QByteArray readFile()
{
    QFile file(settingsPath);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QByteArray loadAndSave()
{
    resetForm();
    window->loadSettings();
    QCoreApplication::processEvents(); // answers of the e-mail check, if any
    window->saveSettings();
    return readFile();
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    isolateEnvironment();
    static int argc = 1;
    static char name[] = "fuzz_settingsload";
    static char *argv[] = {name, nullptr};
    new QApplication(argc, argv); // lives as long as the process

    // A taken guard port would end the process behind a modal box; say so instead.
    {
        QTcpServer guard;
        if (!guard.listen(QHostAddress::Any, 23709))
            fail("TCP port 23709 is taken; run in a private network namespace (unshare -rn)");
    }
    window = new MainWindow;
    settingsPath = MainWindowProbe::configPath(*window);
    if (!settingsPath.endsWith(QLatin1String("/Korvane/feedbackagent.cfg")))
        fail("unexpected settings path");
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (!writeFile(QByteArray(reinterpret_cast<const char *>(data), int(size))))
        fail("cannot write the settings file");
    const QByteArray first = loadAndSave();
    const QByteArray second = loadAndSave();
    if (first != second) {
        std::fprintf(stderr, "first save:\n%s\nsecond save:\n%s\n", first.constData(), second.constData());
        fail("a saved file does not read back as written");
    }
    return 0;
}
