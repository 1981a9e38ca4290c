#pragma once

// The window's settings: every key read into the form and the geometry
// (window_settingsload.cpp), the file written at exit (window_settingssave.cpp), and
// the move and resize handlers that keep the geometry (window_settingsgeometry.cpp).
#include "settingsfiles.h"

#include <QObject>
#include <QString>

class WindowSettingsTests
    : public QObject
    , private settingsfiles::Folders
{
    Q_OBJECT

private slots:
    // Every test starts without settings files or thumbnails.
    void init();

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
};
