#pragma once

#include "form/mainwindow.h"
#include "support/mainwindowprobe.h"
#include "support/testenv.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTabWidget>
#include <QTreeWidget>
#include <QtTest>

// The widgets the form-state and e-mail tests drive, found by object name.
struct FormWidgets
{
    explicit FormWidgets(MainWindow &w)
        : window(w)
    {
    }

    template <typename T>
    T *find(const char *objectName) const
    {
        T *widget = MainWindowProbe::widget<T>(window, objectName);
        if (!widget)
            qFatal("no widget \"%s\" in the form", objectName);
        return widget;
    }

    // Runs a slot the way a signal would, for the slots that no widget reaches directly.
    void call(const char *slot) const
    {
        if (!QMetaObject::invokeMethod(&window, slot, Qt::DirectConnection))
            qFatal("no slot %s", slot);
    }
    void recompute() const { call("slot_set_control_states"); }
    // Puts the window on a screen and recomputes it, for the screens an upload leads to.
    void enterScreen(FormState formState) const
    {
        MainWindowProbe::setFormState(window, qint32(formState));
        recompute();
    }
    // What the e-mail timer's timeout does, without waiting two seconds.
    void emailTimerFires() const { call("slot_validate_email_domain"); }

    MainWindow &window;
    QLineEdit *name = find<QLineEdit>("line_Name");
    QLineEdit *email = find<QLineEdit>("line_Email");
    QListWidget *area = find<QListWidget>("list_Area");
    QLineEdit *build = find<QLineEdit>("line_Build");
    QComboBox *title = find<QComboBox>("combo_Title");
    QPlainTextEdit *description = find<QPlainTextEdit>("edit_Description");
    QTreeWidget *attachments = find<QTreeWidget>("tree_Attachments");
    QLineEdit *delay = find<QLineEdit>("line_Snapshot_Delay");
    QCheckBox *remember = find<QCheckBox>("check_Remember_My_Info");
    QTabWidget *tabs = find<QTabWidget>("tabWidget");
    QPushButton *bug = find<QPushButton>("button_Bug_Report");
    QPushButton *feature = find<QPushButton>("button_Feature_Request");
    QPushButton *send = find<QPushButton>("button_Send");
    QPushButton *cancel = find<QPushButton>("button_Cancel");
    QPushButton *startOver = find<QPushButton>("button_Start_Over");
    QPushButton *attachFile = find<QPushButton>("button_Attach_File");
    QProgressBar *progress = find<QProgressBar>("progressBar");
    QLabel *emailIcon = find<QLabel>("label_Invalid_Email_Icon");
    QLabel *emailMessage = find<QLabel>("label_Invalid_Email");
};

// The style sheet of a field that keeps the report incomplete.
inline QString missingFieldStyle()
{
    return QStringLiteral("border: 1px solid rgb(200, 150, 150)");
}

// The pixels a label shows as its pixmap; a null image when it shows none.
inline QImage labelImage(const QLabel *label)
{
    const QPixmap *pixmap = label->pixmap();
    return pixmap ? pixmap->toImage() : QImage();
}

// The seven things a report needs, as bits of a mask (attachments only for a bug report).
enum ReportField {
    NameField = 1,
    EmailField = 2,
    AreaField = 4,
    BuildField = 8,
    TitleField = 16,
    DescriptionField = 32,
    AttachmentsField = 64
};

// Fills every field that is not in `missing` the way a user's input would leave it;
// the build number is filled at start-up, so a missing build is cleared.
inline void fillReport(FormWidgets &f, int missing)
{
    if (!(missing & NameField))
        f.name->setText(QStringLiteral("Ann Example"));
    if (!(missing & EmailField))
        f.email->setText(QStringLiteral("ann@example.com"));
    if (!(missing & AreaField))
        f.area->item(2)->setSelected(true);
    if (missing & BuildField)
        f.build->clear();
    if (!(missing & TitleField))
        f.title->lineEdit()->setText(QStringLiteral("Crash when saving"));
    if (!(missing & DescriptionField))
        f.description->setPlainText(QStringLiteral("Open a scene, save it twice."));
    if (!(missing & AttachmentsField)) {
        const QString path = TestEnvironment::instance().temp() + QStringLiteral("/scene-notes.txt");
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write("notes\n") != 6)
            qFatal("cannot write %s", qPrintable(path));
        f.window.add_attachment_item(path, QPixmap());
    }
}
