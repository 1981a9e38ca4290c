#include "support/privateresolver.h"

#include <QDir>
#include <QFile>

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <net/if.h>
#include <sched.h>
#include <sys/ioctl.h>
#include <sys/mount.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

struct State
{
    bool active = false;
    QString failure = QStringLiteral("PrivateResolver::enter() was not called");
    QString folder;
    QString nameServer;
};

State &state()
{
    static State s;
    return s;
}

QString systemError(const char *what)
{
    return QStringLiteral("%1: %2").arg(QLatin1String(what), QString::fromLocal8Bit(std::strerror(errno)));
}

bool writeFile(const QString &path, const QByteArray &contents)
{
    // Truncate in place: a bind mount follows the inode, so the file must not be replaced.
    QFile file(path);
    return file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(contents) == contents.size();
}

bool writeProcFile(const char *path, const QByteArray &contents)
{
    const int fd = ::open(path, O_WRONLY);
    if (fd < 0)
        return false;
    const bool written = ::write(fd, contents.constData(), size_t(contents.size())) == contents.size();
    ::close(fd);
    return written;
}

QString bringLoopbackUp()
{
    const int fd = ::socket(AF_INET, SOCK_DGRAM, 0);
    if (fd < 0)
        return systemError("socket for the loopback interface");
    ifreq request{};
    std::strncpy(request.ifr_name, "lo", IFNAMSIZ - 1);
    QString failure;
    if (::ioctl(fd, SIOCGIFFLAGS, &request) != 0) {
        failure = systemError("reading the loopback flags");
    } else {
        request.ifr_flags |= IFF_UP;
        if (::ioctl(fd, SIOCSIFFLAGS, &request) != 0)
            failure = systemError("bringing the loopback interface up");
    }
    ::close(fd);
    return failure;
}

// Root needs only a mount namespace. Anyone else (and root where that is refused)
// maps itself to root in a new user namespace, which also needs its own network
// namespace to listen on port 53.
QString unshareNamespaces()
{
    QString rootFailure;
    if (::geteuid() == 0) {
        if (::unshare(CLONE_NEWNS) == 0)
            return QString();
        rootFailure = systemError("unshare(CLONE_NEWNS) as root") + QStringLiteral("; then ");
    }

    const QByteArray uid = QByteArray::number(::getuid());
    const QByteArray gid = QByteArray::number(::getgid());
    if (::unshare(CLONE_NEWUSER | CLONE_NEWNS | CLONE_NEWNET) != 0)
        return rootFailure + systemError("unshare(CLONE_NEWUSER | CLONE_NEWNS | CLONE_NEWNET)");
    if (!writeProcFile("/proc/self/setgroups", "deny") || !writeProcFile("/proc/self/uid_map", "0 " + uid + " 1")
        || !writeProcFile("/proc/self/gid_map", "0 " + gid + " 1"))
        return rootFailure + systemError("mapping the user into the new user namespace");
    return bringLoopbackUp();
}

QString bindOver(const QString &source, const char *target)
{
    // The kernel ignores the type of a bind mount; a named one keeps memcheck from
    // reporting the null pointer it may otherwise be.
    if (::mount(QFile::encodeName(source).constData(), target, "none", MS_BIND, nullptr) != 0)
        return systemError(target);
    return QString();
}

QString readBack(const char *path)
{
    QFile file(QString::fromLatin1(path));
    return file.open(QIODevice::ReadOnly) ? QString::fromLatin1(file.readAll()) : QString();
}

QByteArray nsswitchConf(PrivateResolver::Source source)
{
    return source == PrivateResolver::Dns ? "hosts: dns\n" : "hosts: files\n";
}

QString setUp(PrivateResolver::Source source)
{
    State &s = state();
    s.folder = TestEnvironment::instance().root() + QStringLiteral("/resolver");
    const int pid = int(::getpid());
    s.nameServer = QStringLiteral("127.53.%1.%2").arg((pid >> 8) & 0xff).arg(pid % 254 + 1);

    const QByteArray nsswitch = nsswitchConf(source);
    const QByteArray resolvConf = "nameserver " + s.nameServer.toLatin1() + "\noptions timeout:5 attempts:1\n";
    if (!QDir().mkpath(s.folder + QStringLiteral("/empty")) || !writeFile(s.folder + "/nsswitch.conf", nsswitch)
        || !writeFile(s.folder + "/hosts", "127.0.0.1 localhost\n")
        || !writeFile(s.folder + "/resolv.conf", resolvConf))
        return QStringLiteral("cannot write the private resolver files in %1").arg(s.folder);

    QString failure = unshareNamespaces();
    if (!failure.isEmpty())
        return failure;
    // Without this, on a host whose root mount is shared, the bind mounts below would
    // show up in the machine's own /etc.
    if (::mount("none", "/", "none", MS_REC | MS_PRIVATE, nullptr) != 0)
        return systemError("making the mount tree private");
    for (const auto &pair :
         {std::make_pair("/nsswitch.conf", "/etc/nsswitch.conf"), std::make_pair("/hosts", "/etc/hosts"),
          std::make_pair("/resolv.conf", "/etc/resolv.conf")}) {
        failure = bindOver(s.folder + QLatin1String(pair.first), pair.second);
        if (!failure.isEmpty())
            return failure;
    }
    // A running name service cache would answer before the files are read.
    for (const char *cacheFolder : {"/run/nscd", "/var/run/nscd"}) {
        if (QFile::exists(QLatin1String(cacheFolder))) {
            failure = bindOver(s.folder + QStringLiteral("/empty"), cacheFolder);
            if (!failure.isEmpty())
                return failure;
        }
    }
    if (readBack("/etc/nsswitch.conf") != QLatin1String(nsswitch))
        return QStringLiteral("/etc/nsswitch.conf still shows the machine's file after the bind mount");
    return QString();
}

} // namespace

bool PrivateResolver::enter(Source source)
{
    State &s = state();
    s.failure = setUp(source);
    s.active = s.failure.isEmpty();
    if (!s.active)
        s.failure =
            QStringLiteral("cannot give the test its own resolver files (%1); "
                           "this test needs unshare and mount permission (root, or unprivileged user namespaces)")
                .arg(s.failure);
    return s.active;
}

bool PrivateResolver::active()
{
    return state().active;
}

QString PrivateResolver::failure()
{
    return state().active ? QString() : state().failure;
}

QString PrivateResolver::nameServerAddress()
{
    return state().nameServer;
}

bool PrivateResolver::writeHosts(const QByteArray &contents)
{
    return state().active && writeFile(state().folder + QStringLiteral("/hosts"), contents);
}

bool PrivateResolver::writeResolvConf(const QByteArray &contents)
{
    return state().active && writeFile(state().folder + QStringLiteral("/resolv.conf"), contents);
}

bool PrivateResolver::use(Source source)
{
    return state().active && writeFile(state().folder + QStringLiteral("/nsswitch.conf"), nsswitchConf(source));
}
