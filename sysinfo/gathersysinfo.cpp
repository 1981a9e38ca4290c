#include "sysinfo/gathersysinfo.h"

GatherSysInfo::GatherSysInfo(QObject *parent)
    : QObject(parent)
{
}

GatherSysInfo::~GatherSysInfo() = default;

void GatherSysInfo::process()
{
    emit results(QString());
    emit finished();
}
