#pragma once

#include "support/testenv.h"

#include <QApplication>
#include <QByteArray>
#include <QString>
#include <QtTest>

// Gives the test process its own /etc/hosts, /etc/nsswitch.conf and /etc/resolv.conf
// through a private mount namespace. Host look-ups still go through the real resolver
// (glibc getaddrinfo behind QHostInfo); only the files it reads belong to the test, so
// answers do not depend on the machine's network.
//
// As root the process only unshares its mount namespace. Otherwise, or when root may
// not do that, it also unshares a user namespace (mapping itself to root inside) and a
// network namespace with its own loopback, so that a test DNS server may still listen
// on port 53.
//
// enter() must run before any thread exists (namespaces are per thread) and before
// the first look-up; FB_TEST_MAIN_PRIVATE_RESOLVER does that. When it fails, the test
// must fail with failure() as the reason rather than run against the real files.
class PrivateResolver
{
public:
    enum Source { HostsFile, Dns };

    static bool enter(Source source);
    static bool active();
    static QString failure();

    // The loopback address the test DNS server listens on; resolv.conf names it.
    static QString nameServerAddress();
    // Replace the private files' contents in place (the bind mounts follow the inode).
    static bool writeHosts(const QByteArray &contents);
    static bool writeResolvConf(const QByteArray &contents);
    // Sends the look-ups that follow to another source, for a test program that checks
    // both: nsswitch.conf is rewritten in place, and glibc (2.33 and later) reads it
    // again at the next look-up once it has changed.
    static bool use(Source source);
};

// FB_TEST_MAIN with the private resolver files set up before QApplication exists.
#define FB_TEST_MAIN_PRIVATE_RESOLVER(TestObject, source)                                                              \
    int main(int argc, char *argv[])                                                                                   \
    {                                                                                                                  \
        TestEnvironment::instance();                                                                                   \
        PrivateResolver::enter(source);                                                                                \
        QApplication app(argc, argv);                                                                                  \
        app.setAttribute(Qt::AA_Use96Dpi, true);                                                                       \
        TestObject tc;                                                                                                 \
        QTEST_SET_MAIN_SOURCE_PATH                                                                                     \
        return QTest::qExec(&tc, argc, argv);                                                                          \
    }
