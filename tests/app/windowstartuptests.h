#pragma once

// The window as its constructor leaves it: title and icon, the single-instance guard,
// the settings file it picks, its thumbnail folder, the intro screen and the form's
// signals it listens to (tests/app/window_startup.cpp). The program's main doubles as
// the child that finds the guard taken (tst_window_startup.cpp).
#include "settingsfiles.h"

#include <QObject>
#include <QString>

class WindowStartupTests
    : public QObject
    , private settingsfiles::Folders
{
    Q_OBJECT

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
};
