#include "attachments/ask.h"
#include "support/modalanswerer.h"
#include "support/testenv.h"

#include <QApplication>
#include <QAbstractButton>
#include <QCheckBox>
#include <QPixmap>
#include <QtTest>

class TestAsk : public QObject
{
    Q_OBJECT

private:
    QWidget parentWidget;
    QIcon icon;

    static constexpr int Ok = 0x400;
    static constexpr int Cancel = 0x400000;

private slots:
    void initTestCase()
    {
        QPixmap pixmap(16, 16);
        pixmap.fill(Qt::red);
        icon = QIcon(pixmap);
        parentWidget.setWindowIcon(icon);
    }

    void questionWithCancelMapsResults_data()
    {
        QTest::addColumn<QString>("button");
        QTest::addColumn<int>("expected");
        QTest::newRow("Yes") << "Yes" << Ok;
        QTest::newRow("No") << "No" << Cancel;
        QTest::newRow("Cancel") << "Cancel" << Cancel;
    }
    void questionWithCancelMapsResults()
    {
        QFETCH(QString, button);
        QFETCH(int, expected);
        ModalAnswerer answerer;
        answerer.clickButton(button);
        Ask ask(&parentWidget, "The title", icon);
        QCOMPARE(ask.question("Proceed?", true), expected);
        QCOMPARE(answerer.seen().size(), 1);
        const ModalSnapshot shown = answerer.seen().first();
        const QMap<QString, int> roles{
            {"Yes", QMessageBox::YesRole}, {"No", QMessageBox::NoRole}, {"Cancel", QMessageBox::RejectRole}};
        QCOMPARE(shown.buttonRoles, roles);
        QCOMPARE(shown.icon, int(QMessageBox::Question));
        QCOMPARE(shown.windowTitle, QString("The title"));
        QCOMPARE(shown.text, QString("Proceed?"));
        // With cancel and labelled buttons, the last one added is the default.
        QCOMPARE(shown.defaultButton, QString("Cancel"));
    }

    void questionWithoutCancelReturnsRawIndex_data()
    {
        QTest::addColumn<QString>("button");
        QTest::addColumn<int>("expected");
        QTest::newRow("Yes") << "Yes" << 0;
        QTest::newRow("No") << "No" << 1;
    }
    void questionWithoutCancelReturnsRawIndex()
    {
        QFETCH(QString, button);
        QFETCH(int, expected);
        ModalAnswerer answerer;
        answerer.clickButton(button);
        Ask ask(&parentWidget, "T", icon);
        QCOMPARE(ask.question("Q"), expected);
        const QMap<QString, int> roles{{"Yes", QMessageBox::YesRole}, {"No", QMessageBox::NoRole}};
        QCOMPARE(answerer.seen().first().buttonRoles, roles);
        // No cancel: the standard Yes button is looked for and not found, so no default.
        QCOMPARE(answerer.seen().first().defaultButton, QString());
    }

    void questionWithLabelsIsNotMapped()
    {
        ModalAnswerer answerer;
        answerer.clickButton("Later");
        Ask ask(&parentWidget, "T", icon);
        QCOMPARE(ask.question("Q", true, false, {"Now", "Later", "Never", "Ignored"}), 1);
        const QMap<QString, int> roles{
            {"Now", QMessageBox::YesRole}, {"Later", QMessageBox::NoRole}, {"Never", QMessageBox::RejectRole}};
        QCOMPARE(answerer.seen().first().buttonRoles, roles); // the fourth label is dropped
        QCOMPARE(answerer.seen().first().defaultButton, QString("Never"));
    }

