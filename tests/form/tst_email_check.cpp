// The e-mail check's tests; the groups are in emailcheck_hosts.cpp and emailcheck_dns.cpp.
#include "emailchecktests.h"

#include "support/privateresolver.h"
#include "support/testenv.h"

#include <QApplication>
#include <QtTest>

// The hosts file first, which the program starts with; then the DNS server, which
// listens through the whole run but is asked only while a DNS check runs.
void EmailCheckTests::initTestCase()
{
    setUpHostsFile();
    if (QTest::currentTestFailed())
        return;
    setUpDnsServer();
}

void EmailCheckTests::init()
{
    TestEnvironment::instance().forgetSettings();
}

// Look-ups read the private hosts file; each DNS check sends them to the test's DNS
// server while it runs (PrivateResolver::use).
FB_TEST_MAIN_PRIVATE_RESOLVER(EmailCheckTests, PrivateResolver::HostsFile)
