// Launch options end to end: the real executable is started with a kvfb:// URL or with
// --key=value arguments, and the test-only widget-state plugin reports its screen.
#include "support/appprocess.h"
#include "support/testenv.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

namespace {

const QString kBugTitle = QStringLiteral("Please provide a short title for the bug/issue (70 characters max):");
const QString kFeatureTitle =
    QStringLiteral("Please provide a short title for the feature request (70 characters max):");
// The form's own text, shown until a kind is chosen.
const QString kFormTitle = QStringLiteral("Please provide a short title of the bug/issue  (70 characters max):");

// What the user sees of the options.
struct Screen
{
    QString screen; // "intro", "bug" or "feature", from the visible banner
    bool startOverVisible = false;
    bool startOverEnabled = false;
    QStringList selectedAreas;
    bool areaListEnabled = false;
    QStringList attachments; // column 1 texts of the attachment rows
    QString titleLabel;
};

QStringList strings(const QJsonValue &value)
{
    QStringList result;
    for (const QJsonValue &entry : value.toArray())
        result.append(entry.toString());
    return result;
}

} // namespace

class TestLaunchOptions : public QObject
{
    Q_OBJECT

private:
    TestEnvironment &env = TestEnvironment::instance();
    QString fileA() const { return env.root() + "/launch files/scene.txt"; }
    QString fileB() const { return env.root() + "/launch files/notes.log"; }

    // Runs the program with these arguments until its window is shown; the widget states.
    QJsonObject run(const QStringList &arguments)
    {
        const QString output = env.root() + "/widget-state.json";
        QFile::remove(output);
        AppProcess app;
        app.environment().insert("QT_PLUGIN_PATH", QStringLiteral(FB_WIDGET_STATE_PLUGIN_PATH));
        app.environment().insert("QT_QPA_GENERIC_PLUGINS", "fbwidgetstate");
        app.environment().insert("FB_WIDGET_STATE_FILE", output);
        app.start(arguments);
        const bool finished = app.waitForFinished(60000);
        [&] {
            QVERIFY2(finished, app.output().constData());
            QCOMPARE(app.exitStatus(), QProcess::NormalExit);
            QCOMPARE(app.exitCode(), 0);
        }();
        QFile file(output);
        if (!file.open(QIODevice::ReadOnly))
            return QJsonObject();
        return QJsonDocument::fromJson(file.readAll()).object()["widgets"].toObject();
    }

    static Screen screenOf(const QJsonObject &widgets)
    {
        const auto visible = [&](const char *name) { return widgets[name].toObject()["visible"].toBool(); };
        Screen s;
        if (visible("layout_selecting_buttons_2") && visible("layout_banner_main_2") && !visible("tabWidget"))
            s.screen = "intro";
        else if (visible("layout_banner_bug_2") && !visible("layout_banner_feature_2") && visible("tabWidget"))
            s.screen = "bug";
        else if (visible("layout_banner_feature_2") && !visible("layout_banner_bug_2") && visible("tabWidget"))
            s.screen = "feature";
        else
            s.screen = "mixed";
        const QJsonObject startOver = widgets["button_Start_Over"].toObject();
        s.startOverVisible = startOver["visible"].toBool();
        s.startOverEnabled = startOver["enabled"].toBool();
        const QJsonObject areas = widgets["list_Area"].toObject();
        s.selectedAreas = strings(areas["selected"]);
        s.areaListEnabled = areas["enabled"].toBool();
        for (const QJsonValue &row : widgets["tree_Attachments"].toObject()["rows"].toArray())
            s.attachments.append(row.toArray().at(1).toString());
        s.titleLabel = widgets["label_Title"].toObject()["text"].toString();
        return s;
    }

private slots:
    void initTestCase()
    {
        QVERIFY(QDir().mkpath(QFileInfo(fileA()).absolutePath()));
        for (const QString &path : {fileA(), fileB()}) {
            QFile file(path);
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write("launch option attachment\n");
        }
        QVERIFY(QFileInfo::exists(AppProcess::executable()));
        QVERIFY(QFileInfo::exists(QStringLiteral(FB_WIDGET_STATE_PLUGIN_PATH)));
    }

    void init()
    {
        QDir(env.suiteFolder()).removeRecursively();
        QDir(env.thumbnailFolder()).removeRecursively();
    }

    void screenAfterOptions_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("screen");
        QTest::addColumn<bool>("startOverVisible");
        QTest::addColumn<bool>("startOverEnabled");
        QTest::addColumn<QStringList>("selectedAreas");
        QTest::addColumn<bool>("areaListEnabled");
        QTest::addColumn<QStringList>("attachments");

        const QString a = QDir::toNativeSeparators(fileA());
        const QString b = QDir::toNativeSeparators(fileB());
        const QString missing = env.root() + "/launch files/missing.txt";

