#pragma once

#include <QIcon>
#include <QMessageBox>
#include <QObject>
#include <QString>
#include <QStringList>

class QCheckBox;
class QWidget;

// The program's own message box: one object carries the parent, the title and the
// window icon, and each call shows one modal QMessageBox with them. Callers build it
// on the stack, ask once and drop it.
class Ask : public QObject
{
    Q_OBJECT

public:
    Ask(QWidget *parent, const QString &title, const QIcon &icon = QIcon());

    int question(const QString &text, bool with_cancel = false, bool with_do_not_ask = false,
                 const QStringList &labels = QStringList());
    int information(const QString &text, bool with_cancel = false, bool with_do_not_ask = false,
                    const QStringList &labels = QStringList());
    int warning(const QString &text, const QStringList &labels = QStringList());
    int critical(const QString &text, const QStringList &labels = QStringList());

    // Builds an Ask with the parent's window icon, asks, and reports the
    // "Do not ask again" state through doNotAsk when that box was requested.
    static int question(QWidget *parent, const QString &title, const QString &text, bool *doNotAsk,
                        bool with_cancel = false, bool with_do_not_ask = false,
                        const QStringList &labels = QStringList());

    bool doNotAsk() const { return m_doNotAskState; }

private:
    void prepare(QMessageBox &box, const QString &text, bool with_cancel, bool with_do_not_ask,
                 const QStringList &labels);
    int show(QMessageBox &box, QMessageBox::Icon kind, bool mapResult);

    QWidget *m_parent = nullptr;
    QCheckBox *m_doNotAskBox = nullptr;
    bool m_doNotAskState = false;
    QString m_title;
    QIcon m_icon;
};
