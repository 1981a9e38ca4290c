#pragma once

#include "submitfixture.h"

#include <QByteArray>
#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>

// Which group a test function belongs to: moc keeps the tag with the declaration
// (QMetaMethod::tag), and init() gives each group the start it needs.
#ifndef Q_MOC_RUN
#define PAYLOAD_TEST
#define UPLOAD_TEST
#endif

// Sending a report from the window to our loopback receiver: the exact bytes of the
// payload, and the upload with its progress, outcomes, aborts and failing files.
class SendTests
    : public QObject
    , protected SubmitTestState
{
    Q_OBJECT

private:
    // The payload functions start on a shown window whose summary has arrived, with the
    // receiver running (see initPayload).
    void initPayload();
    ReportForm form() const;
    void checkRequest(const QByteArray &raw, const QList<QByteArray> &expectedParts);
    void sendAndCheck(const QList<QByteArray> &expectedParts);

    // The upload functions start with neither, and with the proxy environment cleared.
    std::unique_ptr<ProxyEnvironmentCleared> directConnection;
    void openWindow(const QString &destination, qint64 attachmentSize = 1000);
    void failsWith(const QString &reason);
    QString serverReplied(const QString &status) const;
    void sendUntilTheBodyIsIn();
    int abortFromTheLoop(const QString &holdFor, QStringList &screenAtAbort, const std::function<bool()> &done);

private slots:
    void init();
    void cleanup();

    // The report body as it arrives at a real HTTP receiver, every part and byte.
    PAYLOAD_TEST void bugReport();
    PAYLOAD_TEST void featureRequestWithoutAttachmentsEndsWithTheDescription();
    PAYLOAD_TEST void spacesQuotesNonAsciiAndLineBreaks();
    PAYLOAD_TEST void twoFilesWithTheSameName();
    PAYLOAD_TEST void imageRowWhoseFileWasDeletedIsSkipped();
    PAYLOAD_TEST void systemInformationAllowedButNotArrived();
    PAYLOAD_TEST void failedDiagnosticsSummaryIsStillSent();
    PAYLOAD_TEST void areaIsTheTableEntryNotTheShownText();
    PAYLOAD_TEST void emptyFieldsAreSentEmpty();
    PAYLOAD_TEST void noAreaSelectedSendsNothing();

    // The upload: progress, success and quit, failures and aborts, missing or unreadable files.
    UPLOAD_TEST void successShowsTheBoxAndQuits();
    UPLOAD_TEST void progressIsBusyUntilTheFirstReport();
    UPLOAD_TEST void progressTakesTheMaximumOnlyOnce();
    UPLOAD_TEST void progressBeyondTheBarsRangeIsClamped();
    UPLOAD_TEST void connectionRefused();
    UPLOAD_TEST void serverClosesInTheMiddleOfTheBody();
    UPLOAD_TEST void notFound();
    UPLOAD_TEST void internalServerError();
    UPLOAD_TEST void abortBeforeTheAnswer();
    void abortAfterTheAnswerArrived_data();
    UPLOAD_TEST void abortAfterTheAnswerArrived();
    UPLOAD_TEST void attachmentDeletedAfterItWasAdded();
#ifdef Q_OS_WIN
    UPLOAD_TEST void summaryFromTheDiagnosticsProviderIsSent();
#endif
    UPLOAD_TEST void attachmentThatCannotBeOpened();
};
