#include <velk/check/RelayChecks.h>

#include <velk/check/PinFindings.h>

#include <QHash>
#include <QMap>
#include <QSet>

#include <tuple>

using namespace Qt::StringLiterals;

namespace Velk {

namespace {

/// The same wrong text is told once for all relays that have it.
QList<SingleFinding> wrongPositions(const SwitchingModel &model)
{
    QMap<QString, QStringList> relaysByText;
    QList<SingleFinding> findings;
    for (const PositionsError &error : model.errors()) {
        if (error.place.isEmpty())
            findings.append({FindingCode::GangDiffers, error.components, error.description(), error.components});
        else
            relaysByText[error.description()] += error.components;
    }
    int group = 0;
    for (auto it = relaysByText.cbegin(); it != relaysByText.cend(); ++it)
        findings += findingsOfEach(FindingCode::PositionsWrong, it.value(), it.key(), ++group);
    return findings;
}

/// What else has the field, as the symbol of the coil, is no relay of the gang, but shows that the name is meant.
QList<SingleFinding> gangsOfOne(const CheckedSystem &system, const SwitchingModel &model)
{
    using Gang = std::tuple<QString, QString, int>;
    const auto gangOf = [&](int component) -> Gang {
        const auto &drawn = system.component(component);
        return {drawn.property(u"Gang"_s), drawn.property(u"Sheetname"_s), system.netlistOfComponent(component)};
    };
    QMap<Gang, int> counts;
    for (int i = 0; i < system.componentCount(); ++i)
        ++counts[gangOf(i)];
    QList<SingleFinding> findings;
    for (int i = 0; i < system.componentCount(); ++i) {
        const QString &ref = system.component(i).ref;
        const Gang gang = gangOf(i);
        const QString &name = std::get<0>(gang);
        const bool isRelay = model.gangOf(model.componentOf(ref)) != SwitchingModel::none;
        if (isRelay && !name.isEmpty() && counts.value(gang) == 1)
            findings.append(
                {FindingCode::GangOnce, {ref}, u"nothing else on its sheet has its Gang '%1'"_s.arg(name), {ref}});
    }
    return findings;
}

bool looksLikeCoil(const EDAPin &pin)
{
    return pin.number.contains(u"coil"_s, Qt::CaseInsensitive) || pin.name.contains(u"coil"_s, Qt::CaseInsensitive);
}

/// The numbers of those pins that are called so, or A1 and A2, as coils are by IEC.
QSet<QString> coilPins(const EDAPart &part)
{
    QSet<QString> coil;
    QHash<QString, QString> numbers;
    for (const auto &pin : part.pins) {
        if (looksLikeCoil(*pin))
            coil.insert(pin->number);
        numbers.insert(pin->name.toUpper(), pin->number);
    }
    for (const auto &pin : part.pins)
        numbers.insert(pin->number.toUpper(), pin->number);
    if (numbers.contains(u"A1"_s) && numbers.contains(u"A2"_s))
        coil << numbers.value(u"A1"_s) << numbers.value(u"A2"_s);
    return coil;
}

/// The pins at which something is drawn, each once, with the joined net of one of its nodes.
QMap<QString, int> wiredPins(const CheckedSystem &system, int component)
{
    QMap<QString, int> nets;
    for (const auto &node : system.nodesOf(component)) {
        if (!isOfUnwiredPin(system.net(node.net)))
            nets.insert(node.pin, system.joinedNet(node.net));
    }
    return nets;
}

QSet<QString> pinsOfContacts(const QList<ContactPosition> &positions)
{
    QSet<QString> pins;
    for (const ContactPosition &position : positions) {
        for (const Contact &contact : position.closed)
            pins << contact.pin << contact.otherPin;
    }
    return pins;
}

/// Relays of which nobody knows what they connect, and those that a rule gives contacts at what is called a coil.
class UnclearRelays
{
public:
    UnclearRelays(const CheckedSystem &checkedSystem, const SwitchingModel &switchingModel)
        : system(checkedSystem)
        , model(switchingModel)
    {
        const auto parts = system.netlists().getParts();
        for (const auto &part : parts)
            coils.insert(part->name, coilPins(*part));
    }

    QList<SingleFinding> findings() const
    {
        return pinFindings(system, FindingCode::CoilCrossed, u"routes may cross to a coil, as it seems, at "_s,
                           [&](int component) { return pinsOfCrossedCoil(component); }) +
               pinFindings(system, FindingCode::PositionsUnknown,
                           u"positions unknown, so routes may cross between any two of its "_s,
                           [&](int component) { return pinsOfUnknownContacts(component); }) +
               membersOfGangs();
    }

private:
    const RelayPositions &positionsOf(int component) const
    {
        return model.positions(model.componentOf(system.component(component).ref));
    }

    /// What is told of the text that makes them unknown is enough.
    static bool areUnknown(const RelayPositions &positions)
    {
        return positions.rule == PositionsRule::Unknown && !positions.error;
    }

    QStringList pinsOfCrossedCoil(int component) const
    {
        const RelayPositions &positions = positionsOf(component);
        if (positions.rule == PositionsRule::Field || positions.rule == PositionsRule::Table)
            return {};
        QSet<QString> pins = coils.value(system.component(component).part);
        if (pins.isEmpty())
            return {};
        if (!areUnknown(positions))
            pins.intersect(pinsOfContacts(positions.positions));
        QStringList wired = wiredPins(system, component).keys();
        wired.removeIf([&](const QString &pin) { return !pins.contains(pin); });
        return wired;
    }

    /// None where it cannot connect anything, and where its gang is told instead.
    QStringList pinsOfUnknownContacts(int component) const
    {
        if (!areUnknown(positionsOf(component)) || hasOthersInGang(component) ||
            !pinsOfCrossedCoil(component).isEmpty())
            return {};
        const auto nets = wiredPins(system, component);
        const QSet<int> distinct(nets.cbegin(), nets.cend());
        return distinct.size() > 1 ? QStringList(nets.keys()) : QStringList();
    }

    bool hasOthersInGang(int component) const
    {
        const int gang = model.gangOf(model.componentOf(system.component(component).ref));
        return model.gang(gang).components.size() > 1;
    }

    /// Whatever their pins lie on: the others of the gang cannot be set because of them.
    QList<SingleFinding> membersOfGangs() const
    {
        QList<SingleFinding> findings;
        for (int i = 0; i < system.componentCount(); ++i) {
            const auto &component = system.component(i);
            if (areUnknown(positionsOf(i)) && hasOthersInGang(i))
                findings.append(
                    {FindingCode::PositionsUnknown,
                     {component.ref},
                     u"positions unknown, and so are those of its gang '%1'"_s.arg(component.property(u"Gang"_s)),
                     {component.ref}});
        }
        return findings;
    }

    const CheckedSystem &system;
    const SwitchingModel &model;
    QHash<QString, QSet<QString>> coils; ///< by part
};
}

QList<SingleFinding> relayFindings(const CheckedSystem &system, const SwitchingModel &model)
{
    return wrongPositions(model) + gangsOfOne(system, model) + UnclearRelays(system, model).findings();
}
}
