#ifndef VELK_SEARCH_ROUTINGRULES_H
#define VELK_SEARCH_ROUTINGRULES_H

#include <QList>
#include <QString>

namespace Velk {

/// What a component is to a search.
struct ComponentRole
{
    bool isSwitchable;
    bool isInterface;
};

/// What a search may do, as it was told, whatever it goes over.
struct RoutingRules
{
    QList<QString> switchableTypes;
    QList<QString> interfaceTypes;
    int maxSwitchingComponents;
    int maxAdditionalNodes;
    qsizetype maxPaths; ///< 0 or less is no bound

    ComponentRole roleOf(const QString &componentType) const
    {
        return {switchableTypes.contains(componentType, Qt::CaseInsensitive),
                interfaceTypes.contains(componentType, Qt::CaseInsensitive)};
    }
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

    /// Whether a branch may cross the component from this pin of it.
    static bool canCross(const ComponentRole &role, const Pin &pin, const Pin &arrival)
    {
        return role.isSwitchable && pin != arrival;
    }
    /// Whether a branch collects the pin.
    bool isAdditional(const ComponentRole &role, const Pin &pin, const Pin &arrival) const
    {
        return role.isInterface && pin != arrival && pin != source && pin != destination;
    }
};
}

#endif
