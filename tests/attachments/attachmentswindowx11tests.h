#pragma once

// The attachment tests that need a real window system and a MainWindow: the shot on
// the Windows clipboard (Windows only) and Ctrl+V with another program owning the
// clipboard. The screen-shot flow has a program of its own (tst_screenshotflow).

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

// The groups whose functions start from a state of their own (currentTestTag).
#ifndef Q_MOC_RUN
#define SHOT_CLIPBOARD_TEST
#define PASTE_TEST
#endif

class QPushButton;
class QTabWidget;
class QTreeWidget;

class AttachmentsWindowX11Tests : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<MainWindow> window;

#ifdef Q_OS_WIN
    // The shot on the Windows clipboard (screenshotclipboard_win.cpp). Its function,
    // tagged SHOT_CLIPBOARD_TEST, starts with the test pattern over the whole screen.
    std::unique_ptr<QWidget> pattern;
    QRect screen;
    void showPattern();
#endif

    // Ctrl+V from another program's clipboard (clipboardpaste.cpp). Its functions,
    // tagged PASTE_TEST, start with a window on the Attachments tab.
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
    SHOT_CLIPBOARD_TEST void shotIsOnTheClipboardForOtherPrograms();
#endif

    // Ctrl+V on the Attachments tab with another program owning the clipboard: the
    // "Name Image" question, the saved PNG and its row, and every way nothing happens.
    PASTE_TEST void ctrlVAsksForANameAndAddsTheImage();
    PASTE_TEST void pastingTheSameNameCountsUp();
    PASTE_TEST void ctrlVOnAnotherTabDoesNothing_data();
    PASTE_TEST void ctrlVOnAnotherTabDoesNothing();
    PASTE_TEST void otherModifiersStillPaste_data();
    PASTE_TEST void otherModifiersStillPaste();
    PASTE_TEST void keyOnTheSendButtonPastesToo();
    PASTE_TEST void otherKeysDoNothing();
    PASTE_TEST void textOnTheClipboardGivesNoDialog();
    PASTE_TEST void emptyClipboardGivesNoDialog();
    PASTE_TEST void cancelledNameAddsNothing();
    PASTE_TEST void emptyNameAddsNothing();
    PASTE_TEST void thePressIsNotConsumed();
    PASTE_TEST void realKeyPressThroughTheWindowSystem();
};
