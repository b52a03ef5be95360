#ifndef VELK_FACADE_SYSTEMSWITCHING_H
#define VELK_FACADE_SYSTEMSWITCHING_H

#include <velk/facade/VelkSystem.h>
#include <velk/provider/MultipleEDAProvider.h>
#include <velk/switching/Connectivity.h>
#include <velk/switching/SwitchingModel.h>

#include <QSet>

#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace Velk {

/// What the relays of a system do. It is found out when somebody asks for the first time, since that takes as long as
/// much of the loading, and then changes no more. Threads may ask at once.
class SystemSwitching
{
public:
    /// Reads the tables of relays. Throws a VelkSystemException for one that cannot be read. \a systemNetlist has to
    /// stay.
    SystemSwitching(const MultipleEDAProvider &systemNetlist, const VelkSystemOptions &options);

    const SwitchingModel &model() const { return known().model; }
    /// The same with each call.
    const QSharedPointer<const RelayContactMap> &contacts() const { return known().contacts; }
    bool isUnknown(const QString &ref) const { return known().unknown.contains(ref); }

    /// Throws a VelkSystemException for positions that are wrong.
    void requirePositions() const;
    /// Of all gangs, with these relays set. Throws a VelkSystemException for those that cannot be.
    std::vector<int> positionsOfGangs(const std::map<std::string, int> &positions) const;
    /// The same as a state.
    Connectivity state(const std::map<std::string, int> &positions) const;

    const SwitchingTypes &types() const { return typesOfComponents; }
    const QList<RelayTable> &tables() const { return relayTables; }

private:
    struct Known
    {
        explicit Known(const SwitchingModel &switchingModel);

        SwitchingModel model;
        QSharedPointer<const RelayContactMap> contacts;
        QSet<QString> unknown;
    };

    const Known &known() const;
    int settableGang(const QString &ref, int position) const;

    const MultipleEDAProvider &netlist;
    SwitchingTypes typesOfComponents;
    QList<RelayTable> relayTables;
    mutable std::once_flag isKnown;
    mutable std::unique_ptr<const Known> knownOnce;
};
}

#endif
