#pragma once

#include "app/display.h"

#include <QObject>
#include <QString>
#include <QTemporaryDir>

// Tests of the window get a QApplication; tests of the core, which links no widgets,
// a QGuiApplication.
#ifdef QT_WIDGETS_LIB
#include <QApplication>
using TestApplication = QApplication;
#else
#include <QGuiApplication>
using TestApplication = QGuiApplication;
#endif

// Points HOME, the XDG folders and TMPDIR at a fresh folder for the whole test
// process, so that no test reads or writes the real home folder or settings.
// Construct it before the application object (FB_TEST_MAIN does).
class TestEnvironment
{
public:
    TestEnvironment();
    ~TestEnvironment();

    static TestEnvironment &instance();

    // What the destructor does, for a process that ends without running destructors:
    // removes the folder and, on Windows, the settings left in the shared home folder.
    void tearDown();

    QString root() const { return m_root.path(); }
    // The home folder the program sees. On Windows it is the account's profile folder,
    // which no variable moves: under Wine, the prefix's own (a fresh prefix each run of
    // the Windows lane).
    QString home() const { return m_home; }
    QString configHome() const { return m_root.path() + "/config"; }
    QString temp() const { return m_root.path() + "/tmp"; }
    // The suite settings folder the program uses in this environment. On Windows it is
    // under the account's roaming application data, which no variable moves: under
    // Wine, the prefix's own, shared by the tests of a run.
    QString suiteFolder() const;
    // The settings file and the older one in the home folder, named as the program
    // names them: with the system's own separators.
    QString settingsFile() const;
    QString oldSettingsFile() const;
    QString thumbnailFolder() const { return temp() + "/fb_thumbnails"; }
    // Every window saves what it was told to remember when it closes; tests that need a
    // window as it starts the first time call this first.
    void forgetSettings() const;

private:
    void forgetSharedHomeSettings() const;

    QTemporaryDir m_root;
    QString m_home;
};

// The variables the temporary folder and, on Linux, the suite settings folder come
// from. Windows takes the settings folder from the account alone.
#ifdef Q_OS_WIN
constexpr char kTempVariable[] = "TMP";
#else
constexpr char kSettingsBaseVariable[] = "XDG_CONFIG_HOME";
constexpr char kTempVariable[] = "TMPDIR";
#endif

// How long a test waits for an event from the window system or another process: a
// window exposed or active, a minimise, a clipboard owner, a process ending. Generous,
// because a loaded machine can take seconds; a wait ends as soon as the event comes.
constexpr int kEventWaitMs = 60000;

// Writes a file (creating its folder) and returns its absolute path, or an empty
// string when it cannot be written.
QString writeTestFile(const QString &path, const QByteArray &content = "x");

// The tag written before the running test function's declaration (QMetaMethod::tag),
// empty when it has none. A program that holds the functions of several groups tags
// them (an empty macro that moc keeps, defined under #ifndef Q_MOC_RUN) and reads the
// tag in init() to give each function its group's starting state.
QByteArray currentTestTag(const QObject &tests);

// The program's high-DPI attributes (setHighDpiAttributes), but whole factors on the
// offscreen platform: it has no display scaling, and its made-up resolution would
// give 1.0006. Call it before the application object exists.
void setTestHighDpiAttributes();

// Runs the test object's functions and then, as the program does before it ends,
// lets the machine-summary jobs that its windows started finish. Call it while the
// application object exists.
int execTests(QObject *testObject, int argc, char **argv);

// Ends a test process as the program ends (endProcess), after removing its private
// folders: for a main of its own, after execTests and once the application is gone.
[[noreturn]] void endTestProcess(int status);

// Like QTEST_MAIN, but isolates the environment before the application exists, and ends
// the process the program's way.
#define FB_TEST_MAIN(TestObject)                                                                                       \
    int main(int argc, char *argv[])                                                                                   \
    {                                                                                                                  \
        TestEnvironment::instance();                                                                                   \
        setTestHighDpiAttributes();                                                                                    \
        int status = 0;                                                                                                \
        {                                                                                                              \
            TestApplication app(argc, argv);                                                                           \
            app.setAttribute(Qt::AA_Use96Dpi, true);                                                                   \
            TestObject tc;                                                                                             \
            QTEST_SET_MAIN_SOURCE_PATH                                                                                 \
            status = execTests(&tc, argc, argv);                                                                       \
        }                                                                                                              \
        endTestProcess(status);                                                                                        \
    }
