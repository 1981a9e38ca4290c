// Command-line access to the system-information code, for the CI lanes and for
// looking at a machine by hand:
//
//   fb-sysinfo DUMP            prints the summary of a dump file (UTF-8, any line ends)
//   fb-sysinfo --readable DUMP prints it decoded, one "Field: value" line per field
//   fb-sysinfo --dump FILE     writes this machine's dump to FILE (headers on stdout)
//   fb-sysinfo --gather        runs the worker's job and prints the summary
//
// Exit status 0, or 2 for a file that cannot be opened or a wrong call.

#include "sysinfo/dxdiagreader.h"
#include "sysinfo/systemsummary.h"
#include "sysinfo/sysinfotooltip.h"

#include <QCoreApplication>
#include <QFile>
#include <QTextStream>

#include <cstdio>

namespace {

int usage()
{
    std::fputs("usage: fb-sysinfo [--readable] DUMP | --dump FILE | --gather\n", stderr);
    return 2;
}

bool readDump(const QString &path, QString &summary)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return false;
    QTextStream dump(&file);
    dump.setCodec("UTF-8");
    QTextStream out(&summary, QIODevice::ReadWrite);
    writeSummaryFields(dump, out);
    out.flush();
    return true;
}

void printLine(const QString &text)
{
    std::fputs(text.toUtf8().constData(), stdout);
    std::fputc('\n', stdout);
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments().mid(1);
    if (args.size() == 1 && args[0] == QLatin1String("--gather")) {
        QString summary;
        QTextStream out(&summary, QIODevice::ReadWrite);
        writeSystemSummary(out);
        out.flush();
        std::fflush(stdout);
        printLine(summary);
        return 0;
    }
    if (args.size() == 2 && args[0] == QLatin1String("--dump")) {
        std::FILE *file = std::fopen(QFile::encodeName(args[1]).constData(), "w");
        if (!file)
            return 2;
        {
            DxDiagReader reader;
            dumpSections(reader, file);
        }
        std::fclose(file);
        return 0;
    }
    const bool readable = args.size() == 2 && args[0] == QLatin1String("--readable");
    if (args.size() != 1 && !readable)
        return usage();
    QString summary;
    if (!readDump(args.last(), summary)) {
        std::fprintf(stderr, "cannot read %s\n", QFile::encodeName(args.last()).constData());
        return 2;
    }
    printLine(readable ? sysInfoToolTipText(summary) : summary);
    return 0;
}
