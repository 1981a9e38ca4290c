#pragma once

#include <QObject>
#include <QString>

// Runs once on its own thread: writes the diagnostics dump, reads it back and
// condenses it into the one-line system summary that the report carries.
class GatherSysInfo : public QObject
{
    Q_OBJECT

public:
    explicit GatherSysInfo(QObject *parent = nullptr);
    ~GatherSysInfo() override;

signals:
    void finished();
    void results(const QString &info);
    void error(const QString &err); // part of the interface; nothing emits it

public slots:
    void process();
};
