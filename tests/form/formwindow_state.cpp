// The three screens and the completeness rules of the report form, on the real window.
#include "formwindowtests.h"

#include "form/formwidgets.h"
#include "form/mainwindow.h"
#include "support/mainwindowprobe.h"
#include "support/testenv.h"

#include <QApplication>
#include <QtTest>

namespace {

const QString kChooseToolTip = QStringLiteral("Select a feedback type to submit a report");
const QString kSubmitToolTip = QStringLiteral("Submit the report");
const QString kIdentityToolTip = QStringLiteral("Please complete the <b>Identity</b> tab.");
const QString kDetailsToolTip = QStringLiteral("Please complete the <b>Details</b> tab.");
const QString kDescriptionToolTip = QStringLiteral("Please complete the <b>Description</b> tab.");
const QString kAttachmentsToolTip = QStringLiteral("Please add <b>Attachments</b> to submit the report.");

const char *const kIntroScreen[] = {"layout_banner_main_2", "layout_selecting_buttons_2", "label_Intro_Line_1",
                                    "label_Intro_Line_2"};

QStringList fieldNames(int mask)
{
    static const char *const names[] = {"name", "email", "area", "build", "title", "description", "attachments"};
    QStringList list;
    for (int bit = 0; bit < 7; ++bit) {
        if (mask & (1 << bit))
            list << QLatin1String(names[bit]);
    }
    return list.isEmpty() ? QStringList(QStringLiteral("nothing")) : list;
}

bool visible(MainWindow &w, const char *objectName)
{
    return FormWidgets(w).find<QWidget>(objectName)->isVisible();
}

} // namespace

void FormWindowTests::introScreenAtStart()
{
    MainWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window, kEventWaitMs));
    FormWidgets f(window);
    QCOMPARE(MainWindowProbe::formState(window), qint32(FormState::Choosing));
    QCOMPARE(MainWindowProbe::reportKind(window), qint32(ReportKind::None));
    for (const char *name : kIntroScreen)
        QVERIFY2(visible(window, name), name);
    for (const char *name :
         {"layout_banner_bug_2", "layout_banner_feature_2", "tabWidget", "progressBar", "button_Start_Over"})
        QVERIFY2(!visible(window, name), name);
    QCOMPARE(f.send->text(), QString("Send..."));
    QCOMPARE(f.send->toolTip(), kChooseToolTip);
    QVERIFY(!f.send->isEnabled());
}

void FormWindowTests::composeScreen_data()
{
    QTest::addColumn<bool>("bugReport");
    QTest::addColumn<QStringList>("texts"); // label_Intro_1..5, label_Title, label_Description
    QTest::newRow("bug report") << true
                                << QStringList{
                                       "Please take a moment to review how to collect and submit a good bug report.",
                                       "The following tips help make a good report that will aid developers in "
                                       "recreating your issue:",
                                       "1) Ensure only the content needed to recreate the issue is attached",
                                       "2) Lower any settings in Scenes that are not critical to showing the issue",
                                       "3) Provide detailed steps the developer can follow in order to recreate the "
                                       "issue",
                                       "Please provide a short title for the bug/issue (70 characters max):",
                                       "Please provide a description of the bug/issue:"};
    QTest::newRow("feature request")
        << false
        << QStringList{"Please take a moment to review how to collect and submit a good feature/flow request.",
                       "The following tips help make a good report that will aid developers in recreating your "
                       "request:",
                       "1) Explain what it is you are trying to do that is causing difficulty",
                       "2) Are there more general workflows that could make your request better for all?",
                       "3) Are there examples of good workflows that you may have seen elsewhere?",
                       "Please provide a short title for the feature request (70 characters max):",
                       "Please provide a description of the feature request:"};
}
void FormWindowTests::composeScreen()
{
    QFETCH(bool, bugReport);
    QFETCH(QStringList, texts);
    MainWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window, kEventWaitMs));
    FormWidgets f(window);
    f.tabs->setCurrentIndex(3); // choosing a kind leaves the current tab alone
    QTest::mouseClick(bugReport ? f.bug : f.feature, Qt::LeftButton);

    QCOMPARE(MainWindowProbe::formState(window), qint32(FormState::Composing));
    QCOMPARE(MainWindowProbe::reportKind(window),
             qint32(bugReport ? ReportKind::BugReport : ReportKind::FeatureRequest));
    for (const char *name : kIntroScreen)
        QVERIFY2(!visible(window, name), name);
    QCOMPARE(visible(window, "layout_banner_bug_2"), bugReport);
    QCOMPARE(visible(window, "layout_banner_feature_2"), !bugReport);
    QVERIFY(f.tabs->isVisible());
    QVERIFY(f.tabs->isEnabled());
    QCOMPARE(f.tabs->currentIndex(), 3);
    QVERIFY(f.startOver->isVisible());
    QVERIFY(f.startOver->isEnabled());
    QCOMPARE(f.cancel->text(), QString("Cancel"));
    QVERIFY(!f.progress->isVisible());

    const char *labels[] = {"label_Intro_1", "label_Intro_2", "label_Intro_3",    "label_Intro_4",
                            "label_Intro_5", "label_Title",   "label_Description"};
    for (int i = 0; i < 7; ++i)
        QCOMPARE(f.find<QLabel>(labels[i])->text(), texts.at(i));
}

