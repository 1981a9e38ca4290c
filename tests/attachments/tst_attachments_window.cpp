// The attachment list's window tests: the fixture and main. The functions are in
// attachmentlist.cpp and attachmentsources.cpp.
#include "attachmentcheck.h"
#include "attachmentswindowtests.h"
#include "support/testenv.h"

#include <QApplication>
#include <QFile>
#include <QFileInfo>
#include <QtTest>

using namespace attachmentcheck;

QString AttachmentsWindowTests::writeFile(const QString &name, const QByteArray &content)
{
    const QString path = files->filePath(name);
    QFile file(path);
    if (file.open(QIODevice::WriteOnly))
        file.write(content);
    return path;
}

void AttachmentsWindowTests::initTestCase()
{
    // A section's list must name real functions, or their fixture part would be left
    // out without a word.
    for (const QString &name : sourcesFunctions)
        QVERIFY2(metaObject()->indexOfSlot(qPrintable(name + "()")) >= 0, qPrintable(name));
    findUnreadableStandIn();
}

void AttachmentsWindowTests::init()
{
    // The source functions drive Qt's own file dialog; the others open none and keep
    // the application's default.
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs, running(sourcesFunctions));
    window.reset(); // a failed init skips cleanup; only one window may hold the guard
    window.reset(new MainWindow);
    files.reset(new QTemporaryDir(TestEnvironment::instance().root() + "/files-XXXXXX"));
    QVERIFY(files->isValid());
    QCOMPARE(thumbnailFiles(*window), QStringList());
    if (running(sourcesFunctions))
        startOnBugReport();
}

void AttachmentsWindowTests::cleanup()
{
    // A test that blocked the folder with a file may have stopped before undoing it.
    const QString thumbs = folder();
    window.reset();
    if (QFileInfo(thumbs).isFile())
        QFile::remove(thumbs);
    heldFiles.clear();
    files.reset();
}

FB_TEST_MAIN(AttachmentsWindowTests)
