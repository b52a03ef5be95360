#ifndef VELK_ROUTING_STEPPOSITIONS_H
#define VELK_ROUTING_STEPPOSITIONS_H

#include <velk/model/EDAProvider.h>
#include <velk/model/RelayContacts.h>
#include <velk/routing/PositionConflict.h>

#include <QHash>
#include <QList>
#include <QSharedPointer>
#include <QString>

#include <optional>
#include <utility>

namespace Velk {

/// The positions that relays have to take for the steps of a path, by references and pin numbers.
class StepPositions
{
public:
    /// The netlist has to stay. No contacts where all relays are crossed as drawn.
    StepPositions(const EDAProvider &netlist, const QSharedPointer<const RelayContactMap> &relayContacts);

    /// Whether the component is one whose contacts are given.
    bool isKnown(const EDAComponent &component) const { return relays && relays->contains(component.ref); }
    /// Whether a state of the relays makes all the steps.
    bool arePossible(const QList<TracedStep> &steps) { return !firstImpossible(steps); }
    /// Gives each of such steps its position.
    void tell(QList<TracedStep> &steps);
    /// Empty if a state makes the path, which is one as drawn.
    std::optional<PositionConflict> conflictOn(const TracedPath &path);

private:
    using Positions = QList<int>;
    using PinPair = std::pair<QString, QString>; ///< the first is less than the second
    using ContactPositions = QHash<PinPair, Positions>;

    std::optional<qsizetype> firstImpossible(const QList<TracedStep> &steps);
    int gangOf(const TracedStep &step) const { return relays->find(step.component->ref)->gang; }
    Positions closedAt(const TracedStep &step);
    ContactPositions contactPositions(const EDAComponent &component) const;
    static PinPair pinPair(const QString &pin, const QString &otherPin);

    const EDAProvider &provider;
    const QSharedPointer<const RelayContactMap> relays;
    QHash<QString, ContactPositions> contactsOfRelays; ///< of those that were asked for
    QHash<int, Positions> positionsLeft;               ///< of the gangs of the steps that were looked at last
};
}

#endif
