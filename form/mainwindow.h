#pragma once

#include <QDir>
#include <QHostInfo>
#include <QIcon>
#include <QMainWindow>
#include <QNetworkReply>
#include <QPoint>
#include <QRegExp>
#include <QSize>
#include <QString>
#include <QTcpServer>
#include <QTimer>

#include "attachments/screenshotflow.h"
#include "submit/sendoutcome.h"

class QHttpMultiPart;
class QNetworkAccessManager;
class QTreeWidgetItem;

namespace Ui {
class MainWindow;
}
namespace completeness {
struct FormFacts;
struct Verdict;
} // namespace completeness

// Screen the window shows; kept as a plain 32-bit value.
enum class FormState : qint32 { Choosing = 0, Composing = 1, Sending = 2 };
// Kind of report chosen on the intro screen.
enum class ReportKind : qint32 { None = 0, BugReport = 1, FeatureRequest = 2 };

// The one window of the program. It owns every piece of report state: the form,
// the attachment tree (which is the attachment store), the timers, the host look-up,
// the network objects and the system summary. Its members are defined in form/
// (mainwindow_*.cpp by subsystem); the rules they apply live in plain units of the
// subsystem folders.
class MainWindow : public QMainWindow
{
    Q_OBJECT

    friend struct MainWindowProbe; // read-only view for the tests

public:
    explicit MainWindow(QWidget *parent = nullptr);
    ~MainWindow() override;

    bool removeDirectoryTree(const QString &path);

    QTreeWidgetItem *add_attachment_item(const QString &name_or_path, const QPixmap &pixmap);
    QHttpMultiPart *build_payload();
    bool read_clipboard_image(QImage &image);
    void paste_clipboard_image();

    void loadSettings();
    void saveSettings();

public slots:
    void slot_set_control_states();
    void slot_cancel();
    void slot_play_video(const QString &link);
    void slot_show_bug_report();
    void slot_show_feature_request();
    void slot_start_over();
    void slot_reset_report();
    void slot_tab_changed(int index);
    void slot_validate_delay();
    void slot_set_modified();
    void slot_set_title_text(int index);
    void slot_update_title_list();
    void slot_eat_enter();
    void slot_enable_edit_settings();

    void slot_email_edited(const QString &text);
    void slot_validate_email_domain();
    void slot_lookup_complete(QHostInfo info);

    void slot_add_attachment();
    void slot_remove_attachment();
    void slot_clear_attachments();
    void slot_process_screen_shot();
    void slot_screen_shot();

    void slot_submit();
    void slot_send_progress(qint64 bytesSent, qint64 bytesTotal);
    void slot_send_complete();
    void slot_send_failed(QNetworkReply::NetworkError code);

    void slot_sysinfo(const QString &info);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void moveEvent(QMoveEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    void takeInstanceGuard();
    void setUpForm();
    void setUpEmailCheck();
    void fillProductAreas();
    void createThumbnailFolder();
    void chooseSettingsFile();
    void connectForm();
    void createValidators();
    void startSystemInfoWorker();
    void applyLaunchOptions();
    void jumpToMissingTab();
    // Whether the file can be read; if not, the user is told so.
    bool canOpenOrWarn(const QString &path);
    // The name a user gives a new image entry; empty when the dialog was cancelled.
    QString askAttachmentName(const QString &title);
    completeness::FormFacts formFacts() const;
    void applyCompleteness(const completeness::Verdict &verdict);
    void showReportKindTexts(ReportKind kind);

    Ui::MainWindow *ui = nullptr;
    QString titleText;
    QString configPath;
    bool geometryPinned = false;
    QTcpServer instanceServer;
    QPoint savedPos{0, 0};
    QSize savedSize{-1, -1};
    bool settingsModified = false;
    QIcon appIcon;
    QTimer emailTimer;
    QRegExp emailRegExp;
    QDir *thumbDir = nullptr;
    QString launchArea;
    bool lockArea = false;

    MinimiseWait minimiseWait; // the screen-shot flow's wait for the minimise

    FormState formState = FormState::Choosing;
    ReportKind reportKind = ReportKind::None;

    QHostInfo hostInfo{-1};
    bool emailValid = false;
    bool lookupPending = false;

    QNetworkAccessManager *network = nullptr;
    QNetworkReply *reply = nullptr;
    bool progressFirst = true;
    SendOutcome sendOutcome = SendOutcome::Idle;

    QString sysInfo;
};
