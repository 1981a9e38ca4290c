#pragma once

#include "form/mainwindow.h"
#include "support/mainwindowprobe.h"

#include <QObject>
#include <QString>
#include <QStringList>

struct FormWidgets;

// The groups whose window init() makes (currentTestTag).
#ifndef Q_MOC_RUN
#define CONSTRUCTOR_TEST
#define ACCESSIBILITY_TEST
#endif

// The report window in-process, on the offscreen platform: what its constructor makes of
// the form, how its screens and small slots behave, and what a screen reader learns
// from it. One program, so that the window tests take one turn at the port lock.
class FormWindowTests : public QObject
{
    Q_OBJECT

private:
    // The constructor and accessibility checks look at a window that init() makes for
    // each of them, as on a first run: the constructor's as built, the accessibility
    // checks' shown and active with Qt's accessibility layer on. The state and
    // navigation checks make a window of their own (which hides window and f). Only one
    // window may exist at a time (each holds the instance port and the thumbnail
    // folder), so cleanup() closes it again.
    enum class Kind { None, Constructor, Accessibility };
    bool openWindow(Kind kind);
    void closeWindow();
    // Accessibility group: the bug report's compose screen on the given tab.
    void composeBugReportOn(int tab);

    Kind kind = Kind::None;
    MainWindow *window = nullptr;
    FormWidgets *f = nullptr; // on the accessibility group's window

    // Constructor group.
    template <typename T>
    T *find(const char *name) const
    {
        return MainWindowProbe::widget<T>(*window, name);
    }
    template <typename T>
    T *find(const QString &name) const
    {
        return window->findChild<T *>(name);
    }

    // Accessibility group.
    QWidget *find(const char *name) const;
    void compareControls(const QStringList &expected);
    void showTab(int index);

private slots:
    void init();
    void cleanup();

    // The three screens and the completeness rules of the form (formwindow_state.cpp).
    void introScreenAtStart();
    void composeScreen_data();
    void composeScreen();
    void sendingScreen();
    void startOverStaysDisabledAfterSending();
    void unknownScreenStateChangesNothing();
    void eachMissingField_data();
    void eachMissingField();
    void bugReportNeedsAnAttachment();
    void missingNameKeepsThePreviousToolTip();
    void spacesCountAsFilledText();

    // Moving between the screens, and the small slots around the form
    // (formwindow_navigation.cpp).
    void startOver_data();
    void startOver();
    void cancelEndsTheProgram_data();
    void cancelEndsTheProgram();
    void cancelWhileSendingAborts();
    void pressOnDisabledSendJumpsToMissingTab_data();
    void pressOnDisabledSendJumpsToMissingTab();
    void pressIsNeverConsumed();
    void pressOnTheIntroScreenJumpsNowhere();
    void delayIsClamped_data();
    void delayIsClamped();
    void delayThatDoesNotParseReadsAsZero();
    void titleHistory();
    void titleAlreadyInTheHistoryChangesNothing();
    void choosingAHistoryEntryFillsTheTitle();
    void settingsUnlockIsOneWay();
    void eatEnterDoesNothing();
    void tipsVideoOpensTheLink();

    // What the window's constructor does to its form, on one window
    // (formwindow_constructor.cpp).
    CONSTRUCTOR_TEST void constructorChanges();
    CONSTRUCTOR_TEST void topLevelWindow();
    CONSTRUCTOR_TEST void windowSize();
    CONSTRUCTOR_TEST void titleCombo();
    CONSTRUCTOR_TEST void buildField();
    CONSTRUCTOR_TEST void numberFieldsTakeOnlyTheirDigits_data();
    CONSTRUCTOR_TEST void numberFieldsTakeOnlyTheirDigits();
    CONSTRUCTOR_TEST void productAreaCount();
    CONSTRUCTOR_TEST void productAreaOrder_data();
    CONSTRUCTOR_TEST void productAreaOrder();
    CONSTRUCTOR_TEST void introScreen_data();
    CONSTRUCTOR_TEST void introScreen();
    CONSTRUCTOR_TEST void introScreenState();
    CONSTRUCTOR_TEST void settingsLock();
    CONSTRUCTOR_TEST void shownIntroScreen();

    // What a screen reader learns through Qt's accessibility layer, and the Tab order,
    // on one shown window with accessibility active (formwindow_accessibility.cpp).
    ACCESSIBILITY_TEST void introScreenAccessibility();
    ACCESSIBILITY_TEST void introductionTab();
    ACCESSIBILITY_TEST void composeTabs_data();
    ACCESSIBILITY_TEST void composeTabs();
    ACCESSIBILITY_TEST void descriptionTab();
    ACCESSIBILITY_TEST void settingsTabLocked();
    ACCESSIBILITY_TEST void settingsTabUnlocked();
    ACCESSIBILITY_TEST void sendingScreenAccessibility();
    ACCESSIBILITY_TEST void namesFollowTheFeatureRequest();
};
