#pragma once

// A diagnostics session over a tree the test built, for the summary code that takes
// any session; a null root stands for a provider that gave none.
#include "sysinfo/dxdiagcontainer.h"
#include "sysinfo/dxdiagdump.h"

#include <cstdio>
#include <memory>

class ContainerSession : public DxDiagSession
{
public:
    explicit ContainerSession(std::unique_ptr<DxDiagContainer> root)
        : m_root(std::move(root))
    {
    }

    bool hasRoot() const override { return m_root != nullptr; }
    void dumpSection(const char *name, std::FILE *file) override
    {
        if (m_root)
            ::dumpSection(*m_root, name, file);
    }

private:
    std::unique_ptr<DxDiagContainer> m_root;
};
