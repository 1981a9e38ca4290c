#include "showntexts.h"

#include "attachments/richtextpushbutton.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFontMetrics>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStyle>
#include <QStyleOptionButton>
#include <QTabBar>
#include <QTabWidget>
#include <QTextDocument>
#include <QTextEdit>
#include <QTreeWidget>

namespace {

QString nameOf(const QWidget *widget)
{
    return widget->objectName().isEmpty() ? QString::fromLatin1(widget->metaObject()->className())
                                          : widget->objectName();
}

// The widget and its descendants that show when it shows.
QList<const QWidget *> shownWidgets(const QWidget *root)
{
    QList<const QWidget *> widgets{root};
    for (const QWidget *child : root->findChildren<QWidget *>()) {
        if (child->isVisibleTo(root) && !child->isWindow())
            widgets << child;
    }
    return widgets;
}

// Qt's own buttons of a button box (OK, Cancel): their texts are Qt's catalogue's.
bool isStandardButton(const QAbstractButton *button)
{
    const QDialogButtonBox *box = qobject_cast<const QDialogButtonBox *>(button->parentWidget());
    return box && box->standardButton(const_cast<QAbstractButton *>(button)) != QDialogButtonBox::NoButton;
}

bool isRich(const QLabel *label)
{
    return label->textFormat() == Qt::RichText
           || (label->textFormat() == Qt::AutoText && Qt::mightBeRichText(label->text()));
}

// Unwrapped, on as many lines as it has.
QSizeF richTextSize(const QString &html, const QFont &font)
{
    QTextDocument document;
    document.setDefaultFont(font);
    document.setDocumentMargin(0); // as QLabel lays it out
    document.setHtml(html);
    return QSizeF(document.idealWidth(), document.size().height());
}

QSize plainTextSize(const QString &text, const QFontMetrics &metrics)
{
    int width = 0;
    const QStringList lines = text.split('\n');
    for (const QString &line : lines)
        width = qMax(width, metrics.horizontalAdvance(line));
    return QSize(width, metrics.height() + (lines.size() - 1) * metrics.lineSpacing());
}

// What a label's text needs and the room it has: (needed, room). A wrapped label needs
// its longest word across and, at its width, the height the label itself asks for.
QPair<QSize, QSize> labelFit(const QLabel *label)
{
    const int margin = label->margin();
    const QRect room = label->contentsRect().adjusted(margin, margin, -margin, -margin);
    if (label->wordWrap()) {
        const int extraHeight = label->height() - room.height();
        return {QSize(label->minimumSizeHint().width() - (label->width() - room.width()),
                      label->heightForWidth(label->width()) - extraHeight),
                room.size()};
    }
    const QSize needed = isRich(label) ? richTextSize(label->text(), label->font()).toSize()
                                       : plainTextSize(label->text(), label->fontMetrics());
    return {needed, room.size()};
}

QStyleOptionButton buttonOption(const QAbstractButton *button)
{
    QStyleOptionButton option;
    option.initFrom(button);
    option.text = button->text();
    option.icon = button->icon();
    option.iconSize = button->iconSize();
    return option;
}

QPair<QSize, QSize> buttonFit(const QAbstractButton *button)
{
    const QStyleOptionButton option = buttonOption(button);
    if (const RichTextPushButton *rich = qobject_cast<const RichTextPushButton *>(button)) {
        // The caption is a picture rendered from the HTML; it is cut when larger than the room.
        const QRect room = button->style()->subElementRect(QStyle::SE_PushButtonContents, &option, button);
        return {rich->iconSize(), room.size()};
    }
    const bool checkBox = qobject_cast<const QCheckBox *>(button) != nullptr;
    const QRect room = button->style()->subElementRect(
        checkBox ? QStyle::SE_CheckBoxContents : QStyle::SE_PushButtonContents, &option, button);
    QSize needed = plainTextSize(button->text(), button->fontMetrics());
    if (!button->icon().isNull() && !checkBox)
        needed.rwidth() += button->iconSize().width() + 4;
    return {needed, room.size()};
}

QString fitLine(const QString &name, const QPair<QSize, QSize> &fit)
{
    return QStringLiteral("%1: needs %2x%3, has %4x%5")
        .arg(name)
        .arg(fit.first.width())
        .arg(fit.first.height())
        .arg(fit.second.width())
        .arg(fit.second.height());
}

bool cut(const QPair<QSize, QSize> &fit)
{
    return fit.first.width() > fit.second.width() || fit.first.height() > fit.second.height();
}

} // namespace

QString readableText(const QString &text)
{
    QString readable = text;
    if (Qt::mightBeRichText(text)) {
        QTextDocument document;
        document.setHtml(text);
        readable = document.toPlainText();
    }
    readable.remove(QChar::ObjectReplacementCharacter); // an image
    return readable;
}

bool isPseudoText(const QString &text)
{
    const QString trimmed = text.trimmed();
    return trimmed.startsWith('[') && trimmed.endsWith(']');
}

