// The launch-option grammar as a pure function: argument list in, (key, value) pairs
// out; and what the options ask of the window.
#include "app/launchoptionparser.h"
#include "support/testenv.h"

#include <QtTest>

namespace {

// "[key]=[value]" per option, so that a failure shows both parts and empty values.
QStringList rendered(const QList<LaunchOption> &options)
{
    QStringList result;
    for (const LaunchOption &option : options)
        result.append(QStringLiteral("[%1]=[%2]").arg(option.first, option.second));
    return result;
}

} // namespace

class TestLaunchParser : public QObject
{
    Q_OBJECT

private slots:
    void parses_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QStringList>("options");
        const auto row = [](const char *name, const QStringList &arguments, const QStringList &options) {
            QTest::newRow(name) << arguments << options;
        };

        // The two forms as the suite uses them.
        row("url example", {"kvfb://mode=bug,area=Other,lockarea/"},
            {"[mode]=[bug]", "[area]=[Other]", "[lockarea]=[]"});
        row("argument example", {"--mode=feature", "--attach=C:\\temp\\scene.txt"},
            {"[mode]=[feature]", "[attach]=[C:\\temp\\scene.txt]"});
        row("no arguments", {}, {});
        row("empty argument", {""}, {});

        // URL form.
        row("scheme alone is no url and no option", {"kvfb://"}, {});
        row("scheme alone then an option", {"kvfb://", "--mode=bug"}, {"[mode]=[bug]"});
        row("upper-case scheme", {"KVFB://mode=bug"}, {});
        row("mixed-case scheme", {"Kvfb://mode=bug"}, {});
        row("leading blank before the scheme", {" kvfb://mode=bug"}, {});
        row("url as second argument is not an option", {"--area=Other", "kvfb://mode=bug"}, {"[area]=[Other]"});
        row("arguments after the url are ignored", {"kvfb://mode=bug", "--mode=feature", "--lockarea"},
            {"[mode]=[bug]"});
        row("one trailing slash dropped", {"kvfb://mode=bug/"}, {"[mode]=[bug]"});
        row("only one of two trailing slashes dropped", {"kvfb://mode=bug//"}, {"[mode]=[bug/]"});
        row("slash alone", {"kvfb:///"}, {});
        row("two slashes alone", {"kvfb:////"}, {});
        row("inner slash kept", {"kvfb://mode=bug/,area=Other"}, {"[mode]=[bug/]", "[area]=[Other]"});
        row("area with slashes", {"kvfb://area=Crashes / Hangs/"}, {"[area]=[Crashes / Hangs]"});
        row("key without value", {"kvfb://mode"}, {"[mode]=[]"});
        row("key with equals and nothing after", {"kvfb://mode=,area=Other"}, {"[area]=[Other]"});
        row("equals alone", {"kvfb://="}, {});
        row("value alone", {"kvfb://=bug"}, {});
        row("empty parts skipped", {"kvfb://,mode=bug,,area=Other,"}, {"[mode]=[bug]", "[area]=[Other]"});
        row("commas alone", {"kvfb://,,,"}, {});
        row("non-word keys skipped", {"kvfb://mo-de=bug,a.b=c,a b=c,lock area,area=Other"}, {"[area]=[Other]"});
        row("blank before a key", {"kvfb:// mode=bug"}, {});
        row("underscore and digits in keys", {"kvfb://a_1=2,_=x,9=nine"}, {"[a_1]=[2]", "[_]=[x]", "[9]=[nine]"});
        row("keys are not interpreted", {"kvfb://Mode=bug,colour=red"}, {"[Mode]=[bug]", "[colour]=[red]"});
        row("equals inside a value", {"kvfb://area=a=b"}, {"[area]=[a=b]"});
        row("blanks inside a value", {"kvfb://area=Asset Browser"}, {"[area]=[Asset Browser]"});
        row("no percent-decoding", {"kvfb://area=Asset%20Browser,attach=%2Ftmp"},
            {"[area]=[Asset%20Browser]", "[attach]=[%2Ftmp]"});
        row("no backslash unescaping", {"kvfb://attach=C:\\a\\,b"}, {"[attach]=[C:\\a\\]", "[b]=[]"});
        row("lockarea with a value", {"kvfb://lockarea=0"}, {"[lockarea]=[0]"});
        row("repeated keys kept in order", {"kvfb://attach=/a,attach=/a,area=X,area=Y"},
            {"[attach]=[/a]", "[attach]=[/a]", "[area]=[X]", "[area]=[Y]"});
        row("newline inside a value", {"kvfb://area=a\nb"}, {"[area]=[a\nb]"});
        row("newline after the scheme", {"kvfb://\nmode=bug"}, {});

