// The completeness rule without a window: every combination of filled and missing
// fields, for both kinds of report, against the rule stated field by field.
#include "form/completeness.h"
#include "support/testenv.h"

#include <QtTest>

using namespace completeness;

namespace {

const char *const kFieldNames[] = {"name", "email", "area", "build", "title", "description", "attachments"};

FormFacts factsFromMissing(unsigned missing)
{
    FormFacts facts;
    facts.nameFilled = !(missing & NameField);
    facts.emailFilled = !(missing & EmailField);
    facts.areaChosen = !(missing & AreaField);
    facts.buildFilled = !(missing & BuildField);
    facts.titleFilled = !(missing & TitleField);
    facts.descriptionFilled = !(missing & DescriptionField);
    facts.hasAttachments = !(missing & AttachmentsField);
    return facts;
}

QByteArray rowName(bool bug, unsigned missing)
{
    QByteArray name = bug ? "bug, missing:" : "feature, missing:";
    for (int bit = 0; bit < 7; ++bit) {
        if (missing & (1u << bit))
            name += QByteArray(" ") + kFieldNames[bit];
    }
    return missing ? name : name + " nothing";
}

} // namespace

Q_DECLARE_METATYPE(completeness::SendHint)
Q_DECLARE_METATYPE(std::optional<ReportTab>)

class TestCompleteness : public QObject
{
    Q_OBJECT

private slots:
    void everyCombination_data()
    {
        QTest::addColumn<bool>("bug");
        QTest::addColumn<unsigned>("missing");
        QTest::addColumn<int>("total");
        QTest::addColumn<unsigned>("flagged");
        QTest::addColumn<unsigned>("cleared");
        QTest::addColumn<SendHint>("hint");
        QTest::addColumn<std::optional<ReportTab>>("jump");

        for (const bool bug : {true, false}) {
            // A feature request has no attachments field: its bit never varies.
            const unsigned fields = bug ? 0x7Fu : 0x3Fu;
            for (unsigned missing = 0; missing <= fields; ++missing) {
                // The hint of the last incomplete tab wins; the Identity tab gives one
                // only when the e-mail address is missing.
                SendHint hint = SendHint::Unchanged;
                if (missing & EmailField)
                    hint = SendHint::CompleteIdentity;
                if (missing & (AreaField | BuildField))
                    hint = SendHint::CompleteDetails;
                if (missing & (TitleField | DescriptionField))
                    hint = SendHint::CompleteDescription;
                if (missing & AttachmentsField)
                    hint = SendHint::AddAttachments;
                if (missing == 0)
                    hint = SendHint::Submit;

                // The first tab with a gap; the build number is not one.
                std::optional<ReportTab> jump;
                if (missing & (NameField | EmailField))
                    jump = ReportTab::Identity;
                else if (missing & AreaField)
                    jump = ReportTab::Details;
                else if (missing & (TitleField | DescriptionField))
                    jump = ReportTab::Description;
                else if (missing & AttachmentsField)
                    jump = ReportTab::Attachments;

                QTest::newRow(rowName(bug, missing).constData())
                    << bug << missing << (bug ? 7 : 6) << missing << (fields & ~missing) << hint << jump;
            }
        }
    }

    void everyCombination()
    {
        QFETCH(bool, bug);
        QFETCH(unsigned, missing);
        QFETCH(int, total);
        QFETCH(unsigned, flagged);
        QFETCH(unsigned, cleared);
        QFETCH(SendHint, hint);
        QFETCH(std::optional<ReportTab>, jump);

        const FormFacts facts = factsFromMissing(missing);
        const Verdict verdict = evaluate(facts, bug);
        QCOMPARE(verdict.total, total);
        QCOMPARE(verdict.done, total - qPopulationCount(quint32(flagged)));
        QCOMPARE(verdict.sendEnabled(), missing == 0);
        QCOMPARE(verdict.flagged, flagged);
        QCOMPARE(verdict.cleared, cleared);
        QCOMPARE(int(verdict.hint), int(hint));
        QCOMPARE(firstMissingTab(facts, bug).has_value(), jump.has_value());
        if (jump)
            QCOMPARE(int(*firstMissingTab(facts, bug)), int(*jump));
    }

    // The two asymmetries a reader might take for slips, spelled out.
    void missingNameAloneLeavesTheHint()
    {
        FormFacts facts = factsFromMissing(NameField);
        const Verdict verdict = evaluate(facts, true);
        QCOMPARE(int(verdict.hint), int(SendHint::Unchanged));
        QCOMPARE(verdict.done, 6);
        QCOMPARE(verdict.flagged, unsigned(NameField));
        QVERIFY(!verdict.sendEnabled());
    }

    void missingBuildAloneLeadsNowhere()
    {
        const FormFacts facts = factsFromMissing(BuildField);
        const Verdict verdict = evaluate(facts, false);
        QVERIFY(!verdict.sendEnabled());
        QCOMPARE(int(verdict.hint), int(SendHint::CompleteDetails));
        QVERIFY(!firstMissingTab(facts, false).has_value());
    }

    void tabsAreTheTabWidgetIndexes()
    {
        QCOMPARE(int(ReportTab::Introduction), 0);
        QCOMPARE(int(ReportTab::Identity), 1);
        QCOMPARE(int(ReportTab::Details), 2);
        QCOMPARE(int(ReportTab::Description), 3);
        QCOMPARE(int(ReportTab::Attachments), 4);
        QCOMPARE(int(ReportTab::Settings), 5);
    }
};

FB_TEST_MAIN(TestCompleteness)
#include "tst_completeness.moc"
