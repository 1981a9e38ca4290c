#include "submitfixture.h"

#include "support/mainwindowprobe.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QEvent>
#include <QFile>
#include <QFileInfo>
#include <QGroupBox>
#include <QLineEdit>
#include <QListWidget>
#include <QNetworkProxy>
#include <QPixmap>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRegularExpression>
#include <QTcpServer>
#include <QTabWidget>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>

namespace {

const QStringList kSendingScreen{"formState 2",
                                 "layout_selecting_buttons_2 hidden",
                                 "tabWidget shown disabled",
                                 "progressBar shown",
                                 "button_Start_Over shown disabled",
                                 "button_Send shown disabled",
                                 "button_Cancel Abort",
                                 "button_Send Send..."};

const QStringList kComposeAfterSendScreen{"formState 1",
                                          "layout_selecting_buttons_2 hidden",
                                          "tabWidget shown",
                                          "progressBar shown",
                                          "button_Start_Over shown disabled",
                                          "button_Send shown",
                                          "button_Cancel Cancel",
                                          "button_Send Send..."};

const QStringList kComposeBeforeSendScreen{"formState 1",
                                           "layout_selecting_buttons_2 hidden",
                                           "tabWidget shown",
                                           "progressBar hidden",
                                           "button_Start_Over shown",
                                           "button_Send shown",
                                           "button_Cancel Cancel",
                                           "button_Send Send..."};

// The variables through which a developer's proxy reaches Qt.
const char *const kProxyVariables[] = {"http_proxy", "HTTP_PROXY", "https_proxy", "HTTPS_PROXY",
                                       "all_proxy",  "ALL_PROXY",  "no_proxy",    "NO_PROXY"};

} // namespace

QStringList composeBeforeSendScreen()
{
    return kComposeBeforeSendScreen;
}

QStringList sendingScreen()
{
    return kSendingScreen;
}

QStringList composeAfterFailureScreen()
{
    return kComposeAfterSendScreen;
}

void fillForm(MainWindow &window, const ReportForm &form)
{
    const char *kindButton = form.kind == ReportKind::BugReport ? "button_Bug_Report" : "button_Feature_Request";
    child<QPushButton>(window, kindButton)->click();
    child<QLineEdit>(window, "line_Name")->setText(form.name);
    child<QLineEdit>(window, "line_Email")->setText(form.email);
    QListWidget *areas = child<QListWidget>(window, "list_Area");
    areas->clearSelection();
    if (form.areaRow >= 0)
        areas->item(form.areaRow)->setSelected(true);
    child<QLineEdit>(window, "line_Build")->setText(form.build);
    child<QCheckBox>(window, "check_NDA")->setChecked(form.nda);
    child<QCheckBox>(window, "check_Include_System_Info")->setChecked(form.includeSystemInfo);
    child<QComboBox>(window, "combo_Title")->setEditText(form.title);
    child<QPlainTextEdit>(window, "edit_Description")->setPlainText(form.description);
    for (const QString &file : form.files)
        window.add_attachment_item(file, QPixmap());
    child<QLineEdit>(window, "line_HTTP_Destination")->setText(form.destination);
    window.slot_set_control_states();
}

QStringList formSnapshot(const MainWindow &window)
{
    QStringList lines;
    auto text = [&](const char *name) { return child<QLineEdit>(window, name)->text(); };
    for (const char *name : {"line_Name", "line_Email", "line_Build", "line_HTTP_Destination", "line_Proxy_Server",
                             "line_Proxy_Port", "line_Proxy_User_Name", "line_Proxy_Password"})
        lines << QString::fromLatin1(name) + "=" + text(name);

    const QListWidget *areas = child<QListWidget>(window, "list_Area");
    QStringList selected;
    for (const QListWidgetItem *item : areas->selectedItems())
        selected << QString::number(areas->row(item));
    lines << "list_Area=" + selected.join(',');

    for (const char *name : {"check_NDA", "check_Include_System_Info", "check_Remember_My_Info"})
        lines << QString::fromLatin1(name) + "=" + (child<QCheckBox>(window, name)->isChecked() ? "on" : "off");
    lines << QStringLiteral("group_Proxy_Settings=%1")
                 .arg(child<QGroupBox>(window, "group_Proxy_Settings")->isChecked() ? "on" : "off");

    const QComboBox *title = child<QComboBox>(window, "combo_Title");
    lines << "combo_Title=" + title->currentText();
    for (int i = 0; i < title->count(); ++i)
        lines << QStringLiteral("combo_Title[%1]=%2").arg(i).arg(title->itemText(i));
    lines << "edit_Description=" + child<QPlainTextEdit>(window, "edit_Description")->toPlainText();

    const QTreeWidget *tree = child<QTreeWidget>(window, "tree_Attachments");
    for (int row = 0; row < tree->topLevelItemCount(); ++row) {
        const QTreeWidgetItem *item = tree->topLevelItem(row);
        lines << QStringLiteral("tree_Attachments[%1]=%2|%3")
                     .arg(row)
                     .arg(item->text(1), item->data(1, Qt::UserRole).toString());
    }
    lines << QStringLiteral("reportKind=%1").arg(MainWindowProbe::reportKind(window));
    return lines;
}

