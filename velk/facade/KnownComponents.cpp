#include <velk/facade/KnownComponents.h>

#include <velk/facade/StandardTypes.h>

#include <QHashFunctions>

namespace Velk {

namespace {

/// Bounds the memory of those that are kept; who asks for so many hardly asks for one again.
constexpr std::size_t maxKnownComponents = 20000;
}

KnownComponents::KnownComponents(const EDAProvider &netlist)
    : provider(netlist)
{
}

QSharedPointer<EDAComponent> KnownComponents::firstWith(const Properties &properties)
{
    const auto found = known.find(properties);
    if (found != known.end())
        return found->second;
    auto component = provider.getComponentByProperties(toQt(properties));
    if (!component)
        return component;
    if (known.size() == maxKnownComponents)
        known.clear();
    known.emplace(properties, component);
    return component;
}

std::size_t KnownComponents::Hash::operator()(const Properties &properties) const
{
    const std::hash<std::string> hashOf;
    std::size_t hash = properties.size();
    for (const auto &[key, value] : properties)
        hash = qHashMulti(hash, hashOf(key), hashOf(value));
    return hash;
}
}
