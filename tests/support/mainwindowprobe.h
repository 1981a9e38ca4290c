#pragma once

#include "form/mainwindow.h"

#include <QWidget>

// Read access to MainWindow's private state for the tests. Tests drive the window
// through its widgets (found by object name) and look here only for state that no
// widget shows.
struct MainWindowProbe
{
    static qint32 formState(const MainWindow &w) { return qint32(w.formState); }
    static qint32 reportKind(const MainWindow &w) { return qint32(w.reportKind); }
    static qint32 sendOutcome(const MainWindow &w) { return qint32(w.sendOutcome); }
    static QString titleText(const MainWindow &w) { return w.titleText; }
    static QString configPath(const MainWindow &w) { return w.configPath; }
    static QString thumbnailFolder(const MainWindow &w) { return w.thumbDir ? w.thumbDir->absolutePath() : QString(); }
    static bool settingsModified(const MainWindow &w) { return w.settingsModified; }
    static bool geometryPinned(const MainWindow &w) { return w.geometryPinned; }
    static QPoint savedPos(const MainWindow &w) { return w.savedPos; }
    static QSize savedSize(const MainWindow &w) { return w.savedSize; }
    static QHostInfo hostInfo(const MainWindow &w) { return w.hostInfo; }
    static bool emailValid(const MainWindow &w) { return w.emailValid; }
    static bool lookupPending(const MainWindow &w) { return w.lookupPending; }
    static const QTimer &emailTimer(const MainWindow &w) { return w.emailTimer; }
    static QString sysInfo(const MainWindow &w) { return w.sysInfo; }
    static QNetworkAccessManager *network(const MainWindow &w) { return w.network; }
    static QNetworkReply *reply(const MainWindow &w) { return w.reply; }
    static bool progressFirst(const MainWindow &w) { return w.progressFirst; }
    static QString launchArea(const MainWindow &w) { return w.launchArea; }
    static bool lockArea(const MainWindow &w) { return w.lockArea; }
    static bool instanceGuardListening(const MainWindow &w) { return w.instanceServer.isListening(); }

    // The two writes: state that no widget leads to on its own in a unit test. Sending
    // needs an upload; the screen-shot flow pins the window while it captures.
    static void setFormState(MainWindow &w, qint32 state) { w.formState = FormState(state); }
    static void setGeometryPinned(MainWindow &w, bool pinned) { w.geometryPinned = pinned; }

    template <typename T>
    static T *widget(const MainWindow &w, const char *objectName)
    {
        return w.findChild<T *>(QString::fromLatin1(objectName));
    }
};
