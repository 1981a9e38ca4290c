#pragma once

#include <QPushButton>
#include <QString>

// A push button that shows an HTML caption. Qt's button draws plain text only, so
// the HTML is rendered once into a transparent pixmap that becomes the button's icon.
// The plain text of the caption, its lines joined by a blank, is the button's
// accessible name unless one is set from outside.
class RichTextPushButton : public QPushButton
{
    Q_OBJECT

public:
    explicit RichTextPushButton(QWidget *parent = nullptr);
    ~RichTextPushButton() override;

    void setHtml(const QString &html);
    // Hides QPushButton::setText so that the generated form's caption goes through
    // the renderer. An empty text is ignored and keeps the current rendering.
    void setText(const QString &text);
    QString text() const;
    QString htmlText() const;

private:
    QString m_htmlText;
    bool m_isRichText = false;
};
