#ifndef VELKPLANNING_CONNECTIONWAYS_H
#define VELKPLANNING_CONNECTIONWAYS_H

#include <velkplanning/ConnectionPlan.h>
#include <velkplanning/ConnectionRequest.h>
#include <velkplanning/VelkPlanningExport.h>

#include <velk/switching/SwitchingModel.h>

#include <QList>
#include <QString>

#include <vector>

namespace Velk {

/// A component that a connection crosses.
struct WayStep
{
    int net;        ///< from which it is entered
    int component;  ///< a relay or a passive one
    QString pinIn;  ///< by which it is entered
    QString pinOut; ///< by which it is left
};

/// The way that a connection takes in a plan.
struct ConnectionWay
{
    std::vector<WayStep> steps; ///< none where both pins lie on one net
    int lastNet;                ///< of the pin at the end
};

/// The way of each connection of the request, as short as there is in the extent of its group: over contacts that are
/// closed in the plan and passives that the group goes through. Empty where the plan is none.
VELKPLANNING_EXPORT QList<ConnectionWay> waysOf(const SwitchingModel &model, const ConnectionRequest &request,
                                                const ConnectionPlan &plan);
}

#endif
