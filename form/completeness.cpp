#include "form/completeness.h"

#include <initializer_list>
#include <utility>

namespace completeness {

namespace {

// One tab's pair of fields: both plain when the pair is complete; otherwise each
// missing one flagged and counted, each filled one plain.
void judgePair(Verdict &verdict, bool firstFilled, Field first, bool secondFilled, Field second)
{
    if (firstFilled && secondFilled) {
        verdict.cleared |= first | second;
        return;
    }
    for (const auto &[filled, field] : {std::pair{firstFilled, first}, std::pair{secondFilled, second}}) {
        if (filled) {
            verdict.cleared |= field;
        } else {
            verdict.flagged |= field;
            --verdict.done;
        }
    }
}

} // namespace

Verdict evaluate(const FormFacts &facts, bool bugReport)
{
    Verdict verdict;
    verdict.total = bugReport ? 7 : 6;
    verdict.done = verdict.total;

    const bool identity = facts.nameFilled && facts.emailFilled;
    const bool details = facts.areaChosen && facts.buildFilled;
    const bool description = facts.titleFilled && facts.descriptionFilled;
    verdict.sendEnabled = identity && details && description && (!bugReport || facts.hasAttachments);

    // Each incomplete tab overrides the hint of the one before it.
    judgePair(verdict, facts.nameFilled, NameField, facts.emailFilled, EmailField);
    if (!facts.emailFilled)
        verdict.hint = SendHint::CompleteIdentity; // a missing name alone sets no hint
    judgePair(verdict, facts.areaChosen, AreaField, facts.buildFilled, BuildField);
    if (!details)
        verdict.hint = SendHint::CompleteDetails;
    judgePair(verdict, facts.titleFilled, TitleField, facts.descriptionFilled, DescriptionField);
    if (!description)
        verdict.hint = SendHint::CompleteDescription;
    if (bugReport) {
        if (facts.hasAttachments) {
            verdict.cleared |= AttachmentsField;
        } else {
            verdict.flagged |= AttachmentsField;
            --verdict.done;
            verdict.hint = SendHint::AddAttachments;
        }
    }
    if (verdict.done == verdict.total)
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