        // A chosen kind shows the compose screen, whose refresh shows Start Over again,
        // but nothing enables it: it stays visible and disabled.
        QTest::newRow("url example") << QStringList{"kvfb://mode=bug,area=Other,lockarea/"} << "bug" << true << false
                                     << QStringList{"Other"} << false << QStringList{};
        QTest::newRow("argument example") << QStringList{"--mode=feature", "--attach=" + fileA()} << "feature" << true
                                          << false << QStringList{} << true << QStringList{a};
        QTest::newRow("no options") << QStringList{} << "intro" << false << true << QStringList{} << true
                                    << QStringList{};
        QTest::newRow("scheme alone") << QStringList{"kvfb://"} << "intro" << false << true << QStringList{} << true
                                      << QStringList{};
        QTest::newRow("upper-case scheme")
            << QStringList{"KVFB://mode=bug"} << "intro" << false << true << QStringList{} << true << QStringList{};
        QTest::newRow("second argument after url ignored")
            << QStringList{"kvfb://area=Cameras", "--mode=bug"} << "intro" << false << true << QStringList{"Cameras"}
            << true << QStringList{};
        QTest::newRow("two trailing slashes")
            << QStringList{"kvfb://mode=bug//"} << "intro" << false << false << QStringList{} << true << QStringList{};
        QTest::newRow("mode without value")
            << QStringList{"--mode"} << "intro" << false << false << QStringList{} << true << QStringList{};
        QTest::newRow("unknown mode") << QStringList{"--mode=crash"} << "intro" << false << false << QStringList{}
                                      << true << QStringList{};
        QTest::newRow("area and lock") << QStringList{"--area=Other", "--lockarea"} << "intro" << false << true
                                       << QStringList{"Other"} << false << QStringList{};
        QTest::newRow("lock alone") << QStringList{"--lockarea"} << "intro" << false << true << QStringList{} << true
                                    << QStringList{};
        QTest::newRow("lock with value 0") << QStringList{"--lockarea=0", "--area=Audio"} << "intro" << false << true
                                           << QStringList{"Audio"} << false << QStringList{};
        QTest::newRow("unknown area stays locked") << QStringList{"--area=Nowhere", "--lockarea"} << "intro" << false
                                                   << true << QStringList{} << false << QStringList{};
        QTest::newRow("last area counts") << QStringList{"--area=Cameras", "--area=Other"} << "intro" << false << true
                                          << QStringList{"Other"} << true << QStringList{};
        QTest::newRow("same file twice") << QStringList{"--attach=" + fileA(), "--attach=" + fileA()} << "intro"
                                         << false << true << QStringList{} << true << QStringList{a, a};
        QTest::newRow("missing file skipped") << QStringList{"--attach=" + missing, "--attach=" + fileB()} << "intro"
                                              << false << true << QStringList{} << true << QStringList{b};
        QTest::newRow("attach without value")
            << QStringList{"--attach", fileA()} << "intro" << false << true << QStringList{} << true << QStringList{};
        QTest::newRow("upper-case key ignored")
            << QStringList{"--Mode=bug"} << "intro" << false << true << QStringList{} << true << QStringList{};
        QTest::newRow("url with files, area with slashes")
            << QStringList{"kvfb://mode=feature,attach=" + fileB() + ",attach=" + fileA()
                           + ",area=Crashes / Hangs,lockarea/"}
            << "feature" << true << false << QStringList{"Crashes / Hangs"} << false << QStringList{b, a};
        QTest::newRow("area with a blank, percent not decoded")
            << QStringList{"kvfb://area=Asset%20Browser,mode=bug"} << "bug" << true << false << QStringList{} << true
            << QStringList{};
        QTest::newRow("area with a blank") << QStringList{"--area=Asset Browser", "--mode=bug"} << "bug" << true
                                           << false << QStringList{"Asset Browser"} << true << QStringList{};
    }

    void screenAfterOptions()
    {
        QFETCH(QStringList, arguments);
        const QJsonObject widgets = run(arguments);
        if (QTest::currentTestFailed())
            return;
        QVERIFY(!widgets.isEmpty());
        const Screen shown = screenOf(widgets);
        QTEST(shown.screen, "screen");
        QTEST(shown.startOverVisible, "startOverVisible");
        QTEST(shown.startOverEnabled, "startOverEnabled");
        QTEST(shown.selectedAreas, "selectedAreas");
        QTEST(shown.areaListEnabled, "areaListEnabled");
        QTEST(shown.attachments, "attachments");

        QFETCH(QString, screen);
        QCOMPARE(shown.titleLabel, screen == "bug" ? kBugTitle : screen == "feature" ? kFeatureTitle : kFormTitle);
        QCOMPARE(widgets["list_Area"].toObject()["count"].toInt(), 46);
    }

    // A file entry has no text in column 0 and the native absolute path in column 1.
    void attachedFileRow()
    {
        const QJsonObject widgets = run({"kvfb://attach=" + fileA()});
        if (QTest::currentTestFailed())
            return;
        const QJsonArray rows = widgets["tree_Attachments"].toObject()["rows"].toArray();
        QCOMPARE(rows.size(), 1);
        QCOMPARE(rows.at(0).toArray(), (QJsonArray{QString(), QDir::toNativeSeparators(fileA())}));
    }
};

FB_TEST_MAIN(TestLaunchOptions)
#include "tst_launchoptions.moc"
