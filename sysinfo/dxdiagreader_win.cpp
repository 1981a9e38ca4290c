// The diagnostics reader on Windows: the DirectX diagnostics provider through COM.

#include "sysinfo/dxdiagreader.h"

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

// This file alone defines the provider's GUIDs.
#include <initguid.h>
#include <dxdiag.h>
#include <oleauto.h>

#include <string>

namespace {

std::string toUtf8(const wchar_t *text)
{
    if (!text || !*text)
        return std::string();
    const int size = WideCharToMultiByte(CP_UTF8, 0, text, -1, nullptr, 0, nullptr, nullptr);
    if (size <= 1)
        return std::string();
    std::string utf8(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text, -1, &utf8[0], size, nullptr, nullptr);
    utf8.resize(static_cast<std::size_t>(size - 1));
    return utf8;
}

std::wstring toWide(const std::string &text)
{
    if (text.empty())
        return std::wstring();
    const int size = MultiByteToWideChar(CP_UTF8, 0, text.c_str(), -1, nullptr, 0);
    if (size <= 1)
        return std::wstring();
    std::wstring wide(static_cast<std::size_t>(size), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, text.c_str(), -1, &wide[0], size);
    wide.resize(static_cast<std::size_t>(size - 1));
    return wide;
}

// Name buffers hold 256 wide characters, as the provider's own tools use.
const DWORD kNameLength = 256;

// One IDxDiagContainer seen through the walker's interface. Children it hands out
// own their interface and release it once walked; the section's parent, the
// reader's root, is only borrowed.
class ComContainer : public DxDiagContainer
{
public:
    ComContainer(IDxDiagContainer *container, bool owned)
        : m_container(container)
        , m_owned(owned)
    {
    }

    ~ComContainer() override
    {
        if (m_owned && m_container)
            m_container->Release();
    }

    bool propertyCount(std::uint32_t &count) override
    {
        DWORD n = 0;
        if (FAILED(m_container->GetNumberOfProps(&n)))
            return false;
        count = n;
        return true;
    }

    bool propertyName(std::uint32_t index, std::string &name) override
    {
        WCHAR buffer[kNameLength];
        if (FAILED(m_container->EnumPropNames(index, buffer, kNameLength)))
            return false;
        name = toUtf8(buffer);
        return true;
    }

    bool property(const std::string &name, DxDiagValue &value) override
    {
        VARIANT var;
        VariantInit(&var);
        // A failed read leaves the variant as it is; it is not cleared then.
        if (FAILED(m_container->GetProp(toWide(name).c_str(), &var)))
            return false;
        switch (var.vt) {
        case VT_UI4:
            value = DxDiagValue::fromUInt32(var.ulVal);
            break;
        case VT_I4:
            value = DxDiagValue::fromInt32(var.lVal);
            break;
        case VT_BOOL:
            value = DxDiagValue::fromBool(var.boolVal != 0);
            break;
        case VT_BSTR:
            value = DxDiagValue::fromString(toUtf8(var.bstrVal));
            break;
        default:
            value = DxDiagValue::other(var.vt);
            break;
        }
        VariantClear(&var);
        return true;
    }

    bool childCount(std::uint32_t &count) override
    {
        DWORD n = 0;
        if (FAILED(m_container->GetNumberOfChildContainers(&n)))
            return false;
        count = n;
        return true;
    }

    bool childName(std::uint32_t index, std::string &name) override
    {
        WCHAR buffer[kNameLength];
        if (FAILED(m_container->EnumChildContainerNames(index, buffer, kNameLength)))
            return false;
        name = toUtf8(buffer);
        return true;
    }

    std::unique_ptr<DxDiagContainer> child(const std::string &name) override
    {
        IDxDiagContainer *child = nullptr;
        if (FAILED(m_container->GetChildContainer(toWide(name).c_str(), &child)) || !child)
            return nullptr;
        return std::make_unique<ComContainer>(child, true);
    }

private:
    IDxDiagContainer *m_container;
    bool m_owned;
};

} // namespace

DxDiagReader::DxDiagReader()
{
    provider = nullptr;
    root = nullptr;
    // S_FALSE (COM already initialised on this thread) counts as success: it must
    // be balanced by CoUninitialize as well.
    comInitialized = SUCCEEDED(CoInitialize(nullptr));

    const char *error = nullptr;
    if (FAILED(CoCreateInstance(CLSID_DxDiagProvider, nullptr, CLSCTX_INPROC_SERVER, IID_IDxDiagProvider,
                                reinterpret_cast<void **>(&provider)))) {
        provider = nullptr;
        error = "Unable to create provider instance";
    } else {
        DXDIAG_INIT_PARAMS params = {};
        params.dwSize = sizeof(DXDIAG_INIT_PARAMS);
        params.dwDxDiagHeaderVersion = DXDIAG_DX9_SDK_VERSION;
        params.bAllowWHQLChecks = FALSE;
        params.pReserved = nullptr;
        if (FAILED(provider->Initialize(&params)))
            error = "Unable to initialize provider";
        else if (FAILED(provider->GetRootContainer(&root))) {
            root = nullptr;
            error = "Unable to get root container";
        }
    }
    if (error)
        writeDxDiagError(error);
}

DxDiagReader::~DxDiagReader()
{
    if (root) {
        root->Release();
        root = nullptr;
    }
    if (provider) {
        provider->Release();
        provider = nullptr;
    }
    if (comInitialized)
        CoUninitialize();
}

void DxDiagReader::dumpSection(const char *name, std::FILE *file)
{
    if (!root)
        return;
    ComContainer parent(root, false);
    ::dumpSection(parent, name, file);
}
