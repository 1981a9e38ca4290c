#include "attachments/desktopportal.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QEventLoop>
#include <QImageReader>
#include <QObject>
#include <QTimer>
#include <QUrl>
#include <QUuid>
#include <QVariantMap>

namespace desktopportal {

namespace {

const char kService[] = "org.freedesktop.portal.Desktop";
const char kPath[] = "/org/freedesktop/portal/desktop";
const char kScreenshotInterface[] = "org.freedesktop.portal.Screenshot";
const char kRequestInterface[] = "org.freedesktop.portal.Request";

// Receives the Response signal of one portal request.
class ResponseWaiter : public QObject
{
    Q_OBJECT

public:
    explicit ResponseWaiter(QEventLoop &loop)
        : m_loop(loop)
    {
    }

    bool answered = false;
    uint code = 2; // the portal's "ended otherwise"
    QVariantMap results;

public slots:
    void onResponse(uint response, const QVariantMap &values)
    {
        answered = true;
        code = response;
        results = values;
        m_loop.quit();
    }

private:
    QEventLoop &m_loop;
};

// The object path the portal gives a request: the caller's unique bus name without
// its colon, dots as underscores, then the token.
QString requestPath(const QDBusConnection &bus, const QString &token)
{
    QString sender = bus.baseService();
    sender.remove(0, 1).replace(QLatin1Char('.'), QLatin1Char('_'));
    return QStringLiteral("/org/freedesktop/portal/desktop/request/%1/%2").arg(sender, token);
}

QImage readPicture(const QUrl &uri, qint64 maxPixels)
{
    if (!uri.isLocalFile())
        return QImage();
    QImageReader reader(uri.toLocalFile());
    const QSize size = reader.size();
    if (!size.isValid() || qint64(size.width()) * size.height() > maxPixels)
        return QImage();
    return reader.read();
}

} // namespace

QImage takeScreenshot(qint64 maxPixels, int timeoutMs)
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return QImage();

    // Listen before asking: the answer may come before the call's own reply.
    const QString token = QStringLiteral("feedbackagent_") + QUuid::createUuid().toString(QUuid::Id128);
    QEventLoop loop;
    ResponseWaiter waiter(loop);
    const QString path = requestPath(bus, token);
    if (!bus.connect(QString(), path, QLatin1String(kRequestInterface), QStringLiteral("Response"), &waiter,
                     SLOT(onResponse(uint, QVariantMap))))
        return QImage();

    QDBusMessage call =
        QDBusMessage::createMethodCall(QLatin1String(kService), QLatin1String(kPath),
                                       QLatin1String(kScreenshotInterface), QStringLiteral("Screenshot"));
    QVariantMap options;
    options.insert(QStringLiteral("handle_token"), token);
    options.insert(QStringLiteral("interactive"), false);
    options.insert(QStringLiteral("modal"), false);
    call << QString() << options;
    QDBusPendingCallWatcher pending(bus.asyncCall(call, timeoutMs));
    QString answeredPath = path;
    QObject::connect(&pending, &QDBusPendingCallWatcher::finished, &loop, [&] {
        const QDBusPendingReply<QDBusObjectPath> reply = pending;
        if (reply.isError()) {
            loop.quit(); // no portal, or one without Screenshot
            return;
        }
        // Portals older than the handle token name the request themselves.
        const QString named = reply.value().path();
        if (named != path
            && bus.connect(QString(), named, QLatin1String(kRequestInterface), QStringLiteral("Response"), &waiter,
                           SLOT(onResponse(uint, QVariantMap))))
            answeredPath = named;
    });
    QTimer::singleShot(timeoutMs, &loop, &QEventLoop::quit);
    loop.exec();
    for (const QString &listened : {path, answeredPath})
        bus.disconnect(QString(), listened, QLatin1String(kRequestInterface), QStringLiteral("Response"), &waiter,
                       SLOT(onResponse(uint, QVariantMap)));

    if (!waiter.answered || waiter.code != 0)
        return QImage();
    return readPicture(QUrl(waiter.results.value(QStringLiteral("uri")).toString()), maxPixels);
}

} // namespace desktopportal

#include "desktopportal.moc"