        // Argument form.
        row("argument without value", {"--mode"}, {"[mode]=[]"});
        row("area and lock", {"--area=Other", "--lockarea"}, {"[area]=[Other]", "[lockarea]=[]"});
        row("lock alone", {"--lockarea"}, {"[lockarea]=[]"});
        row("two areas in order", {"--area=Cameras", "--area=Other"}, {"[area]=[Cameras]", "[area]=[Other]"});
        row("same file twice", {"--attach=/tmp/a", "--attach=/tmp/a"}, {"[attach]=[/tmp/a]", "[attach]=[/tmp/a]"});
        row("upper-case key kept for the caller", {"--Mode=bug"}, {"[Mode]=[bug]"});
        row("single dash", {"-mode=bug"}, {});
        row("slash prefix", {"/mode=bug"}, {});
        row("three dashes", {"---mode=bug"}, {});
        row("dashes alone", {"--"}, {});
        row("dashes and equals", {"--=bug"}, {});
        row("equals and nothing after", {"--mode="}, {});
        row("separate value argument", {"--attach", "/tmp/a"}, {"[attach]=[]"});
        row("non-word key", {"--mo-de=bug", "--a.b=c"}, {});
        row("comma kept in an argument value", {"--area=Other,lockarea"}, {"[area]=[Other,lockarea]"});
        row("trailing slash kept in an argument value", {"--mode=bug/"}, {"[mode]=[bug/]"});
        row("equals inside an argument value", {"--mode=bug=feature"}, {"[mode]=[bug=feature]"});
        row("other arguments skipped", {"file.txt", "--mode=bug", "-x", "--lockarea"},
            {"[mode]=[bug]", "[lockarea]=[]"});

        // Unicode: "\w" takes letters and digits of every script, not symbols.
        row("unicode key and value in a url", {QString::fromUtf8("kvfb://\u00e1rea=\u00dcber")},
            {QString::fromUtf8("[\u00e1rea]=[\u00dcber]")});
        row("cyrillic argument", {QString::fromUtf8("--\u043a\u043b\u044e\u0447=\u0437\u043d\u0430\u0447")},
            {QString::fromUtf8("[\u043a\u043b\u044e\u0447]=[\u0437\u043d\u0430\u0447]")});
        row("emoji key skipped", {QString::fromUtf8("kvfb://\U0001F600=x,mode=bug")}, {"[mode]=[bug]"});
        row("emoji value kept", {QString::fromUtf8("--area=\U0001F600")}, {QString::fromUtf8("[area]=[\U0001F600]")});
        row("fullwidth dashes are not dashes", {QString::fromUtf8("\uff0d\uff0dmode=bug")}, {});
        row("non-breaking space is no word character", {QString::fromUtf8("--mode\u00a0x=bug")}, {});
    }

    void parses()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QStringList, options);
        QCOMPARE(rendered(parseLaunchOptions(arguments)), options);
    }

    // Values are QStrings as given: a missing value is empty, never a space or a marker.
    void missingValueIsEmpty()
    {
        const QList<LaunchOption> options = parseLaunchOptions({"--lockarea"});
        QCOMPARE(options.size(), 1);
        QCOMPARE(options.first().first, QString("lockarea"));
        QVERIFY(options.first().second.isEmpty());
    }

    // What the options mean to the window: the steps in the order given, the last area
    // and any lockarea.
    void request_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QStringList>("steps");
        QTest::addColumn<QString>("area");
        QTest::addColumn<bool>("lockArea");
        QTest::newRow("nothing") << QStringList{} << QStringList{} << "" << false;
        QTest::newRow("bug") << QStringList{"--mode=bug"} << QStringList{"fix", "bug"} << "" << false;
        QTest::newRow("feature") << QStringList{"kvfb://mode=feature/"} << QStringList{"fix", "feature"} << "" << false;
        QTest::newRow("a mode naming no kind still fixes it")
            << QStringList{"--mode=crash"} << QStringList{"fix"} << "" << false;
        QTest::newRow("mode without value") << QStringList{"--mode"} << QStringList{"fix"} << "" << false;
        QTest::newRow("two modes, each as it comes")
            << QStringList{"--mode=bug", "--mode=x"} << QStringList{"fix", "bug", "fix"} << "" << false;
        QTest::newRow("files in order, before and after the mode")
            << QStringList{"--attach=a.txt", "--mode=bug", "--attach=b.log", "--attach=a.txt"}
            << QStringList{"attach a.txt", "fix", "bug", "attach b.log", "attach a.txt"} << "" << false;
        QTest::newRow("attach without value") << QStringList{"--attach"} << QStringList{"attach "} << "" << false;
        QTest::newRow("last area") << QStringList{"--area=Cameras", "--area=Other"} << QStringList{} << "Other"
                                   << false;
        QTest::newRow("lockarea=0 locks too")
            << QStringList{"--lockarea=0", "--area=Audio"} << QStringList{} << "Audio" << true;
        QTest::newRow("lock alone") << QStringList{"--lockarea"} << QStringList{} << "" << true;
        QTest::newRow("upper-case key means nothing") << QStringList{"--Mode=bug"} << QStringList{} << "" << false;
        QTest::newRow("url with everything")
            << QStringList{"kvfb://mode=feature,attach=x.png,area=Crashes / Hangs,lockarea/"}
            << QStringList{"fix", "feature", "attach x.png"} << "Crashes / Hangs" << true;
    }

    void request()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QStringList, steps);
        QFETCH(QString, area);
        QFETCH(bool, lockArea);
        const LaunchRequest request = launchRequest(parseLaunchOptions(arguments));
        QStringList shown;
        for (const LaunchRequest::Step &step : request.steps) {
            switch (step.action) {
            case LaunchRequest::Action::FixKind:
                shown << "fix";
                break;
            case LaunchRequest::Action::ShowBugReport:
                shown << "bug";
                break;
            case LaunchRequest::Action::ShowFeatureRequest:
                shown << "feature";
                break;
            case LaunchRequest::Action::Attach:
                shown << "attach " + step.file;
                break;
            }
        }
        QCOMPARE(shown, steps);
        QCOMPARE(request.area, area);
        QCOMPARE(request.lockArea, lockArea);
    }
};

FB_TEST_MAIN(TestLaunchParser)
#include "tst_launchparser.moc"
