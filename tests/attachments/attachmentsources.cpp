// Where file entries come from: the Attach File dialog (the non-native QFileDialog,
// driven as a user would) and drag and drop onto the window, including files that
// cannot be read.
//
// The tests run as root in CI, and root reads a file of mode 000. An unreadable file
// is therefore a symbolic link to a kernel setting that is write-only for everyone,
// root included (/proc/sys/vm/drop_caches): QFile cannot open it for reading under any
// user, while it exists and is not a folder. On Windows it is a file that another
// handle holds without sharing.
#include "attachmentcheck.h"
#include "attachmentswindowtests.h"
#include "support/unreadablefile.h"
#include "form/mainwindow.h"
#include "support/mainwindowprobe.h"
#include "support/modalanswerer.h"
#include "support/testenv.h"

#include <QApplication>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QMimeData>
#include <QPushButton>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QUrl>
#include <QtTest>

using namespace attachmentcheck;

namespace {

const char kFlagged[] = "border: 1px solid rgb(200, 150, 150)";

// Answers the file dialog: checks nothing itself, picks the files and accepts.
ModalAnswerer::Answer chooseFiles(const QString &folder, const QStringList &names)
{
    return [folder, names](QWidget *modal) {
        QFileDialog *dialog = qobject_cast<QFileDialog *>(modal);
        if (!dialog) {
            modal->close();
            return;
        }
        dialog->setDirectory(folder);
        QStringList quoted;
        for (const QString &name : names)
            quoted << '"' + name + '"';
        dialog->findChild<QLineEdit *>("fileNameEdit")->setText(quoted.join(' '));
        QMetaObject::invokeMethod(dialog, "accept"); // what the Open button does
    };
}

QMimeData *uriList(const QStringList &paths)
{
    QList<QUrl> urls;
    for (const QString &path : paths)
        urls << QUrl::fromLocalFile(path);
    QMimeData *data = new QMimeData;
    data->setUrls(urls);
    return data;
}

} // namespace

QString AttachmentsWindowTests::writeImage(const QString &name, int width, int height)
{
    patternImage(width, height).save(files->filePath(name));
    return files->filePath(name);
}

QString AttachmentsWindowTests::makeUnreadable(const QString &name)
{
#ifdef Q_OS_WIN
    heldFiles.emplace_back(new UnreadableFile(writeFile(name)));
#else
    QFile::link(unreadableTarget, files->filePath(name));
#endif
    return files->filePath(name);
}

QString AttachmentsWindowTests::makeFolder(const QString &name)
{
    QDir(files->path()).mkdir(name);
    return files->filePath(name);
}

QPushButton *AttachmentsWindowTests::button(const char *name) const
{
    return MainWindowProbe::widget<QPushButton>(*window, name);
}

QTabWidget *AttachmentsWindowTests::tabs() const
{
    return MainWindowProbe::widget<QTabWidget>(*window, "tabWidget");
}

