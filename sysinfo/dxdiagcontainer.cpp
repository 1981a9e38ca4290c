#include "sysinfo/dxdiagcontainer.h"

DxDiagValue DxDiagValue::fromUInt32(std::uint32_t v)
{
    DxDiagValue value;
    value.kind = Kind::UInt32;
    value.typeNumber = VtUI4;
    value.u32 = v;
    return value;
}

DxDiagValue DxDiagValue::fromInt32(std::int32_t v)
{
    DxDiagValue value;
    value.kind = Kind::Int32;
    value.typeNumber = VtI4;
    value.i32 = v;
    return value;
}

DxDiagValue DxDiagValue::fromBool(bool v)
{
    DxDiagValue value;
    value.kind = Kind::Bool;
    value.typeNumber = VtBool;
    value.boolean = v;
    return value;
}

DxDiagValue DxDiagValue::fromString(std::string v)
{
    DxDiagValue value;
    value.kind = Kind::String;
    value.typeNumber = VtBstr;
    value.text = std::move(v);
    return value;
}

DxDiagValue DxDiagValue::other(int variantType)
{
    DxDiagValue value;
    value.kind = Kind::Other;
    value.typeNumber = variantType;
    return value;
}

DxDiagContainer::~DxDiagContainer() = default;

namespace {

// A child handed out by MemoryContainer::child(): forwards to the tree's own node.
class ContainerView : public DxDiagContainer
{
public:
    explicit ContainerView(DxDiagContainer &target)
        : m_target(target)
    {
    }

    bool propertyCount(std::uint32_t &count) override { return m_target.propertyCount(count); }
    bool propertyName(std::uint32_t index, std::string &name) override { return m_target.propertyName(index, name); }
    bool property(const std::string &name, DxDiagValue &value) override { return m_target.property(name, value); }
    bool childCount(std::uint32_t &count) override { return m_target.childCount(count); }
    bool childName(std::uint32_t index, std::string &name) override { return m_target.childName(index, name); }
    std::unique_ptr<DxDiagContainer> child(const std::string &name) override { return m_target.child(name); }

private:
    DxDiagContainer &m_target;
};

} // namespace

MemoryContainer &MemoryContainer::add(std::string name, DxDiagValue value)
{
    m_properties.emplace_back(std::move(name), std::move(value));
    return *this;
}

MemoryContainer &MemoryContainer::addString(std::string name, std::string value)
{
    return add(std::move(name), DxDiagValue::fromString(std::move(value)));
}

MemoryContainer &MemoryContainer::addUInt32(std::string name, std::uint32_t value)
{
    return add(std::move(name), DxDiagValue::fromUInt32(value));
}

MemoryContainer &MemoryContainer::addInt32(std::string name, std::int32_t value)
{
    return add(std::move(name), DxDiagValue::fromInt32(value));
}

MemoryContainer &MemoryContainer::addBool(std::string name, bool value)
{
    return add(std::move(name), DxDiagValue::fromBool(value));
}

MemoryContainer &MemoryContainer::addChild(std::string name)
{
    auto child = std::make_unique<MemoryContainer>();
    MemoryContainer &ref = *child;
    m_children.emplace_back(std::move(name), std::move(child));
    return ref;
}

DxDiagContainer &MemoryContainer::adoptChild(std::string name, std::unique_ptr<DxDiagContainer> child)
{
    DxDiagContainer &ref = *child;
    m_children.emplace_back(std::move(name), std::move(child));
    return ref;
}

const DxDiagValue *MemoryContainer::find(const std::string &name) const
{
    for (const auto &property : m_properties) {
        if (property.first == name)
            return &property.second;
    }
    return nullptr;
}

MemoryContainer *MemoryContainer::findChild(const std::string &name) const
{
    for (const auto &child : m_children) {
        if (child.first == name)
            return dynamic_cast<MemoryContainer *>(child.second.get());
    }
    return nullptr;
}

namespace {

// The provider's two lists, properties and children, are counted and named alike.
template <typename NamedList>
bool countOf(const NamedList &list, std::uint32_t &count)
{
    count = static_cast<std::uint32_t>(list.size());
    return true;
}

template <typename NamedList>
bool nameAt(const NamedList &list, std::uint32_t index, std::string &name)
{
    if (index >= list.size())
        return false;
    name = list[index].first;
    return true;
}

} // namespace

bool MemoryContainer::propertyCount(std::uint32_t &count)
{
    return countOf(m_properties, count);
}

bool MemoryContainer::propertyName(std::uint32_t index, std::string &name)
{
    return nameAt(m_properties, index, name);
}

bool MemoryContainer::property(const std::string &name, DxDiagValue &value)
{
    // Like the provider, a lookup by name finds the first property of that name.
    const DxDiagValue *found = find(name);
    if (!found)
        return false;
    value = *found;
    return true;
}

bool MemoryContainer::childCount(std::uint32_t &count)
{
    return countOf(m_children, count);
}

bool MemoryContainer::childName(std::uint32_t index, std::string &name)
{
    return nameAt(m_children, index, name);
}

std::unique_ptr<DxDiagContainer> MemoryContainer::child(const std::string &name)
{
    for (const auto &child : m_children) {
        if (child.first == name)
            return std::make_unique<ContainerView>(*child.second);
    }
    return nullptr;
}
