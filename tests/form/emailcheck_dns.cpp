// The e-mail check against a DNS server of the test's own ("hosts: dns", resolv.conf
// naming a loopback address): answers that a hosts file cannot give (empty, failed,
// slow), and the delay before the look-up, counted by the questions that arrive.
#include "emailchecktests.h"

#include "form/emailcheck.h"
#include "form/formwidgets.h"
#include "form/mainwindow.h"
#include "support/dnsresponder.h"
#include "support/mainwindowprobe.h"
#include "support/privateresolver.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QHostInfo>
#include <QtTest>

Q_DECLARE_METATYPE(DnsResponder::Reply)

namespace {

const QString kValidating = QStringLiteral("(validating email...standby...)");
const QString kNotFound =
    QStringLiteral("Your email address could not be validated.  Please verify that the domain was entered correctly.");

bool waitForAnswer(const MainWindow &window)
{
    return QTest::qWaitFor([&] { return !MainWindowProbe::lookupPending(window); }, 15000);
}

void typeEmail(FormWidgets &f, const QString &text)
{
    f.email->selectAll();
    QTest::keyClick(f.email, Qt::Key_Backspace);
    QTest::keyClicks(f.email, text);
}

// The DNS checks ask the test's own server ("hosts: dns"); the program starts with the
// hosts file of the other checks ("hosts: files"). Each DNS check switches to the
// server for as long as it runs.
class DnsLookups
{
public:
    DnsLookups()
        : m_switched(PrivateResolver::use(PrivateResolver::Dns))
    {
    }
    ~DnsLookups() { PrivateResolver::use(PrivateResolver::HostsFile); }
    bool switched() const { return m_switched; }

private:
    const bool m_switched;
};

} // namespace

// The server listens for the whole run; the probe, as the checks, asks it through glibc.
void EmailCheckTests::setUpDnsServer()
{
    QVERIFY2(PrivateResolver::active(), qPrintable(PrivateResolver::failure()));
    const QHostAddress server(PrivateResolver::nameServerAddress());
    QVERIFY2(m_dns.listen(server, 53),
             qPrintable(QStringLiteral("cannot listen on %1 port 53: %2").arg(server.toString(), m_dns.errorString())));

    const DnsLookups dnsLookups;
    QVERIFY(dnsLookups.switched());

    m_dns.answer(QStringLiteral("probe.test"), DnsResponder::Reply::Records, {QHostAddress("10.9.8.7")});
    QHostInfo probe;
    QHostInfo::lookupHost(QStringLiteral("probe.test"), this, [&probe](const QHostInfo &info) { probe = info; });
    QTRY_VERIFY_WITH_TIMEOUT(probe.lookupId() != -1, 15000);
    QCOMPARE(probe.error(), QHostInfo::NoError);
    QCOMPARE(probe.addresses(), QList<QHostAddress>({QHostAddress("10.9.8.7")}));
    QVERIFY(!m_dns.questionsFor(QStringLiteral("probe.test")).isEmpty());
}

void EmailCheckTests::answers_data()
{
    QTest::addColumn<QString>("domain");
    QTest::addColumn<DnsResponder::Reply>("reply");
    QTest::addColumn<int>("error");
    QTest::newRow("address record") << "records.test" << DnsResponder::Reply::Records << int(QHostInfo::NoError);
    QTest::newRow("no error, empty answer")
        << "empty.test" << DnsResponder::Reply::NoRecords << int(QHostInfo::HostNotFound);
    QTest::newRow("name error") << "nxdomain.test" << DnsResponder::Reply::NameError << int(QHostInfo::HostNotFound);
    QTest::newRow("server failure") << "servfail.test" << DnsResponder::Reply::ServerFailure
                                    << int(QHostInfo::UnknownError);
}
void EmailCheckTests::answers()
{
    const DnsLookups dnsLookups;
    QVERIFY(dnsLookups.switched());
    QFETCH(QString, domain);
    QFETCH(DnsResponder::Reply, reply);
    QFETCH(int, error);
    const bool found = error == QHostInfo::NoError;
    m_dns.answer(domain, reply, {QHostAddress("10.1.1.1")});
    MainWindow window;
    FormWidgets f(window);
    QTest::mouseClick(f.feature, Qt::LeftButton);
    typeEmail(f, QStringLiteral("ann@") + domain);
    f.emailTimerFires();
    QCOMPARE(f.emailMessage->text(), kValidating);
    QVERIFY(waitForAnswer(window));

    QVERIFY(!m_dns.questionsFor(domain).isEmpty());
    const QHostInfo info = MainWindowProbe::hostInfo(window);
    QCOMPARE(int(info.error()), error);
    QCOMPARE(info.addresses(), found ? QList<QHostAddress>({QHostAddress("10.1.1.1")}) : QList<QHostAddress>());
    QCOMPARE(f.emailMessage->text(), found ? QString() : kNotFound);
    QCOMPARE(labelImage(f.emailIcon).isNull(), found);
    QCOMPARE(MainWindowProbe::emailValid(window), found);
    QCOMPARE(emailcheck::validated(info), found);
}

