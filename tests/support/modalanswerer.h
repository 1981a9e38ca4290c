#pragma once

#include <QIcon>
#include <QImage>
#include <QList>
#include <QMap>
#include <QMessageBox>
#include <QObject>
#include <QPointer>
#include <QStringList>
#include <QTimer>

#include <functional>

// What a modal box showed when it was answered.
struct ModalSnapshot
{
    QString className; // "QMessageBox", "QInputDialog", "QFileDialog", ...
    QString windowTitle;
    QString text; // message box text, or input dialog label
    QString informativeText;
    int icon = -1; // QMessageBox::Icon for message boxes
    QStringList buttons; // button texts in the button box's layout order
    QMap<QString, int> buttonRoles; // text -> QMessageBox::ButtonRole
    QString defaultButton;
    bool hasWindowIcon = false;
    qint64 cacheKeyOfWindowIcon = 0;
    QStringList checkBoxes;
    QImage windowIconImage; // filled by callers that need the pixels
};

// Answers modal dialogs from a timer that polls QApplication::activeModalWidget().
// Each modal that appears takes the next queued answer; a modal with no answer
// queued is recorded and rejected, so a failing test never hangs in exec().
class ModalAnswerer : public QObject
{
    Q_OBJECT

public:
    using Answer = std::function<void(QWidget *modal)>;

    explicit ModalAnswerer(QObject *parent = nullptr);
    ~ModalAnswerer() override;

    ModalAnswerer &clickButton(const QString &text);
    ModalAnswerer &pressKey(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    ModalAnswerer &enterText(const QString &text); // QInputDialog: type and accept
    ModalAnswerer &reject();
    ModalAnswerer &then(const Answer &answer);

    const QList<ModalSnapshot> &seen() const { return m_seen; }
    int pending() const { return m_answers.size(); }
    // Spins the event loop until n modals have been seen or the time is up.
    bool waitForSeen(int n, int timeoutMs = 5000);

    static ModalSnapshot snapshot(QWidget *modal);

private:
    void poll();

    QTimer m_timer;
    QList<Answer> m_answers;
    QList<ModalSnapshot> m_seen;
    QPointer<QWidget> m_current;
};
