#pragma once

#include <QList>
#include <QPair>
#include <QString>
#include <QStringList>

// One launch option: a key and its value; the value may be empty.
using LaunchOption = QPair<QString, QString>;

// The options in the order given, from the program's arguments without the program
// path. Either the first argument is a "kvfb://key=value,..." URL, and then it alone
// counts, or every "--key=value" (or "--key") argument is one option. Whatever does not
// fit is skipped without a word; no unescaping of any kind is done.
QList<LaunchOption> parseLaunchOptions(const QStringList &arguments);
