#include "ui_mainwindow.h"

#include "attachments/richtextpushbutton.h"
#include "formdump.h"
#include "support/testenv.h"

#include <QComboBox>
#include <QListWidget>
#include <QMainWindow>
#include <QProgressBar>
#include <QTabWidget>
#include <QTranslator>
#include <QTreeWidget>
#include <QtTest>

#include <utility>
#include <vector>

// The form of the main window as its Designer file builds it, on a plain QMainWindow,
// compared with its checked-in record, tests/form/data/mainwindow.dump (formdump.h): every
// widget, layout, text, tool tip, style, fixed property and the tab order. After a change
// in Designer, tools/update-form-dump.sh writes the record anew. What the window's
// constructor changes on top is checked with the window itself (formwindow_constructor.cpp).
// Checked here by hand: what a record of values cannot show.

namespace {

// Answers every lookup of the "MainWindow" context with a marked copy of the source
// text, so that a text that reaches the screen unmarked did not go through translation.
class MarkingTranslator : public QTranslator
{
public:
    QString translate(const char *context, const char *sourceText, const char *disambiguation = nullptr,
                      int n = -1) const override
    {
        Q_UNUSED(disambiguation)
        Q_UNUSED(n)
        if (qstrcmp(context, "MainWindow") == 0)
            return QStringLiteral("[tr]") + QString::fromUtf8(sourceText);
        return QString();
    }
    bool isEmpty() const override { return false; }
};

// Every text of the form a user reads or hears, by where it is ("label.text"); empty
// ones left out.
std::vector<std::pair<QString, QString>> formTexts(const QMainWindow &window)
{
    std::vector<std::pair<QString, QString>> texts;
    const auto add = [&texts](const QString &where, const QString &text) {
        if (!text.isEmpty())
            texts.emplace_back(where, text);
    };
    add(QStringLiteral("windowTitle"), window.windowTitle());
    for (const QWidget *widget : window.findChildren<QWidget *>()) {
        if (!isFormWidget(widget))
            continue;
        const QString name = widget->objectName();
        for (const char *property : {"text", "toolTip", "statusTip", "whatsThis", "placeholderText", "title",
                                     "accessibleName", "accessibleDescription"}) {
            // A progress bar's text is its percentage; a big button's name follows its
            // caption, whose HTML is below.
            if ((qobject_cast<const QProgressBar *>(widget) && qstrcmp(property, "text") == 0)
                || (qobject_cast<const RichTextPushButton *>(widget) && qstrcmp(property, "accessibleName") == 0))
                continue;
            add(name + '.' + property, widget->property(property).toString());
        }
        if (auto *button = qobject_cast<const RichTextPushButton *>(widget))
            add(name + ".htmlText", button->htmlText());
        if (auto *tabs = qobject_cast<const QTabWidget *>(widget)) {
            for (int i = 0; i < tabs->count(); ++i) {
                add(name + QStringLiteral(".tabText %1").arg(i), tabs->tabText(i));
                add(name + QStringLiteral(".tabToolTip %1").arg(i), tabs->tabToolTip(i));
                add(name + QStringLiteral(".tabWhatsThis %1").arg(i), tabs->tabWhatsThis(i));
            }
        }
        if (auto *tree = qobject_cast<const QTreeWidget *>(widget)) {
            for (int column = 0; column < tree->columnCount(); ++column)
                add(name + QStringLiteral(".header %1").arg(column), tree->headerItem()->text(column));
        }
        if (auto *combo = qobject_cast<const QComboBox *>(widget)) {
            for (int i = 0; i < combo->count(); ++i)
                add(name + QStringLiteral(".item %1").arg(i), combo->itemText(i));
        }
        if (auto *list = qobject_cast<const QListWidget *>(widget)) {
            for (int i = 0; i < list->count(); ++i)
                add(name + QStringLiteral(".item %1").arg(i), list->item(i)->text());
        }
    }
    return texts;
}

QHash<QString, QString> formStyleSheets(const QMainWindow &window)
{
    QHash<QString, QString> sheets;
    sheets.insert(window.objectName(), window.styleSheet());
    for (const QWidget *widget : window.findChildren<QWidget *>()) {
        if (isFormWidget(widget))
            sheets.insert(widget->objectName(), widget->styleSheet());
    }
    return sheets;
}

} // namespace