QList<ShownText> shownTexts(const QWidget *root)
{
    QList<ShownText> texts;
    auto add = [&](const QWidget *widget, const QString &what, const QString &text) {
        const QString readable = readableText(text);
        if (!readable.trimmed().isEmpty())
            texts.append({nameOf(widget) + ' ' + what, readable});
    };
    for (const QWidget *widget : shownWidgets(root)) {
        if (widget->isWindow())
            add(widget, "windowTitle", widget->windowTitle());
        add(widget, "toolTip", widget->toolTip());
        if (const QLabel *label = qobject_cast<const QLabel *>(widget))
            add(widget, "text", label->text());
        if (const RichTextPushButton *rich = qobject_cast<const RichTextPushButton *>(widget))
            add(widget, "text", rich->text());
        else if (const QAbstractButton *button = qobject_cast<const QAbstractButton *>(widget))
            add(widget, isStandardButton(button) ? "standard button" : "text", button->text());
        if (const QGroupBox *group = qobject_cast<const QGroupBox *>(widget))
            add(widget, "title", group->title());
        if (const QLineEdit *line = qobject_cast<const QLineEdit *>(widget))
            add(widget, "placeholderText", line->placeholderText());
        if (const QPlainTextEdit *edit = qobject_cast<const QPlainTextEdit *>(widget))
            add(widget, "placeholderText", edit->placeholderText());
        if (const QTextEdit *edit = qobject_cast<const QTextEdit *>(widget))
            add(widget, "placeholderText", edit->placeholderText());
        if (const QTabWidget *tabs = qobject_cast<const QTabWidget *>(widget)) {
            for (int i = 0; i < tabs->count(); ++i) {
                add(widget, QStringLiteral("tab %1").arg(i), tabs->tabText(i));
                add(widget, QStringLiteral("tab %1 toolTip").arg(i), tabs->tabToolTip(i));
            }
        }
        if (const QTreeWidget *tree = qobject_cast<const QTreeWidget *>(widget)) {
            for (int column = 0; column < tree->columnCount(); ++column)
                add(widget, QStringLiteral("header %1").arg(column), tree->headerItem()->text(column));
        }
        if (const QListWidget *list = qobject_cast<const QListWidget *>(widget)) {
            for (int row = 0; row < list->count(); ++row)
                add(widget, "item", list->item(row)->text());
        }
    }
    return texts;
}

QStringList AllowedTexts::untranslated(const QList<ShownText> &texts)
{
    QStringList lines;
    for (const ShownText &shown : texts) {
        if (isPseudoText(shown.text))
            continue;
        bool allowed = false;
        for (int i = 0; i < m_rules.size() && !allowed; ++i) {
            if (m_rules.at(i).where.match(shown.where).hasMatch()) {
                allowed = true;
                m_used.insert(i);
            }
        }
        if (!allowed)
            lines << shown.where + ": " + shown.text;
    }
    return lines;
}

QStringList AllowedTexts::unused() const
{
    QStringList rules;
    for (int i = 0; i < m_rules.size(); ++i) {
        if (!m_used.contains(i))
            rules << m_rules.at(i).where.pattern();
    }
    return rules;
}

QStringList cutOffTexts(const QWidget *root)
{
    QStringList lines;
    for (const QWidget *widget : shownWidgets(root)) {
        if (const QLabel *label = qobject_cast<const QLabel *>(widget)) {
            if (!label->text().isEmpty() && cut(labelFit(label)))
                lines << fitLine(nameOf(widget), labelFit(label));
        } else if (const QAbstractButton *button = qobject_cast<const QAbstractButton *>(widget)) {
            const bool hasText = !button->text().isEmpty() || qobject_cast<const RichTextPushButton *>(button);
            if (hasText && (qobject_cast<const QPushButton *>(button) || qobject_cast<const QCheckBox *>(button))
                && cut(buttonFit(button)))
                lines << fitLine(nameOf(widget), buttonFit(button));
        } else if (const QGroupBox *group = qobject_cast<const QGroupBox *>(widget)) {
            const QPair<QSize, QSize> fit{group->minimumSizeHint(), group->size()};
            if (!group->title().isEmpty() && fit.first.width() > fit.second.width())
                lines << fitLine(nameOf(widget), fit);
        } else if (const QTabBar *bar = qobject_cast<const QTabBar *>(widget)) {
            // Tabs that do not fit are scrolled out of the bar: one line for the bar.
            int needed = 0;
            for (int i = 0; i < bar->count(); ++i)
                needed += bar->tabRect(i).width();
            if (needed > bar->width())
                lines << fitLine(nameOf(bar->parentWidget()) + " tabs", {QSize(needed, bar->height()), bar->size()});
        }
    }
    return lines;
}

QStringList namesOf(const QStringList &cutOffLines)
{
    QStringList names;
    for (const QString &line : cutOffLines)
        names << line.section(':', 0, 0);
    return names;
}