void FormWindowTests::sendingScreen()
{
    MainWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window, kEventWaitMs));
    FormWidgets f(window);
    fillReport(f, 0);
    QTest::mouseClick(f.bug, Qt::LeftButton);
    QCOMPARE(f.send->text(), QString("Send..."));

    f.enterScreen(FormState::Sending);
    QVERIFY(f.progress->isVisible());
    QCOMPARE(f.cancel->text(), QString("Abort"));
    QVERIFY(f.startOver->isVisible());
    QVERIFY(!f.startOver->isEnabled());
    QVERIFY(!f.send->isEnabled());
    QCOMPARE(f.send->toolTip(), QString("Submitting the report..."));
    QVERIFY(f.tabs->isVisible());
    QVERIFY(!f.tabs->isEnabled());
    // Nothing else is touched: the caption and the banners stay as the compose screen left them.
    QCOMPARE(f.send->text(), QString("Send..."));
    QVERIFY(visible(window, "layout_banner_bug_2"));
    QVERIFY(!visible(window, "layout_banner_main_2"));
}

// A failed upload brings the compose screen back with the progress bar still shown and
// Start Over still disabled; the intro screen hides the bar but nothing enables the button.
void FormWindowTests::startOverStaysDisabledAfterSending()
{
    MainWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window, kEventWaitMs));
    FormWidgets f(window);
    fillReport(f, 0);
    QTest::mouseClick(f.feature, Qt::LeftButton);
    f.enterScreen(FormState::Sending);

    f.enterScreen(FormState::Composing);
    QVERIFY(f.progress->isVisible());
    QVERIFY(f.startOver->isVisible());
    QVERIFY(!f.startOver->isEnabled());
    QCOMPARE(f.cancel->text(), QString("Cancel"));
    QVERIFY(f.tabs->isEnabled());
    QVERIFY(f.send->isEnabled());

    f.enterScreen(FormState::Sending);
    QTest::mouseClick(f.cancel, Qt::LeftButton); // "Abort"
    QCOMPARE(MainWindowProbe::formState(window), qint32(FormState::Choosing));
    QVERIFY(!f.progress->isVisible());
    QVERIFY(!f.startOver->isVisible());
    QTest::mouseClick(f.bug, Qt::LeftButton);
    QVERIFY(f.startOver->isVisible());
    QVERIFY(!f.startOver->isEnabled());
    QVERIFY(!f.progress->isVisible());
}

void FormWindowTests::unknownScreenStateChangesNothing()
{
    MainWindow window;
    FormWidgets f(window);
    QTest::mouseClick(f.bug, Qt::LeftButton);
    const QString caption = f.send->text();
    const QString toolTip = f.send->toolTip();
    const QString nameStyle = f.name->styleSheet();
    f.name->setText(QStringLiteral("Ann"));
    f.tabs->setEnabled(false);
    f.enterScreen(FormState(3));
    QCOMPARE(f.send->text(), caption);
    QCOMPARE(f.send->toolTip(), toolTip);
    QCOMPARE(f.name->styleSheet(), nameStyle);
    QVERIFY(!f.tabs->isEnabled());
    QVERIFY(f.tabs->isVisibleTo(&window));
}

