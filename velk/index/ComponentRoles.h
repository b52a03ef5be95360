#ifndef VELK_INDEX_COMPONENTROLES_H
#define VELK_INDEX_COMPONENTROLES_H

#include <QList>
#include <QString>

namespace Velk {

/// What a component is to a search.
struct ComponentRole
{
    bool isSwitchable;
    bool isInterface;
};

/// Which types of components a search crosses, and the pins of which types are additional nodes.
struct ComponentRoles
{
    QList<QString> switchableTypes;
    QList<QString> interfaceTypes;

    /// Those with which a Routing begins.
    static ComponentRoles usual()
    {
        using namespace Qt::StringLiterals;
        return {{u"Relay"_s, u"Resistor"_s}, {u"Source"_s, u"DUT"_s}};
    }
    ComponentRole of(const QString &componentType) const
    {
        return {switchableTypes.contains(componentType, Qt::CaseInsensitive),
                interfaceTypes.contains(componentType, Qt::CaseInsensitive)};
    }
    /// Whether the lists are the same; the same types in other letters or another order are not.
    bool operator==(const ComponentRoles &other) const
    {
        return switchableTypes == other.switchableTypes && interfaceTypes == other.interfaceTypes;
    }
};
}

#endif
