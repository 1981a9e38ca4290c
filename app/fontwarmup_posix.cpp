#include "app/fontwarmup.h"

#include <QFont>
#include <QFontDatabase>
#include <QFontMetrics>

FontWarmUp::FontWarmUp(const QStringList &families)
    : worker([families] {
        const QFontDatabase database;
        (void)database.families();
        for (const QString &family : families)
            (void)QFontMetrics(QFont(family)).height();
    })
{
}

FontWarmUp::~FontWarmUp()
{
    worker.join();
}
