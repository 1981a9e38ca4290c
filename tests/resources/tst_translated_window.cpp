// The window under the pseudo translation (translatedwindow_pseudolocale.cpp) and in
// German (translatedwindow_german.cpp).
#include "translatedwindowtests.h"

#include "support/testenv.h"

#include <QApplication>
#include <QLocale>
#include <QTabWidget>
#include <QtTest>

void TranslatedWindowTests::initTestCase()
{
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    clearProxyEnvironment();
}

void TranslatedWindowTests::init()
{
    const QByteArray group = currentTestTag(*this);
    if (group == "PSEUDO_LOCALE_TEST") {
        pseudoChecksRun.insert(QTest::currentTestFunction());
        initPseudoLocale();
    } else if (group == "GERMAN_TEST")
        initGerman();
    else
        QFAIL("a test function without its group's tag");
}

// The window first, then its group's translator and locale: no other group's
// function sees them.
void TranslatedWindowTests::cleanup()
{
    endTest();
    QApplication::removeTranslator(&pseudo);
    QApplication::removeTranslator(&catalogue);
    QApplication::removeTranslator(&qtCatalogue);
    QLocale::setDefault(QLocale::system());
}

int TranslatedWindowTests::pseudoCheckCount() const
{
    int count = 0;
    for (int i = 0; i < metaObject()->methodCount(); ++i)
        count += QByteArray(metaObject()->method(i).tag()) == "PSEUDO_LOCALE_TEST" ? 1 : 0;
    return count;
}

// The allowed texts are rules for the screens the pseudo-locale checks visit between
// them; a run of some of those checks cannot tell which rules the others need.
void TranslatedWindowTests::cleanupTestCase()
{
    if (pseudoChecksRun.size() == pseudoCheckCount())
        QCOMPARE(allowed.unused(), QStringList());
}

QTabWidget *TranslatedWindowTests::tabs() const
{
    return child<QTabWidget>(*window, "tabWidget");
}

FB_TEST_MAIN(TranslatedWindowTests)
