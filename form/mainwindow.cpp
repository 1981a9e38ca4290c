#include "form/mainwindow.h"
#include "ui_mainwindow.h"

#include "app/buildinfo.h"
#include "app/foldertree.h"
#include "app/fontwarmup.h"
#include "app/startuptrace.h"
#include "app/storedsettings.h"
#include "app/suitepath.h"
#include "attachments/ask.h"
#include "form/productareas.h"
#include "form/reporttab.h"
#include "resources/resources.h"
#include "sysinfo/gathersysinfo.h"
#include "sysinfo/sysinfotooltip.h"

#include <QAccessible>
#include <QComboBox>
#include <QCompleter>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPixmap>
#include <QRegExpValidator>
#include <QStandardPaths>
#include <QTabBar>
#include <QToolButton>

#include <cstdlib>

namespace {

const char kBuildNumber[] = FB_BUILD_NUMBER_TEXT;
const char kBuildDate[] = FB_BUILD_DATE_TEXT;
const quint16 kInstanceGuardPort = 23709;

// What keyboard and screen-reader users meet beyond what the form file can say.
void finishAccessibility(Ui::MainWindow &form)
{
    // The unchecked proxy group disables each of its widgets while that widget is still
    // being constructed, and Qt's accessibility caches the interface it builds for that
    // state change: a plain widget's. Dropping those lets a screen reader see the fields
    // and labels as what they are.
    for (QWidget *child : form.group_Proxy_Settings->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly)) {
        if (QAccessibleInterface *iface = QAccessible::queryAccessibleInterface(child))
            QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(iface));
    }
    // The tab bar's scroll arrows would each take a Tab stop; the arrow keys move between
    // the tabs, scrolling them, already.
    for (QToolButton *arrow : form.tabWidget->tabBar()->findChildren<QToolButton *>())
        arrow->setFocusPolicy(Qt::NoFocus);
}

// The logo as decoded (ARGB32), never converted: Qt 5.15.8 converts a picture this large
// (256x256) on its thread pool, and that pool's QSemaphore::release() may still clear the
// top bit of a word on the caller's stack after the caller has moved on, which aborts a
// later function as "stack smashing detected". Neither the icon nor the X11 window icon
// made from an ARGB32 pixmap needs a conversion.
QIcon logoIcon()
{
    return QIcon(QPixmap::fromImage(QImage(QStringLiteral(":/images/FB_logo.png")), Qt::NoFormatConversion));
}

// A window's widgets outlive its destructor's body, and hiding them afterwards still
// emits signals (a focused line edit's editingFinished): none may reach a slot of the
// window's any more.
void disconnectChildrenFrom(QObject &window)
{
    for (QObject *child : window.findChildren<QObject *>())
        child->disconnect(&window);
}

// "Korvane 3D® Feedback Agent™  Build 3126 (Win64) 21-Jun-2019", the signs and the
// build filled in after translation.
QString windowTitleText()
{
    return MainWindow::tr("Korvane 3D%1 Feedback Agent%2  Build %3 (%4%5) %6")
        .arg(QChar(0x00AE))
        .arg(QChar(0x2122))
        .arg(QLatin1String(kBuildNumber))
        .arg(QLatin1String("Win"))
        .arg(QLatin1String("64"))
        .arg(QLatin1String(kBuildDate));
}

} // namespace

MainWindow::MainWindow(QWidget *parent)
    : QMainWindow(parent)
    , ui(new Ui::MainWindow)
{
    initFeedbackResources();
    qRegisterMetaType<QHostInfo>("QHostInfo");
    qRegisterMetaType<QNetworkReply::NetworkError>("QNetworkReply::NetworkError");

    titleText = windowTitleText();
    appIcon = logoIcon();

    takeInstanceGuard();
    startuptrace::mark("window: icon and instance guard");
    setUpForm();
    startuptrace::mark("window: form built");

    fillProductAreas();
    createThumbnailFolder();
    chooseSettingsFile();
    connectForm();
    ui->frame_Settings->hide();
    setUpEmailCheck();
    startuptrace::mark("window: form connected");

    createValidators();
    loadSettings();
    startuptrace::mark("window: settings loaded");
    slot_set_control_states();
    startuptrace::mark("window: control states");
#ifdef Q_OS_WIN
    // Qt's first native window probes the graphics adapter through Direct3D 9, and the
    // worker's DirectX diagnostics create Direct3D and DirectDraw objects too. Under
    // Wine each of those holds one process-wide lock while it sets up an OpenGL context
    // (100 to 200 ms without a GPU), so a probe that ran during show() waited for the
    // worker's. The window is created, hidden, before the worker starts.
    (void)winId();
    startuptrace::mark("window: native window");
#endif
    startSystemInfoWorker();
    installSysInfoToolTip(ui->check_Include_System_Info, [this] { return sysInfo; });

    ui->button_Send->installEventFilter(this);
    ui->tree_Attachments->installEventFilter(this);

    applyLaunchOptions();
    startuptrace::mark("window: constructed");
}

