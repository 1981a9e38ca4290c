// Rows of the attachment list as add_attachment_item makes them: image entries (pasted
// or captured pictures) and file entries, their previews, and Remove Selected / Clear All.
#include "attachmentcheck.h"
#include "attachmentswindowtests.h"
#include "form/mainwindow.h"
#include "support/mainwindowprobe.h"
#include "support/testenv.h"

#include <QApplication>
#include <QFile>
#include <QFileInfo>
#include <QPushButton>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QtTest>

using namespace attachmentcheck;

namespace {

const QString kImageIcon = QStringLiteral(":/images/Image.png");
const QString kFileIcon = QStringLiteral(":/images/File.png");

void previewSizeRows()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QSize>("previewSize");
    QTest::newRow("513 x 10") << QSize(513, 10) << QSize(512, 9);
    QTest::newRow("10 x 513") << QSize(10, 513) << QSize(9, 512);
    QTest::newRow("1030 x 700") << QSize(1030, 700) << QSize(512, 347);
}

} // namespace

QString AttachmentsWindowTests::folder() const
{
    return thumbnailFolder(*window);
}

QString AttachmentsWindowTests::inFolder(const QString &name) const
{
    return QDir::toNativeSeparators(folder() + "/" + name);
}

QString AttachmentsWindowTests::writeImageFile(const QString &name, const QImage &image, const char *format)
{
    const QString path = files->filePath(name);
    if (!image.save(path, format))
        qWarning("could not write %s", qPrintable(path));
    return path;
}

// A regular file where the thumbnail folder should be: no write into it can
// succeed, not even as root.
void AttachmentsWindowTests::blockThumbnailFolder()
{
    const QString thumbs = folder();
    QVERIFY(QDir(thumbs).removeRecursively());
    QFile blocker(thumbs);
    QVERIFY(blocker.open(QIODevice::WriteOnly));
}

// The folder holds the given files and one uuid preview, which the tool tip shows,
// of the expected size, scaled from the image the given way.
void AttachmentsWindowTests::expectScaledPreview(QTreeWidgetItem *item, const QStringList &others, const QImage &image,
                                                 const QSize &previewSize, Qt::TransformationMode mode)
{
    const QStringList names = thumbnailFiles(*window);
    const QString preview = onlyUuidFile(names);
    QVERIFY2(!preview.isEmpty(), qPrintable(names.join(", ")));
    QStringList expectedNames = others;
    expectedNames << preview;
    expectedNames.sort();
    QCOMPARE(names, expectedNames);
    QCOMPARE(item->toolTip(1), toolTipFor(inFolder(preview)));
    const QImage previewImage(inFolder(preview));
    QCOMPARE(previewImage.size(), previewSize);
    const QImage smooth = image.scaled(512, 512, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    const QImage fast = image.scaled(512, 512, Qt::KeepAspectRatio, Qt::FastTransformation);
    QVERIFY(argb(smooth) != argb(fast)); // the pattern tells the two apart
    QCOMPARE(argb(previewImage), argb(mode == Qt::SmoothTransformation ? smooth : fast));
}

QTreeWidgetItem *AttachmentsWindowTests::addImage(const QString &name, const QImage &image)
{
    return window->add_attachment_item(name, QPixmap::fromImage(image));
}

// Image entries.

void AttachmentsWindowTests::sameNameCountsUp()
{
    const QImage image = patternImage(20, 10);
    QTreeWidgetItem *first = addImage("shot", image);
    QTreeWidgetItem *second = addImage("shot", image);
    QTreeWidgetItem *third = addImage("shot", image);
    QCOMPARE(first->data(1, Qt::UserRole), QVariant(inFolder("shot.png")));
    QCOMPARE(second->data(1, Qt::UserRole), QVariant(inFolder("shot_1.png")));
    QCOMPARE(third->data(1, Qt::UserRole), QVariant(inFolder("shot_2.png")));
    QCOMPARE(thumbnailFiles(*window), (QStringList{"shot.png", "shot_1.png", "shot_2.png"}));
    QCOMPARE(tree(*window)->topLevelItemCount(), 3);
    QCOMPARE(tree(*window)->topLevelItem(0), first);
    QCOMPARE(tree(*window)->topLevelItem(2), third);
}

void AttachmentsWindowTests::namesAreSanitised_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("file");
    QTest::newRow("Bug & crash?") << "Bug & crash?"
                                  << "Bug_and_crash_.png";
    QTest::newRow("a & b!") << "a & b!"
                            << "a_and_b_.png";
    QTest::newRow("every replaced sign") << "x*y?z$w!v u&&t"
                                         << "x_y_z_w_v_uandandt.png";
    QTest::newRow("kept signs") << "50%1 (copy).v2"
                                << "50%1_(copy).v2.png";
}

