#include "attachments/richtextpushbutton.h"
#include "support/testenv.h"

#include <QApplication>
#include <QTextDocument>
#include <QtTest>

class TestRichTextPushButton : public QObject
{
    Q_OBJECT

private slots:
    void beforeHtmlTheButtonTextIsReturned()
    {
        RichTextPushButton button(nullptr);
        button.QPushButton::setText("plain");
        QCOMPARE(button.text(), QString("plain"));
        QCOMPARE(button.htmlText(), QString("plain"));
        QVERIFY(button.icon().isNull());
    }

    void htmlIsRenderedIntoTheIcon()
    {
        RichTextPushButton button(nullptr);
        button.resize(300, 202);
        const QString html = "<html><body><p align=\"center\"><b>Bug Report</b></p><p>(Crashes)</p></body></html>";
        button.setText(html);

        QCOMPARE(button.htmlText(), html);
        QCOMPARE(button.text(), QString("Bug Report\n(Crashes)"));
        QCOMPARE(button.QPushButton::text(), QString());
        QVERIFY(!button.icon().isNull());

        QTextDocument expected;
        expected.setPageSize(QSizeF(300, 202));
        expected.setHtml(html);
        const QSize size(int(expected.size().width()), int(expected.size().height()));
        QCOMPARE(button.iconSize(), size);
        QCOMPARE(button.palette().brush(QPalette::ButtonText).color(), QColor(Qt::transparent));
        QCOMPARE(button.palette().brush(QPalette::ButtonText).style(), Qt::SolidPattern);
    }

    void emptyTextKeepsTheRendering()
    {
        RichTextPushButton button(nullptr);
        button.resize(200, 100);
        button.setHtml("<p>First</p>");
        const qint64 iconKey = button.icon().cacheKey();
        button.setText(QString());
        QCOMPARE(button.htmlText(), QString("<p>First</p>"));
        QCOMPARE(button.text(), QString("First"));
        QCOMPARE(button.icon().cacheKey(), iconKey);
    }

    void setHtmlMarksRichTextEvenWhenEmpty()
    {
        RichTextPushButton button(nullptr);
        button.QPushButton::setText("base");
        button.setHtml(QString());
        QCOMPARE(button.htmlText(), QString());
        QCOMPARE(button.text(), QString());
    }

    void accessibleNameIsThePlainCaptionOnOneLine()
    {
        RichTextPushButton button(nullptr);
        QCOMPARE(button.accessibleName(), QString());
        button.setText("<html><body><p align=\"center\"><font size=\"+3\">Bug Report</font></p>"
                       "<p>(Crashes / Issues)</p></body></html>");
        QCOMPARE(button.accessibleName(), QString("Bug Report (Crashes / Issues)"));
        QCOMPARE(button.text(), QString("Bug Report\n(Crashes / Issues)"));

        // A new caption (a translation, say) brings its own name.
        button.setText("<p>Fehlerbericht</p><p>(Abst\u00fcrze)</p>");
        QCOMPARE(button.accessibleName(), QString::fromUtf8("Fehlerbericht (Abst\u00fcrze)"));
        button.setText(QString());
        QCOMPARE(button.accessibleName(), QString::fromUtf8("Fehlerbericht (Abst\u00fcrze)"));
    }

    void accessibleNameGivenFromOutsideStays()
    {
        RichTextPushButton button(nullptr);
        button.setHtml("<p>First</p>");
        button.setAccessibleName("Report a crash");
        button.setHtml("<p>Second</p>");
        QCOMPARE(button.accessibleName(), QString("Report a crash"));
        QCOMPARE(button.text(), QString("Second"));
    }

    void metaObjectIsItsOwn()
    {
        RichTextPushButton button(nullptr);
        QCOMPARE(QString(button.metaObject()->className()), QString("RichTextPushButton"));
        QCOMPARE(button.metaObject()->methodCount(), QPushButton::staticMetaObject.methodCount());
        QCOMPARE(button.metaObject()->propertyCount(), QPushButton::staticMetaObject.propertyCount());
    }
};

FB_TEST_MAIN(TestRichTextPushButton)
#include "tst_richtextpushbutton.moc"