void MainWindow::setUpForm()
{
    // The form's first style sheet asks for font metrics; the font configuration is
    // read meanwhile. The families are the form's own, which a machine may lack.
    const FontWarmUp fontWarmUp({QStringLiteral("Tahoma"), QStringLiteral("MS Sans Serif")});
    ui->setupUi(this);
    finishAccessibility(*ui);
    setCentralWidget(ui->centralWidget);
    setAcceptDrops(true);
    setWindowTitle(titleText);
    setWindowIcon(appIcon);
}

void MainWindow::setUpEmailCheck()
{
    connect(&emailTimer, &QTimer::timeout, this, &MainWindow::slot_validate_email_domain);
    emailTimer.setInterval(2000);

    emailRegExp.setPattern(QStringLiteral("(\\b[A-Z0-9._%+-]+)@([A-Z0-9.-]+\\.[A-Z]{2,4}\\b)"));
    emailRegExp.setCaseSensitivity(Qt::CaseInsensitive);
    emailRegExp.setPatternSyntax(QRegExp::RegExp);
}

MainWindow::~MainWindow()
{
    disconnectChildrenFrom(*this);
    if (settingsModified)
        saveSettings();
    if (thumbDir) {
        if (thumbDir->exists())
            removeDirectoryTree(thumbDir->absolutePath());
        delete thumbDir;
        thumbDir = nullptr;
    }
    delete ui;
    ui = nullptr;
    instanceServer.close();
}

void MainWindow::takeInstanceGuard()
{
    // The guard only holds the port; nothing is ever accepted on it.
    if (instanceServer.listen(QHostAddress(QHostAddress::Any), kInstanceGuardPort))
        return;
    Ask ask(this, titleText, appIcon);
    ask.critical(tr("Another instance of Feedback Agent seems to be running."));
    std::exit(0);
}

void MainWindow::fillProductAreas()
{
    for (const QString &area : productAreaNames())
        ui->list_Area->addItem(area);
}

void MainWindow::createThumbnailFolder()
{
    // A folder left behind by a crash is reused as it is.
    thumbDir = new QDir(QDir::tempPath());
    if (!thumbDir->exists(QStringLiteral("fb_thumbnails")))
        thumbDir->mkdir(QStringLiteral("fb_thumbnails"));
    thumbDir->cd(QStringLiteral("fb_thumbnails"));
}

void MainWindow::chooseSettingsFile()
{
    const QString suiteFolder = QString::fromUtf8(SuitePath(SuiteSettingsFolder));
    if (!QFile::exists(suiteFolder))
        QDir(QFileInfo(suiteFolder).absolutePath()).mkpath(QFileInfo(suiteFolder).fileName());

    const QString newPath =
        QDir::toNativeSeparators(QString("%1%2feedbackagent.cfg").arg(suiteFolder).arg(QDir::separator()));
    const QStringList homes = QStandardPaths::standardLocations(QStandardPaths::HomeLocation);
    const QString home = homes.isEmpty() ? QString() : homes.first();
    const QString oldPath = QDir::toNativeSeparators(QString("%1%2.fbagent").arg(home).arg(QDir::separator()));

    const SettingsFileChoice choice =
        ::chooseSettingsFile(QFile::exists(suiteFolder), QFile::exists(newPath), QFile::exists(oldPath));
    configPath = choice.file == SettingsFileChoice::File::New ? newPath : oldPath;
    if (choice.dropOldFile)
        QFile::remove(oldPath);
}

