// Sending through tinyproxy (sendlinux_uploadproxy.cpp) and what needs host names
// (sendlinux_privatenet.cpp), in a private network of the program's own.
#include "sendlinuxtests.h"

#include "support/testenv.h"

#include <QApplication>
#include <QtTest>

#include <unistd.h>

#include <vector>

void SendLinuxTests::initTestCase()
{
    clearProxyEnvironment();
}

void SendLinuxTests::init()
{
    const QByteArray group = currentTestTag(*this);
    if (group == "UPLOAD_PROXY_TEST")
        initUploadProxy();
    else if (group == "PRIVATE_NET_TEST")
        initPrivateNet();
    else
        QFAIL("a test function without its group's tag");
}

void SendLinuxTests::cleanup()
{
    endTest();
}

// The proxy functions run in the private network too: what they use (our receiver and
// tinyproxy on 127.0.0.1) is there as outside. Where no private network can be made,
// privatenet.sh runs the program outside; the proxy functions still run and pass there,
// and only the private-network functions fail.
int main(int argc, char *argv[])
{
    if (qEnvironmentVariableIsEmpty("FB_IN_PRIVATE_NET")) {
        // Start again inside namespaces of our own; privatenet.sh comes back here.
        std::vector<char *> arguments{const_cast<char *>(FB_TESTS_DIR "/submit/privatenet.sh")};
        arguments.insert(arguments.end(), argv, argv + argc);
        arguments.push_back(nullptr);
        execv(arguments.front(), arguments.data());
        perror("privatenet.sh");
        return 1;
    }
    TestEnvironment::instance();
    int status = 0;
    {
        QApplication app(argc, argv);
        app.setAttribute(Qt::AA_Use96Dpi, true);
        SendLinuxTests test;
        QTEST_SET_MAIN_SOURCE_PATH
        status = execTests(&test, argc, argv);
    }
    endTestProcess(status);
}
