#include <velk/routing/StepPositions.h>

#include <QSet>

#include <algorithm>
#include <iterator>

namespace Velk {

StepPositions::StepPositions(const EDAProvider &netlist, const QSharedPointer<const RelayContactMap> &relayContacts)
    : provider(netlist)
    , relays(relayContacts)
{
}

void StepPositions::tell(QList<TracedStep> &steps)
{
    firstImpossible(steps);
    for (TracedStep &step : steps) {
        if (isKnown(*step.component))
            step.position = positionsLeft.value(gangOf(step)).first();
    }
}

std::optional<PositionConflict> StepPositions::conflictOn(const TracedPath &path)
{
    const auto impossible = firstImpossible(path.steps);
    if (!impossible)
        return {};
    PositionConflict conflict{path, {}};
    const TracedStep &last = path.steps.at(*impossible);
    const Positions closed = closedAt(last);
    if (closed.isEmpty()) {
        conflict.steps.append(last);
        return conflict;
    }
    for (qsizetype i = 0; i <= *impossible; ++i) {
        TracedStep step = path.steps.at(i);
        if (!isKnown(*step.component) || gangOf(step) != gangOf(last))
            continue;
        step.position = closedAt(step).first();
        conflict.steps.append(step);
    }
    const auto excludesLast = [&](const TracedStep &step) {
        const Positions others = closedAt(step);
        return std::none_of(others.cbegin(), others.cend(), [&](int other) { return closed.contains(other); });
    };
    const auto enough = std::find_if(conflict.steps.cbegin(), conflict.steps.cend(), excludesLast);
    if (enough != conflict.steps.cend())
        conflict.steps = {*enough, conflict.steps.last()};
    return conflict;
}

/// The number of the first step that no position makes together with those before it. Fills positionsLeft with what
/// those leave that come before.
std::optional<qsizetype> StepPositions::firstImpossible(const QList<TracedStep> &steps)
{
    positionsLeft.clear();
    for (qsizetype i = 0; i < steps.size(); ++i) {
        const TracedStep &step = steps.at(i);
        if (!isKnown(*step.component))
            continue;
        const Positions closed = closedAt(step);
        const auto left = positionsLeft.find(gangOf(step));
        Positions common;
        if (left == positionsLeft.end())
            common = closed;
        else
            std::set_intersection(left->cbegin(), left->cend(), closed.cbegin(), closed.cend(),
                                  std::back_inserter(common));
        if (common.isEmpty())
            return i;
        positionsLeft.insert(gangOf(step), common);
    }
    return {};
}

StepPositions::Positions StepPositions::closedAt(const TracedStep &step)
{
    const QString &ref = step.component->ref;
    auto contacts = contactsOfRelays.find(ref);
    if (contacts == contactsOfRelays.end())
        contacts = contactsOfRelays.insert(ref, contactPositions(*step.component));
    return contacts->value(pinPair(step.entryPin, step.exitPin));
}

// Without those with a pin that the part lacks.
StepPositions::ContactPositions StepPositions::contactPositions(const EDAComponent &component) const
{
    const auto part = provider.getPartByName(component.part);
    QSet<QString> pins;
    for (qsizetype i = 0; part && i < part->pins.size(); ++i) {
        if (part->pins.at(i))
            pins.insert(part->pins.at(i)->number);
    }
    const auto &positions = relays->find(component.ref)->positions;
    ContactPositions result;
    for (int position = 0; position < positions.size(); ++position) {
        for (const Contact &contact : positions.at(position).closed) {
            Positions &closed = result[pinPair(contact.pin, contact.otherPin)];
            if (pins.contains(contact.pin) && pins.contains(contact.otherPin))
                closed.append(position);
        }
    }
    return result;
}

StepPositions::PinPair StepPositions::pinPair(const QString &pin, const QString &otherPin)
{
    return std::minmax(pin, otherPin);
}
}
