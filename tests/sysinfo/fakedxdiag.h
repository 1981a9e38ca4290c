#pragma once

// Test doubles for the diagnostics tree: a container whose provider calls can be
// made to fail (or to run code in the middle of the walk), sessions that behave
// like a reader whose provider failed, and capture of the process's stdout.

#include "sysinfo/dxdiagcontainer.h"
#include "sysinfo/dxdiagdump.h"

#include <QByteArray>
#include <QFile>

#include <cstdio>
#include <functional>
#include <set>
#include <string>

#include <unistd.h>

class FakeContainer : public MemoryContainer
{
public:
    bool failPropertyCount = false;
    bool failChildCount = false;
    std::set<std::uint32_t> failPropertyNameAt;
    std::set<std::string> failGet;
    std::set<std::uint32_t> failChildNameAt;
    std::set<std::string> failChild;
    // Runs before each property read, with the property's name.
    std::function<void(const std::string &)> beforeGet;

    FakeContainer &fakeChild(const std::string &name)
    {
        return static_cast<FakeContainer &>(adoptChild(name, std::make_unique<FakeContainer>()));
    }

    bool propertyCount(std::uint32_t &count) override
    {
        return !failPropertyCount && MemoryContainer::propertyCount(count);
    }
    bool propertyName(std::uint32_t index, std::string &name) override
    {
        return !failPropertyNameAt.count(index) && MemoryContainer::propertyName(index, name);
    }
    bool property(const std::string &name, DxDiagValue &value) override
    {
        if (beforeGet)
            beforeGet(name);
        return !failGet.count(name) && MemoryContainer::property(name, value);
    }
    bool childCount(std::uint32_t &count) override { return !failChildCount && MemoryContainer::childCount(count); }
    bool childName(std::uint32_t index, std::string &name) override
    {
        return !failChildNameAt.count(index) && MemoryContainer::childName(index, name);
    }
    std::unique_ptr<DxDiagContainer> child(const std::string &name) override
    {
        if (failChild.count(name))
            return nullptr;
        return MemoryContainer::child(name);
    }
};

// A reader whose provider gave no root: the error line goes to stdout, as the
// Windows reader writes it for "Unable to create provider instance".
class FailedProviderSession : public DxDiagSession
{
public:
    explicit FailedProviderSession(const char *error) { writeDxDiagError(error); }
    bool hasRoot() const override { return false; }
    void dumpSection(const char *, std::FILE *) override {}
};

// Redirects file descriptor 1 into a temporary file while it lives; text() gives
// what was written. Keep QVERIFY and friends out of its lifetime: their messages
// would land in the capture.
class StdoutCapture
{
public:
    StdoutCapture()
    {
        std::fflush(stdout);
        m_saved = dup(1);
        m_file = std::tmpfile();
        if (m_file)
            dup2(fileno(m_file), 1);
    }
    ~StdoutCapture() { finish(); }

    QByteArray text()
    {
        finish();
        return m_text;
    }

private:
    void finish()
    {
        if (m_saved < 0)
            return;
        std::fflush(stdout);
        dup2(m_saved, 1);
        close(m_saved);
        m_saved = -1;
        if (!m_file)
            return;
        std::rewind(m_file);
        char buffer[4096];
        std::size_t n;
        while ((n = std::fread(buffer, 1, sizeof buffer, m_file)) > 0)
            m_text.append(buffer, static_cast<int>(n));
        std::fclose(m_file);
        m_file = nullptr;
    }

    int m_saved = -1;
    std::FILE *m_file = nullptr;
    QByteArray m_text;
};

// The walker's output for one container, through a real FILE stream.
inline QByteArray dumpToBytes(DxDiagContainer &container)
{
    std::FILE *file = std::tmpfile();
    dumpContainer(container, file);
    std::fflush(file);
    std::rewind(file);
    QByteArray bytes;
    char buffer[4096];
    std::size_t n;
    while ((n = std::fread(buffer, 1, sizeof buffer, file)) > 0)
        bytes.append(buffer, static_cast<int>(n));
    std::fclose(file);
    return bytes;
}

inline QByteArray readAll(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}
