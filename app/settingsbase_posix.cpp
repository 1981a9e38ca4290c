#include "app/settingsbase.h"

#include <QStandardPaths>

QString userSettingsBase()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
}
