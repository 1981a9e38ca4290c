#include "submit/sendtarget.h"

SendTarget sendTarget(const QString &destination, const QString &defaultDestination, const ProxyFields &proxy)
{
    SendTarget target;
    target.url = QUrl(destination.isEmpty() ? defaultDestination : destination, QUrl::TolerantMode);
    if (!proxy.enabled)
        return target;
    target.setsProxy = true;
    if (proxy.server.isEmpty()) {
        target.proxy = QNetworkProxy(QNetworkProxy::NoProxy);
        return target;
    }
    bool parsed = false;
    const quint16 port = (proxy.port.isEmpty() ? QStringLiteral("8080") : proxy.port).toUShort(&parsed, 10);
    target.proxy =
        QNetworkProxy(QNetworkProxy::HttpProxy, proxy.server, parsed ? port : 0, proxy.userName, proxy.password);
    return target;
}
