#include "sysinfo/sysinfotooltip.h"

#include <QCoreApplication>
#include <QEvent>
#include <QHelpEvent>
#include <QRegularExpression>
#include <QStringList>
#include <QTextDocument>
#include <QToolTip>
#include <QUrl>
#include <QWidget>

namespace {

QString fieldLabel(const QString &name)
{
    if (name == QLatin1String("DirectXVersion"))
        return QCoreApplication::translate("MainWindow", "DirectX version");
    if (name == QLatin1String("PhysicalMemory"))
        return QCoreApplication::translate("MainWindow", "Physical memory");
    if (name == QLatin1String("Processor"))
        return QCoreApplication::translate("MainWindow", "Processor");
    if (name == QLatin1String("OS"))
        return QCoreApplication::translate("MainWindow", "Operating system");
    if (name == QLatin1String("Display"))
        return QCoreApplication::translate("MainWindow", "Display");
    return name;
}

} // namespace

QString sysInfoToolTipText(const QString &summary)
{
    if (summary.isEmpty())
        return QCoreApplication::translate("MainWindow", "System information is being gathered.");

    // Every field is "name" : "value"; encoded values hold no quotes, and a
    // display's parts are joined by a plain "; " between encoded parts.
    static const QRegularExpression fieldPattern(QStringLiteral("\"([^\"]*)\" : \"([^\"]*)\""));
    QStringList lines;
    QRegularExpressionMatchIterator it = fieldPattern.globalMatch(summary);
    while (it.hasNext()) {
        const QRegularExpressionMatch match = it.next();
        const QString value = QUrl::fromPercentEncoding(match.captured(2).toLatin1());
        lines << QStringLiteral("%1: %2").arg(fieldLabel(match.captured(1)), value);
    }
    if (lines.isEmpty())
        return QCoreApplication::translate("MainWindow", "No system information is available.");
    return lines.join(QLatin1Char('\n'));
}

SysInfoToolTip::SysInfoToolTip(QWidget *target, std::function<QString()> currentSummary)
    : QObject(target)
    , m_target(target)
    , m_currentSummary(std::move(currentSummary))
{
}

bool SysInfoToolTip::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_target && event->type() == QEvent::ToolTip) {
        const QHelpEvent *help = static_cast<QHelpEvent *>(event);
        // As rich text, so that a value that looks like markup shows as it is.
        const QString tip = Qt::convertFromPlainText(sysInfoToolTipText(m_currentSummary()), Qt::WhiteSpaceNormal);
        QToolTip::showText(help->globalPos(), tip, m_target);
        return true;
    }
    return QObject::eventFilter(watched, event);
}

void installSysInfoToolTip(QWidget *target, std::function<QString()> currentSummary)
{
    target->installEventFilter(new SysInfoToolTip(target, std::move(currentSummary)));
}
