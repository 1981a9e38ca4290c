#pragma once

// The e-mail check's rules: what an edit, the timer and a look-up's answer do to the
// verdict the window keeps (emailValid, lookupPending) and to what it shows. The
// window holds the values, the pattern and the timer; these decide.

#include <QHostInfo>

namespace emailcheck {

// What the field and the labels beside it show.
enum class Display { Empty, Validating, Valid, BadlyFormed, DomainNotFound };

struct State
{
    bool emailValid = false; // the shown verdict: true only after a successful look-up
    bool lookupPending = false; // a look-up has started and its answer has not come
};

// An edit: ignored while an answer is outstanding (neither the verdict nor the timer
// changes); otherwise the verdict is cleared, and a well-formed address (re)starts
// the timer. The display stays as it was.
struct AfterEdit
{
    bool ignored;
    State state;
    bool startTimer;
};
AfterEdit afterEdit(State state, bool wellFormed);

// The timer ran out (or a remembered address is checked at start): an empty field
// shows nothing, a well-formed address starts its domain's look-up, anything else is
// badly formed.
struct AfterTimer
{
    State state;
    Display display;
    bool startLookup;
};
AfterTimer afterTimer(State state, bool empty, bool wellFormed);

// The look-up's answer: found when it has no error and at least one address.
struct AfterLookup
{
    State state;
    Display display;
};
AfterLookup afterLookup(State state, const QHostInfo &info);

// The report's "validated" value: true exactly when a look-up has completed (its id is
// not -1) and reported no error. A look-up that found no addresses still counts.
bool validated(const QHostInfo &info);

} // namespace emailcheck
