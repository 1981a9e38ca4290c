#pragma once

#include "showntexts.h"
#include "submit/submitfixture.h"

#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QSet>
#include <QTranslator>

#include <functional>

class QListWidget;
class QTabWidget;

// Which group a test function belongs to: moc keeps the tag with the declaration
// (QMetaMethod::tag), and init() gives each group its translator and start.
#ifndef Q_MOC_RUN
#define PSEUDO_LOCALE_TEST
#define GERMAN_TEST
#endif

// The window under a translation: the pseudo translation, which must reach every text
// a person reads, and German as a person on a German system sees it. Each group's
// translator is installed only while its own functions run.
class TranslatedWindowTests
    : public QObject
    , protected SubmitTestState
{
    Q_OBJECT

private:
    QTabWidget *tabs() const;

    // The pseudo-locale functions start on a shown window held at its first size, with
    // the pseudo translation installed.
    QTranslator pseudo;
    static QList<AllowedTexts::Rule> allowedUntranslated();
    AllowedTexts allowed{allowedUntranslated()}; // across the group: which rules were needed
    QSet<QByteArray> pseudoChecksRun; // whether all of them ran, in whatever order
    int pseudoCheckCount() const;
    QStringList cutOff; // every cut seen, in the order first seen
    void initPseudoLocale();
    void verifyTranslated(const QWidget *root, const QString &screen);
    void noteCuts(const QWidget *root, const QString &screen);
    void visit(const QString &screen);
    void visitEveryTab(const QString &screen);
    void visitEmailStates();
    ModalAnswerer::Answer checkThen(QList<ShownText> *seen, const std::function<void(QWidget *)> &close);

    // The German functions start on a shown window, with the catalogue the system
    // locale chooses installed.
    QTranslator qtCatalogue; // Qt's own texts, loaded first as the program loads them
    QTranslator catalogue;
    void initGerman();
    QString text(const char *name) const;
    QListWidget *areas() const;

private slots:
    void initTestCase();
    void init();
    void cleanup();
    // Once every pseudo-locale check has run: every allowed text was needed by one.
    void cleanupTestCase();

    // Every text a person reads is pseudo text or allowed; the cuts at the first size.
    PSEUDO_LOCALE_TEST void introScreen();
    void composeScreens_data();
    PSEUDO_LOCALE_TEST void composeScreens();
    PSEUDO_LOCALE_TEST void settingsUnlocked();
    PSEUDO_LOCALE_TEST void emailMessages();
    PSEUDO_LOCALE_TEST void systemInformationToolTip();
    PSEUDO_LOCALE_TEST void fileDialogAndAccessFailure();
    PSEUDO_LOCALE_TEST void pastedImageNameDialog();
    PSEUDO_LOCALE_TEST void captureOverlayHint();
    PSEUDO_LOCALE_TEST void sendingAndItsOutcomes();
    PSEUDO_LOCALE_TEST void textsOfOtherProcessesAreInTheCatalogue();
    PSEUDO_LOCALE_TEST void cutOffTextsAtTheFirstSize();

    // German texts on each screen, and product areas left in the source language.
    GERMAN_TEST void introScreenInGerman();
    GERMAN_TEST void bugReportScreen();
    GERMAN_TEST void featureRequestScreen();
    GERMAN_TEST void everyTab();
    GERMAN_TEST void fileDialogAndAccessFailureBox();
    GERMAN_TEST void productAreasStayInTheSourceLanguage();
    GERMAN_TEST void reportSendsTheSourceAreaName();
    // Qt's own texts in the program's dialogs, from the Qt catalogue shipped with it.
    GERMAN_TEST void nameBoxInGerman();
    GERMAN_TEST void fileDialogInGerman();
    GERMAN_TEST void failureBoxInGerman();
};
