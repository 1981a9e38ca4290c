#pragma once

#include <QString>
#include <QStringList>

// The report window's Designer form (form/mainwindow.ui) as text: Ui::MainWindow set up
// on a plain QMainWindow, shown at the form's 720 x 470 and laid out, every tab page in
// turn, then described one fact a line, in the order setupUi creates things. Each line
// names its widget or layout, so a changed line says on its own what changed.
//
// The checked-in record is tests/form/data/mainwindow.dump; form/form_layout compares
// the form with it, and tools/update-form-dump.sh writes it anew after a change in
// Designer (the first lines of the file say what it holds).
//
// Needs a QApplication set up as the test suite sets it (FB_TEST_MAIN), on the offscreen
// platform, so that the fonts and the geometry are the suite's.
QStringList formDumpLines();

// The lines with the values that follow from the fonts and the style, or the others:
// geometry, the sizes that showing changed ("(shown)") and icons the program drew from
// text ("(drawn)"). Under Wine the offscreen platform has other fonts and another style
// than on Linux, so the Windows run compares the others alone.
enum class FontDependence { Not, FollowsTheFonts };
bool followsTheFonts(const QString &line);
QStringList formDumpLines(const QStringList &lines, FontDependence which);

// What differs between an expected and an actual record, for a failure message; empty
// when they agree. The lines apart from those that follow the fonts come first, as a
// unified diff (formDumpDifferences), then, when asked for, a diff of those.
QString formDumpReport(const QStringList &expected, const QStringList &actual, bool withFontDependentLines);

// Where the checked-in record is.
QString checkedInFormDumpPath();

// A dump file as lines (UTF-8, "\n" between lines). False, with *error said, when it
// cannot be read.
bool readFormDump(const QString &path, QStringList *lines, QString *error);
bool writeFormDump(const QString &path, const QStringList &lines, QString *error);

// The differences between two records as a unified diff: "-" lines only the expected
// record has, "+" lines only the actual one has, with `context` unchanged lines around
// each change and "@@ -line,count +line,count @@" before each group. Empty when they agree.
QString formDumpDifferences(const QStringList &expected, const QStringList &actual, int context = 3);

// A string on one line, in double quotes: backslash, quote, line breaks, tabs and
// other control characters escaped C-style (\\ \" \n \r \t \x{1b}), and every
// character outside ASCII as its code point (\u{FC} for ü), so the file stays ASCII.
QString quotedForDump(const QString &text);
