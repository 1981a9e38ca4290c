#include "attachments/richtextpushbutton.h"

#include <QPainter>
#include <QPalette>
#include <QPixmap>
#include <QTextDocument>

namespace {

QString plainTextOf(const QString &html)
{
    QTextDocument document;
    document.setHtml(html);
    return document.toPlainText();
}

// What a screen reader announces for a caption: its lines joined by a blank.
QString spokenCaption(const QString &plainText)
{
    return plainText.simplified();
}

} // namespace

RichTextPushButton::RichTextPushButton(QWidget *parent)
    : QPushButton(parent)
{
}

RichTextPushButton::~RichTextPushButton() = default;

void RichTextPushButton::setHtml(const QString &html)
{
    // The button's text is empty, so without a name a screen reader would announce only
    // an unlabelled icon. The name follows the caption (and so its translation) unless
    // someone gave the button a name of its own.
    const bool nameFollowsCaption = accessibleName().isEmpty() || accessibleName() == spokenCaption(text());
    m_htmlText = html;
    m_isRichText = true;

    // The button's own text must never show through the rendered caption.
    QPalette transparentText;
    transparentText.setBrush(QPalette::ButtonText, QBrush(Qt::transparent, Qt::SolidPattern));
    setPalette(transparentText);

    QTextDocument document;
    document.setPageSize(QSizeF(rect().width(), rect().height()));
    document.setHtml(html);

    QPixmap pixmap(static_cast<int>(document.size().width()), static_cast<int>(document.size().height()));
    pixmap.fill(Qt::transparent);
    {
        QPainter painter(&pixmap);
        document.drawContents(&painter, QRectF(pixmap.rect()));
    }

    setIcon(QIcon(pixmap));
    setIconSize(pixmap.size());
    if (nameFollowsCaption)
        setAccessibleName(spokenCaption(text()));
}

void RichTextPushButton::setText(const QString &text)
{
    if (!text.isEmpty())
        setHtml(text);
}

QString RichTextPushButton::text() const
{
    return m_isRichText ? plainTextOf(m_htmlText) : QPushButton::text();
}

QString RichTextPushButton::htmlText() const
{
    return m_isRichText ? m_htmlText : QPushButton::text();
}