void AttachmentsWindowTests::namesAreSanitised()
{
    QFETCH(QString, name);
    QFETCH(QString, file);
    QTreeWidgetItem *item = addImage(name, patternImage(8, 8));
    QCOMPARE(item->data(1, Qt::UserRole), QVariant(inFolder(file)));
    QCOMPARE(thumbnailFiles(*window), QStringList{file});
    addImage(name, patternImage(8, 8));
    const QString counted = file.left(file.size() - 4) + "_1.png";
    QCOMPARE(tree(*window)->topLevelItem(1)->data(1, Qt::UserRole), QVariant(inFolder(counted)));
}

void AttachmentsWindowTests::imageEntryAt512IsItsOwnPreview()
{
    const QImage image = patternImage(512, 512);
    const QPixmap pixmap = QPixmap::fromImage(image);
    QTreeWidgetItem *item = window->add_attachment_item("square", pixmap);
    QCOMPARE(item->type(), 0);
    QCOMPARE(item->parent(), nullptr);
    QCOMPARE(item->treeWidget(), tree(*window));
    QCOMPARE(item->text(0), QString());
    QCOMPARE(item->text(1), QString());
    QVERIFY(isResourceIcon(item->icon(0), kImageIcon));
    QCOMPARE(iconImage(item->icon(1), pixmap.size()), argb(image));
    QCOMPARE(item->data(1, Qt::UserRole), QVariant(inFolder("square.png")));
    QCOMPARE(item->toolTip(1), toolTipFor(inFolder("square.png")));
    QCOMPARE(item->toolTip(0), QString());
    QCOMPARE(thumbnailFiles(*window), QStringList{"square.png"}); // no second file
    const QImage saved(inFolder("square.png"));
    QCOMPARE(saved.size(), QSize(512, 512));
    QCOMPARE(argb(saved), argb(image));
}

void AttachmentsWindowTests::imageEntryAbove512GetsSmoothPreview_data()
{
    previewSizeRows();
}

void AttachmentsWindowTests::imageEntryAbove512GetsSmoothPreview()
{
    QFETCH(QSize, size);
    QFETCH(QSize, previewSize);
    const QImage image = patternImage(size.width(), size.height());
    QTreeWidgetItem *item = addImage("wide", image);
    QCOMPARE(item->data(1, Qt::UserRole), QVariant(inFolder("wide.png")));
    QCOMPARE(QImage(inFolder("wide.png")).size(), size);
    expectScaledPreview(item, {"wide.png"}, image, previewSize, Qt::SmoothTransformation);
}

void AttachmentsWindowTests::imageEntryLeavesTabAndStatesAlone()
{
    MainWindowProbe::widget<QPushButton>(*window, "button_Bug_Report")->click();
    QTabWidget *tabs = MainWindowProbe::widget<QTabWidget>(*window, "tabWidget");
    tabs->setCurrentIndex(1);
    QPushButton *sendButton = MainWindowProbe::widget<QPushButton>(*window, "button_Send");
    const QString caption = sendButton->text();
    addImage("quiet", patternImage(4, 4));
    QCOMPARE(tabs->currentIndex(), 1);
    QCOMPARE(sendButton->text(), caption);
    QCOMPARE(tree(*window)->styleSheet(), QString("border: 1px solid rgb(200, 150, 150)"));
}

void AttachmentsWindowTests::failedSaveStillAddsTheRow()
{
    const QString thumbs = folder();
    blockThumbnailFolder();
    QTreeWidgetItem *item = addImage("lost", patternImage(600, 20));
    QCOMPARE(item->data(1, Qt::UserRole), QVariant(inFolder("lost.png")));
    QVERIFY(!QFile::exists(inFolder("lost.png")));
    QVERIFY(item->toolTip(1).startsWith("<html><img src='" + QDir::toNativeSeparators(thumbs + "/{")));
    QCOMPARE(tree(*window)->topLevelItemCount(), 1);
}

// File entries.