    void informationDefaults()
    {
        ModalAnswerer answerer;
        answerer.clickButton("OK").clickButton("Cancel").clickButton("OK");
        Ask ask(&parentWidget, "Info", icon);
        QCOMPARE(ask.information("Done.", true), Ok);
        QCOMPARE(ask.information("Done.", true), Cancel);
        QCOMPARE(ask.information("Done."), 0);
        const QMap<QString, int> roles{{"OK", QMessageBox::YesRole}, {"Cancel", QMessageBox::NoRole}};
        QCOMPARE(answerer.seen().at(0).buttonRoles, roles);
        QCOMPARE(answerer.seen().at(0).icon, int(QMessageBox::Information));
        QCOMPARE(answerer.seen().at(2).buttons, QStringList{"OK"});
    }

    void warningShowsOneOkButton()
    {
        ModalAnswerer answerer;
        answerer.clickButton("OK");
        Ask ask(&parentWidget, "File Access Failure", icon);
        QCOMPARE(ask.warning("Failed to access file."), 0);
        const ModalSnapshot shown = answerer.seen().first();
        QCOMPARE(shown.className, QString("QMessageBox"));
        QCOMPARE(shown.buttons, QStringList{"OK"});
        QCOMPARE(shown.icon, int(QMessageBox::Warning));
        QCOMPARE(shown.windowTitle, QString("File Access Failure"));
        QCOMPARE(shown.text, QString("Failed to access file."));
        QVERIFY(shown.hasWindowIcon);
        QCOMPARE(shown.cacheKeyOfWindowIcon, icon.cacheKey());
        QVERIFY(shown.checkBoxes.isEmpty());
    }

    void criticalShowsOneOkButton()
    {
        ModalAnswerer answerer;
        answerer.clickButton("OK");
        Ask ask(&parentWidget, "Title", icon);
        QCOMPARE(ask.critical("Broken."), 0);
        QCOMPARE(answerer.seen().first().buttons, QStringList{"OK"});
        QCOMPARE(answerer.seen().first().icon, int(QMessageBox::Critical));
    }

    void nullIconLeavesWindowIconAlone()
    {
        ModalAnswerer answerer;
        answerer.clickButton("OK");
        Ask ask(nullptr, "Title");
        ask.critical("text");
        QCOMPARE(answerer.seen().size(), 1);
        QVERIFY(answerer.seen().first().cacheKeyOfWindowIcon != icon.cacheKey());
    }

    void doNotAskBoxReportsItsState()
    {
        ModalAnswerer answerer;
        answerer.then([](QWidget *modal) {
            QCheckBox *box = modal->findChild<QCheckBox *>();
            QVERIFY(box);
            box->setChecked(true);
            for (QAbstractButton *b : modal->findChildren<QAbstractButton *>())
                if (b->text() == "No")
                    b->click();
        });
        Ask ask(&parentWidget, "T", icon);
        QCOMPARE(ask.doNotAsk(), false);
        QCOMPARE(ask.question("Q", false, true), 1);
        QCOMPARE(answerer.seen().first().checkBoxes, QStringList{"Do not ask again"});
        QCOMPARE(ask.doNotAsk(), true);

        // Every call starts from false again.
        answerer.clickButton("OK");
        ask.warning("W");
        QCOMPARE(ask.doNotAsk(), false);
    }

    void staticQuestionCopiesTheState()
    {
        ModalAnswerer answerer;
        answerer.then([](QWidget *modal) {
            QCOMPARE(modal->windowIcon().cacheKey(), modal->parentWidget()->windowIcon().cacheKey());
            modal->findChild<QCheckBox *>()->setChecked(true);
            for (QAbstractButton *b : modal->findChildren<QAbstractButton *>())
                if (b->text() == "Yes")
                    b->click();
        });
        bool doNotAsk = false;
        QCOMPARE(Ask::question(&parentWidget, "T", "Q", &doNotAsk, true, true), Ok);
        QCOMPARE(doNotAsk, true);

        // Without the box requested, the flag is left untouched.
        answerer.clickButton("No");
        bool untouched = true;
        QCOMPARE(Ask::question(&parentWidget, "T", "Q", &untouched), 1);
        QCOMPARE(untouched, true);
    }
};

FB_TEST_MAIN(TestAsk)
#include "tst_ask.moc"
