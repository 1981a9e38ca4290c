#include "sysinfo/gathersysinfo.h"

#include "sysinfo/systemsummary.h"

#include <QTextStream>

GatherSysInfo::GatherSysInfo(QObject *parent)
    : QObject(parent)
{
}

GatherSysInfo::~GatherSysInfo() = default;

void GatherSysInfo::process()
{
    QString summary;
    QTextStream stream(&summary, QIODevice::ReadWrite);
    writeSystemSummary(stream);
    stream.flush();

    // Exactly once, also when the summary is empty; then the thread may end.
    emit results(summary);
    emit finished();
}
