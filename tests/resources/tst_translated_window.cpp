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
    if (group == "PSEUDO_LOCALE_TEST")
        initPseudoLocale();
    else if (group == "GERMAN_TEST")
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

QTabWidget *TranslatedWindowTests::tabs() const
{
    return child<QTabWidget>(*window, "tabWidget");
}

FB_TEST_MAIN(TranslatedWindowTests)