void AttachmentsWindowTests::fileEntryImageAt512GetsPreviewCopy()
{
    const QImage image = patternImage(512, 512);
    const QString path = writeImageFile("square.png", image);
    QTreeWidgetItem *item = window->add_attachment_item(path, QPixmap());
    QCOMPARE(item->type(), 0);
    QCOMPARE(item->text(0), QString());
    QCOMPARE(item->text(1), QDir::toNativeSeparators(path));
    QVERIFY(isResourceIcon(item->icon(0), kImageIcon));
    QVERIFY(item->icon(1).isNull());
    QCOMPARE(item->data(1, Qt::UserRole), QVariant(path));

    const QStringList names = thumbnailFiles(*window);
    QCOMPARE(names.size(), 1); // a copy even of a small picture
    QVERIFY2(isUuidPngName(names.first()), qPrintable(names.first()));
    QCOMPARE(item->toolTip(1), toolTipFor(inFolder(names.first())));
    const QImage preview(inFolder(names.first()));
    QCOMPARE(preview.size(), QSize(512, 512));
    QCOMPARE(argb(preview), argb(image));
}

void AttachmentsWindowTests::fileEntryImageAbove512GetsFastPreview_data()
{
    previewSizeRows();
}

void AttachmentsWindowTests::fileEntryImageAbove512GetsFastPreview()
{
    QFETCH(QSize, size);
    QFETCH(QSize, previewSize);
    const QImage image = patternImage(size.width(), size.height());
    const QString path = writeImageFile("wide.png", image);
    QTreeWidgetItem *item = window->add_attachment_item(path, QPixmap());
    QVERIFY(isResourceIcon(item->icon(0), kImageIcon));
    QCOMPARE(item->data(1, Qt::UserRole), QVariant(path));
    expectScaledPreview(item, {}, image, previewSize, Qt::FastTransformation);
}

void AttachmentsWindowTests::largeJpegFileEntry()
{
    // A JPEG is decoded at preview size: same preview size, icon, tool tip and path.
    QImage image(1200, 900, QImage::Format_RGB32);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            image.setPixel(x, y, qRgb(x * 255 / 1199, y * 255 / 899, 128));
    }
    const QString path = writeImageFile("camera.jpg", image, "JPEG");
    QTreeWidgetItem *item = window->add_attachment_item(path, QPixmap());
    QCOMPARE(item->text(1), QDir::toNativeSeparators(path));
    QVERIFY(isResourceIcon(item->icon(0), kImageIcon));
    QCOMPARE(item->data(1, Qt::UserRole), QVariant(path));
    const QString preview = onlyUuidFile(thumbnailFiles(*window));
    QCOMPARE(thumbnailFiles(*window), QStringList{preview});
    QCOMPARE(item->toolTip(1), toolTipFor(inFolder(preview)));
    const QImage previewImage(inFolder(preview));
    QCOMPARE(previewImage.size(), QSize(512, 384));
    // The same picture as the full decode scaled down: a gradient, so every pixel
    // must lie within a few levels of it.
    const QImage reference = QImage(path).scaled(512, 384, Qt::IgnoreAspectRatio, Qt::FastTransformation);
    int worst = 0;
    for (int y = 0; y < 384; ++y) {
        for (int x = 0; x < 512; ++x) {
            const QRgb a = previewImage.pixel(x, y);
            const QRgb b = reference.pixel(x, y);
            worst = qMax(worst,
                         qMax(qAbs(qRed(a) - qRed(b)), qMax(qAbs(qGreen(a) - qGreen(b)), qAbs(qBlue(a) - qBlue(b)))));
        }
    }
    QVERIFY2(worst <= 6, qPrintable(QString::number(worst)));
}

void AttachmentsWindowTests::plainFileGetsFileIconOnly()
{
    const QString path = writeFile("notes.txt", "just some text\n");
    QTreeWidgetItem *item = window->add_attachment_item(path, QPixmap());
    QCOMPARE(item->text(0), QString());
    QCOMPARE(item->text(1), QDir::toNativeSeparators(path));
    QVERIFY(isResourceIcon(item->icon(0), kFileIcon));
    QVERIFY(item->icon(1).isNull());
    QCOMPARE(item->toolTip(1), QString());
    QCOMPARE(item->data(1, Qt::UserRole), QVariant());
    QCOMPARE(thumbnailFiles(*window), QStringList());
}

void AttachmentsWindowTests::recognisedButUnreadableImageGetsNoIcon()
{
    // A PNG signature with nothing after it: the format is known, reading fails.
    const QString path = writeFile("broken.png", QByteArray("\x89PNG\r\n\x1a\n", 8) + QByteArray(40, '\0'));
    QTreeWidgetItem *item = window->add_attachment_item(path, QPixmap());
    QCOMPARE(item->text(1), QDir::toNativeSeparators(path));
    QVERIFY(item->icon(0).isNull());
    QCOMPARE(item->toolTip(1), QString());
    QCOMPARE(item->data(1, Qt::UserRole), QVariant());
    QCOMPARE(thumbnailFiles(*window), QStringList());
}

