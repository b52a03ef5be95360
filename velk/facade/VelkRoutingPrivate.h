#ifndef VELK_FACADE_VELKROUTINGPRIVATE_H
#define VELK_FACADE_VELKROUTINGPRIVATE_H

#include <velk/facade/KnownComponents.h>
#include <velk/facade/RouteRecords.h>
#include <velk/provider/MultipleEDAProvider.h>
#include <velk/routing/Routing.h>

#include <memory>
#include <vector>

namespace Velk {

/// What a VelkRouting owns, in the order in which each builds on the one before.
class VelkRoutingPrivate
{
public:
    VelkRoutingPrivate(const std::vector<std::string> &netlistFileNames,
                       const std::vector<std::string> &connectorComponentTypes, VelkReadingMode mode);

    QList<RoutingPath> findPaths(const KnownComponents::Properties &sourceProperties, const QString &sourcePin,
                                 const KnownComponents::Properties &destinationProperties,
                                 const QString &destinationPin) const;

    std::unique_ptr<MultipleEDAProvider> provider;
    std::unique_ptr<KnownComponents> components;
    std::unique_ptr<Routing> routing;
    std::unique_ptr<RouteRecords> records;
    std::vector<std::string> warnings;
};
}

#endif
