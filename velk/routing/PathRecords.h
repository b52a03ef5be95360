#ifndef VELK_ROUTING_PATHRECORDS_H
#define VELK_ROUTING_PATHRECORDS_H

#include <velk/index/NetlistIndex.h>
#include <velk/routing/RoutingPath.h>
#include <velk/search/FoundPaths.h>

namespace Velk {

/// The paths with the elements that their numbers stand for, in the same order.
QList<RoutingPath> routingPathsOf(const FoundPaths &found, const NetlistIndex &index);
}

#endif
