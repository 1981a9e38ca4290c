#pragma once

#include <QObject>
#include <QString>

#include <functional>

class QWidget;

// The system summary in readable form: one "Field: value" line per field, values
// decoded; a note while it is still being gathered (empty summary) or when it
// holds no fields.
QString sysInfoToolTipText(const QString &summary);

// Shows sysInfoToolTipText() of the current summary as the tool tip of the widget
// it watches, built when the tip is asked for. The filter belongs to the widget.
class SysInfoToolTip : public QObject
{
    Q_OBJECT

public:
    SysInfoToolTip(QWidget *target, std::function<QString()> currentSummary);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QWidget *m_target;
    std::function<QString()> m_currentSummary;
};

// Installs a SysInfoToolTip on target.
void installSysInfoToolTip(QWidget *target, std::function<QString()> currentSummary);
