#include "support/unreadablefile.h"

#include <QDir>

#include <windows.h>

struct UnreadableFile::State
{
    HANDLE handle = INVALID_HANDLE_VALUE;
};

UnreadableFile::UnreadableFile(const QString &path)
    : m_state(new State)
{
    // No share flags: every other open of the file fails with a sharing violation
    // until this handle is closed.
    const std::wstring native = QDir::toNativeSeparators(path).toStdWString();
    m_state->handle =
        CreateFileW(native.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
}

UnreadableFile::~UnreadableFile()
{
    if (m_state->handle != INVALID_HANDLE_VALUE)
        CloseHandle(m_state->handle);
}

bool UnreadableFile::ok() const
{
    return m_state->handle != INVALID_HANDLE_VALUE;
}
