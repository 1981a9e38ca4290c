#include "support/unreadablefile.h"

#include <QFile>

#include <linux/capability.h>
#include <sys/syscall.h>
#include <unistd.h>

struct UnreadableFile::State
{
    __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
    __user_cap_data_struct saved[2] = {};
    bool capabilitiesDropped = false;
    bool modeCleared = false;
};

UnreadableFile::UnreadableFile(const QString &path)
    : m_state(new State)
{
    m_state->modeCleared = QFile::setPermissions(path, QFileDevice::Permissions());
    if (syscall(SYS_capget, &m_state->header, m_state->saved) != 0)
        return;
    __user_cap_data_struct reduced[2] = {m_state->saved[0], m_state->saved[1]};
    reduced[0].effective &= ~((1u << CAP_DAC_OVERRIDE) | (1u << CAP_DAC_READ_SEARCH));
    m_state->capabilitiesDropped = syscall(SYS_capset, &m_state->header, reduced) == 0;
}

UnreadableFile::~UnreadableFile()
{
    if (m_state->capabilitiesDropped)
        syscall(SYS_capset, &m_state->header, m_state->saved);
}

bool UnreadableFile::ok() const
{
    return m_state->modeCleared && (m_state->capabilitiesDropped || geteuid() != 0);
}
