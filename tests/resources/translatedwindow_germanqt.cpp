// Qt's own texts in the program's dialogs on a German system: the buttons of the name
// box and of the failure box, the reason Qt gives for a failed connection, and the
// file dialog as the tests show it (Windows shows its own file dialog, in its own
// language), from the Qt catalogue that the program ships (made from Debian's
// qttranslations5-l10n, the same files on every platform).
#include "submit/submitfixture.h"
#include "translatedwindowtests.h"

#include "clipboardpicture.h"

#include "attachments/attachmentcheck.h"
#include "form/reporttab.h"
#include "support/mainwindowprobe.h"
#include "support/modalanswerer.h"

#include <QAbstractButton>
#include <QApplication>
#include <QClipboard>
#include <QFileDialog>
#include <QInputDialog>
#include <QLabel>
#include <QPushButton>
#include <QTabWidget>
#include <QTreeWidget>
#include <QtTest>

namespace {

// The texts of a dialog's visible buttons and labels, mnemonics kept, in creation order.
QStringList buttonAndLabelTexts(const QWidget *dialog)
{
    QStringList texts;
    for (const QObject *child : dialog->findChildren<QObject *>()) {
        const QWidget *widget = qobject_cast<const QWidget *>(child);
        if (!widget || !widget->isVisibleTo(dialog))
            continue;
        if (const QAbstractButton *button = qobject_cast<const QAbstractButton *>(widget)) {
            if (!button->text().isEmpty())
                texts << button->text();
        } else if (const QLabel *label = qobject_cast<const QLabel *>(widget)) {
            if (!label->text().isEmpty())
                texts << label->text();
        }
    }
    return texts;
}

} // namespace

void TranslatedWindowTests::nameBoxInGerman()
{
    child<QPushButton>(*window, "button_Bug_Report")->click();
    tabs()->setCurrentIndex(tabIndex(ReportTab::Attachments));
    const QImage picture = attachmentcheck::patternImage(30, 20);
    ClipboardPicture onTheClipboard(picture);
    QVERIFY(onTheClipboard.ok());
    QStringList texts;
    ModalAnswerer answerer;
    answerer.then([&](QWidget *modal) {
        texts = buttonAndLabelTexts(modal);
        qobject_cast<QDialog *>(modal)->reject();
    });
    QTest::keyClick(child<QTreeWidget>(*window, "tree_Attachments"), Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(answerer.seen().size(), 1);
    const ModalSnapshot &box = answerer.seen().first();
    QCOMPARE(box.className, QString("QInputDialog"));
    QCOMPARE(box.windowTitle, QString("Bild benennen"));
    QCOMPARE(texts, (QStringList{"Name:", "OK", "Abbrechen"}));
}

void TranslatedWindowTests::fileDialogInGerman()
{
    child<QPushButton>(*window, "button_Bug_Report")->click();
    tabs()->setCurrentIndex(tabIndex(ReportTab::Attachments));
    QStringList texts;
    QString title;
    ModalAnswerer answerer;
    answerer.then([&](QWidget *modal) {
        title = modal->windowTitle();
        texts = buttonAndLabelTexts(modal);
        qobject_cast<QFileDialog *>(modal)->reject();
    });
    child<QPushButton>(*window, "button_Attach_File")->click();
    QCOMPARE(answerer.seen().size(), 1);
    QCOMPARE(title, QString::fromUtf8("Datei ausw\u00e4hlen..."));
    QCOMPARE(texts, (QStringList{"Suchen in:", "Datei&name:", QString::fromUtf8("&\u00d6ffnen"), "Abbrechen",
                                 "Dateien des Typs:"}));
}

void TranslatedWindowTests::failureBoxInGerman()
{
    QVERIFY(SummaryArrival(*window).wait());
    ReportForm form;
    form.files = QStringList{writeTestFile(path("log.txt"), "log\n")};
    form.destination = QStringLiteral("http://127.0.0.1:%1/").arg(closedPort());
    fillForm(*window, form);
    const SendRun failed = sendExpectingFailure(*window);
    QCOMPARE(failed.loopResult, kLoopDone);
    QCOMPARE(failed.boxes.size(), 1);
    const ModalSnapshot &box = failed.boxes.first();
    QCOMPARE(box.windowTitle, QString("Senden fehlgeschlagen"));
    QCOMPARE(box.text, QString("Ihr Bericht konnte derzeit nicht gesendet werden:\n\"Verbindung verweigert\""));
    QCOMPARE(box.buttons, QStringList{"OK"});
}