// The window applies the completeness verdict field by field: nothing missing, each
// field missing on its own, and everything missing, for both kinds. Every other
// combination of missing fields is a row of tests/form/tst_completeness.cpp, which
// needs no window. The expected values follow from the rules alone: done = total
// minus the missing counted fields; the tool tip is the one of the last incomplete
// tab, except that a missing name alone sets none, so the tool tip of the intro
// screen (the only recompute before this one) stays.
void FormWindowTests::eachMissingField_data()
{
    QTest::addColumn<bool>("bugReport");
    QTest::addColumn<int>("missing");
    for (const bool bugReport : {true, false}) {
        const int fields = bugReport ? 7 : 6;
        QList<int> masks{0, (1 << fields) - 1};
        for (int bit = 0; bit < fields; ++bit)
            masks << (1 << bit);
        for (const int missing : masks) {
            QTest::addRow("%s, missing %s", bugReport ? "bug" : "feature",
                          qPrintable(fieldNames(missing).join(QLatin1Char('+'))))
                << bugReport << missing;
        }
    }
}
void FormWindowTests::eachMissingField()
{
    QFETCH(bool, bugReport);
    QFETCH(int, missing);
    MainWindow window;
    FormWidgets f(window);
    // A feature request is sent without attachments, so that none are there to count.
    fillReport(f, bugReport ? missing : missing | AttachmentsField);
    QTest::mouseClick(bugReport ? f.bug : f.feature, Qt::LeftButton);

    const int total = bugReport ? 7 : 6;
    int done = total;
    for (int bit = 0; bit < total; ++bit) {
        if (missing & (1 << bit))
            --done;
    }
    QString toolTip = kChooseToolTip;
    if (missing & EmailField)
        toolTip = kIdentityToolTip;
    if (missing & (AreaField | BuildField))
        toolTip = kDetailsToolTip;
    if (missing & (TitleField | DescriptionField))
        toolTip = kDescriptionToolTip;
    if (bugReport && (missing & AttachmentsField))
        toolTip = kAttachmentsToolTip;
    if (done == total)
        toolTip = kSubmitToolTip;

    const QString caption =
        done == total ? QStringLiteral("Send...") : QStringLiteral("Completed %1/%2").arg(done).arg(total);
    QCOMPARE(f.send->text(), caption);
    QCOMPARE(f.send->isEnabled(), done == total);
    QCOMPARE(f.send->toolTip(), toolTip);

    const auto style = [missing](int field) { return (missing & field) ? missingFieldStyle() : QString(); };
    QCOMPARE(f.name->styleSheet(), style(NameField));
    QCOMPARE(f.email->styleSheet(), style(EmailField));
    QCOMPARE(f.area->styleSheet(), style(AreaField));
    QCOMPARE(f.build->styleSheet(), style(BuildField));
    QCOMPARE(f.title->styleSheet(), style(TitleField));
    QCOMPARE(f.description->styleSheet(), style(DescriptionField));
    QCOMPARE(f.attachments->styleSheet(), bugReport ? style(AttachmentsField) : QString());
}

void FormWindowTests::bugReportNeedsAnAttachment()
{
    for (const bool bugReport : {true, false}) {
        MainWindow window;
        FormWidgets f(window);
        QTest::mouseClick(bugReport ? f.bug : f.feature, Qt::LeftButton);
        QTest::keyClicks(f.name, "Ann");
        QTest::keyClicks(f.email, "ann@example.com");
        f.area->setCurrentRow(5);
        QTest::keyClicks(f.title->lineEdit(), "Crash");
        QTest::keyClicks(f.description, "Steps");
        if (bugReport) {
            QCOMPARE(f.send->text(), QString("Completed 6/7"));
            QVERIFY(!f.send->isEnabled());
            QCOMPARE(f.send->toolTip(), kAttachmentsToolTip);
            QCOMPARE(f.attachments->styleSheet(), missingFieldStyle());
        } else {
            QCOMPARE(f.send->text(), QString("Send..."));
            QVERIFY(f.send->isEnabled());
            QCOMPARE(f.send->toolTip(), kSubmitToolTip);
            QCOMPARE(f.attachments->styleSheet(), QString());
        }
    }
}

// Clearing the name of a complete feature request flags it and counts it, but the
// send button keeps the tool tip it had: a missing name sets none.
void FormWindowTests::missingNameKeepsThePreviousToolTip()
{
    MainWindow window;
    FormWidgets f(window);
    QTest::mouseClick(f.feature, Qt::LeftButton);
    QTest::keyClicks(f.email, "ann@example.com");
    f.area->setCurrentRow(5);
    QTest::keyClicks(f.title->lineEdit(), "Crash");
    QTest::keyClicks(f.description, "Steps");
    // The description was the last tab to fill; its tool tip outlives it.
    QCOMPARE(f.name->styleSheet(), missingFieldStyle());
    QCOMPARE(f.send->text(), QString("Completed 5/6"));
    QCOMPARE(f.send->toolTip(), kDescriptionToolTip);
    QTest::keyClicks(f.name, "A");
    QCOMPARE(f.send->text(), QString("Send..."));
    QCOMPARE(f.send->toolTip(), kSubmitToolTip);

    QTest::keyClick(f.name, Qt::Key_Backspace);
    QCOMPARE(f.name->text(), QString());
    QCOMPARE(f.name->styleSheet(), missingFieldStyle());
    QCOMPARE(f.email->styleSheet(), QString());
    QCOMPARE(f.send->text(), QString("Completed 5/6"));
    QVERIFY(!f.send->isEnabled());
    QCOMPARE(f.send->toolTip(), kSubmitToolTip);
}

void FormWindowTests::spacesCountAsFilledText()
{
    MainWindow window;
    FormWidgets f(window);
    QTest::mouseClick(f.feature, Qt::LeftButton);
    QTest::keyClicks(f.name, " ");
    QTest::keyClicks(f.email, "  ");
    f.area->setCurrentRow(0);
    QTest::keyClicks(f.title->lineEdit(), " ");
    QTest::keyClicks(f.description, "\t ");
    QCOMPARE(f.send->text(), QString("Send..."));
    QVERIFY(f.send->isEnabled());
    QCOMPARE(f.send->toolTip(), kSubmitToolTip);
    for (QWidget *field : {static_cast<QWidget *>(f.name), static_cast<QWidget *>(f.email),
                           static_cast<QWidget *>(f.title), static_cast<QWidget *>(f.description)})
        QCOMPARE(field->styleSheet(), QString());
}
