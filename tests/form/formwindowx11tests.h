#pragma once

#include <QObject>
#include <QString>

#ifndef Q_OS_WIN
#include "submit/submitfixture.h"

#include <initializer_list>

class QTabWidget;
#endif

// The report window on a real window system, for what the offscreen platform does not
// do: where the keyboard focus goes, and a whole report made with key events alone.
// One program, so that the window tests take one turn at the port lock.
//
// The keyboard report needs the private resolver, which only Linux's namespaces give,
// so the Windows build has the focus checks alone.
class FormWindowX11Tests
    : public QObject
#ifndef Q_OS_WIN
    , protected SubmitTestState
#endif
{
    Q_OBJECT

#ifndef Q_OS_WIN
private:
    // The keyboard report's steps (formwindow_keyboard.cpp).
    QString attachmentPath;

    QTabWidget *tabs() const;
    void focusIs(const char *objectName) const;
    void onTab(int index, const char *focusObjectName) const;
    void tabThrough(int index, std::initializer_list<const char *> focusObjectNames) const;
    void chooseBugReport();
    void fillIdentity();
    void fillDetails();
    void fillDescription();
    void attachFile();
    void pointAtTheReceiver();
    void reachSend();
    void sendAndCloseTheBox();
#endif

private slots:
    void init();
    void cleanup();

    // Where a tab change puts the keyboard focus, and what leaving the title field does
    // to the title history (formwindow_focus.cpp).
    void tabChangeMovesFocusIntoTheTab();
    void leavingTheTitleFieldAddsItToTheHistory();

#ifndef Q_OS_WIN
    // A whole bug report made with the keyboard alone, sent to the loopback receiver
    // (formwindow_keyboard.cpp).
    void bugReportByKeyboardAlone();
#endif
};
