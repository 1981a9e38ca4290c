// Sending a report from the window: the payload as the receiver reads it
// (send_payload.cpp) and the upload with its outcomes (send_upload.cpp).
#include "sendtests.h"

#include "support/testenv.h"

#include <QApplication>
#include <QtTest>

void SendTests::init()
{
    const QByteArray group = currentTestTag(*this);
    if (group == "PAYLOAD_TEST") {
        initPayload();
    } else if (group == "UPLOAD_TEST") {
        // Cleared for each upload function and put back after it: the payload
        // functions run with the environment as it is.
        directConnection.reset(new ProxyEnvironmentCleared);
        beginTest(QStringLiteral("upload"));
    } else {
        QFAIL("a test function without its group's tag");
    }
}

void SendTests::cleanup()
{
    endTest();
    directConnection.reset();
}

FB_TEST_MAIN(SendTests)