// Three well-formed edits half a second apart: one look-up, two seconds after the last.
void EmailCheckTests::lookupFollowsTheLastWellFormedEdit()
{
    const DnsLookups dnsLookups;
    QVERIFY(dnsLookups.switched());
    m_dns.answer(QStringLiteral("timer.test"), DnsResponder::Reply::Records, {QHostAddress("10.1.1.2")});
    MainWindow window;
    FormWidgets f(window);
    int timeouts = 0;
    connect(&MainWindowProbe::emailTimer(window), &QTimer::timeout, this, [&timeouts] { ++timeouts; });
    QTest::mouseClick(f.feature, Qt::LeftButton);
    const int questionsBefore = m_dns.questions().size();

    QTest::keyClicks(f.email, "ann@timer.te"); // only the last keystroke leaves it well formed
    QVERIFY(MainWindowProbe::emailTimer(window).isActive());
    QTest::qWait(500);
    QTest::keyClick(f.email, Qt::Key_S);
    QTest::qWait(500);
    QCOMPARE(timeouts, 0);
    QTest::keyClick(f.email, Qt::Key_T);
    const qint64 lastEdit = DnsResponder::clockMs();
    QCOMPARE(f.email->text(), QString("ann@timer.test"));

    QTest::qWait(1500);
    QCOMPARE(timeouts, 0);
    QCOMPARE(m_dns.questions().size(), questionsBefore);
    QCOMPARE(f.emailMessage->text(), QString());

    QTRY_COMPARE_WITH_TIMEOUT(timeouts, 1, 5000);
    QVERIFY(waitForAnswer(window));
    QVERIFY(MainWindowProbe::emailValid(window));
    const QList<DnsResponder::Question> asked = m_dns.questionsFor(QStringLiteral("timer.test"));
    QVERIFY(!asked.isEmpty());
    // Qt's default coarse timers may fire up to 5 % early.
    QVERIFY2(asked.first().receivedAt - lastEdit >= 1900,
             qPrintable(QStringLiteral("asked %1 ms after the last edit").arg(asked.first().receivedAt - lastEdit)));

    QTest::qWait(2500);
    QCOMPARE(timeouts, 1);
    // One look-up: at most one question of each type (getaddrinfo asks A and AAAA, or
    // only the family the machine has addresses of).
    QVERIFY(m_dns.questionsFor(QStringLiteral("timer.test"), DnsResponder::TypeA).size() <= 1);
    QVERIFY(m_dns.questionsFor(QStringLiteral("timer.test"), DnsResponder::TypeAAAA).size() <= 1);
    QCOMPARE(m_dns.questionsFor(QStringLiteral("timer.test")).size(), m_dns.questions().size() - questionsBefore);
}

// A slow answer: every edit while it is outstanding is ignored, and the answer, when
// it comes, describes the address that was looked up, not the one in the field.
void EmailCheckTests::editsDuringASlowAnswerAreIgnored()
{
    const DnsLookups dnsLookups;
    QVERIFY(dnsLookups.switched());
    m_dns.answer(QStringLiteral("slow.test"), DnsResponder::Reply::Records, {QHostAddress("10.1.1.3")}, 1500);
    MainWindow window;
    FormWidgets f(window);
    QTest::mouseClick(f.feature, Qt::LeftButton);
    fillReport(f, EmailField | AttachmentsField);
    typeEmail(f, QStringLiteral("ann@slow.test"));
    QCOMPARE(f.send->text(), QString("Send..."));
    QElapsedTimer sinceLookup;
    sinceLookup.start();
    f.emailTimerFires();
    QVERIFY(MainWindowProbe::lookupPending(window));
    QTRY_VERIFY_WITH_TIMEOUT(!m_dns.questionsFor(QStringLiteral("slow.test")).isEmpty(), 5000);

    typeEmail(f, QStringLiteral("bob@other.test"));
    QCOMPARE(f.email->text(), QString("bob@other.test"));
    QVERIFY(!MainWindowProbe::emailTimer(window).isActive());
    f.email->selectAll();
    QTest::keyClick(f.email, Qt::Key_Backspace);
    QCOMPARE(f.email->styleSheet(), QString()); // no recompute: an empty field would be flagged
    QCOMPARE(f.send->text(), QString("Send..."));
    QTest::keyClicks(f.email, "carl@third.test");
    QVERIFY(!MainWindowProbe::emailTimer(window).isActive());
    QVERIFY(MainWindowProbe::lookupPending(window));
    QCOMPARE(f.emailMessage->text(), kValidating);
    QVERIFY(!emailcheck::validated(MainWindowProbe::hostInfo(window)));

    QVERIFY(waitForAnswer(window));
    QVERIFY(sinceLookup.elapsed() >= 1400);
    const QHostInfo info = MainWindowProbe::hostInfo(window);
    QCOMPARE(info.hostName(), QString("slow.test"));
    QCOMPARE(info.addresses(), QList<QHostAddress>({QHostAddress("10.1.1.3")}));
    QVERIFY(emailcheck::validated(info));
    QVERIFY(MainWindowProbe::emailValid(window));
    QCOMPARE(f.emailMessage->text(), QString());
    QVERIFY(labelImage(f.emailIcon).isNull());
    QCOMPARE(f.email->text(), QString("carl@third.test"));
    QVERIFY(!MainWindowProbe::emailTimer(window).isActive());

    QTest::qWait(2500);
    QVERIFY(m_dns.questionsFor(QStringLiteral("other.test")).isEmpty());
    QVERIFY(m_dns.questionsFor(QStringLiteral("third.test")).isEmpty());

    // With the answer in, edits count again.
    QTest::keyClick(f.email, Qt::Key_Backspace);
    QTest::keyClick(f.email, Qt::Key_T);
    QVERIFY(MainWindowProbe::emailTimer(window).isActive());
    QVERIFY(!MainWindowProbe::emailValid(window));
}
