#include "sysinfo/systemsummary.h"

#include "app/suitepath.h"
#include "sysinfo/dxdiagreader.h"

#include <QFile>
#include <QLockFile>
#include <QTextStream>
#include <QUrl>

#include <cstdio>

namespace {

struct Key
{
    const char *text; // the property name with its colon and space
    int length;
    const char *format;
};

// Tested in this order; the first key found in a line decides.
const Key kFieldKeys[] = {
    {"szDirectXVersionLongEnglish: ", 29, "\"DirectXVersion\" : \"%1\""},
    {"szPhysicalMemoryEnglish: ", 25, "\"PhysicalMemory\" : \"%1\""},
    {"szProcessorEnglish: ", 20, "\"Processor\" : \"%1\""},
    {"szOSExLongEnglish: ", 19, "\"OS\" : \"%1\""},
};

const Key kDeviceNameKey = {"szDeviceName: ", 14, "\"Display\" : \"%1"};

// Properties of a display, in the order they are tested.
const Key kDisplayKeys[] = {
    {"szDescription: ", 15, "; %1"}, {"szDisplayMemoryEnglish: ", 24, "; %1"}, {"szDisplayModeEnglish: ", 22, "; %1"},
    {"szMonitorName: ", 15, "; %1"}, {"szDriverName: ", 14, "; %1"},           {"szDriverVersion: ", 17, "; %1"},
};

// The value after the key, trimmed and percent-encoded, put into the key's format.
QString field(const Key &key, const QString &line, int position)
{
    const QByteArray encoded = QUrl::toPercentEncoding(line.mid(position + key.length).trimmed());
    return QString::fromLatin1(key.format).arg(QString::fromLatin1(encoded));
}

// Tests the line against the keys in order and gives the first one found.
template <std::size_t N>
const Key *findKey(const Key (&keys)[N], const QString &line, int &position)
{
    for (const Key &key : keys) {
        position = line.indexOf(QLatin1String(key.text));
        if (position >= 0)
            return &key;
    }
    return nullptr;
}

// A display's property lines are the indented ones that follow its device name.
// The line that ends the block is consumed here and never looked at again.
void writeDisplay(QTextStream &dump, QTextStream &out, const QString &deviceLine, int position, int count)
{
    if (count != 0)
        out << ", ";
    out << field(kDeviceNameKey, deviceLine, position);

    QString line = dump.readLine();
    while (!dump.atEnd()) {
        if (line.isEmpty() || !line.at(0).isSpace())
            break;
        int at = -1;
        if (const Key *key = findKey(kDisplayKeys, line, at))
            out << field(*key, line, at);
        line = dump.readLine();
    }
    out << "\"";
}

} // namespace

void writeSummaryFields(QTextStream &dump, QTextStream &out)
{
    out << "{ ";
    // Only the four system fields count; display entries never do, so a display
    // that comes first, and one that follows it, get no separator.
    int count = 0;
    while (!dump.atEnd()) {
        const QString line = dump.readLine();
        int position = -1;
        if (const Key *key = findKey(kFieldKeys, line, position)) {
            if (count != 0)
                out << ", ";
            out << field(*key, line, position);
            ++count;
        } else if ((position = line.indexOf(QLatin1String(kDeviceNameKey.text))) >= 0) {
            writeDisplay(dump, out, line, position, count);
        }
    }
    out << " }";
}

QString summarizeDump(const QString &dumpText)
{
    QString input = dumpText;
    QTextStream dump(&input, QIODevice::ReadOnly);
    QString summary;
    QTextStream out(&summary, QIODevice::ReadWrite);
    writeSummaryFields(dump, out);
    out.flush();
    return summary;
}

QByteArray sysInfoDumpPath()
{
    return QByteArray(SuitePath(SuiteTempFolder)) + "/kvfba_dxdiag.txt";
}

std::unique_ptr<DxDiagSession> makeDxDiagReader()
{
    return std::make_unique<DxDiagReader>();
}

void writeSystemSummary(QTextStream &out, const DxDiagSessionFactory &makeReader, int lockWaitMs)
{
    // No temporary folder (SuitePath gives an empty path when the folder does
    // not exist) is a file that cannot be created, not a file in the root folder.
    if (!*SuitePath(SuiteTempFolder))
        return;
    const QByteArray path = sysInfoDumpPath();
    // Only an owner that is gone makes the lock stale, however long its job takes.
    QLockFile dumpInUse(QString::fromUtf8(path) + QLatin1String(".lock"));
    dumpInUse.setStaleLockTime(0);
    if (!dumpInUse.tryLock(lockWaitMs))
        return;
    std::FILE *file = std::fopen(path.constData(), "w");
    if (!file)
        return;

    bool dumped = false;
    try {
        std::unique_ptr<DxDiagSession> reader = makeReader();
        dumpSections(*reader, file);
        reader.reset(); // releases the provider and ends COM before the file is read
        dumped = true;
    } catch (...) {
    }
    std::fclose(file);
    // A dump cut short by an exception is left on disk as it is.
    if (!dumped)
        return;

    QFile input(QString::fromUtf8(path));
    if (input.open(QIODevice::ReadOnly | QIODevice::Text)) {
        QTextStream dump(&input);
        // The walker writes UTF-8 on every platform.
        dump.setCodec("UTF-8");
        writeSummaryFields(dump, out);
        input.close();
    }
    QFile::remove(QString::fromUtf8(path));
}
