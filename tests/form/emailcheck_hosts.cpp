// The e-mail check on the real window, with domains answered by the real resolver from
// a private hosts file ("hosts: files" only, so a missing name fails at once).
#include "emailchecktests.h"

#include "form/emailcheck.h"
#include "form/formwidgets.h"
#include "form/mainwindow.h"
#include "support/mainwindowprobe.h"
#include "support/privateresolver.h"

#include <QApplication>
#include <QHostInfo>
#include <QtTest>

namespace {

const QByteArray kHosts = "127.0.0.1 localhost\n"
                          "10.20.30.40 found.test\n"
                          "10.20.30.41 kept.test\n"
                          "10.20.30.42 again.test\n"
                          "10.20.30.43 answer.test\n";

const QString kValidating = QStringLiteral("(validating email...standby...)");
const QString kBadlyFormed = QStringLiteral("Your email address is incorrectly formatted.");
const QString kNotFound =
    QStringLiteral("Your email address could not be validated.  Please verify that the domain was entered correctly.");
const QString kRed = QStringLiteral("color: rgb(255, 0, 0);");
const QString kGreenBackground = QStringLiteral("background-color: rgb(245, 255, 245);");
const QString kRedBackground = QStringLiteral("background-color: rgb(255, 245, 245);");

QImage flagImage()
{
    return QPixmap(QStringLiteral(":/images/Flagged.png"))
        .scaled(16, 16, Qt::KeepAspectRatio, Qt::SmoothTransformation)
        .toImage();
}

bool waitForAnswer(const MainWindow &window)
{
    return QTest::qWaitFor([&] { return !MainWindowProbe::lookupPending(window); }, 10000);
}

// Replaces the whole address with one edit, as a paste would: all but the last character
// go in without an edit signal, the last is typed.
void editEmailTo(FormWidgets &f, const QString &text)
{
    f.email->setText(text.left(text.size() - 1));
    f.email->end(false);
    QTest::keyClicks(f.email, text.right(1));
}

void checkDisplay(const FormWidgets &f, const QString &message, bool flagged)
{
    QCOMPARE(f.emailMessage->text(), message);
    QCOMPARE(f.emailMessage->styleSheet(), flagged ? kRed : QString());
    QCOMPARE(labelImage(f.emailIcon), flagged ? flagImage() : QImage());
}

} // namespace

// The hosts file in place, and the resolver seen to read it alone.
void EmailCheckTests::setUpHostsFile()
{
    QVERIFY2(PrivateResolver::active(), qPrintable(PrivateResolver::failure()));
    QVERIFY(PrivateResolver::writeHosts(kHosts));
    const QHostInfo found = QHostInfo::fromName(QStringLiteral("found.test"));
    QCOMPARE(found.error(), QHostInfo::NoError);
    QCOMPARE(found.addresses(), QList<QHostAddress>({QHostAddress(QStringLiteral("10.20.30.40"))}));
    QCOMPARE(QHostInfo::fromName(QStringLiteral("missing.test")).error(), QHostInfo::HostNotFound);
}

void EmailCheckTests::patternDecidesWhatTheTimerDoes_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<bool>("wellFormed");
    QTest::newRow("plain") << "ann@missing.test" << true;
    QTest::newRow("capitals") << "ANN.LEE@MISSING.TEST" << true;
    QTest::newRow("two-letter label") << "ann@missing.io" << true;
    QTest::newRow("every allowed name character") << "a.b_c%d+e-f9@sub-1.missing.info" << true;
    QTest::newRow("no dot in the domain") << "ann@missing" << false;
    QTest::newRow("five-letter last label") << "ann@missing.tests" << false;
    QTest::newRow("one-letter last label") << "ann@missing.t" << false;
    QTest::newRow("digit in the last label") << "ann@missing.t3st" << false;
    QTest::newRow("word and space before") << "mail ann@missing.test" << false;
    QTest::newRow("space after") << "ann@missing.test " << false;
    QTest::newRow("dot after") << "ann@missing.test." << false;
    QTest::newRow("no name") << "@missing.test" << false;
    QTest::newRow("two at signs") << "ann@@missing.test" << false;
    QTest::newRow("underscore in the domain") << "ann@miss_ing.test" << false;
}
// What the timer's expiry shows for each text; the look-ups of well-formed addresses
// fail (the names are not in the hosts file), which is beside the point here.
void EmailCheckTests::patternDecidesWhatTheTimerDoes()
{
    QFETCH(QString, address);
    QFETCH(bool, wellFormed);
    MainWindow window;
    FormWidgets f(window);
    f.email->setText(address);
    f.emailTimerFires();
    QCOMPARE(MainWindowProbe::lookupPending(window), wellFormed);
    checkDisplay(f, wellFormed ? kValidating : kBadlyFormed, !wellFormed);
    QCOMPARE(f.email->styleSheet(), wellFormed ? QString() : kRedBackground);
    QVERIFY(waitForAnswer(window));
    QCOMPARE(MainWindowProbe::hostInfo(window).error(), wellFormed ? QHostInfo::HostNotFound : QHostInfo::UnknownError);
}

