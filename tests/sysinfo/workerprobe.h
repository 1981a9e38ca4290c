#pragma once

// Two tools for watching the system-information worker that MainWindow starts and
// keeps no pointer to.
//
// ObjectTracker records, through Qt's object hooks (the ones object inspectors
// use), the QObjects created on the GUI thread while it is armed, so a test can
// find the QThread and the GatherSysInfo afterwards and hold QPointers to them.
//
// DumpGate puts a FIFO where the dump file goes. The worker's fopen(..., "w")
// then waits until the gate opens its reading end, so the worker is held at the
// start of its job for as long as a test needs. Once let in, the worker writes
// its dump into the FIFO (the gate collects it), closes it and opens it again for
// reading, which waits until the gate opens a writing end. A FIFO reads as empty
// to QFile, so the summary is then "{  }".

#include <QByteArray>
#include <QDeadlineTimer>
#include <QFile>
#include <QList>
#include <QMutex>
#include <QMutexLocker>
#include <QObject>
#include <QSet>
#include <QString>
#include <QThread>

#ifndef Q_OS_WIN
#include <cerrno>
#include <csignal>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

extern Q_DECL_IMPORT quintptr qtHookData[];

class ObjectTracker
{
public:
    ObjectTracker()
    {
        // Hook slots 3 and 4 are "object added" and "object removed" (hook data
        // version 1 and later); nothing else in the tests uses them.
        Q_ASSERT(qtHookData[0] >= 1 && qtHookData[1] > 4);
        s_self = this;
        m_previousAdd = qtHookData[3];
        m_previousRemove = qtHookData[4];
        qtHookData[3] = reinterpret_cast<quintptr>(&ObjectTracker::added);
        qtHookData[4] = reinterpret_cast<quintptr>(&ObjectTracker::removed);
    }

    ~ObjectTracker()
    {
        qtHookData[3] = m_previousAdd;
        qtHookData[4] = m_previousRemove;
        s_self = nullptr;
    }

    void arm(bool on)
    {
        QMutexLocker lock(&m_mutex);
        m_armed = on;
        if (on)
            m_live.clear();
    }

    // The recorded objects that are still alive, of type T. The pointers stay valid
    // only while none of them can be destroyed on another thread; whether the list is
    // empty can be asked at any time, since a destructor's removal waits for the lock.
    template <typename T>
    QList<T *> alive()
    {
        QMutexLocker lock(&m_mutex);
        QList<T *> found;
        for (QObject *object : qAsConst(m_live)) {
            if (T *typed = qobject_cast<T *>(object))
                found << typed;
        }
        return found;
    }

private:
    static void added(QObject *object)
    {
        ObjectTracker *self = s_self;
        if (!self)
            return;
        // Only the native thread id: QThread::currentThread() may itself create
        // an object (for a thread Qt has not seen yet) and so re-enter the hook.
        if (QThread::currentThreadId() != self->m_guiThread)
            return;
        QMutexLocker lock(&self->m_mutex);
        if (self->m_armed)
            self->m_live.insert(object);
    }

    static void removed(QObject *object)
    {
        ObjectTracker *self = s_self;
        if (!self)
            return;
        QMutexLocker lock(&self->m_mutex);
        self->m_live.remove(object);
    }

    static inline ObjectTracker *s_self = nullptr;
    QMutex m_mutex;
    bool m_armed = false;
    QSet<QObject *> m_live;
    Qt::HANDLE m_guiThread = QThread::currentThreadId();
    quintptr m_previousAdd = 0;
    quintptr m_previousRemove = 0;
};

#ifndef Q_OS_WIN // a FIFO is a POSIX thing
class DumpGate
{
public:
    explicit DumpGate(const QString &path)
        : m_path(QFile::encodeName(path))
    {
        // A write to a FIFO whose reader went away must not end the test process.
        std::signal(SIGPIPE, SIG_IGN);
        ::unlink(m_path.constData());
        m_ok = ::mkfifo(m_path.constData(), 0600) == 0;
    }

    ~DumpGate()
    {
        // Never leave a worker waiting: let it through both opens.
        if (m_ok && m_stage == 0)
            letWriterIn(2000);
        if (m_ok && m_stage == 1)
            letReaderIn(2000);
        if (m_readFd >= 0)
            ::close(m_readFd);
        ::unlink(m_path.constData());
    }

    bool ok() const { return m_ok; }
    QByteArray dump() const { return m_dump; }

    // Opens the reading end, which lets the worker's fopen return, and collects
    // what it writes until it closes the file. False on timeout.
    bool letWriterIn(int timeoutMs = 10000)
    {
        m_stage = 1;
        m_readFd = ::open(m_path.constData(), O_RDONLY | O_NONBLOCK);
        if (m_readFd < 0)
            return false;
        QDeadlineTimer deadline(timeoutMs);
        bool writerSeen = false;
        while (!deadline.hasExpired()) {
            char buffer[4096];
            const ssize_t n = ::read(m_readFd, buffer, sizeof buffer);
            if (n > 0) {
                writerSeen = true;
                m_dump.append(buffer, int(n));
            } else if (n < 0 && errno == EAGAIN) {
                writerSeen = true; // open for writing, nothing new yet
                QThread::msleep(1);
            } else if (n == 0 && writerSeen) {
                return true; // the writer closed the file
            } else {
                QThread::msleep(1); // the writer has not opened it yet
            }
        }
        return false;
    }

    // Opens a writing end as soon as the worker waits to read, and closes it
    // again at once. False on timeout.
    bool letReaderIn(int timeoutMs = 10000)
    {
        m_stage = 2;
        if (m_readFd >= 0) {
            ::close(m_readFd);
            m_readFd = -1;
        }
        QDeadlineTimer deadline(timeoutMs);
        while (!deadline.hasExpired()) {
            const int fd = ::open(m_path.constData(), O_WRONLY | O_NONBLOCK);
            if (fd >= 0) {
                ::close(fd);
                return true;
            }
            QThread::msleep(1); // ENXIO: nobody reads yet
        }
        return false;
    }

private:
    QByteArray m_path;
    bool m_ok = false;
    int m_stage = 0;
    int m_readFd = -1;
    QByteArray m_dump;
};
#endif
