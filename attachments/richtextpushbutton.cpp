#include "attachments/richtextpushbutton.h"

#include <QPainter>
#include <QPalette>
#include <QPixmap>
#include <QTextDocument>

RichTextPushButton::RichTextPushButton(QWidget *parent)
    : QPushButton(parent)
{
}

RichTextPushButton::~RichTextPushButton() = default;

void RichTextPushButton::setHtml(const QString &html)
{
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
}

void RichTextPushButton::setText(const QString &text)
{
    if (!text.isEmpty())
        setHtml(text);
}

QString RichTextPushButton::text() const
{
    if (!m_isRichText)
        return QPushButton::text();
    QTextDocument document;
    document.setHtml(m_htmlText);
    return document.toPlainText();
}

QString RichTextPushButton::htmlText() const
{
    return m_isRichText ? m_htmlText : QPushButton::text();
}