void EmailCheckTests::editStartsTheTimerOnlyWhenWellFormed_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<bool>("starts");
    QTest::newRow("well formed") << "ann@example.com" << true;
    QTest::newRow("well formed in capitals") << "ANN@EXAMPLE.COM" << true;
    QTest::newRow("five-letter last label") << "ann@example.comms" << false;
    QTest::newRow("no dot in the domain") << "ann@example" << false;
    QTest::newRow("space before") << " ann@example.com" << false;
    QTest::newRow("space after") << "ann@example.com " << false;
    QTest::newRow("emptied") << "a" << false;
}
void EmailCheckTests::editStartsTheTimerOnlyWhenWellFormed()
{
    QFETCH(QString, address);
    QFETCH(bool, starts);
    MainWindow window;
    FormWidgets f(window);
    QTest::mouseClick(f.feature, Qt::LeftButton);
    if (address == QLatin1String("a")) {
        f.email->setText(address);
        QTest::keyClick(f.email, Qt::Key_Backspace);
        QCOMPARE(f.email->text(), QString());
    } else {
        editEmailTo(f, address);
        QCOMPARE(f.email->text(), address);
    }
    QCOMPARE(MainWindowProbe::emailTimer(window).isActive(), starts);
    QVERIFY(!MainWindowProbe::lookupPending(window));
    QVERIFY(!MainWindowProbe::emailValid(window));
    checkDisplay(f, QString(), false);
    QCOMPARE(f.email->styleSheet(), f.email->text().isEmpty() ? missingFieldStyle() : QString());
}

// The display states with the exact style sheets they set. On the intro screen the
// recompute leaves line_Email alone, so its background stays as the state set it
// (the timer can fire there: Start Over within two seconds of an edit).
void EmailCheckTests::displayStates_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<bool>("answered");
    QTest::addColumn<QString>("fieldStyle");
    QTest::addColumn<bool>("flagged");
    QTest::addColumn<QString>("message");
    QTest::addColumn<bool>("valid");
    // The empty state leaves the verdict as it was (here: valid, from the state before).
    QTest::newRow("empty") << "" << false << "" << false << "" << true;
    QTest::newRow("validating") << "ann@found.test" << false << "" << false << kValidating << false;
    QTest::newRow("valid") << "ann@found.test" << true << kGreenBackground << false << "" << true;
    QTest::newRow("badly formed") << "ann@found" << false << kRedBackground << true << kBadlyFormed << false;
    QTest::newRow("domain not found") << "ann@missing.test" << true << kRedBackground << true << kNotFound << false;
}
void EmailCheckTests::displayStates()
{
    QFETCH(QString, address);
    QFETCH(bool, answered);
    QFETCH(QString, fieldStyle);
    QFETCH(bool, flagged);
    QFETCH(QString, message);
    QFETCH(bool, valid);
    MainWindow window;
    FormWidgets f(window);
    // Start from another state, so that every column is seen to change.
    f.email->setText(address.isEmpty() || flagged ? QStringLiteral("ann@found.test") : QStringLiteral("ann@nowhere"));
    f.emailTimerFires();
    QVERIFY(waitForAnswer(window));

    f.email->setText(address);
    f.emailTimerFires();
    if (answered)
        QVERIFY(waitForAnswer(window));
    QCOMPARE(MainWindowProbe::formState(window), qint32(FormState::Choosing));
    QCOMPARE(f.email->styleSheet(), fieldStyle);
    checkDisplay(f, message, flagged);
    QCOMPARE(MainWindowProbe::emailValid(window), valid);
    QVERIFY(waitForAnswer(window));
}