QStringList screenSnapshot(const MainWindow &window)
{
    auto shown = [&](const char *name) {
        const QWidget *widget = child<QWidget>(window, name);
        return QStringLiteral("%1 %2%3").arg(QString::fromLatin1(name),
                                             widget->isVisibleTo(&window) ? "shown" : "hidden",
                                             widget->isEnabled() ? "" : " disabled");
    };
    return {QStringLiteral("formState %1").arg(MainWindowProbe::formState(window)),
            shown("layout_selecting_buttons_2"),
            shown("tabWidget"),
            shown("progressBar"),
            shown("button_Start_Over"),
            shown("button_Send"),
            "button_Cancel " + child<QPushButton>(window, "button_Cancel")->text(),
            "button_Send " + child<QPushButton>(window, "button_Send")->text()};
}

void clickSend(MainWindow &window)
{
    QTest::mouseClick(child<QPushButton>(window, "button_Send"), Qt::LeftButton);
}

void clickCancel(MainWindow &window)
{
    QTest::mouseClick(child<QPushButton>(window, "button_Cancel"), Qt::LeftButton);
}

bool SummaryArrival::wait(int timeoutMs)
{
    return QTest::qWaitFor([this] { return !MainWindowProbe::sysInfo(m_window).isEmpty(); }, timeoutMs);
}

int runApplicationLoop(const std::function<void()> &start, const std::function<bool()> &done, int timeoutMs)
{
    QTimer poll;
    poll.setInterval(10);
    QObject::connect(&poll, &QTimer::timeout, [&] {
        // Never while a box is open: exit() would close its loop as well.
        if (!QApplication::activeModalWidget() && done())
            QCoreApplication::exit(kLoopDone);
    });
    QTimer limit;
    limit.setSingleShot(true);
    QObject::connect(&limit, &QTimer::timeout, [] { QCoreApplication::exit(kLoopTimedOut); });
    QTimer::singleShot(0, [&] {
        start();
        poll.start();
        limit.start(timeoutMs);
    });
    return QCoreApplication::exec();
}

SendRun sendExpectingQuit(MainWindow &window)
{
    ModalAnswerer answerer;
    answerer.clickButton("OK");
    SendRun run;
    run.loopResult = runApplicationLoop([&] { clickSend(window); }, [] { return false; });
    run.boxes = answerer.seen();
    return run;
}

SendRun sendExpectingFailure(MainWindow &window)
{
    ModalAnswerer answerer;
    answerer.clickButton("OK");
    SendRun run;
    run.loopResult = runApplicationLoop(
        [&] { clickSend(window); },
        [&] {
            return !answerer.seen().isEmpty() && MainWindowProbe::formState(window) == qint32(FormState::Composing);
        });
    run.boxes = answerer.seen();
    return run;
}

void verifyFailureBox(const SendRun &run, const QString &reason)
{
    QCOMPARE(run.boxes.size(), 1);
    const ModalSnapshot &box = run.boxes.at(0);
    QCOMPARE(box.className, QString("QMessageBox"));
    QCOMPARE(box.windowTitle, QString("Submission Failed"));
    QCOMPARE(box.text, "Your report could not be submitted at this time:\n\"" + reason + "\"");
    QCOMPARE(box.icon, int(QMessageBox::Critical));
    QCOMPARE(box.buttons, QStringList{"OK"});
}

void verifySuccessBox(const SendRun &run)
{
    QCOMPARE(run.boxes.size(), 1);
    const ModalSnapshot &box = run.boxes.at(0);
    QCOMPARE(box.className, QString("QMessageBox"));
    QCOMPARE(box.windowTitle, QString("Report Submitted"));
    QCOMPARE(box.text, QString("Your report has been successfully submitted!"));
    QCOMPARE(box.icon, int(QMessageBox::Information));
    QCOMPARE(box.buttons, QStringList{"OK"});
}

std::unique_ptr<MainWindow> openReportWindow(const QString &destination, const QString &folder, qint64 attachmentSize)
{
    std::unique_ptr<MainWindow> window(new MainWindow);
    SummaryArrival summary(*window);
    window->show();
    if (!summary.wait())
        return nullptr;
    ReportForm form;
    form.files = QStringList{writeTestFile(folder + "/log.txt", "log\n"),
                             writeTestFile(folder + "/scene.bin", QByteArray(int(attachmentSize), 'x'))};
    form.destination = destination;
    fillForm(*window, form);
    return window;
}

