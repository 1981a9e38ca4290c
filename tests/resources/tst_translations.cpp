#include "form/mainwindow.h"
#include "support/mainwindowprobe.h"
#include "support/testenv.h"

#include <QApplication>
#include <QListWidget>
#include <QPushButton>
#include <QTabWidget>
#include <QTranslator>
#include <QtTest>

// The German catalogue built from resources/translations reaches the form.
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
            MainWindow window;
            auto *tabs = MainWindowProbe::widget<QTabWidget>(window, "tabWidget");
            QCOMPARE(tabs->tabText(1), QString::fromUtf8("Schritt 1: Identit\u00e4t"));
            QCOMPARE(MainWindowProbe::widget<QPushButton>(window, "button_Cancel")->text(), QString("Abbrechen"));
            QCOMPARE(MainWindowProbe::widget<QPushButton>(window, "button_Send")->text(), QString("Senden..."));
            // The area names were translated during static initialisation, before any
            // translator existed, so the list shows (and the report sends) the source names.
            auto *areas = MainWindowProbe::widget<QListWidget>(window, "list_Area");
            QCOMPARE(areas->item(areas->count() - 1)->text(), QString("Other"));
        }
        QApplication::removeTranslator(&german);
    }

    void untranslatedWithoutCatalogue()
    {
        MainWindow window;
        auto *tabs = MainWindowProbe::widget<QTabWidget>(window, "tabWidget");
        QCOMPARE(tabs->tabText(1), QString("Step 1: Identity"));
    }
};

FB_TEST_MAIN(TestTranslations)
#include "tst_translations.moc"