// A drag entering the window and leaving it again; returns whether the window took it.
bool AttachmentsWindowTests::dragEnter(QMimeData *data)
{
    QDragEnterEvent enter(QPoint(20, 20), Qt::CopyAction | Qt::MoveAction, data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(window.get(), &enter);
    const bool accepted = enter.isAccepted() && enter.dropAction() == Qt::CopyAction;
    // Qt keeps the window as drop target after an accepted enter; the leave clears it.
    QDragLeaveEvent leave;
    QApplication::sendEvent(window.get(), &leave);
    delete data;
    return accepted;
}

// A drag entering the window and dropped on it; returns whether the drop was taken.
// Qt hands a drop only to the widget that accepted the drag's enter.
bool AttachmentsWindowTests::dragAndDrop(QMimeData *data)
{
    QDragEnterEvent enter(QPoint(20, 20), Qt::CopyAction | Qt::MoveAction, data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(window.get(), &enter);
    bool dropped = false;
    if (enter.isAccepted()) {
        QDropEvent event(QPointF(20, 20), Qt::CopyAction | Qt::MoveAction, data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(window.get(), &event);
        dropped = event.isAccepted() && event.dropAction() == Qt::CopyAction;
    }
    delete data;
    return dropped;
}

void AttachmentsWindowTests::expectAccessWarning(const ModalSnapshot &shown)
{
    QCOMPARE(shown.className, QString("QMessageBox"));
    QCOMPARE(shown.windowTitle, QString("File Access Failure"));
    QCOMPARE(shown.text, QString("Failed to access file."));
    QCOMPARE(shown.buttons, QStringList{"OK"});
    QCOMPARE(shown.icon, int(QMessageBox::Warning));
    QVERIFY(shown.hasWindowIcon);
    QCOMPARE(shown.cacheKeyOfWindowIcon, window->windowIcon().cacheKey());
}

// Called by initTestCase().
void AttachmentsWindowTests::findUnreadableStandIn()
{
#ifdef Q_OS_WIN
    return; // a file held open without sharing stands for an unreadable file
#endif
    for (const char *candidate : {"/proc/sys/vm/drop_caches", "/proc/sys/vm/compact_memory"}) {
        QFile file(QString::fromLatin1(candidate));
        if (QFileInfo(file).isFile() && !file.open(QIODevice::ReadOnly)) {
            unreadableTarget = file.fileName();
            break;
        }
    }
    QVERIFY2(!unreadableTarget.isEmpty(), "no write-only kernel setting to stand for an unreadable file");
}

// What init() adds for this section's functions.
void AttachmentsWindowTests::startOnBugReport()
{
    button("button_Bug_Report")->click();
    QCOMPARE(tree(*window)->styleSheet(), QString(kFlagged));
    QCOMPARE(button("button_Send")->text(), QString("Completed 1/7"));
}

void AttachmentsWindowTests::theUnreadableStandInCannotBeRead()
{
    const QString path = makeUnreadable("locked.txt");
    QVERIFY(QFileInfo::exists(path));
    QVERIFY(!QFileInfo(path).isDir());
    QFile file(path);
    QVERIFY(!file.open(QIODevice::ReadOnly));
}

// The file dialog.

void AttachmentsWindowTests::dialogAddsEveryChosenFileInOrder()
{
    const QString text = writeFile("notes.txt");
    const QString picture = writeImage("picture.png", 40, 30);
    const QString log = writeFile("crash.log");
    tabs()->setCurrentIndex(4);
    QFileDialog *seenDialog = nullptr;
    QFileDialog::Options seenOptions;
    QFileDialog::FileMode seenMode = QFileDialog::AnyFile;
    QStringList seenFilters;
    QString seenDirectory;
    // Where Qt's dialog opens when given no start folder: the folder last visited in
    // this process, else the working folder.
    const QString unchosenStart = QFileDialog().directory().absolutePath();
    ModalAnswerer answerer;
    answerer.then([&](QWidget *modal) {
        seenDialog = qobject_cast<QFileDialog *>(modal);
        if (seenDialog) {
            seenOptions = seenDialog->options();
            seenMode = seenDialog->fileMode();
            seenFilters = seenDialog->nameFilters();
            seenDirectory = seenDialog->directory().absolutePath();
        }
        chooseFiles(files->path(), {"notes.txt", "picture.png", "crash.log"})(modal);
    });
    button("button_Attach_File")->click();

    QCOMPARE(answerer.seen().size(), 1);
    QCOMPARE(answerer.seen().first().className, QString("QFileDialog"));
    QCOMPARE(answerer.seen().first().windowTitle, QString("Select File..."));
    QVERIFY(seenDialog);
    QCOMPARE(seenMode, QFileDialog::ExistingFiles);
    QCOMPARE(seenFilters, QStringList{"All Files (*.*)"});
    QCOMPARE(seenOptions, QFileDialog::Options());
    // No start folder given.
    QCOMPARE(seenDirectory, unchosenStart);

    QTreeWidget *list = tree(*window);
    QCOMPARE(list->topLevelItemCount(), 3);
    QCOMPARE(list->topLevelItem(0)->text(1), QDir::toNativeSeparators(text));
    QCOMPARE(list->topLevelItem(1)->text(1), QDir::toNativeSeparators(picture));
    QCOMPARE(list->topLevelItem(2)->text(1), QDir::toNativeSeparators(log));
    QCOMPARE(list->topLevelItem(1)->data(1, Qt::UserRole), QVariant(picture));
    QCOMPARE(list->topLevelItem(0)->data(1, Qt::UserRole), QVariant());
    QCOMPARE(list->styleSheet(), QString());
    QCOMPARE(button("button_Send")->text(), QString("Completed 2/7"));
    QCOMPARE(tabs()->currentIndex(), 4);
}

void AttachmentsWindowTests::cancelledDialogChangesNothing()
{
    tabs()->setCurrentIndex(4);
    button("button_Send")->setText("untouched");
    ModalAnswerer answerer;
    answerer.reject();
    button("button_Attach_File")->click();
    QCOMPARE(answerer.seen().size(), 1);
    QCOMPARE(tree(*window)->topLevelItemCount(), 0);
    QCOMPARE(button("button_Send")->text(), QString("untouched")); // states not derived again
}

void AttachmentsWindowTests::secondOfThreeUnreadable()
{
    const QString first = writeFile("first.txt");
    makeUnreadable("locked.txt");
    const QString third = writeImage("third.png", 12, 12);
    tabs()->setCurrentIndex(4);
    ModalAnswerer answerer;
    answerer.then(chooseFiles(files->path(), {"first.txt", "locked.txt", "third.png"})).clickButton("OK");
    button("button_Attach_File")->click();

    QCOMPARE(answerer.seen().size(), 2); // the dialog and one warning
    expectAccessWarning(answerer.seen().at(1));
    QCOMPARE(answerer.pending(), 0);
    QTreeWidget *list = tree(*window);
    QCOMPARE(list->topLevelItemCount(), 2);
    QCOMPARE(list->topLevelItem(0)->text(1), QDir::toNativeSeparators(first));
    QCOMPARE(list->topLevelItem(1)->text(1), QDir::toNativeSeparators(third));
    QCOMPARE(button("button_Send")->text(), QString("Completed 2/7"));
}

// Drag and drop.

void AttachmentsWindowTests::dragEnterCountsFiles_data()
{
    QTest::addColumn<QStringList>("entries"); // "d:" marks a folder
    QTest::addColumn<bool>("accepted");
    QTest::newRow("folder and file") << QStringList{"d:folder", "file.txt"} << true;
    QTest::newRow("one file") << QStringList{"file.txt"} << true;
    QTest::newRow("only folders") << QStringList{"d:folder", "d:other"} << false;
    QTest::newRow("one folder") << QStringList{"d:folder"} << false;
    QTest::newRow("empty list") << QStringList{} << false;
}

void AttachmentsWindowTests::dragEnterCountsFiles()
{
    QFETCH(QStringList, entries);
    QFETCH(bool, accepted);
    QStringList paths;
    for (const QString &entry : entries)
        paths << (entry.startsWith("d:") ? makeFolder(entry.mid(2)) : writeFile(entry));
    QCOMPARE(dragEnter(uriList(paths)), accepted);
}

void AttachmentsWindowTests::dragWithoutUriListIsRefused()
{
    QMimeData *data = new QMimeData;
    data->setText(writeFile("file.txt"));
    QVERIFY(!dragEnter(data));
}

void AttachmentsWindowTests::dropAddsFilesSkipsFoldersAndWarns()
{
    const QString first = writeFile("first.txt");
    const QString picture = writeImage("picture.png", 20, 20);
    const QString folder = makeFolder("folder");
    const QString locked = makeUnreadable("locked.txt");
    tabs()->setCurrentIndex(1);
    ModalAnswerer answerer;
    answerer.clickButton("OK");
    QVERIFY(dragAndDrop(uriList({folder, first, locked, picture})));

    QCOMPARE(answerer.seen().size(), 1);
    expectAccessWarning(answerer.seen().first());
    QTreeWidget *list = tree(*window);
    QCOMPARE(list->topLevelItemCount(), 2);
    QCOMPARE(list->topLevelItem(0)->text(1), QDir::toNativeSeparators(first));
    QCOMPARE(list->topLevelItem(1)->text(1), QDir::toNativeSeparators(picture));
    QCOMPARE(list->topLevelItem(1)->data(1, Qt::UserRole), QVariant(picture));
    QVERIFY(isResourceIcon(list->topLevelItem(0)->icon(0), ":/images/File.png"));
    QVERIFY(isResourceIcon(list->topLevelItem(1)->icon(0), ":/images/Image.png"));
    QCOMPARE(tabs()->currentIndex(), 4);
    QCOMPARE(list->styleSheet(), QString());
    QCOMPARE(button("button_Send")->text(), QString("Completed 2/7"));
}

void AttachmentsWindowTests::dropOfOnlyUnreadableKeepsTheTab()
{
    const QString locked = makeUnreadable("locked.txt");
    tabs()->setCurrentIndex(2);
    ModalAnswerer answerer;
    answerer.clickButton("OK");
    QVERIFY(dragAndDrop(uriList({locked}))); // the drop is taken even when nothing could be added
    QCOMPARE(answerer.seen().size(), 1);
    QCOMPARE(tree(*window)->topLevelItemCount(), 0);
    QCOMPARE(tabs()->currentIndex(), 2);
}

void AttachmentsWindowTests::sameFileDroppedTwiceGivesTwoRows()
{
    const QString path = writeFile("twice.txt");
    QVERIFY(dragAndDrop(uriList({path, path})));
    QCOMPARE(tree(*window)->topLevelItemCount(), 2);
    QCOMPARE(tree(*window)->topLevelItem(1)->text(1), QDir::toNativeSeparators(path));
}
