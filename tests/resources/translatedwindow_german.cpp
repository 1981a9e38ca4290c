// The program as a person on a German system sees it: the catalogues are chosen as main
// chooses them, "qt_" and "feedback_" and the system locale's name (LANG=de_DE.UTF-8
// here), from the build's folder instead of Qt's. A few exact texts of every screen, tab and of a box;
// and the product areas, which stay in the source language on the screen and in the
// report.
#include "submit/expectedtexts.h"
#include "submit/submitfixture.h"
#include "translatedwindowtests.h"

#include "attachments/richtextpushbutton.h"
#include "support/mainwindowprobe.h"
#include "support/modalanswerer.h"
#include "support/unreadablefile.h"

#include <QApplication>
#include <QCheckBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QLocale>
#include <QPushButton>
#include <QTabWidget>
#include <QTranslator>
#include <QTreeWidget>
#include <QtTest>

QString TranslatedWindowTests::text(const char *name) const
{
    if (const QLabel *label = child<QLabel>(*window, name))
        return label->text();
    if (const RichTextPushButton *rich = child<RichTextPushButton>(*window, name))
        return rich->text();
    return child<QAbstractButton>(*window, name)->text();
}

QListWidget *TranslatedWindowTests::areas() const
{
    return child<QListWidget>(*window, "list_Area");
}

void TranslatedWindowTests::initGerman()
{
    QCOMPARE(QLocale::system().name(), QString("de_DE"));
    QVERIFY(qtCatalogue.load("qt_" + QLocale::system().name(), qEnvironmentVariable("FB_QM_DIR")));
    QApplication::installTranslator(&qtCatalogue);
    QVERIFY(catalogue.load("feedback_" + QLocale::system().name(), qEnvironmentVariable("FB_QM_DIR")));
    QApplication::installTranslator(&catalogue);
    beginTest("german");
    window.reset(new MainWindow);
    window->show();
}

void TranslatedWindowTests::introScreenInGerman()
{
    QCOMPARE(text("label_Intro_Line_1"), QString("Willkommen beim Korvane Feedback Agent"));
    QCOMPARE(text("label_Intro_Line_2"), QString::fromUtf8("Bitte wählen Sie die Art Ihrer Rückmeldung"));
    QCOMPARE(text("button_Bug_Report"), QString::fromUtf8("Fehlerbericht\n(Abstürze / Probleme)"));
    QCOMPARE(text("button_Feature_Request"), QString("Funktionswunsch\n(Funktionen / Workflow)"));
    QCOMPARE(text("button_Cancel"), QString("Abbrechen"));
    QCOMPARE(text("button_Send"), QString("Senden..."));
    QCOMPARE(child<QPushButton>(*window, "button_Send")->toolTip(),
             QString::fromUtf8("Wählen Sie eine Art der Rückmeldung, um einen Bericht zu senden"));
    // The build string and the signs are not words: the title reads as in English.
    QVERIFY2(window->windowTitle().startsWith(QString::fromUtf8("Korvane 3D® Feedback Agent™  Build ")),
             qPrintable(window->windowTitle()));
}

void TranslatedWindowTests::bugReportScreen()
{
    child<QPushButton>(*window, "button_Bug_Report")->click();
    QCOMPARE(text("label_Intro_1"), QString("Bitte nehmen Sie sich einen Moment Zeit und lesen Sie, wie Sie einen "
                                            "guten Fehlerbericht zusammenstellen und senden."));
    QCOMPARE(text("label_Intro_3"),
             QString::fromUtf8("1) Hängen Sie nur die Inhalte an, die zum Nachstellen des Problems nötig sind"));
    QCOMPARE(text("label_Title"), QString::fromUtf8("Bitte geben Sie einen kurzen Titel für den Fehler bzw. das "
                                                    "Problem an (max. 70 Zeichen):"));
    QCOMPARE(text("label_Description"), QString("Bitte beschreiben Sie den Fehler bzw. das Problem:"));
    QCOMPARE(text("button_Start_Over"), QString("Neu beginnen"));
    QCOMPARE(text("button_Send"), QString("Erledigt 1/7"));
}

void TranslatedWindowTests::featureRequestScreen()
{
    child<QPushButton>(*window, "button_Feature_Request")->click();
    QCOMPARE(text("label_Intro_3"), QString::fromUtf8("1) Erklären Sie, was Sie erreichen möchten und wobei Ihnen "
                                                      "das Schwierigkeiten bereitet"));
    QCOMPARE(text("label_Title"),
             QString::fromUtf8("Bitte geben Sie einen kurzen Titel für den Funktionswunsch an (max. 70 Zeichen):"));
    QCOMPARE(text("label_Description"), QString("Bitte beschreiben Sie den Funktionswunsch:"));
    QCOMPARE(text("button_Send"), QString("Erledigt 1/6"));
    QCOMPARE(child<QPushButton>(*window, "button_Send")->toolTip(),
             QString::fromUtf8("Bitte füllen Sie die Registerkarte <b>Beschreibung</b> aus."));
}

