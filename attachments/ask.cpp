#include "attachments/ask.h"

#include <QCheckBox>
#include <QLayout>
#include <QPushButton>

Ask::Ask(QWidget *parent, const QString &title, const QIcon &icon)
    : m_parent(parent)
    , m_title(title)
    , m_icon(icon)
{
}

void Ask::prepare(QMessageBox &box, const QString &text, bool with_cancel, bool with_do_not_ask,
                  const QStringList &labels)
{
    box.setText(text);
    box.setWindowTitle(m_title);
    if (!m_icon.isNull())
        box.setWindowIcon(m_icon);

    QPushButton *lastAdded = nullptr;
    if (!labels.isEmpty()) {
        static const QMessageBox::ButtonRole roles[] = {QMessageBox::YesRole, QMessageBox::NoRole,
                                                        QMessageBox::RejectRole};
        const int used = qMin(labels.size(), 3);
        for (int i = 0; i < used; ++i)
            lastAdded = box.addButton(labels.at(i), roles[i]);
    } else {
        QMessageBox::StandardButtons buttons = QMessageBox::Yes | QMessageBox::No;
        if (with_cancel)
            buttons |= QMessageBox::Cancel;
        box.setStandardButtons(buttons);
    }

    if (with_cancel && lastAdded)
        box.setDefaultButton(lastAdded);
    else
        box.setDefaultButton(with_cancel ? QMessageBox::Cancel : QMessageBox::Yes);

    m_doNotAskBox = nullptr;
    if (with_do_not_ask) {
        m_doNotAskBox = new QCheckBox(QStringLiteral("Do not ask again"), &box);
        box.layout()->addWidget(m_doNotAskBox);
    }
}

int Ask::show(QMessageBox &box, QMessageBox::Icon kind, bool mapResult)
{
    box.setIcon(kind);
    int result = box.exec();
    if (mapResult)
        result = (result == 0) ? QMessageBox::Ok : QMessageBox::Cancel;
    if (m_doNotAskBox)
        m_doNotAskState = m_doNotAskBox->isChecked();
    m_doNotAskBox = nullptr; // it dies with the box
    return result;
}

int Ask::question(const QString &text, bool with_cancel, bool with_do_not_ask, const QStringList &labels)
{
    m_doNotAskState = false;
    QStringList shown = labels;
    if (shown.isEmpty()) {
        shown << tr("Yes") << tr("No");
        if (with_cancel)
            shown << tr("Cancel");
    }
    QMessageBox box(m_parent);
    prepare(box, text, with_cancel, with_do_not_ask, shown);
    return show(box, QMessageBox::Question, labels.isEmpty() && with_cancel);
}

int Ask::information(const QString &text, bool with_cancel, bool with_do_not_ask, const QStringList &labels)
{
    m_doNotAskState = false;
    QStringList shown = labels;
    if (shown.isEmpty()) {
        shown << tr("OK");
        if (with_cancel)
            shown << tr("Cancel");
    }
    QMessageBox box(m_parent);
    prepare(box, text, with_cancel, with_do_not_ask, shown);
    return show(box, QMessageBox::Information, labels.isEmpty() && with_cancel);
}

int Ask::warning(const QString &text, const QStringList &labels)
{
    m_doNotAskState = false;
    QMessageBox box(m_parent);
    prepare(box, text, false, false, labels.isEmpty() ? QStringList{tr("OK")} : labels);
    return show(box, QMessageBox::Warning, false);
}

int Ask::critical(const QString &text, const QStringList &labels)
{
    m_doNotAskState = false;
    QMessageBox box(m_parent);
    prepare(box, text, false, false, labels.isEmpty() ? QStringList{tr("OK")} : labels);
    return show(box, QMessageBox::Critical, false);
}

int Ask::question(QWidget *parent, const QString &title, const QString &text, bool *doNotAsk, bool with_cancel,
                  bool with_do_not_ask, const QStringList &labels)
{
    Ask ask(parent, title, parent ? parent->windowIcon() : QIcon());
    const int result = ask.question(text, with_cancel, with_do_not_ask, labels);
    if (with_do_not_ask && doNotAsk)
        *doNotAsk = ask.doNotAsk();
    return result;
}
