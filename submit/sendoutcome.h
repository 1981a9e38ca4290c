#pragma once

// How a send goes, from the Send button to the box that ends it: the outcome the
// window keeps, and what each event of the transfer makes of it.

#include <QtGlobal>

// How the latest upload is going; kept as a plain 32-bit value.
enum class SendOutcome : qint32 { Idle = 0, InFlight = 1, Aborted = 2, Failed = 3 };

namespace sendoutcome {

// Cancel (then labelled Abort) while sending: the transfer is dropped without a box.
constexpr SendOutcome afterAbort()
{
    return SendOutcome::Aborted;
}

// The transfer reported an error: shown when it finishes, even after an Abort.
constexpr SendOutcome afterError()
{
    return SendOutcome::Failed;
}

enum class Box { None, Submitted, Failed };
enum class Next { Quit, BackToForm };

struct Finish
{
    Box box;
    Next next;
};

// The transfer finished (also after an Abort that did not get to drop it first):
// a delivered report ends the program; a failed or aborted one goes back to the form.
// Only the transfer's error decides the box; none is shown after an Abort.
constexpr Finish afterFinish(SendOutcome outcome, bool transferFailed)
{
    const Box box = outcome == SendOutcome::Aborted ? Box::None : transferFailed ? Box::Failed : Box::Submitted;
    return {box, outcome == SendOutcome::InFlight ? Next::Quit : Next::BackToForm};
}

} // namespace sendoutcome
