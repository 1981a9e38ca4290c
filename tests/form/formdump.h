#pragma once

#include <QString>
#include <QStringList>

class QWidget;

// The report window's Designer form (form/mainwindow.ui) as text: Ui::MainWindow set up
// on a plain QMainWindow, resized to the program's first window size, 720 x 470, shown
// and laid out, every tab page in turn, then described one fact a line in the order
// setupUi creates things. Each line names its widget or layout, so a changed line says
// on its own what changed. (The bare form, every part of it showing, needs more room
// than 720 x 470: the window takes its layout's minimum size.)
//
// The checked-in record is tests/form/data/mainwindow.dump; form/form_layout compares
// the form with it, and tools/update-form-dump.sh writes it anew after a change in
// Designer. The first lines of the file say how to read it.
//
// Needs a QApplication set up as the test suite sets it (FB_TEST_MAIN), on the offscreen
// platform, so that the fonts and the geometry are the suite's.
QStringList formDumpLines();

// A widget of the form rather than one of Qt's helpers inside a widget (a tab widget's
// stack and tab bar, a scroll area's viewport, the tab bar's scroll buttons): the
// widgets the record describes.
bool isFormWidget(const QWidget *widget);

// Where the checked-in record is.
QString checkedInFormDumpPath();

// A record file as lines (UTF-8, "\n" after each line). False, with *error said, when
// it cannot be read or written.
bool readFormDump(const QString &path, QStringList *lines, QString *error);
bool writeFormDump(const QString &path, const QStringList &lines, QString *error);

// The differences between two records as a unified diff: "-" lines only the expected
// record has, "+" lines only the actual one has, with `context` unchanged lines around
// each change and "@@ -line,count +line,count @@" before each group. Empty when they agree.
QString formDumpDifferences(const QStringList &expected, const QStringList &actual, int context = 3);

// What differs between an expected and an actual record, for a failure message; empty
// when they agree. First a unified diff of the lines whose values do not follow from the
// fonts and the style, then, when asked for, one of those that do: geometry, the sizes
// that showing changed ("(shown)") and icons the program drew from text ("(drawn)").
// Under Wine the offscreen platform has other fonts and another style than on Linux, so
// the Windows run compares the first part alone.
QString formDumpReport(const QStringList &expected, const QStringList &actual, bool withFontDependentLines);

// A string on one line, in double quotes: backslash, quote, line breaks, tabs and
// other control characters escaped C-style (\\ \" \n \r \t \x{1B}), and every
// character outside ASCII as its code point (\u{FC} for ü), so the file stays ASCII.
QString quotedForDump(const QString &text);
