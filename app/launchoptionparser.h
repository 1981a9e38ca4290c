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

// What the options ask of the window, in the terms it applies them in.
struct LaunchRequest
{
    // What one option does, in the order given: each takes effect as it comes.
    enum class Action {
        FixKind, // any "mode": started for one kind of report, no way back to the choice
        ShowBugReport, // after FixKind, for "mode=bug"
        ShowFeatureRequest, // after FixKind, for "mode=feature"
        Attach, // "attach": the file, if it exists
    };
    struct Step
    {
        Action action;
        QString file; // for Attach
        bool operator==(const Step &other) const { return action == other.action && file == other.file; }
    };

    QList<Step> steps;
    // Chosen once all options are known: the last "area" value (empty: none), and
    // whether any "lockarea" came, whatever its value ("lockarea=0" too).
    QString area;
    bool lockArea = false;
};

LaunchRequest launchRequest(const QList<LaunchOption> &options);
