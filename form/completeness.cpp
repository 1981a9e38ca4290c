#include "form/completeness.h"

namespace completeness {

namespace {

// One field: plain when filled; otherwise flagged and not counted as done.
void judgeField(Verdict &verdict, bool filled, Field field)
{
    if (filled) {
        verdict.cleared |= field;
    } else {
        verdict.flagged |= field;
        --verdict.done;
    }
}

} // namespace

Verdict evaluate(const FormFacts &facts, bool bugReport)
{
    Verdict verdict;
    verdict.total = bugReport ? 7 : 6;
    verdict.done = verdict.total;

    const bool details = facts.areaChosen && facts.buildFilled;
    const bool description = facts.titleFilled && facts.descriptionFilled;

    // Each incomplete tab overrides the hint of the one before it.
    judgeField(verdict, facts.nameFilled, NameField);
    judgeField(verdict, facts.emailFilled, EmailField);
    if (!facts.emailFilled)
        verdict.hint = SendHint::CompleteIdentity; // a missing name alone sets no hint
    judgeField(verdict, facts.areaChosen, AreaField);
    judgeField(verdict, facts.buildFilled, BuildField);
    if (!details)
        verdict.hint = SendHint::CompleteDetails;
    judgeField(verdict, facts.titleFilled, TitleField);
    judgeField(verdict, facts.descriptionFilled, DescriptionField);
    if (!description)
        verdict.hint = SendHint::CompleteDescription;
    if (bugReport) {
        judgeField(verdict, facts.hasAttachments, AttachmentsField);
        if (!facts.hasAttachments)
            verdict.hint = SendHint::AddAttachments;
    }
    if (verdict.sendEnabled())
        verdict.hint = SendHint::Submit;
    return verdict;
}

std::optional<ReportTab> firstMissingTab(const FormFacts &facts, bool bugReport)
{
    if (!facts.nameFilled || !facts.emailFilled)
        return ReportTab::Identity;
    if (!facts.areaChosen)
        return ReportTab::Details;
    if (!facts.titleFilled || !facts.descriptionFilled)
        return ReportTab::Description;
    if (bugReport && !facts.hasAttachments)
        return ReportTab::Attachments;
    return std::nullopt;
}

} // namespace completeness