// On the compose screen the recompute that ends each step writes line_Email's style
// sheet again; what stays of the verdict is the icon and the message.
void EmailCheckTests::composeScreenKeepsOnlyIconAndMessage()
{
    MainWindow window;
    FormWidgets f(window);
    QTest::mouseClick(f.feature, Qt::LeftButton);
    QTest::keyClicks(f.name, "Ann");

    editEmailTo(f, QStringLiteral("ann@found.test"));
    f.emailTimerFires();
    QVERIFY(waitForAnswer(window));
    QCOMPARE(f.email->styleSheet(), QString());
    checkDisplay(f, QString(), false);
    QVERIFY(MainWindowProbe::emailValid(window));

    editEmailTo(f, QStringLiteral("ann@missing.test"));
    QVERIFY(!MainWindowProbe::emailValid(window));
    f.emailTimerFires();
    QVERIFY(waitForAnswer(window));
    QCOMPARE(f.email->styleSheet(), QString());
    checkDisplay(f, kNotFound, true);

    f.email->selectAll();
    QTest::keyClick(f.email, Qt::Key_Backspace);
    QCOMPARE(f.email->styleSheet(), missingFieldStyle());
    checkDisplay(f, kNotFound, true);
    f.emailTimerFires();
    QCOMPARE(f.email->styleSheet(), missingFieldStyle());
    checkDisplay(f, QString(), false);
}

// While the answer is outstanding, edits change nothing: no recompute (an emptied
// field is not flagged), no new timer, the verdict kept. The answer then describes
// the address that was looked up.
void EmailCheckTests::editsWhileLookupPendingAreIgnored()
{
    MainWindow window;
    FormWidgets f(window);
    QTest::mouseClick(f.feature, Qt::LeftButton);
    fillReport(f, EmailField | AttachmentsField);
    editEmailTo(f, QStringLiteral("ann@answer.test"));
    QCOMPARE(f.send->text(), QString("Send..."));
    f.emailTimerFires();
    QVERIFY(MainWindowProbe::lookupPending(window));

    f.email->selectAll();
    QTest::keyClick(f.email, Qt::Key_Backspace);
    QCOMPARE(f.email->text(), QString());
    QCOMPARE(f.email->styleSheet(), QString());
    QCOMPARE(f.send->text(), QString("Send..."));
    QVERIFY(f.send->isEnabled());
    QVERIFY(!MainWindowProbe::emailTimer(window).isActive());
    checkDisplay(f, kValidating, false);

    QVERIFY(waitForAnswer(window));
    QCOMPARE(MainWindowProbe::hostInfo(window).hostName(), QString("answer.test"));
    QVERIFY(MainWindowProbe::emailValid(window));
    checkDisplay(f, QString(), false);
    QCOMPARE(f.email->styleSheet(), missingFieldStyle());
    QCOMPARE(f.send->text(), QString("Completed 5/6"));
    QVERIFY(!f.send->isEnabled());
    QVERIFY(!MainWindowProbe::emailTimer(window).isActive());
}

void EmailCheckTests::startOverClearsOnlyTheFieldStyle()
{
    MainWindow window;
    FormWidgets f(window);
    QTest::mouseClick(f.bug, Qt::LeftButton);
    editEmailTo(f, QStringLiteral("ann@missing.test"));
    f.emailTimerFires();
    QVERIFY(waitForAnswer(window));
    f.email->selectAll();
    QTest::keyClick(f.email, Qt::Key_Backspace);
    QCOMPARE(f.email->styleSheet(), missingFieldStyle());
    const QHostInfo before = MainWindowProbe::hostInfo(window);

    QTest::mouseClick(f.startOver, Qt::LeftButton);
    QCOMPARE(f.email->styleSheet(), QString());
    checkDisplay(f, kNotFound, true);
    QCOMPARE(MainWindowProbe::hostInfo(window).lookupId(), before.lookupId());
    QCOMPARE(MainWindowProbe::hostInfo(window).error(), QHostInfo::HostNotFound);
    QCOMPARE(MainWindowProbe::hostInfo(window).hostName(), QString("missing.test"));
}

void EmailCheckTests::lookupValidatedOfAnyResult_data()
{
    QTest::addColumn<int>("lookupId");
    QTest::addColumn<int>("error");
    QTest::addColumn<bool>("withAddress");
    QTest::addColumn<bool>("validated");
    QTest::newRow("never looked up") << -1 << int(QHostInfo::NoError) << false << false;
    QTest::newRow("never looked up, with an address") << -1 << int(QHostInfo::NoError) << true << false;
    QTest::newRow("found") << 3 << int(QHostInfo::NoError) << true << true;
    QTest::newRow("no error, no address") << 3 << int(QHostInfo::NoError) << false << true;
    QTest::newRow("host not found") << 3 << int(QHostInfo::HostNotFound) << false << false;
    QTest::newRow("unknown error") << 3 << int(QHostInfo::UnknownError) << true << false;
    QTest::newRow("id 0") << 0 << int(QHostInfo::NoError) << true << true;
}
void EmailCheckTests::lookupValidatedOfAnyResult()
{
    QFETCH(int, lookupId);
    QFETCH(int, error);
    QFETCH(bool, withAddress);
    QFETCH(bool, validated);
    QHostInfo info(lookupId);
    info.setError(QHostInfo::HostInfoError(error));
    if (withAddress)
        info.setAddresses({QHostAddress(QStringLiteral("10.0.0.1"))});
    QCOMPARE(emailcheck::validated(info), validated);
}