class TestFormLayout : public QObject
{
    Q_OBJECT

private slots:
    void formMatchesTheCheckedInDump()
    {
        const QStringList actual = formDumpLines();
        QString error;
        // tools/update-form-dump.sh sets this to write the record anew.
        const QString writeTo = qEnvironmentVariable("FB_FORM_DUMP_WRITE");
        if (!writeTo.isEmpty()) {
#ifdef Q_OS_WIN
            QFAIL("the record holds Linux's geometry: write it with tools/update-form-dump.sh on Linux");
#endif
            QVERIFY2(writeFormDump(writeTo, actual, &error), qPrintable(error));
        }
        QStringList expected;
        QVERIFY2(readFormDump(checkedInFormDumpPath(), &expected, &error), qPrintable(error));
#ifdef Q_OS_WIN
        // Under Wine the offscreen platform has other fonts and another style than on
        // Linux, so what follows from them (geometry, sizes once shown, drawn captions)
        // is Linux's alone; every other line must be the same.
        const bool withFontDependentLines = false;
#else
        const bool withFontDependentLines = true;
#endif
        const QString report = formDumpReport(expected, actual, withFontDependentLines);
        if (!report.isEmpty()) {
            // QtTest cuts a failure message short, so the differences go out on their own.
            qInfo().noquote() << QStringLiteral("the form differs from %1; ").arg(checkedInFormDumpPath()) + report;
            QFAIL("the form differs from its checked-in record (the lines above); after a change in Designer, "
                  "tools/update-form-dump.sh writes the record anew and git diff shows what changed");
        }
    }

    void setupUiLeavesStyledWidgetsUnpolished()
    {
        // The record gives the minimum and maximum sizes read before the window is shown
        // as setupUi's own. For a widget with a style sheet that holds while setupUi
        // leaves it unpolished: polishing applies the sheet, and the big buttons'
        // "min-width: 10em" changes their minimum.
        QMainWindow bare;
        Ui::MainWindow ui;
        ui.setupUi(&bare);
        int styled = 0;
        for (const QWidget *widget : bare.findChildren<QWidget *>()) {
            if (!isFormWidget(widget) || widget->styleSheet().isEmpty())
                continue;
            ++styled;
            QVERIFY2(!widget->testAttribute(Qt::WA_WState_Polished), qPrintable(widget->objectName()));
        }
        QVERIFY(styled > 0);
    }

    void everyFormTextIsTranslated()
    {
        // Every text of the form is looked up in the "MainWindow" context, so the
        // catalogue can translate it; style sheets are not. The texts themselves are in
        // the record.
        QMainWindow bare;
        Ui::MainWindow ui;
        ui.setupUi(&bare);
        const auto before = formTexts(bare);
        QVERIFY(!before.empty());
        const QHash<QString, QString> sheetsBefore = formStyleSheets(bare);

        MarkingTranslator translator;
        QVERIFY(QCoreApplication::installTranslator(&translator));
        ui.retranslateUi(&bare);
        QCoreApplication::removeTranslator(&translator);

        const auto after = formTexts(bare);
        QCOMPARE(after.size(), before.size());
        for (size_t i = 0; i < before.size(); ++i) {
            QCOMPARE(after[i].first, before[i].first);
            QVERIFY2(after[i].second == QStringLiteral("[tr]") + before[i].second,
                     qPrintable(QStringLiteral("%1 is not looked up for translation: %2")
                                    .arg(before[i].first, quotedForDump(after[i].second))));
        }
        QCOMPARE(formStyleSheets(bare), sheetsBefore);
    }

    // ---- the record's own rules ----------------------------------------------------------

    void recordStringsStayOnOneLine_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("quoted");
        QTest::newRow("plain") << "Clear All"
                               << "\"Clear All\"";
        QTest::newRow("line breaks and tabs") << "a\nb\r\tc"
                                              << "\"a\\nb\\r\\tc\"";
        QTest::newRow("quote and backslash") << "say \"C:\\x\""
                                             << "\"say \\\"C:\\\\x\\\"\"";
        QTest::newRow("control") << "\x1b[0m"
                                 << "\"\\x{1B}[0m\"";
        QTest::newRow("outside ASCII") << QString::fromUtf8("J\xc3\xbcrgen \xc3\x91\xc3\xba\xc3\xb1"
                                                            "ez")
                                       << "\"J\\u{FC}rgen \\u{D1}\\u{FA}\\u{F1}ez\"";
        QTest::newRow("outside the basic plane") << QString::fromUtf8("\xf0\x9f\x98\x80") << "\"\\u{1F600}\"";
    }

    void recordStringsStayOnOneLine()
    {
        QFETCH(QString, text);
        QFETCH(QString, quoted);
        QCOMPARE(quotedForDump(text), quoted);
    }

    void differencesReadAsAUnifiedDiff()
    {
        const QStringList before = {"a", "b", "c", "d", "e", "f", "g", "h", "i"};
        QStringList after = before;
        after[4] = QStringLiteral("E");
        after.insert(8, QStringLiteral("h2"));
        QCOMPARE(formDumpDifferences(before, before, 1), QString());
        QCOMPARE(formDumpDifferences(before, after, 1), QStringLiteral("@@ -4,3 +4,3 @@\n"
                                                                       " d\n"
                                                                       "-e\n"
                                                                       "+E\n"
                                                                       " f\n"
                                                                       "@@ -8,2 +8,3 @@\n"
                                                                       " h\n"
                                                                       "+h2\n"
                                                                       " i"));
    }
};

FB_TEST_MAIN(TestFormLayout)
#include "tst_form_layout.moc"