void verifyFailedSend(MainWindow &window, const QString &reason)
{
    QCOMPARE(screenSnapshot(window), kComposeBeforeSendScreen);
    const QStringList before = formSnapshot(window);
    const SendRun run = sendExpectingFailure(window);
    QCOMPARE(run.loopResult, kLoopDone);
    verifyFailureBox(run, reason);
    if (QTest::currentTestFailed())
        return;
    QCOMPARE(MainWindowProbe::sendOutcome(window), qint32(SendOutcome::Failed));
    QCOMPARE(screenSnapshot(window), kComposeAfterSendScreen);
    QCOMPARE(formSnapshot(window), before);
}

RecordedRequest deliverReport(MainWindow &window, HttpReceiver &receiver)
{
    const SendRun run = sendExpectingQuit(window);
    [&] {
        QCOMPARE(run.loopResult, 0);
        verifySuccessBox(run);
        QVERIFY(receiver.waitForEvent("request 1 answered 200"));
    }();
    return parseRecordedRequest(receiver.request(1));
}

void verifyReportRequest(const QByteArray &raw, quint16 port, const QString &scratchFile,
                         const QList<QByteArray> &expectedParts)
{
    const RecordedRequest request = parseRecordedRequest(raw);
    QCOMPARE(request.requestLine, QByteArray("POST / HTTP/1.1"));
    QCOMPARE(request.header("Host"), "127.0.0.1:" + QByteArray::number(port));
    QCOMPARE(request.header("MIME-Version"), QByteArray("1.0"));
    const QByteArray contentType = request.header("Content-Type");
    QVERIFY2(QRegularExpression("^multipart/form-data; boundary=\"boundary_\\.oOo\\._[A-Za-z0-9+/=]+\"$")
                 .match(QString::fromLatin1(contentType))
                 .hasMatch(),
             contentType.constData());
    QCOMPARE(request.header("Content-Length"), QByteArray::number(request.body.size()));

    const QByteArray boundary = multipartBoundary(contentType);
    QCOMPARE(multipartParts(request.body, boundary), expectedParts);
    QCOMPARE(request.body, multipartBody(boundary, expectedParts));

#ifdef Q_OS_WIN
    // A Windows program under Wine cannot start Linux's python3; the body is the same
    // bytes as above on both systems, and the Linux run has Python read them.
    Q_UNUSED(scratchFile);
#else
    QFile::remove(scratchFile);
    QVERIFY(writeTestFile(scratchFile, raw).size() > 0);
    QString error;
    const QList<ParsedPart> parsed = parseWithPython(scratchFile, &error);
    QVERIFY2(error.isEmpty(), qPrintable(error));
    QCOMPARE(parsed, partsAsParsed(expectedParts));
#endif
}

void setProxyFields(MainWindow &window, bool checked, const QString &server, const QString &port, const QString &user,
                    const QString &password)
{
    child<QGroupBox>(window, "group_Proxy_Settings")->setChecked(checked);
    child<QLineEdit>(window, "line_Proxy_Server")->setText(server);
    child<QLineEdit>(window, "line_Proxy_Port")->setText(port);
    child<QLineEdit>(window, "line_Proxy_User_Name")->setText(user);
    child<QLineEdit>(window, "line_Proxy_Password")->setText(password);
}

quint16 closedPort()
{
    QTcpServer probe;
    probe.listen(QHostAddress::LocalHost, 0);
    return probe.serverPort(); // free again once the probe is gone
}

void clearProxyEnvironment()
{
    for (const char *name : kProxyVariables)
        qunsetenv(name);
    QNetworkProxy::setApplicationProxy(QNetworkProxy());
}

ProxyEnvironmentCleared::ProxyEnvironmentCleared()
{
    for (const char *name : kProxyVariables) {
        if (qEnvironmentVariableIsSet(name))
            m_found.append({name, qgetenv(name)});
    }
    clearProxyEnvironment();
}

ProxyEnvironmentCleared::~ProxyEnvironmentCleared()
{
    for (const auto &variable : qAsConst(m_found))
        qputenv(variable.first.constData(), variable.second);
}

bool SubmitTestState::startReceiver(const HttpReceiver::Options &options)
{
    receiver.reset(new HttpReceiver(path("received")));
    return receiver->start(options);
}

void SubmitTestState::beginTest(const QString &folderPrefix)
{
    TestEnvironment::instance().forgetSettings();
    work.reset(new QTemporaryDir(TestEnvironment::instance().root() + "/" + folderPrefix + "-XXXXXX"));
    QDir(TestEnvironment::instance().thumbnailFolder()).removeRecursively();
}

void SubmitTestState::endTest()
{
    window.reset();
    proxy.reset();
    receiver.reset();
    work.reset();
    QNetworkProxy::setApplicationProxy(QNetworkProxy());
}
