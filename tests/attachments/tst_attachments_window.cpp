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
    findUnreadableStandIn();
}

void AttachmentsWindowTests::init()
{
    // The source functions drive Qt's own file dialog; the others open none and keep
    // the application's default.
    const bool sources = currentTestTag(*this) == "SOURCES_TEST";
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs, sources);
    window.reset(); // a failed init skips cleanup; only one window may hold the guard
    window.reset(new MainWindow);
    files.reset(new QTemporaryDir(TestEnvironment::instance().root() + "/files-XXXXXX"));
    QVERIFY(files->isValid());
    QCOMPARE(thumbnailFiles(*window), QStringList());
    if (sources)
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
