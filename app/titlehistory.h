#pragma once

// The history of report titles: the title box's list and what the settings file keeps
// of it. Newest first, at most five, each title once (letter case counts).

#include <QString>
#include <QStringList>

namespace titlehistory {

// The title box holds at most this many (its maximum count), dropping the oldest when
// a new title comes first.
constexpr int kLength = 5;

// Whether a title entered in the box joins the history: one that is not empty and not
// there yet. A title already there stays where it is.
bool joins(const QStringList &history, const QString &title);

// The history as the settings file keeps it: each title once, where it first comes.
QStringList stored(const QStringList &history);

} // namespace titlehistory
