#include "app/display.h"

#include <QCoreApplication>
#include <QGuiApplication>

QPoint centredPosition(const QSize &screenSize, const QSize &windowSize)
{
    return QPoint((screenSize.width() - windowSize.width()) >> 1, (screenSize.height() - windowSize.height()) >> 1);
}

void setHighDpiAttributes()
{
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling, true);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps, true);
#ifdef Q_OS_WIN
    // Qt 5 rounds the system's factor to a whole number unless told otherwise: a window
    // at 150 % would be drawn at 200 %, and one at 125 % at 100 %. Windows users choose
    // their factor; Qt 5 on X11 would take one from the monitor's physical size (1.04,
    // 0.97), so Linux keeps whole factors.
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
#endif
}