// The stored result through a user's session: false before any answer and from each
// timer run until its answer; true after a found domain, and still true after an
// edit into a badly formed address, which starts no timer; false again once a timer
// run meets a badly formed text.
void EmailCheckTests::validatedFollowsTheStoredResult()
{
    MainWindow window;
    FormWidgets f(window);
    QTest::mouseClick(f.feature, Qt::LeftButton);
    QCOMPARE(MainWindowProbe::hostInfo(window).lookupId(), -1);
    QVERIFY(!emailcheck::validated(MainWindowProbe::hostInfo(window)));

    editEmailTo(f, QStringLiteral("ann@kept.test"));
    f.emailTimerFires();
    QVERIFY(!emailcheck::validated(MainWindowProbe::hostInfo(window)));
    QVERIFY(waitForAnswer(window));
    QVERIFY(emailcheck::validated(MainWindowProbe::hostInfo(window)));

    QTest::keyClicks(f.email, "!");
    QVERIFY(!MainWindowProbe::emailTimer(window).isActive());
    QVERIFY(!MainWindowProbe::emailValid(window));
    QVERIFY(emailcheck::validated(MainWindowProbe::hostInfo(window)));

    editEmailTo(f, QStringLiteral("ann@missing.test"));
    QVERIFY(MainWindowProbe::emailTimer(window).isActive());
    QVERIFY(emailcheck::validated(MainWindowProbe::hostInfo(window)));
    f.emailTimerFires();
    QVERIFY(!emailcheck::validated(MainWindowProbe::hostInfo(window)));
    QVERIFY(waitForAnswer(window));
    QVERIFY(!emailcheck::validated(MainWindowProbe::hostInfo(window)));

    editEmailTo(f, QStringLiteral("ann@again.test"));
    f.emailTimerFires();
    QVERIFY(waitForAnswer(window));
    QVERIFY(emailcheck::validated(MainWindowProbe::hostInfo(window)));

    // A well-formed edit starts the timer, a badly formed one leaves it running.
    editEmailTo(f, QStringLiteral("ann@again.tes"));
    QVERIFY(MainWindowProbe::emailTimer(window).isActive());
    QTest::keyClicks(f.email, "!");
    QCOMPARE(f.email->text(), QString("ann@again.tes!"));
    QVERIFY(MainWindowProbe::emailTimer(window).isActive());
    QVERIFY(emailcheck::validated(MainWindowProbe::hostInfo(window)));
    QTRY_VERIFY_WITH_TIMEOUT(!MainWindowProbe::emailTimer(window).isActive(), 5000);
    checkDisplay(f, kBadlyFormed, true);
    QVERIFY(!emailcheck::validated(MainWindowProbe::hostInfo(window)));
    QVERIFY(!MainWindowProbe::lookupPending(window));
}

// getaddrinfo never reports success without an address (Qt turns such a result into
// UnknownError, and an empty DNS answer into HostNotFound), so this answer is made
// here and handed to the slot that the look-up calls.
void EmailCheckTests::answerWithoutAddressesShowsNotFoundButValidates()
{
    MainWindow window;
    FormWidgets f(window);
    QTest::mouseClick(f.feature, Qt::LeftButton);
    editEmailTo(f, QStringLiteral("ann@found.test"));
    QHostInfo empty(17);
    empty.setHostName(QStringLiteral("found.test"));
    QCOMPARE(empty.error(), QHostInfo::NoError);
    QVERIFY(QMetaObject::invokeMethod(&window, "slot_lookup_complete", Q_ARG(QHostInfo, empty)));
    checkDisplay(f, kNotFound, true);
    QCOMPARE(f.email->styleSheet(), QString());
    QVERIFY(!MainWindowProbe::emailValid(window));
    QVERIFY(!MainWindowProbe::lookupPending(window));
    QCOMPARE(MainWindowProbe::hostInfo(window).lookupId(), 17);
    QVERIFY(emailcheck::validated(MainWindowProbe::hostInfo(window)));
}
