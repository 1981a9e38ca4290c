#pragma once

// What a person reads on a window or box: every text, tool tip, placeholder, title
// and header of a widget and of its descendants that show, and the labels and buttons
// whose text does not fit them.

#include <QList>
#include <QRegularExpression>
#include <QSet>
#include <QString>
#include <QStringList>

class QWidget;

struct ShownText
{
    QString where; // "<object name or class> <what>", e.g. "button_Send toolTip"
    QString text; // as a person reads it: markup removed
};

// The texts of root and of every descendant visible to it. Line-edit contents, list,
// combo and tree rows are the user's data and are not taken, except the rows of
// list widgets ("<name> item"), which the program fills itself.
QList<ShownText> shownTexts(const QWidget *root);

// A text as it reads: rich text without its markup, images left out.
QString readableText(const QString &text);

// Pseudo text is wrapped in brackets (tools/pseudo_translate.py).
bool isPseudoText(const QString &text);

// Texts that may stay untranslated, each with the reason; see the test that lists them.
class AllowedTexts
{
public:
    struct Rule
    {
        QRegularExpression where;
        QString reason;
    };
    explicit AllowedTexts(const QList<Rule> &rules)
        : m_rules(rules)
    {
    }

    // The texts that are neither pseudo text nor allowed, as "where: text" lines.
    QStringList untranslated(const QList<ShownText> &texts);
    // The rules that no text has needed so far.
    QStringList unused() const;

private:
    QList<Rule> m_rules;
    QSet<int> m_used;
};

// Labels, buttons, check boxes and group titles under root (root included) that are
// shown and whose text does not fit the widget, as "<name>: needs W×H, has W×H".
QStringList cutOffTexts(const QWidget *root);
// Only the names of the lines cutOffTexts gives.
QStringList namesOf(const QStringList &cutOffLines);
