#pragma once

// The checks that build the whole MainWindow around its start, its settings and its
// system-information worker, in one program so that they take the port in one turn.
// Each group below has a file of its own: tests/app/window_<group>.cpp, and for the
// worker tests/sysinfo/windowsummary.cpp.
#include "support/testenv.h"

#include <QObject>
#include <QPointer>
#include <QString>

#include <memory>

class GatherSysInfo;
class MainWindow;
class ObjectTracker;
class QThread;

class WindowTests : public QObject
{
    Q_OBJECT

public:
    WindowTests();
    ~WindowTests() override;

private:
    // The process's isolated environment and where the program keeps its settings there.
    TestEnvironment &env = TestEnvironment::instance();
    QString suite() const { return env.suiteFolder(); }
    QString newFile() const { return env.settingsFile(); }
    QString oldFile() const { return env.oldSettingsFile(); }

    // For the window summary group: the recorder of the objects the window creates,
    // made at its first use, and a window built under it with its worker and thread.
    std::unique_ptr<ObjectTracker> m_tracker;
    ObjectTracker &summaryTracker();
    // The part of init for the window summary group.
    void initWindowSummary();
#ifndef Q_OS_WIN
    void makeWindow(std::unique_ptr<MainWindow> &window, QPointer<GatherSysInfo> &worker, QPointer<QThread> &thread);
#endif

private slots:
    // Every test starts without settings files or thumbnails.
    void init();

    // startup: the window as the constructor leaves it (title and icon, the single-instance
    // guard, the settings file it picks, its thumbnail folder, the intro screen, the form's
    // signals it listens to).
    void titleAndIcon();
    void guardListensOnAllInterfaces();
    void guardTakenShowsTheCriticalBoxAndExitsWithZero();
    void guardIsFreedByTheDestructor();
    void settingsFileWithNeitherFile();
    void settingsFileWithBothFiles();
    void settingsFileWithOnlyTheOldFile();
    void settingsFileWithOnlyTheNewFile();
    void settingsFolderThatCannotBeCreatedFallsBackToTheOldFile();
    void thumbnailFolderLivesAsLongAsTheWindow();
    void leftoverThumbnailFolderIsReused();
    void removeDirectoryTreeOfAMissingFolderSucceeds();
    void removeDirectoryTreeRemovesNestedFolders();
    void introScreenAfterConstruction();
    void emailTimerDrivesTheDomainCheck();
    void nameEditingFinishedRecomputesAndMarksModified();
    void nameTextEditedRecomputes();
    void areaSelectionRecomputes();
    void settingsCheckBoxUnlocksTheFrame();
    void rememberBoxMarksModified();
    void bigButtonsChooseTheKind();
    void cancelOnTheIntroScreenQuits();
    void tabChangeMovesTheFocus();

    // settingsload: every key of the "application" group read into the form and the
    // geometry, from files of a plain QSettings and from raw INI text.
    void offscreenScreenIsTheAssumedOne();
    void noFileKeepsTheFormAndComputesDefaults();
    void everyKeyLoads();
    void falseFlagsLoad();
    void missingKeysTakeDefaults();
    void emptyGroupReadsNothing();
    void missingDestinationShowsThePlaceholder();
    void snapshotDelay_data();
    void snapshotDelay();
    void sevenTitlesKeepTheFirstFive();
    void negativePositionIsBroughtBack_data();
    void negativePositionIsBroughtBack();
    void rawIniText();
    void otherGroupsAreNotRead();
    void rememberedAddressIsCheckedAtStart();
    void emptyRememberedAddressIsNotChecked();
    void malformedFileLoadsWhatItCan();
    void onlyTheOldFileIsRead();
    void theNewFileWinsAndTheOldGoes();

    // settingssave: the file written at exit, its keys and their INI text, when it is
    // written at all, and its permissions. (rawIniTextOnSave and snapshotDelayOnSave
    // carry a suffix that keeps them apart from the load checks of the same name.)
    void everyKeyIsWritten();
    void rawIniTextOnSave();
    void rawIniTextOfTheSmallestFile();
    void rawIniTextOfQuotedAndEscapedValues();
    void oneTitleIsStillAList();
    void identityIsNotWrittenWithoutRemember();
    void proxyDetailsGoWithTheGroup();
    void snapshotDelayOnSave_data();
    void snapshotDelayOnSave();
    void destinationOnlyWhenFilled();
    void duplicateTitlesAreWrittenOnce();
    void staleKeysDisappear();
    void nothingIsWrittenWithoutAChange();
    void anUnchangedFileIsLeftAsItIs();
    void whatWasSavedLoadsAgain();
    void permissions_data();
    void permissions();

    // settingsgeometry: the move and resize handlers that keep the saved geometry, and
    // the pinned window of the screen-shot flow.
    void moveRecordsThePosition();
    void moveToTheSamePlaceChangesNothing();
    void moveToTheOriginIsNotRecorded();
    void movesOnOneAxisToZeroAreRecorded();
    void negativeMovesAreRecordedAsTheyCome();
    void resizeRecordsTheSize();
    void realMovesAndResizes();
    void pinnedWindowSnapsBack();
    void pinnedWindowTakesBackItsRecordedSizeToo();
    void recordedGeometryIsSaved();

    // windowsummary: the summary the window's own worker delivers, the worker and its
    // thread deleting themselves, a window closed while the worker runs, the check box's
    // tool tip. Last, so that Qt's object hooks it takes are taken after the other groups.
    void windowStoresTheSummaryAndItsWorkerGoesAway();
#ifndef Q_OS_WIN
    void workerHeldAtItsFileThenLetGo();
    void windowClosedWhileTheWorkerRuns();
#endif
    void toolTipShowsTheSummaryDecoded();
    void slotOnlyStores();
};