void AttachmentsWindowTests::relativePathIsMadeAbsolute()
{
    writeFile("relative.txt", "r");
    const QString before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(files->path()));
    QTreeWidgetItem *item = window->add_attachment_item("relative.txt", QPixmap());
    QDir::setCurrent(before);
    QCOMPARE(item->text(1), QDir::toNativeSeparators(files->filePath("relative.txt")));
}

void AttachmentsWindowTests::failedPreviewFallsBackToTheSource()
{
    const QString thumbs = folder();
    const QString path = writeImageFile("pic.png", patternImage(30, 20));
    blockThumbnailFolder();
    QTreeWidgetItem *item = window->add_attachment_item(path, QPixmap());
    QCOMPARE(item->toolTip(1), toolTipFor(path));
    QCOMPARE(item->data(1, Qt::UserRole), QVariant(path));
    QVERIFY(isResourceIcon(item->icon(0), kImageIcon));
}

void AttachmentsWindowTests::sameFileTwiceGivesTwoRows()
{
    const QString path = writeFile("twice.txt", "2");
    QTreeWidgetItem *first = window->add_attachment_item(path, QPixmap());
    QTreeWidgetItem *second = window->add_attachment_item(path, QPixmap());
    QVERIFY(first != second);
    QCOMPARE(tree(*window)->topLevelItemCount(), 2);
    QCOMPARE(tree(*window)->topLevelItem(0)->text(1), QDir::toNativeSeparators(path));
    QCOMPARE(tree(*window)->topLevelItem(1)->text(1), QDir::toNativeSeparators(path));
}

// Remove Selected and Clear All.

void AttachmentsWindowTests::removeSelectedTakesEverySelectedRow()
{
    window->findChild<QPushButton *>("button_Bug_Report")->click();
    QStringList paths;
    for (const char *name : {"a.txt", "b.txt", "c.txt", "d.txt"})
        paths << writeFile(name, name);
    for (const QString &path : paths)
        window->add_attachment_item(path, QPixmap());
    addImage("kept on disk", patternImage(5, 5));
    QTreeWidget *list = tree(*window);
    list->topLevelItem(1)->setSelected(true);
    list->topLevelItem(3)->setSelected(true);
    list->topLevelItem(4)->setSelected(true);
    QPushButton *send = window->findChild<QPushButton *>("button_Send");
    send->setText("stale");

    window->findChild<QPushButton *>("button_Remove_Entry")->click();
    QCOMPARE(list->topLevelItemCount(), 2);
    QCOMPARE(list->topLevelItem(0)->text(1), QDir::toNativeSeparators(paths[0]));
    QCOMPARE(list->topLevelItem(1)->text(1), QDir::toNativeSeparators(paths[2]));
    QCOMPARE(send->text(), QString("Completed 2/7")); // the states were derived again
    QVERIFY(thumbnailFiles(*window).contains("kept_on_disk.png")); // files stay until exit

    // Nothing selected: nothing changes, and the button stays enabled.
    QVERIFY(window->findChild<QPushButton *>("button_Remove_Entry")->isEnabled());
    window->findChild<QPushButton *>("button_Remove_Entry")->click();
    QCOMPARE(list->topLevelItemCount(), 2);

    list->topLevelItem(0)->setSelected(true);
    list->topLevelItem(1)->setSelected(true);
    window->findChild<QPushButton *>("button_Remove_Entry")->click();
    QCOMPARE(list->topLevelItemCount(), 0);
    QCOMPARE(send->text(), QString("Completed 1/7"));
    QCOMPARE(list->styleSheet(), QString("border: 1px solid rgb(200, 150, 150)"));
}

void AttachmentsWindowTests::clearAllEmptiesTheList()
{
    window->findChild<QPushButton *>("button_Bug_Report")->click();
    for (int i = 0; i < 3; ++i)
        addImage("c", patternImage(3, 3));
    window->slot_set_control_states();
    QTreeWidget *list = tree(*window);
    QCOMPARE(list->styleSheet(), QString());
    QPushButton *clear = window->findChild<QPushButton *>("button_Clear_All");
    clear->click();
    QCOMPARE(list->topLevelItemCount(), 0);
    QCOMPARE(list->styleSheet(), QString("border: 1px solid rgb(200, 150, 150)"));
    QCOMPARE(window->findChild<QPushButton *>("button_Send")->text(), QString("Completed 1/7"));
    QCOMPARE(thumbnailFiles(*window), (QStringList{"c.png", "c_1.png", "c_2.png"}));
    QVERIFY(clear->isEnabled());
    clear->click(); // an empty list stays empty
    QCOMPARE(list->topLevelItemCount(), 0);
}
