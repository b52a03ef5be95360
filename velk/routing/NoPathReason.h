#ifndef VELK_ROUTING_NOPATHREASON_H
#define VELK_ROUTING_NOPATHREASON_H

#include <velk/model/EDAComponent.h>
#include <velk/model/EDANet.h>
#include <velk/model/EDANetNode.h>
#include <velk/routing/PositionConflict.h>
#include <velk/routing/TracedPath.h>

#include <QList>
#include <QSharedPointer>

#include <optional>

namespace Velk {

/// Limits with which there is a path.
struct SufficientLimits
{
    int maxSwitchingComponents;    ///< for Routing::setMaxSwitchingComponentsPerPath()
    int maxAdditionalNodes;        ///< for Routing::setMaxAdditionalNodesPerPath()
    qsizetype switchingComponents; ///< how many the first path has
    qsizetype additionalNodes;     ///< how many it has of these
};

/// How far one gets from a pin over switchable components. All elements are the provider's.
struct PathReach
{
    QList<QSharedPointer<EDANet>> nets; ///< the nearest first; none where the pin lies on none that may be entered
    /// Of the connectors on these nets those without the same pin of another component with their Identifier there.
    QList<QSharedPointer<EDANetNode>> unpluggedPins;
    bool isAlone = false;    ///< nothing else lies on the net of the pin
    bool isExcluded = false; ///< the net of the pin is excluded
};

/// Why there is no path between two pins, as far as it is known: a plain value.
struct NoPathReason
{
    bool isComplete = false; ///< false where the search was called off before all was known
    /// Whether there is a chain of switchable components, however long; empty where that is not known.
    std::optional<bool> isConnected;

    qsizetype shortest = -1; ///< the components of the shortest chain; -1 without one
    /// Where there is a chain: more switching components, if that alone is enough; more additional nodes, if that alone
    /// is enough; else both, with as few switching components as a path can have. Each is the least of its kind. Empty
    /// until all of them are known. With Routing::setRelayContacts() they are those with which a state of the relays
    /// makes a path; then the least ones, and all of them, as far as the search did not give up.
    QList<SufficientLimits> sufficientLimits;

    // Where something is excluded; all else here is about the search that keeps out of it:
    /// The first path that there would be within the limits if nothing were excluded. Empty where there is none, so
    /// that the exclusions do not stand in the way.
    std::optional<TracedPath> pathWithoutExclusions;
    QList<QSharedPointer<EDAComponent>> excludedComponents; ///< those that it crosses; each once
    QList<QSharedPointer<EDANet>> excludedNets;             ///< those that it enters; each once

    /// There is a chain, but none over all of Routing::setRequiredComponents(), to which all else here refers: so
    /// isConnected is false then, and nothing is told of how far one gets.
    bool isConnectedOverOthers = false;

    // With Routing::setRelayContacts(), where there is a chain, as the others above tell it of ways as drawn:
    /// Whether some state of the relays makes a chain, however long. Empty also where the search for one has given up,
    /// which it does after about a second, since it may take longer than anybody waits.
    std::optional<bool> isRealizable;
    /// What stands against the first way as drawn within the limits, or, where there is none, with the limits that
    /// would be sufficient as drawn. Empty if that way is realizable.
    std::optional<PositionConflict> conflict;

    // Where there is none:
    PathReach fromSource;      ///< by the rules of the search
    PathReach fromDestination; ///< the same backwards
    /// Those components of other types, neither connectors nor interfaces, that lie on a way from end to end which
    /// crosses as few of them as possible. The nearest to the source come first.
    QList<QSharedPointer<EDAComponent>> between;
    /// There is a chain from the destination to the source. The way from one side of a relay to what lies behind the
    /// other is found in one direction only.
    bool isConnectedInOtherDirection = false;
};
}

#endif
