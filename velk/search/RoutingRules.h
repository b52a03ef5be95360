#ifndef VELK_SEARCH_ROUTINGRULES_H
#define VELK_SEARCH_ROUTINGRULES_H

#include <velk/index/ComponentRoles.h>
#include <velk/model/RelayContacts.h>
#include <velk/search/NamedExclusions.h>

#include <QSharedPointer>
#include <QtGlobal>

namespace Velk {

/// What a search may do, as it was told, whatever it goes over.
struct RoutingRules
{
    ComponentRoles roles;
    int maxSwitchingComponents;
    int maxAdditionalNodes;
    qsizetype maxPaths;                                       ///< 0 or less is no bound
    QSharedPointer<const RelayContactMap> relayContacts = {}; ///< null: relays are crossed as drawn
    QSharedPointer<const NamedExclusions> exclusions = {};    ///< null: nothing is excluded
    QList<QString> requiredComponents = {};                   ///< that each path crosses

    /// How many nets of a branch are searched further: one more than the limit of switches. The limit is documented to
    /// wrap, so the largest one leads to a negative number; unsigned, since overflow of signed numbers is undefined.
    int maxNetsSearched() const { return static_cast<int>(static_cast<unsigned int>(maxSwitchingComponents) + 1U); }
};

/// The two ends of a query, and what its branches may do at a pin on a net where they have arrived by another one.
/// \a Pin is whatever tells pins apart: a node or a number.
template <typename Pin>
struct PathEnds
{
    Pin source;
    Pin destination;

    /// Whether a branch may cross the switchable component from this pin of it.
    static bool canCross(const Pin &pin, const Pin &arrival) { return pin != arrival; }
    /// Whether a branch collects the pin of an interface.
    bool isAdditional(const Pin &pin, const Pin &arrival) const
    {
        return pin != arrival && pin != source && pin != destination;
    }
};
}

#endif
