#pragma once

// The attachment tests that need a real window system and a MainWindow: Take Screen
// Shot end to end (X only), the shot on the Windows clipboard (Windows only), and
// Ctrl+V with another program owning the clipboard. One program, so that these
// functions take the window port's turn once.

#include "attachmentcheck.h"
#include "form/mainwindow.h"
#include "support/mainwindowprobe.h"
#include "support/modalanswerer.h"
#ifdef Q_OS_WIN
#include "winclipboard.h"
using ClipboardPeer = WinClipboard;
#else
#include "xclip.h"
using ClipboardPeer = Xclip;
#endif

#include <QImage>
#include <QObject>
#include <QRect>
#include <QStringList>
#include <QTest>

#include <memory>

class QPushButton;
class QTabWidget;
class QTreeWidget;

class AttachmentsWindowX11Tests : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<MainWindow> window;

    // Whether the running function is one of these: for the fixture parts that only
    // one section's functions start from.
    static bool running(const QStringList &functions)
    {
        return functions.contains(QString::fromLatin1(QTest::currentTestFunction()));
    }

#ifdef Q_OS_WIN
    // The shot on the Windows clipboard (screenshotclipboard_win.cpp). Its function
    // starts with the test pattern over the whole screen.
    static const QStringList shotClipboardFunctions;
    std::unique_ptr<QWidget> pattern;
    QRect screen;
    void showPattern();
#else
    // The screen-shot flow (screenshotflow_x11.cpp).
    void prepareScreen();

    template <typename T>
    T *widget(const char *name)
    {
        return MainWindowProbe::widget<T>(*window, name);
    }

    void showWindow();
    bool pinned() const;
    void takeScreenShot(int timeoutMs = 20000);
    QString thumbnail(const QString &fileName) const;
    QTreeWidget *tree();
#endif

    // Ctrl+V from another program's clipboard (clipboardpaste.cpp). Its functions start
    // with a window on the Attachments tab.
    static const QStringList pasteFunctions;
    ClipboardPeer xclip;
    const QImage picture = attachmentcheck::patternImage(45, 28);
    void openPasteWindow();
    // The flow's tree() would hide attachmentcheck::tree from the paste functions.
    static QTreeWidget *tree(const MainWindow &window)
    {
        return attachmentcheck::tree(window);
    }
    QTabWidget *tabs() const;
    QPushButton *sendButton() const;
    QString inFolder(const QString &name) const;
    void expectNothingAdded(const ModalAnswerer &answerer);

private slots:
    void initTestCase();
    void init();
    void cleanup();

#ifdef Q_OS_WIN
    // Take Screen Shot on Windows: the captured region goes onto the clipboard as a
    // device-independent bitmap, and another program reads it back pixel for pixel.
    void shotIsOnTheClipboardForOtherPrograms();
#else
    // Take Screen Shot end to end on a real X server: the delay timer, the minimised
    // wait, the grab, the overlay driven with real input, the name dialog, the
    // attachment, the clipboard and the restored window.
    void delayStartsTheTimer_data();
    void delayStartsTheTimer();
    void waitsUntilTheWindowIsMinimised();
    void plainShotIsNamedAndAttached();
    void shotIsOnTheClipboard();
    void enhancedShotIsAcceptedWithTheRightButton();
    void escapeCancels_data();
    void escapeCancels();
    void cancelledOrEmptyNameAddsNothing_data();
    void cancelledOrEmptyNameAddsNothing();
    void plainClickWithoutDragAsksNothing();
    void secondShotOfTheSameNameGetsANumber();
#endif

    // Ctrl+V on the Attachments tab with another program owning the clipboard: the
    // "Name Image" question, the saved PNG and its row, and every way nothing happens.
    void ctrlVAsksForANameAndAddsTheImage();
    void pastingTheSameNameCountsUp();
    void ctrlVOnAnotherTabDoesNothing_data();
    void ctrlVOnAnotherTabDoesNothing();
    void otherModifiersStillPaste_data();
    void otherModifiersStillPaste();
    void keyOnTheSendButtonPastesToo();
    void otherKeysDoNothing();
    void textOnTheClipboardGivesNoDialog();
    void emptyClipboardGivesNoDialog();
    void cancelledNameAddsNothing();
    void emptyNameAddsNothing();
    void thePressIsNotConsumed();
    void realKeyPressThroughTheWindowSystem();
};
