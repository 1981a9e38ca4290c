// Branches on memory it never wrote, so that the memcheck lane proves its suppressions
// still let the program's own errors through: this test passes only on valgrind's report.
#include "support/testenv.h"

#include <QtTest>

#include <cstdio>
#include <memory>

class TestDeliberateUninit : public QObject
{
    Q_OBJECT

private slots:
    void branchOnAValueNeverWritten()
    {
        const std::unique_ptr<int[]> neverWritten(new int[4]);
        if (neverWritten[2] == 42)
            std::puts("the answer, by chance");
    }
};

FB_TEST_MAIN(TestDeliberateUninit)
#include "tst_deliberateuninit.moc"
