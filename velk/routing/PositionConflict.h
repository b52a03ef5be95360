#ifndef VELK_ROUTING_POSITIONCONFLICT_H
#define VELK_ROUTING_POSITIONCONFLICT_H

#include <velk/routing/TracedPath.h>

#include <QList>

namespace Velk {

/// Why no state of the relays makes a path as drawn: a plain value.
struct PositionConflict
{
    TracedPath path; ///< all of it, without positions
    /// Those of its steps that stand against it. One, without a position, if no position of its relay connects the two
    /// pins. Otherwise two or more over relays of one gang, maybe twice over the same relay, that no position makes
    /// all; each with the lowest position that makes it alone. In the order of the path.
    QList<TracedStep> steps;
};
}

#endif
