#pragma once

// What the worker checks compare with, shared by sysinfo/sysinfoworker and
// sysinfo/window_summary: where the job writes its dump, the summary this machine
// gives, and the tool tip a widget shows.

#include "sysinfo/systemsummary.h"

#include "fakedxdiag.h"
#include "support/testenv.h"

#include <QApplication>
#include <QHelpEvent>
#include <QTextDocument>
#include <QTextStream>
#include <QToolTip>
#include <QWidget>

inline QString dumpFile()
{
    return TestEnvironment::instance().temp() + "/kvfba_dxdiag.txt";
}

inline QString toolTipOf(QWidget *widget)
{
    QToolTip::hideText();
    QHelpEvent help(QEvent::ToolTip, QPoint(4, 4), widget->mapToGlobal(QPoint(4, 4)));
    QApplication::sendEvent(widget, &help);
    return QToolTip::isVisible() ? QToolTip::text() : QStringLiteral("<no tip>");
}

inline QString tip(const QString &plain)
{
    return Qt::convertFromPlainText(plain, Qt::WhiteSpaceNormal);
}

// The summary this machine gives, made by the job on this thread.
inline QString machineSummary()
{
    QString summary;
    QTextStream out(&summary, QIODevice::ReadWrite);
    StdoutCapture capture;
    writeSystemSummary(out);
    out.flush();
    return summary;
}
