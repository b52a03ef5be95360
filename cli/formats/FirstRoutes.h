#ifndef VELK_CLI_FORMATS_FIRSTROUTES_H
#define VELK_CLI_FORMATS_FIRSTROUTES_H

#include <velk/routing/TracedPath.h>

#include <QList>

namespace VelkCli {

/// A component that routes cross, with the net that they reach by it.
struct Crossing
{
    Velk::TracedStep step;
    QSharedPointer<Velk::EDANet> next;
};

/// The first route to a DUT pin, in numbers.
struct FirstRoute
{
    QList<int> crossings;   ///< in FirstRoutes::crossings, from the source pin to the DUT pin
    QList<int> connections; ///< in FirstRoutes::connections, as they were met
    qsizetype routes = 0;   ///< how many there are, mostRoutesCounted where there may be more
};

/// The first route from one source pin to each DUT pin. Many of them cross the same components, so each crossing is
/// kept once.
struct FirstRoutes
{
    QList<FirstRoute> ofDuts;
    QList<Crossing> crossings;
    QList<Velk::TracedNode> connections; ///< side connections
};

/// Of the routes to each DUT pin.
FirstRoutes firstRoutesOf(const QList<QList<Velk::TracedPath>> &routesToDuts);
}

#endif