void MainWindow::connectForm()
{
    // In this order: Qt calls the two editingFinished slots of line_Name in the order
    // they were connected.
    connect(ui->button_Cancel, &QAbstractButton::clicked, this, &MainWindow::slot_cancel);
    connect(ui->button_Start_Over, &QAbstractButton::clicked, this, &MainWindow::slot_start_over);
    connect(ui->label_Video, &QLabel::linkActivated, this, &MainWindow::slot_play_video);
    connect(ui->line_Name, &QLineEdit::editingFinished, this, &MainWindow::slot_set_control_states);
    connect(ui->line_Name, &QLineEdit::textEdited, this, &MainWindow::slot_set_control_states);
    connect(ui->line_Email, &QLineEdit::textEdited, this, &MainWindow::slot_email_edited);
    connect(ui->combo_Title->lineEdit(), &QLineEdit::textChanged, this, &MainWindow::slot_set_control_states);
    connect(ui->combo_Title->lineEdit(), &QLineEdit::editingFinished, this, &MainWindow::slot_update_title_list);
    connect(ui->combo_Title, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &MainWindow::slot_set_title_text);
    ui->combo_Title->lineEdit()->setMaxLength(70);
    // The title history is kept by slot_update_title_list alone, newest first and compared
    // with exact case. Left to itself the combo would append a title on Return and swap a
    // typed title for an entry that differs only in letter case.
    ui->combo_Title->setInsertPolicy(QComboBox::NoInsert);
    ui->combo_Title->completer()->setCaseSensitivity(Qt::CaseSensitive);
    connect(ui->edit_Description, &QPlainTextEdit::textChanged, this, &MainWindow::slot_set_control_states);
    connect(ui->list_Area, &QListWidget::itemSelectionChanged, this, &MainWindow::slot_set_control_states);
    connect(ui->line_Build, &QLineEdit::textEdited, this, &MainWindow::slot_set_control_states);
    connect(ui->button_Bug_Report, &QAbstractButton::clicked, this, &MainWindow::slot_show_bug_report);
    connect(ui->button_Feature_Request, &QAbstractButton::clicked, this, &MainWindow::slot_show_feature_request);
    connect(ui->button_Attach_File, &QAbstractButton::clicked, this, &MainWindow::slot_add_attachment);
    connect(ui->button_Screen_Shot, &QAbstractButton::clicked, this, &MainWindow::slot_process_screen_shot);
    connect(ui->button_Remove_Entry, &QAbstractButton::clicked, this, &MainWindow::slot_remove_attachment);
    connect(ui->button_Clear_All, &QAbstractButton::clicked, this, &MainWindow::slot_clear_attachments);
    connect(ui->button_Send, &QAbstractButton::clicked, this, &MainWindow::slot_submit);
    connect(ui->tabWidget, &QTabWidget::currentChanged, this, &MainWindow::slot_tab_changed);
    connect(ui->line_Snapshot_Delay, &QLineEdit::editingFinished, this, &MainWindow::slot_validate_delay);
    connect(ui->line_Name, &QLineEdit::editingFinished, this, &MainWindow::slot_set_modified);
    connect(ui->line_Email, &QLineEdit::editingFinished, this, &MainWindow::slot_set_modified);
    connect(ui->line_HTTP_Destination, &QLineEdit::editingFinished, this, &MainWindow::slot_set_modified);
    connect(ui->line_Proxy_Server, &QLineEdit::editingFinished, this, &MainWindow::slot_set_modified);
    connect(ui->line_Proxy_Port, &QLineEdit::editingFinished, this, &MainWindow::slot_set_modified);
    connect(ui->line_Proxy_User_Name, &QLineEdit::editingFinished, this, &MainWindow::slot_set_modified);
    connect(ui->line_Proxy_Password, &QLineEdit::editingFinished, this, &MainWindow::slot_set_modified);
    connect(ui->check_Remember_My_Info, &QCheckBox::stateChanged, this, &MainWindow::slot_set_modified);
    connect(ui->group_Proxy_Settings, &QGroupBox::clicked, this, &MainWindow::slot_set_modified);
    connect(ui->check_Settings, &QCheckBox::stateChanged, this, &MainWindow::slot_enable_edit_settings);
}

void MainWindow::createValidators()
{
    const QRegExp buildPattern(QStringLiteral("[1-9]\\d{0,3}"), Qt::CaseSensitive, QRegExp::RegExp);
    ui->line_Build->setValidator(new QRegExpValidator(buildPattern, this));
    ui->line_Build->setText(QLatin1String(kBuildNumber));

    const QRegExp delayPattern(QStringLiteral("[1-9]\\d{0,2}"), Qt::CaseSensitive, QRegExp::RegExp);
    ui->line_Snapshot_Delay->setValidator(new QRegExpValidator(delayPattern, this));
}

void MainWindow::startSystemInfoWorker()
{
    auto *worker = new GatherSysInfo;
    // By name: through a member pointer, this cross-thread connection left its slot object
    // behind under LeakSanitizer when the window went first (3 test runs in 20; 0 in 25).
    connect(worker, SIGNAL(results(const QString &)), this, SLOT(slot_sysinfo(const QString &)));
    GatherSysInfo::startOnOwnThread(worker);
}

bool MainWindow::removeDirectoryTree(const QString &path)
{
    return removeFolderTree(path);
}

bool MainWindow::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::MouseButtonPress && watched == ui->button_Send && !ui->button_Send->isEnabled()
        && reportKind != ReportKind::None)
        jumpToMissingTab();

    if (event->type() == QEvent::KeyPress) {
        const QKeyEvent *key = static_cast<QKeyEvent *>(event);
        if (key->key() == Qt::Key_V && (key->modifiers() & Qt::ControlModifier)
            && ui->tabWidget->currentIndex() == tabIndex(ReportTab::Attachments))
            paste_clipboard_image();
    }
    // The press is never consumed.
    return QMainWindow::eventFilter(watched, event);
}

void MainWindow::slot_sysinfo(const QString &info)
{
    sysInfo = info;
}
