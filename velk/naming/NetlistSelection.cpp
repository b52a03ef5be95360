#include <velk/naming/NetlistSelection.h>

#include <velk/naming/PropertyHints.h>
#include <velk/naming/References.h>

#include <QSet>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace Velk {

namespace {

using Properties = QMap<QString, QString>;

/// The component with what it has besides as properties too, unless it has others of these names; as drawn, without the
/// number of the netlist, where that is wanted.
QSharedPointer<EDAComponent> withAllAsProperties(const EDAComponent &component, const Properties &wanted)
{
    auto result = component.clone();
    const auto add = [&](const QString &key, const QString &value) {
        if (!result->properties.contains(key))
            result->properties.insert(key, value);
    };
    const auto asWanted = [&](const QString &key, const QString &value) {
        return drawnName(value) == wanted.value(key) ? drawnName(value) : value;
    };
    add(u"ref"_s, asWanted(u"ref"_s, component.ref));
    add(u"value"_s, component.value);
    add(u"part"_s, asWanted(u"part"_s, component.part));
    return result;
}
}

NetlistSelection::NetlistSelection(const EDAProvider &netlist, const Properties &properties)
    : provider(netlist)
    , wanted(properties)
{
}

NetlistSelection::~NetlistSelection() = default;
NetlistSelection::NetlistSelection(const NetlistSelection &other) = default;
NetlistSelection::NetlistSelection(NetlistSelection &&other) noexcept = default;

QList<QSharedPointer<EDAComponent>> NetlistSelection::components() const
{
    auto components = provider.getComponents();
    components.removeIf([&](const auto &component) {
        return !component || (!wanted.isEmpty() && !withAllAsProperties(*component, wanted)->matchesProperties(wanted));
    });
    return components;
}

QList<QSharedPointer<EDAPart>> NetlistSelection::parts() const
{
    auto parts = provider.getParts();
    if (wanted.isEmpty())
        return parts;
    QSet<QString> names;
    for (const auto &component : components())
        names.insert(component->part);
    parts.removeIf([&](const auto &part) { return !part || !names.contains(part->name); });
    return parts;
}

QList<QSharedPointer<EDANet>> NetlistSelection::nets() const
{
    auto nets = provider.getNets();
    if (wanted.isEmpty())
        return nets;
    const QStringList refs = refsOf(components());
    const QSet<QString> selected(refs.cbegin(), refs.cend());
    nets.removeIf([&](const auto &net) {
        return !net || std::none_of(net->nodes.cbegin(), net->nodes.cend(),
                                    [&](const auto &node) { return node && selected.contains(node->ref); });
    });
    return nets;
}

QString NetlistSelection::whyEmpty() const
{
    if (!components().isEmpty())
        return {};
    QList<QSharedPointer<EDAComponent>> all;
    for (const auto &component : provider.getComponents()) {
        if (component)
            all.append(withAllAsProperties(*component, wanted));
    }
    return whyNoneMatches(all, wanted);
}
}
