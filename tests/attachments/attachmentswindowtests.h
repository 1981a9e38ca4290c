#pragma once

// The attachment list in a window of its own for every function (offscreen): the rows
// it holds and where file entries come from. One program, so that these functions take
// the window port's turn once.

#include "form/mainwindow.h"
#include "support/modalanswerer.h"
#include "support/unreadablefile.h"

#include <QImage>
#include <QObject>
#include <QStringList>
#include <QTemporaryDir>
#include <QTest>

#include <memory>
#include <vector>

// The group whose functions start on the Bug Report screen (currentTestTag).
#ifndef Q_MOC_RUN
#define SOURCES_TEST
#endif

class QMimeData;
class QPushButton;
class QTabWidget;
class QTreeWidgetItem;

class AttachmentsWindowTests : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<MainWindow> window;
    std::unique_ptr<QTemporaryDir> files; // source files for file entries

    QString writeFile(const QString &name, const QByteArray &content = "content");

    // The rows of the list (attachmentlist.cpp).
    QString folder() const;
    QString inFolder(const QString &name) const;
    QString writeImageFile(const QString &name, const QImage &image, const char *format = nullptr);
    void blockThumbnailFolder();
    void expectScaledPreview(QTreeWidgetItem *item, const QStringList &others, const QImage &image,
                             const QSize &previewSize, Qt::TransformationMode mode);
    QTreeWidgetItem *addImage(const QString &name, const QImage &image);

    // Where file entries come from (attachmentsources.cpp). Its functions, tagged
    // SOURCES_TEST, start on the Bug Report screen with Qt's own file dialog.
    QString unreadableTarget;
    std::vector<std::unique_ptr<UnreadableFile>> heldFiles; // Windows: the unreadable files
    void findUnreadableStandIn();
    void startOnBugReport();
    QString writeImage(const QString &name, int width, int height);
    QString makeUnreadable(const QString &name);
    QString makeFolder(const QString &name);
    QPushButton *button(const char *name) const;
    QTabWidget *tabs() const;
    bool dragEnter(QMimeData *data);
    bool dragAndDrop(QMimeData *data);
    void expectAccessWarning(const ModalSnapshot &shown);

private slots:
    void initTestCase();
    void init();
    void cleanup();

    // Rows as add_attachment_item makes them: image entries (pasted or captured
    // pictures) and file entries, their previews, and Remove Selected / Clear All.
    void sameNameCountsUp();
    void namesAreSanitised_data();
    void namesAreSanitised();
    void imageEntryAt512IsItsOwnPreview();
    void imageEntryAbove512GetsSmoothPreview_data();
    void imageEntryAbove512GetsSmoothPreview();
    void imageEntryLeavesTabAndStatesAlone();
    void failedSaveStillAddsTheRow();
    void fileEntryImageAt512GetsPreviewCopy();
    void fileEntryImageAbove512GetsFastPreview_data();
    void fileEntryImageAbove512GetsFastPreview();
    void largeJpegFileEntry();
    void plainFileGetsFileIconOnly();
    void recognisedButUnreadableImageGetsNoIcon();
    void relativePathIsMadeAbsolute();
    void failedPreviewFallsBackToTheSource();
    void sameFileTwiceGivesTwoRows();
    void removeSelectedTakesEverySelectedRow();
    void clearAllEmptiesTheList();

    // Where file entries come from: the Attach File dialog and drag and drop,
    // including files that cannot be read.
    SOURCES_TEST void theUnreadableStandInCannotBeRead();
    SOURCES_TEST void dialogAddsEveryChosenFileInOrder();
    SOURCES_TEST void cancelledDialogChangesNothing();
    SOURCES_TEST void secondOfThreeUnreadable();
    SOURCES_TEST void dragEnterCountsFiles_data();
    SOURCES_TEST void dragEnterCountsFiles();
    SOURCES_TEST void dragWithoutUriListIsRefused();
    SOURCES_TEST void dropAddsFilesSkipsFoldersAndWarns();
    SOURCES_TEST void dropOfOnlyUnreadableKeepsTheTab();
    SOURCES_TEST void sameFileDroppedTwiceGivesTwoRows();
};
