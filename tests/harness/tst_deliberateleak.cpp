// Leaks on purpose, from a slot that Qt's event loop calls, so that the sanitizer
// lane proves its leak suppressions still let the program's own leaks through.
#include "support/testenv.h"

#include <QObject>
#include <QTimer>
#include <QtTest>

class TestDeliberateLeak : public QObject
{
    Q_OBJECT

private slots:
    void objectMadeInATimerIsNeverDeleted()
    {
        bool ran = false;
        QTimer::singleShot(0, this, [&ran] {
            QObject *lost = new QObject;
            lost->setObjectName(QStringLiteral("lost on purpose"));
            ran = true;
        });
        QVERIFY(QTest::qWaitFor([&ran] { return ran; }));
    }
};

FB_TEST_MAIN(TestDeliberateLeak)
#include "tst_deliberateleak.moc"
