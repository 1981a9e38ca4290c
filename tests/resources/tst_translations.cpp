#include "ui_mainwindow.h"

#include "form/productareas.h"
#include "support/testenv.h"

#include <QApplication>
#include <QMainWindow>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTabWidget>
#include <QTranslator>
#include <QTreeWidget>
#include <QtTest>

// The German catalogue built from resources/translations reaches the form's texts, and
// the product-area names stay in the source language whatever catalogue is installed.
class TestTranslations : public QObject
{
    Q_OBJECT

private slots:
    void germanCatalogueTranslatesTheForm()
    {
        QTranslator german;
        QVERIFY(german.load("feedback_de", qEnvironmentVariable("FB_QM_DIR")));
        QApplication::installTranslator(&german);
        {
            QMainWindow host;
            Ui::MainWindow form;
            form.setupUi(&host);
            QCOMPARE(form.tabWidget->tabText(1), QString::fromUtf8("Schritt 1: Identit\u00e4t"));
            QCOMPARE(form.button_Cancel->text(), QString("Abbrechen"));
            QCOMPARE(form.button_Send->text(), QString("Senden..."));
            // The names a screen reader announces follow the catalogue too.
            QCOMPARE(form.tree_Attachments->accessibleName(), QString::fromUtf8("Anh\u00e4nge"));
            QCOMPARE(form.progressBar->accessibleName(), QString::fromUtf8("Fortschritt der \u00dcbertragung"));
            QCOMPARE(form.label_Video->accessibleName(), QString("Video mit Tipps"));
            QCOMPARE(form.button_Bug_Report->accessibleName(),
                     QString::fromUtf8("Fehlerbericht (Abst\u00fcrze / Probleme)"));
            QCOMPARE(form.button_Feature_Request->accessibleName(), QString("Funktionswunsch (Funktionen / Workflow)"));
            // The area names were translated during static initialisation, before any
            // translator existed, so the list shows (and the report sends) the source names.
            QCOMPARE(productAreaNames().constLast(), QString("Other"));
            QCOMPARE(productAreaNames().constFirst(), QString("Animation"));
            // The box of a screen shot that the desktop refused.
            QCOMPARE(QCoreApplication::translate("MainWindow", "Screen Shot Failure"),
                     QString("Bildschirmfoto fehlgeschlagen"));
            QCOMPARE(QCoreApplication::translate("MainWindow",
                                                 "No picture of the screen could be taken: the desktop's screen-shot "
                                                 "service did not answer or did not allow it."),
                     QString("Es konnte kein Bild des Bildschirms aufgenommen werden: Der Bildschirmfoto-Dienst der "
                             "Arbeitsumgebung hat nicht geantwortet oder es nicht erlaubt."));
        }
        QApplication::removeTranslator(&german);
    }

    void untranslatedWithoutCatalogue()
    {
        QMainWindow host;
        Ui::MainWindow form;
        form.setupUi(&host);
        QCOMPARE(form.tabWidget->tabText(1), QString("Step 1: Identity"));
        QCOMPARE(form.tree_Attachments->accessibleName(), QString("Attachments"));
        QCOMPARE(form.button_Bug_Report->accessibleName(), QString("Bug Report (Crashes / Issues)"));
    }
};

FB_TEST_MAIN(TestTranslations)
#include "tst_translations.moc"
