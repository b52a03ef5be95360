#ifndef VELK_ROUTING_PATHRECORDS_H
#define VELK_ROUTING_PATHRECORDS_H

#include <velk/index/NetlistIndex.h>
#include <velk/routing/RoutingPath.h>
#include <velk/routing/TracedPath.h>
#include <velk/search/FoundPaths.h>
#include <velk/search/Interruption.h>

namespace Velk {

/// The paths with the elements that their numbers stand for, in the same order. Throws EDASearchCalledOffException.
template <typename Path>
QList<Path> pathsOf(const FoundPaths &found, const NetlistIndex &index, Interruption &interruption);

template <>
QList<RoutingPath> pathsOf(const FoundPaths &found, const NetlistIndex &index, Interruption &interruption);
/// Of paths whose crossings are kept.
template <>
QList<TracedPath> pathsOf(const FoundPaths &found, const NetlistIndex &index, Interruption &interruption);
}

#endif
