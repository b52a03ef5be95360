#ifndef VELK_CLI_FORMATS_HTML_ROUTETABLES_H
#define VELK_CLI_FORMATS_HTML_ROUTETABLES_H

#include "cli/formats/html/JsonTable.h"

#include <velk/model/EDAProvider.h>
#include <velk/naming/PinNames.h>
#include <velk/routing/Routing.h>
#include <velk/switching/SwitchingModel.h>

#include <QJsonObject>

#include <optional>
#include <tuple>

namespace VelkCli {

/// What the data of a page says of the elements that routes pass: tables, of which routes name the places.
class RouteTables
{
public:
    /// What is given here must outlive the tables. Without \a relays, of ways as drawn, nothing is said of positions.
    RouteTables(const QList<QString> &typesOfConnectors, const Velk::EDAProvider &system, const Velk::PinNames &names,
                const std::optional<Velk::SwitchingModel> &relays);

    qsizetype place(const QString &ref);
    qsizetype place(const Velk::EDANet &net);
    qsizetype place(const Velk::TracedStep &step, const Velk::EDANet &next); ///< \a next is the net that it leads to
    qsizetype place(const Velk::TracedNode &pinOfNet);

    /// Pins where routes begin and end, each with the first net on which it lies, if any.
    QJsonArray ends(const QList<QSharedPointer<Velk::EDANetNode>> &nodes);

    /// The tables as they are now.
    void addTo(QJsonObject &members) const;

private:
    QJsonObject crossing(const Velk::TracedStep &step, const Velk::EDANet &next);
    QJsonObject pinOnNet(const Velk::EDANetNode &node, const Velk::EDANet &net);
    QJsonObject pinOfComponent(const Velk::EDANetNode &node);
    QJsonObject pin(const QString &ref, const QString &number) const;
    QJsonArray joints(const Velk::EDANet &net);

    const Velk::EDAProvider &netlist;
    const Velk::PinNames &pinNames;
    const std::optional<Velk::SwitchingModel> &switching;
    const QList<QString> connectorTypes;
    JsonTable<QString> components;
    JsonTable<const Velk::EDANet *> nets;
    JsonTable<std::tuple<const Velk::EDANet *, const Velk::EDANet *, QString, QString, QString, int>> crossings;
    JsonTable<std::tuple<const Velk::EDANet *, QString, QString>> pins;
};

/// How far a search went, and what it kept out of: "limits" and "excluded".
void addLimits(const Velk::Routing &routing, QJsonObject &members);
}

#endif
