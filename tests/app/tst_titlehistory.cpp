// The history of report titles: which title joins it, and what the settings file keeps.
#include "app/titlehistory.h"
#include "support/testenv.h"

#include <QtTest>

class TestTitleHistory : public QObject
{
    Q_OBJECT

private slots:
    void joins_data()
    {
        QTest::addColumn<QStringList>("history");
        QTest::addColumn<QString>("title");
        QTest::addColumn<bool>("joins");
        QTest::newRow("first title") << QStringList{} << "Crash on save" << true;
        QTest::newRow("empty") << QStringList{} << "" << false;
        QTest::newRow("already there stays where it is")
            << QStringList{"a", "Crash on save"} << "Crash on save" << false;
        QTest::newRow("letter case counts") << QStringList{"crash on save"} << "Crash on save" << true;
        QTest::newRow("a blank is a title") << QStringList{} << " " << true;
        QTest::newRow("a full history takes more") << QStringList{"1", "2", "3", "4", "5"} << "6" << true;
    }

    void joins()
    {
        QFETCH(QStringList, history);
        QFETCH(QString, title);
        QFETCH(bool, joins);
        QCOMPARE(titlehistory::joins(history, title), joins);
    }

    void stored_data()
    {
        QTest::addColumn<QStringList>("history");
        QTest::addColumn<QStringList>("stored");
        QTest::newRow("none") << QStringList{} << QStringList{};
        QTest::newRow("as it is") << QStringList{"b", "a"} << QStringList{"b", "a"};
        QTest::newRow("each once, where it first comes")
            << QStringList{"a", "b", "a", "c", "b"} << QStringList{"a", "b", "c"};
        QTest::newRow("letter case counts") << QStringList{"A", "a"} << QStringList{"A", "a"};
    }

    void stored()
    {
        QFETCH(QStringList, history);
        QFETCH(QStringList, stored);
        QCOMPARE(titlehistory::stored(history), stored);
    }

    void fiveTitles() { QCOMPARE(titlehistory::kLength, 5); }
};

FB_TEST_MAIN(TestTitleHistory)
#include "tst_titlehistory.moc"
