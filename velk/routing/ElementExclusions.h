#ifndef VELK_ROUTING_ELEMENTEXCLUSIONS_H
#define VELK_ROUTING_ELEMENTEXCLUSIONS_H

#include <velk/model/EDAProvider.h>
#include <velk/search/NamedExclusions.h>

#include <QSet>
#include <QSharedPointer>

namespace Velk {

/// What a search is to keep out of, for those that go over the elements of a provider.
class ElementExclusions
{
public:
    /// Null excludes nothing.
    ElementExclusions(const EDAProvider &netlist, const QSharedPointer<const NamedExclusions> &exclusions);

    bool hasComponent(const EDAComponent &component) const { return named && named->hasComponent(component.ref); }
    bool hasNet(const EDANet &net) const { return named && (named->hasNet(net.name) || joinedNets.contains(&net)); }

private:
    const QSharedPointer<const NamedExclusions> named;
    QSet<const EDANet *> joinedNets; ///< those that are excluded by a name that they were joined from, among others
};
}

#endif
