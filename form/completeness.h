#pragma once

// The completeness rule of the report form, apart from its widgets: which fields keep
// a report from being sent, how many of them are done, which hint the Send button
// gives, and which tab a press on the disabled button leads to. Plain C++.

#include "form/reporttab.h"

#include <optional>

namespace completeness {

// What the form says about each field that a report needs.
struct FormFacts
{
    bool nameFilled = false;
    bool emailFilled = false;
    bool areaChosen = false;
    bool buildFilled = false;
    bool titleFilled = false;
    bool descriptionFilled = false;
    bool hasAttachments = false;
};

// The fields, one bit each, in the form's order.
enum Field : unsigned {
    NameField = 1u << 0,
    EmailField = 1u << 1,
    AreaField = 1u << 2,
    BuildField = 1u << 3,
    TitleField = 1u << 4,
    DescriptionField = 1u << 5,
    AttachmentsField = 1u << 6,
};

// The hint on the Send button. Unchanged: the rule leaves whatever hint was there, which
// happens when the name alone is missing on the Identity tab.
enum class SendHint { Unchanged, CompleteIdentity, CompleteDetails, CompleteDescription, AddAttachments, Submit };

struct Verdict
{
    int done = 0;
    int total = 0;
    SendHint hint = SendHint::Unchanged;
    unsigned flagged = 0; // fields shown as missing
    unsigned cleared = 0; // fields shown plainly; a field in neither set is left as it is

    // Send is enabled exactly when nothing is missing.
    bool sendEnabled() const { return done == total; }
};

// A bug report needs at least one attachment; a feature request does not look at them.
Verdict evaluate(const FormFacts &facts, bool bugReport);

// The first tab with a missing field, for the press on the disabled Send button. The
// build number is not looked at here, unlike in evaluate(): a report whose only gap is
// the build leads nowhere.
std::optional<ReportTab> firstMissingTab(const FormFacts &facts, bool bugReport);

} // namespace completeness
