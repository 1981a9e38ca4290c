#include "support/modalanswerer.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QInputDialog>
#include <QLabel>
#include <QPushButton>
#include <QTest>

ModalAnswerer::ModalAnswerer(QObject *parent)
    : QObject(parent)
{
    m_timer.setInterval(10);
    connect(&m_timer, &QTimer::timeout, this, &ModalAnswerer::poll);
    m_timer.start();
}

ModalAnswerer::~ModalAnswerer()
{
    m_timer.stop();
    if (QWidget *modal = QApplication::activeModalWidget()) {
        if (QDialog *dialog = qobject_cast<QDialog *>(modal))
            dialog->reject();
        else
            modal->close();
    }
}

ModalAnswerer &ModalAnswerer::clickButton(const QString &text)
{
    return then([text](QWidget *modal) {
        const auto buttons = modal->findChildren<QAbstractButton *>();
        for (QAbstractButton *button : buttons) {
            if (button->text() == text && button->isVisible()) {
                button->click();
                return;
            }
        }
        qWarning("ModalAnswerer: no button \"%s\"; rejecting", qPrintable(text));
        if (QDialog *dialog = qobject_cast<QDialog *>(modal))
            dialog->reject();
    });
}

ModalAnswerer &ModalAnswerer::pressKey(int key, Qt::KeyboardModifiers modifiers)
{
    return then([key, modifiers](QWidget *modal) { QTest::keyClick(modal, Qt::Key(key), modifiers); });
}

ModalAnswerer &ModalAnswerer::enterText(const QString &text)
{
    return then([text](QWidget *modal) {
        if (QInputDialog *input = qobject_cast<QInputDialog *>(modal)) {
            input->setTextValue(text);
            input->accept();
        } else if (QDialog *dialog = qobject_cast<QDialog *>(modal)) {
            dialog->reject();
        }
    });
}

ModalAnswerer &ModalAnswerer::reject()
{
    return then([](QWidget *modal) {
        if (QDialog *dialog = qobject_cast<QDialog *>(modal))
            dialog->reject();
        else
            modal->close();
    });
}

ModalAnswerer &ModalAnswerer::then(const Answer &answer)
{
    m_answers.append(answer);
    return *this;
}

bool ModalAnswerer::waitForSeen(int n, int timeoutMs)
{
    return QTest::qWaitFor([&] { return m_seen.size() >= n; }, timeoutMs);
}

ModalSnapshot ModalAnswerer::snapshot(QWidget *modal)
{
    ModalSnapshot s;
    s.className = QString::fromLatin1(modal->metaObject()->className());
    s.windowTitle = modal->windowTitle();
    s.hasWindowIcon = !modal->windowIcon().isNull();
    s.cacheKeyOfWindowIcon = modal->windowIcon().cacheKey();
    if (QMessageBox *box = qobject_cast<QMessageBox *>(modal)) {
        s.text = box->text();
        s.informativeText = box->informativeText();
        s.icon = box->icon();
        for (QAbstractButton *b : box->buttons()) {
            s.buttons << b->text();
            s.buttonRoles.insert(b->text(), box->buttonRole(b));
        }
        if (box->defaultButton())
            s.defaultButton = box->defaultButton()->text();
    } else if (QInputDialog *input = qobject_cast<QInputDialog *>(modal)) {
        s.text = input->labelText();
    }
    for (QCheckBox *c : modal->findChildren<QCheckBox *>())
        s.checkBoxes << c->text();
    return s;
}

void ModalAnswerer::poll()
{
    QWidget *modal = QApplication::activeModalWidget();
    if (!modal || !modal->isVisible() || modal == m_current)
        return;
    m_current = modal;
    m_seen.append(snapshot(modal));
    // Answer outside the timer slot so that the modal's own loop handles it.
    const Answer answer = m_answers.isEmpty() ? Answer() : m_answers.takeFirst();
    QPointer<QWidget> target(modal);
    QTimer::singleShot(0, modal, [target, answer] {
        if (!target)
            return;
        if (answer) {
            answer(target);
        } else if (QDialog *dialog = qobject_cast<QDialog *>(target.data())) {
            qWarning("ModalAnswerer: unexpected modal \"%s\"; rejecting", qPrintable(target->windowTitle()));
            dialog->reject();
        } else {
            target->close();
        }
    });
}
