// The e-mail check's rules: what an edit, the timer and a look-up's answer make of the
// kept verdict and of what the field shows; and the report's "validated" value.
#include "form/emailcheck.h"
#include "support/testenv.h"

#include <QHostAddress>
#include <QtTest>

using emailcheck::Display;

Q_DECLARE_METATYPE(Display)

class TestEmailCheck : public QObject
{
    Q_OBJECT

private slots:
    void edit_data()
    {
        QTest::addColumn<bool>("valid");
        QTest::addColumn<bool>("pending");
        QTest::addColumn<bool>("wellFormed");
        QTest::addColumn<bool>("ignored");
        QTest::addColumn<bool>("validAfter");
        QTest::addColumn<bool>("startTimer");
        QTest::newRow("well formed") << true << false << true << false << false << true;
        QTest::newRow("badly formed: no timer") << true << false << false << false << false << false;
        QTest::newRow("while a look-up runs: nothing") << true << true << true << true << true << false;
        QTest::newRow("while a look-up runs, badly formed") << false << true << false << true << false << false;
    }

    void edit()
    {
        QFETCH(bool, valid);
        QFETCH(bool, pending);
        QFETCH(bool, wellFormed);
        QFETCH(bool, ignored);
        QFETCH(bool, validAfter);
        QFETCH(bool, startTimer);
        const emailcheck::AfterEdit next = emailcheck::afterEdit({valid, pending}, wellFormed);
        QCOMPARE(next.ignored, ignored);
        QCOMPARE(next.state.emailValid, validAfter);
        QCOMPARE(next.state.lookupPending, pending);
        QCOMPARE(next.startTimer, startTimer);
    }

    void timer_data()
    {
        QTest::addColumn<bool>("valid");
        QTest::addColumn<bool>("empty");
        QTest::addColumn<bool>("wellFormed");
        QTest::addColumn<Display>("display");
        QTest::addColumn<bool>("validAfter");
        QTest::addColumn<bool>("pendingAfter");
        QTest::addColumn<bool>("lookup");
        QTest::newRow("empty: the verdict stays") << true << true << false << Display::Empty << true << false << false;
        QTest::newRow("well formed: look it up")
            << true << false << true << Display::Validating << true << true << true;
        QTest::newRow("badly formed") << true << false << false << Display::BadlyFormed << false << false << false;
    }

    void timer()
    {
        QFETCH(bool, valid);
        QFETCH(bool, empty);
        QFETCH(bool, wellFormed);
        QFETCH(Display, display);
        QFETCH(bool, validAfter);
        QFETCH(bool, pendingAfter);
        QFETCH(bool, lookup);
        const emailcheck::AfterTimer next = emailcheck::afterTimer({valid, false}, empty, wellFormed);
        QCOMPARE(next.display, display);
        QCOMPARE(next.state.emailValid, validAfter);
        QCOMPARE(next.state.lookupPending, pendingAfter);
        QCOMPARE(next.startLookup, lookup);
    }

    void lookup_data()
    {
        QTest::addColumn<int>("error");
        QTest::addColumn<int>("addresses");
        QTest::addColumn<Display>("display");
        QTest::addColumn<bool>("valid");
        QTest::newRow("found") << int(QHostInfo::NoError) << 1 << Display::Valid << true;
        QTest::newRow("no error but no address") << int(QHostInfo::NoError) << 0 << Display::DomainNotFound << false;
        QTest::newRow("host not found") << int(QHostInfo::HostNotFound) << 0 << Display::DomainNotFound << false;
        QTest::newRow("other error with an address")
            << int(QHostInfo::UnknownError) << 1 << Display::DomainNotFound << false;
    }

    void lookup()
    {
        QFETCH(int, error);
        QFETCH(int, addresses);
        QFETCH(Display, display);
        QFETCH(bool, valid);
        QHostInfo info(7);
        info.setError(QHostInfo::HostInfoError(error));
        if (addresses)
            info.setAddresses({QHostAddress("192.0.2.1")});
        const emailcheck::AfterLookup next = emailcheck::afterLookup({!valid, true}, info);
        QCOMPARE(next.display, display);
        QCOMPARE(next.state.emailValid, valid);
        QVERIFY(!next.state.lookupPending);
    }

    void validated_data()
    {
        QTest::addColumn<int>("lookupId");
        QTest::addColumn<int>("error");
        QTest::addColumn<bool>("validated");
        QTest::newRow("no look-up yet") << -1 << int(QHostInfo::NoError) << false;
        QTest::newRow("completed without error") << 3 << int(QHostInfo::NoError) << true;
        QTest::newRow("completed with an error") << 3 << int(QHostInfo::HostNotFound) << false;
        QTest::newRow("marked failed for a new check") << 3 << int(QHostInfo::UnknownError) << false;
    }

    void validated()
    {
        QFETCH(int, lookupId);
        QFETCH(int, error);
        QFETCH(bool, validated);
        QHostInfo info(lookupId);
        info.setError(QHostInfo::HostInfoError(error));
        QCOMPARE(emailcheck::validated(info), validated);
    }
};

FB_TEST_MAIN(TestEmailCheck)
#include "tst_emailcheck.moc"
