#ifndef VELK_ROUTING_PATHRECORDS_H
#define VELK_ROUTING_PATHRECORDS_H

#include <velk/index/NetlistIndex.h>
#include <velk/routing/RoutingPath.h>
#include <velk/routing/TracedPath.h>
#include <velk/search/FoundPaths.h>

namespace Velk {

/// The paths with the elements that their numbers stand for, in the same order.
template <typename Path>
QList<Path> pathsOf(const FoundPaths &found, const NetlistIndex &index);

template <>
QList<RoutingPath> pathsOf(const FoundPaths &found, const NetlistIndex &index);
/// Of paths whose crossings are kept.
template <>
QList<TracedPath> pathsOf(const FoundPaths &found, const NetlistIndex &index);
}

#endif
