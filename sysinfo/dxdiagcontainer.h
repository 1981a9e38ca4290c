#pragma once

// The diagnostics tree as the dump walker sees it: containers with typed, named
// properties and named child containers, both enumerated by index. On Windows it
// is backed by the DirectX diagnostics provider (dxdiagreader_win.cpp); on Linux
// by an in-memory tree that describes the machine (linuxmachine.cpp).
//
// Plain C++17 without Qt, so that the walker builds with any compiler, including
// the mingw-w64 cross compiler. Names and string values are UTF-8.

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

// One property value, typed the way the Windows provider types its VARIANTs.
struct DxDiagValue
{
    enum class Kind { UInt32, Int32, Bool, String, Other };

    Kind kind = Kind::Other;
    std::uint32_t u32 = 0;
    std::int32_t i32 = 0;
    bool boolean = false;
    std::string text;
    int typeNumber = 0; // the VARIANT type number; the only field read for Other

    static DxDiagValue fromUInt32(std::uint32_t v);
    static DxDiagValue fromInt32(std::int32_t v);
    static DxDiagValue fromBool(bool v);
    static DxDiagValue fromString(std::string v);
    static DxDiagValue other(int variantType);
};

// VARIANT type numbers for the kinds above, and two that the walker does not print.
enum DxDiagVariantType { VtI4 = 3, VtR8 = 5, VtBstr = 8, VtBool = 11, VtUI4 = 19, VtUI8 = 21 };

class DxDiagContainer
{
public:
    virtual ~DxDiagContainer();

    // Each call returns false where the provider's call fails.
    virtual bool propertyCount(std::uint32_t &count) = 0;
    virtual bool propertyName(std::uint32_t index, std::string &name) = 0;
    virtual bool property(const std::string &name, DxDiagValue &value) = 0;

    virtual bool childCount(std::uint32_t &count) = 0;
    virtual bool childName(std::uint32_t index, std::string &name) = 0;
    // Null where the child cannot be obtained.
    virtual std::unique_ptr<DxDiagContainer> child(const std::string &name) = 0;
};

// A tree held in memory. Children are handed out as views that the tree keeps
// owning, so a tree can be walked any number of times.
class MemoryContainer : public DxDiagContainer
{
public:
    MemoryContainer() = default;
    MemoryContainer(const MemoryContainer &) = delete;
    MemoryContainer &operator=(const MemoryContainer &) = delete;

    MemoryContainer &add(std::string name, DxDiagValue value);
    MemoryContainer &addString(std::string name, std::string value);
    MemoryContainer &addUInt32(std::string name, std::uint32_t value);
    MemoryContainer &addInt32(std::string name, std::int32_t value);
    MemoryContainer &addBool(std::string name, bool value);
    // Adds a child and returns it for filling.
    MemoryContainer &addChild(std::string name);

    // Adds a child that a subclass made (for instance one that fails on purpose).
    DxDiagContainer &adoptChild(std::string name, std::unique_ptr<DxDiagContainer> child);

    std::size_t size() const { return m_properties.size(); }
    std::size_t children() const { return m_children.size(); }
    // Null when absent.
    const DxDiagValue *find(const std::string &name) const;
    MemoryContainer *findChild(const std::string &name) const;

    bool propertyCount(std::uint32_t &count) override;
    bool propertyName(std::uint32_t index, std::string &name) override;
    bool property(const std::string &name, DxDiagValue &value) override;
    bool childCount(std::uint32_t &count) override;
    bool childName(std::uint32_t index, std::string &name) override;
    std::unique_ptr<DxDiagContainer> child(const std::string &name) override;

private:
    std::vector<std::pair<std::string, DxDiagValue>> m_properties;
    std::vector<std::pair<std::string, std::unique_ptr<DxDiagContainer>>> m_children;
};
