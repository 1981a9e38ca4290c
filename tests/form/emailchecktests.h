#pragma once

#include "support/dnsresponder.h"

#include <QObject>

// The e-mail check on the real window, with the domains answered by the real resolver
// from files of the test's own (tests/support/privateresolver.h): a hosts file, and a
// DNS server for the answers a hosts file cannot give. One program, so that the window
// tests take one turn at the port lock.
class EmailCheckTests : public QObject
{
    Q_OBJECT

private:
    void setUpHostsFile();
    void setUpDnsServer();

    DnsResponder m_dns;

private slots:
    void initTestCase();
    void init();

    // The address's pattern, the timer, the display states and the stored verdict, with
    // the domains in a private hosts file (emailcheck_hosts.cpp).
    void patternDecidesWhatTheTimerDoes_data();
    void patternDecidesWhatTheTimerDoes();
    void editStartsTheTimerOnlyWhenWellFormed_data();
    void editStartsTheTimerOnlyWhenWellFormed();
    void displayStates_data();
    void displayStates();
    void composeScreenKeepsOnlyIconAndMessage();
    void editsWhileLookupPendingAreIgnored();
    void startOverClearsOnlyTheFieldStyle();
    void lookupValidatedOfAnyResult_data();
    void lookupValidatedOfAnyResult();
    void validatedFollowsTheStoredResult();
    void answerWithoutAddressesShowsNotFoundButValidates();

    // Empty, failed and slow answers, and the delay before the look-up, from a DNS
    // server of the test's own (emailcheck_dns.cpp).
    void answers_data();
    void answers();
    void lookupFollowsTheLastWellFormedEdit();
    void editsDuringASlowAnswerAreIgnored();
};