void TranslatedWindowTests::everyTab()
{
    child<QPushButton>(*window, "button_Bug_Report")->click();
    QStringList tabTexts;
    for (int index = 0; index < tabs()->count(); ++index)
        tabTexts << tabs()->tabText(index);
    QCOMPARE(tabTexts, QStringList({QString::fromUtf8("Einführung"), QString::fromUtf8("Schritt 1: Identität"),
                                    "Schritt 2: Details", "Schritt 3: Beschreibung",
                                    QString::fromUtf8("Schritt 4: Anhänge"), "Einstellungen"}));
    QCOMPARE(text("label"), QString("Ihr Name:"));
    QCOMPARE(text("label_2"), QString("E-Mail-Adresse:"));
    QCOMPARE(text("check_Remember_My_Info"), QString("Meine Angaben merken"));
    QCOMPARE(text("label_5"), QString("Bereich:"));
    QCOMPARE(text("check_Include_System_Info"), QString("Meine Systeminformationen mitsenden"));
    QCOMPARE(text("button_Attach_File"), QString::fromUtf8("Datei(en) anhängen..."));
    QCOMPARE(text("button_Screen_Shot"), QString("Bildschirmfoto..."));
    QCOMPARE(text("label_6"), QString("Sekunden"));
    const QTreeWidgetItem *header = child<QTreeWidget>(*window, "tree_Attachments")->headerItem();
    QCOMPARE(QStringList({header->text(0), header->text(1)}), QStringList({"Typ", "Daten"}));
    QCOMPARE(text("check_Settings"), QString::fromUtf8("Ich habe verstanden. Ich möchte die Einstellungen ändern."));
}

void TranslatedWindowTests::fileDialogAndAccessFailureBox()
{
    child<QPushButton>(*window, "button_Bug_Report")->click();
    tabs()->setCurrentIndex(4);
    const QString locked = writeTestFile(path("locked.txt"));
    UnreadableFile unreadable(locked);
    QVERIFY(unreadable.ok());
    QStringList filters;
    ModalAnswerer answerer;
    answerer.then([&](QWidget *modal) {
        QFileDialog *dialog = qobject_cast<QFileDialog *>(modal);
        filters = dialog->nameFilters();
        dialog->setDirectory(QFileInfo(locked).path());
        dialog->findChild<QLineEdit *>("fileNameEdit")->setText(QFileInfo(locked).fileName());
        QMetaObject::invokeMethod(dialog, "accept");
    });
    answerer.clickButton("OK");
    child<QPushButton>(*window, "button_Attach_File")->click();
    QCOMPARE(answerer.seen().size(), 2);
    QCOMPARE(answerer.seen().at(0).windowTitle, QString::fromUtf8("Datei auswählen..."));
    QCOMPARE(filters, QStringList{"Alle Dateien (*.*)"});
    const ModalSnapshot &box = answerer.seen().at(1);
    QCOMPARE(box.windowTitle, QString("Dateizugriffsfehler"));
    QCOMPARE(box.text, QString("Auf die Datei konnte nicht zugegriffen werden."));
    QCOMPARE(box.buttons, QStringList{"OK"});
}

// The list shows the source names, whatever the catalogue says ("Other" is
// "Sonstiges" there); the report sends them too (below).
void TranslatedWindowTests::productAreasStayInTheSourceLanguage()
{
    QCOMPARE(QCoreApplication::translate("QObject", "Other"), QString("Sonstiges"));
    QCOMPARE(areas()->count(), 46);
    QCOMPARE(areas()->item(0)->text(), QString("Animation"));
    QCOMPARE(areas()->item(6)->text(), QString("Crashes / Hangs"));
    QCOMPARE(areas()->item(45)->text(), QString("Other"));
}

void TranslatedWindowTests::reportSendsTheSourceAreaName()
{
    QVERIFY(startReceiver());
    QVERIFY(SummaryArrival(*window).wait());
    ReportForm form;
    form.kind = ReportKind::FeatureRequest;
    form.areaRow = 6; // "Crashes / Hangs", "Abstürze / Hänger" in the catalogue
    form.includeSystemInfo = false;
    form.destination = receiver->url().toString();
    fillForm(*window, form);
    QCOMPARE(text("button_Send"), QString("Senden..."));

    const SendRun run = sendExpectingQuit(*window);
    QCOMPARE(run.loopResult, 0);
    QCOMPARE(run.boxes.size(), 1);
    QCOMPARE(run.boxes.at(0).windowTitle, QString("Bericht gesendet"));
    QCOMPARE(run.boxes.at(0).text, QString("Ihr Bericht wurde erfolgreich gesendet!"));
    QVERIFY(receiver->waitForEvent("request 1 answered 200"));
    const RecordedRequest request = parseRecordedRequest(receiver->request(1));
    const QList<QByteArray> parts = multipartParts(request.body, multipartBoundary(request.header("Content-Type")));
    QCOMPARE(parts.size(), 4);
    QCOMPARE(parts.at(1), fieldPart("details", expectedDetails("feature", "3126", "Crashes%20%2F%20Hangs", "false")));
}
