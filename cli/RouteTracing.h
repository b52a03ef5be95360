#ifndef VELK_CLI_ROUTETRACING_H
#define VELK_CLI_ROUTETRACING_H

#include "cli/formats/RouteFormats.h"

#include <QHash>
#include <QSet>

#include <utility>

namespace VelkCli {

/// A component crossed from one net to another, which are places in EDAProvider::getNets().
struct Crossing
{
    qsizetype from;
    qsizetype to;
    QString ref;
    QString entryPin;
    QString exitPin;
};

struct TracedRoute
{
    QList<Crossing> crossings;      ///< from source to destination
    QList<qsizetype> connectedNets; ///< for each additional node the net on which the route meets it
};

/// Finds the nets and pins that the routes of a report pass, which the routes themselves do not tell.
class RouteTracing
{
public:
    explicit RouteTracing(const RouteReport &routes);

    const Velk::EDANet &net(qsizetype number) const { return *nets.at(number); }
    qsizetype netOf(const Velk::EDANetNode &node) const { return netOfPin.value({node.ref, node.pin}, -1); }
    bool isLast(qsizetype net) const { return lastNets.contains(net); } ///< where routes end

    /// One for each route of the report, in the same order. Routes of the same components and additional nodes differ
    /// in their pins; they are told apart by their order, which is that of the search.
    QList<TracedRoute> traced() const;

private:
    struct Branch;
    using Pin = std::pair<QString, QString>; ///< reference and number
    using PinOnNet = std::pair<qsizetype, QString>;

    void addExitPins(const Velk::EDAComponent &component);
    QList<TracedRoute> trace(const Velk::RoutingPath &path, qsizetype count) const;
    Branch branch(const Velk::EDAComponent &component, qsizetype net, const Pin &arrival) const;
    bool collect(const Velk::RoutingPath &path, const Crossing &crossing, TracedRoute &route) const;

    const RouteReport &report;
    const QList<QSharedPointer<Velk::EDANet>> nets;
    QHash<Pin, qsizetype> netOfPin;
    QHash<std::pair<QString, qsizetype>, QStringList> entryPins; ///< of crossed components on a net, in its order
    QHash<QString, QList<PinOnNet>> exitPins;                    ///< of crossed components, in the order of their parts
    QHash<qsizetype, QList<Pin>> interfacePins;                  ///< by net, in the order of its nodes
    QSet<qsizetype> lastNets;
};
}

#endif
