#include "form/emailcheck.h"

namespace emailcheck {

AfterEdit afterEdit(State state, bool wellFormed)
{
    if (state.lookupPending)
        return {true, state, false};
    state.emailValid = false;
    return {false, state, wellFormed};
}

AfterTimer afterTimer(State state, bool empty, bool wellFormed)
{
    if (empty)
        return {state, Display::Empty, false};
    if (wellFormed) {
        state.lookupPending = true;
        return {state, Display::Validating, true};
    }
    state.emailValid = false;
    return {state, Display::BadlyFormed, false};
}

AfterLookup afterLookup(State state, const QHostInfo &info)
{
    const bool found = info.error() == QHostInfo::NoError && !info.addresses().isEmpty();
    state.emailValid = found;
    state.lookupPending = false;
    return {state, found ? Display::Valid : Display::DomainNotFound};
}

bool validated(const QHostInfo &info)
{
    return info.lookupId() != -1 && info.error() == QHostInfo::NoError;
}

} // namespace emailcheck
