#include "app/display.h"
#include "support/testenv.h"

#include <QtTest>

class TestCentring : public QObject
{
    Q_OBJECT

private slots:
    void centredPosition_data()
    {
        QTest::addColumn<QSize>("screen");
        QTest::addColumn<QSize>("window");
        QTest::addColumn<QPoint>("expected");
        QTest::newRow("full hd") << QSize(1920, 1080) << QSize(720, 470) << QPoint(600, 305);
        QTest::newRow("odd difference rounds down") << QSize(1921, 1081) << QSize(720, 470) << QPoint(600, 305);
        QTest::newRow("same size") << QSize(720, 470) << QSize(720, 470) << QPoint(0, 0);
        QTest::newRow("larger than the screen") << QSize(800, 600) << QSize(1000, 700) << QPoint(-100, -50);
        // An arithmetic shift: -201 / 2 rounds down to -101, not toward zero.
        QTest::newRow("odd overflow rounds down") << QSize(800, 600) << QSize(1001, 703) << QPoint(-101, -52);
        QTest::newRow("one pixel too wide") << QSize(800, 600) << QSize(801, 600) << QPoint(-1, 0);
    }
    void centredPosition()
    {
        QFETCH(QSize, screen);
        QFETCH(QSize, window);
        QFETCH(QPoint, expected);
        QCOMPARE(::centredPosition(screen, window), expected);
    }
};

FB_TEST_MAIN(TestCentring)
#include "tst_centring.moc"
