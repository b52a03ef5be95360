#include <velk/switching/SwitchingModel.h>

#include <velk/model/References.h>
#include <velk/model/TextNumbers.h>
#include <velk/switching/MergedNets.h>

#include <QHash>
#include <QMap>
#include <QSharedData>

#include <algorithm>
#include <tuple>
#include <utility>

using namespace Qt::StringLiterals;

namespace Velk {

/// Filled by SwitchingModelBuilder.
class SwitchingModelPrivate : public QSharedData
{
public:
    struct Component
    {
        QString ref;
        SwitchingRole role;
        bool isSwitch; ///< passive or a relay, by its type
        RelayPositions positions;
        int gang;
    };

    std::vector<Component> components; ///< by reference
    MergedNets nets;
    std::vector<RelayGang> gangs;
    std::vector<std::vector<std::vector<NetContact>>> contacts; ///< of each gang in each position
    std::vector<PassiveComponent> passives;
    std::vector<InterfacePin> interfacePins;
    QList<PositionsError> errors;
};

namespace {

SwitchingRole roleOf(const EDAComponent &component, const SwitchingTypes &types)
{
    const QString type = component.type();
    if (types.passives.contains(type, Qt::CaseInsensitive))
        return SwitchingRole::Passive;
    if (types.switchables.contains(type, Qt::CaseInsensitive))
        return SwitchingRole::Relay;
    return types.interfaces.contains(type, Qt::CaseInsensitive) ? SwitchingRole::Interface : SwitchingRole::Other;
}

/// As KiCad marks what is not to be populated.
bool isPopulated(const EDAComponent &component)
{
    return !component.properties.contains(u"dnp"_s);
}

std::size_t toPlace(int number)
{
    return static_cast<std::size_t>(number);
}

class SwitchingModelBuilder
{
public:
    SwitchingModelBuilder(const EDAProvider &provider, const SwitchingTypes &componentTypes,
                          const QList<RelayTable> &relayTables, SwitchingModelPrivate &builtModel)
        : netlist(provider)
        , types(componentTypes)
        , tables(relayTables)
        , model(builtModel)
    {
    }

    void build()
    {
        sortComponents();
        placePins();
        for (int i = 0; i < componentCount(); ++i)
            addComponent(i);
        checkGangs();
        for (int i = 0; i < componentCount(); ++i)
            addContacts(i);
    }

private:
    using Component = SwitchingModelPrivate::Component;

    int componentCount() const { return static_cast<int>(components.size()); }

    void sortComponents()
    {
        components = netlist.getComponents();
        components.removeIf([](const auto &component) { return component.isNull(); });
        std::stable_sort(components.begin(), components.end(),
                         [](const auto &a, const auto &b) { return a->ref < b->ref; });
        const auto isSame = [](const auto &a, const auto &b) { return a->ref == b->ref; };
        components.erase(std::unique(components.begin(), components.end(), isSame), components.end());
        refs.reserve(components.size());
        for (const auto &component : std::as_const(components))
            refs.add(component->ref);
    }

    void placePins()
    {
        const auto nets = netlist.getNets();
        for (const auto &net : nets) {
            if (net)
                placePinsOf(*net);
        }
        for (int i = 0; i < componentCount(); ++i) {
            if (roleOf(*components.at(i), types) == SwitchingRole::Relay)
                placePinsOfRelay(i);
        }
        model.nets.merge();
    }

    // Components that only nets name count too: their pins may lie on several.
    void placePinsOf(const EDANet &net)
    {
        model.nets.addNet(net.name);
        for (const auto &node : std::as_const(net.nodes)) {
            if (node)
                model.nets.addPin(refs.add(node->ref), node->pin);
        }
    }

    void placePinsOfRelay(int relay)
    {
        const auto part = netlist.getPartByName(components.at(relay)->part);
        for (const auto &pin : part ? part->pins : QList<QSharedPointer<EDAPin>>()) {
            if (pin)
                model.nets.addPinAlone(relay, pin->number);
        }
    }

    void addComponent(int number)
    {
        const EDAComponent &component = *components.at(number);
        const SwitchingRole role = roleOf(component, types);
        const bool isSwitch = role == SwitchingRole::Passive || role == SwitchingRole::Relay;
        Component added{component.ref,
                        isPopulated(component) ? role : SwitchingRole::Other,
                        isSwitch,
                        {PositionsRule::NoContacts, {}},
                        SwitchingModel::none};
        if (added.role == SwitchingRole::Relay)
            added.positions = positionsOfRelay(component);
        if (added.positions.error)
            model.errors.append(*added.positions.error);
        if (added.positions.rule != PositionsRule::NoContacts)
            added.gang = gangFor(component);
        if (added.gang != SwitchingModel::none)
            model.gangs[toPlace(added.gang)].components.append(component.ref);
        if (added.role == SwitchingRole::Passive)
            addPassive(number);
        if (added.role == SwitchingRole::Interface)
            addInterfacePins(number);
        model.components.push_back(added);
    }

    /// Thousands of relays have the same part, and mostly the same field or none.
    RelayPositions positionsOfRelay(const EDAComponent &relay)
    {
        const std::pair key(relay.part, relay.property(u"Positions"_s));
        const auto known = knownPositions.constFind(key);
        if (known != knownPositions.cend() && !known->error)
            return *known;
        RelayPositions positions = positionsOf(relay, netlist.getPartByName(relay.part), tables);
        knownPositions.insert(key, positions);
        return positions;
    }

    int gangFor(const EDAComponent &relay)
    {
        const QString name = relay.property(u"Gang"_s);
        const QString sheet = u"Sheetname"_s;
        const GangKey key(netlistOf(relay.ref), name, relay.properties.contains(sheet), relay.property(sheet));
        const int known = name.isEmpty() ? SwitchingModel::none : gangNumbers.value(key, SwitchingModel::none);
        if (known != SwitchingModel::none)
            return known;
        const int gang = static_cast<int>(model.gangs.size());
        if (!name.isEmpty())
            gangNumbers.insert(key, gang);
        model.gangs.push_back({{}, 1, false});
        return gang;
    }

    void checkGangs()
    {
        std::vector<QList<qsizetype>> countsOfGangs(model.gangs.size()); // of members that are known, each once
        for (const Component &component : model.components) {
            if (component.gang == SwitchingModel::none)
                continue;
            auto &counts = countsOfGangs[toPlace(component.gang)];
            const qsizetype count = component.positions.positions.size();
            if (component.positions.rule == PositionsRule::Unknown)
                model.gangs[toPlace(component.gang)].isUnknown = true;
            else if (!counts.contains(count))
                counts.append(count);
        }
        for (std::size_t i = 0; i < model.gangs.size(); ++i)
            finishGang(model.gangs[i], countsOfGangs[i]);
    }

    void finishGang(RelayGang &gang, QList<qsizetype> counts)
    {
        if (counts.size() > 1) {
            std::sort(counts.begin(), counts.end());
            model.errors.append(differingGang(gang, counts));
            gang.isUnknown = true;
        }
        if (!gang.isUnknown)
            gang.positionCount = static_cast<int>(counts.first());
        model.contacts.emplace_back(toPlace(gang.positionCount));
    }

    PositionsError differingGang(const RelayGang &gang, const QList<qsizetype> &counts) const
    {
        QStringList texts;
        for (const qsizetype count : counts)
            texts.append(QString::number(count));
        const QString name = components.at(refs.numberOf(gang.components.first()))->property(u"Gang"_s);
        return {gang.components,
                {},
                name,
                0,
                u"the relays of gang '%1' have different numbers of positions: %2"_s.arg(name, texts.join(u", "_s))};
    }

    void addContacts(int component)
    {
        const Component &relay = model.components[toPlace(component)];
        if (relay.gang == SwitchingModel::none)
            return;
        auto &contactsOfGang = model.contacts[toPlace(relay.gang)];
        const auto &positions = relay.positions.positions;
        for (qsizetype i = 0; i < positions.size() && i < static_cast<qsizetype>(contactsOfGang.size()); ++i) {
            for (const Contact &contact : positions.at(i).closed)
                contactsOfGang[static_cast<std::size_t>(i)].push_back({model.nets.netOf(component, contact.pin),
                                                                       model.nets.netOf(component, contact.otherPin),
                                                                       component});
        }
    }

    void addPassive(int component)
    {
        const EDAComponent &drawn = *components.at(component);
        PassiveComponent passive{drawn.ref, drawn.property(u"Through"_s) != u"no"_s, {}};
        for (const auto &pin : model.nets.pinsOf(component))
            passive.nets.push_back(pin.net);
        std::sort(passive.nets.begin(), passive.nets.end());
        passive.nets.erase(std::unique(passive.nets.begin(), passive.nets.end()), passive.nets.end());
        model.passives.push_back(passive);
    }

    void addInterfacePins(int component)
    {
        for (const auto &pin : model.nets.pinsOf(component))
            model.interfacePins.push_back({components.at(component)->ref, pin.number, pin.net});
    }

    const EDAProvider &netlist;
    const SwitchingTypes &types;
    const QList<RelayTable> &tables;
    SwitchingModelPrivate &model;
    QList<QSharedPointer<EDAComponent>> components;                    ///< by reference
    TextNumbers<QString> refs;                                         ///< of these, then of others that nets name
    QHash<std::pair<QString, QString>, RelayPositions> knownPositions; ///< by part and field
    using GangKey = std::tuple<int, QString, bool, QString>; ///< netlist, name, whether it has a sheet and which
    QMap<GangKey, int> gangNumbers;
};
}
SwitchingModel::SwitchingModel(const EDAProvider &netlist, const SwitchingTypes &types, const QList<RelayTable> &tables)
    : d(new SwitchingModelPrivate)
{
    SwitchingModelBuilder(netlist, types, tables, *d).build();
}

SwitchingModel::~SwitchingModel() = default;
SwitchingModel::SwitchingModel(const SwitchingModel &other) = default;
SwitchingModel &SwitchingModel::operator=(const SwitchingModel &other) = default;
SwitchingModel::SwitchingModel(SwitchingModel &&other) noexcept = default;
SwitchingModel &SwitchingModel::operator=(SwitchingModel &&other) noexcept = default;

const QList<PositionsError> &SwitchingModel::errors() const
{
    return d->errors;
}

int SwitchingModel::netCount() const
{
    return d->nets.count();
}

QStringList SwitchingModel::netNames(int net) const
{
    return d->nets.namesOf(net);
}

int SwitchingModel::netOf(const QString &ref, const QString &pinNumber) const
{
    const int component = componentOf(ref);
    return component == none ? none : d->nets.netOf(component, pinNumber);
}

int SwitchingModel::netOf(const EDANet &net) const
{
    for (const auto &node : net.nodes) {
        const int number = node ? netOf(node->ref, node->pin) : none;
        if (number != none) // all other pins of the net have the same
            return number;
    }
    return none;
}

int SwitchingModel::componentCount() const
{
    return static_cast<int>(d->components.size());
}

const QString &SwitchingModel::ref(int component) const
{
    return d->components[toPlace(component)].ref;
}

int SwitchingModel::componentOf(const QString &ref) const
{
    const auto found = std::lower_bound(d->components.begin(), d->components.end(), ref,
                                        [](const SwitchingModelPrivate::Component &component, const QString &wanted) {
                                            return component.ref < wanted;
                                        });
    return found == d->components.end() || found->ref != ref ? none : static_cast<int>(found - d->components.begin());
}

SwitchingRole SwitchingModel::role(int component) const
{
    return d->components[toPlace(component)].role;
}

QList<InterfacePin> SwitchingModel::pinsOf(int component) const
{
    QList<InterfacePin> pins;
    for (const MergedNets::Pin &pin : d->nets.pinsOf(component))
        pins.append({ref(component), pin.number, pin.net});
    return pins;
}

std::vector<int> SwitchingModel::contactNetsOf(int component) const
{
    std::vector<int> nets;
    for (const MergedNets::Pin &pin : d->nets.pinsOf(component)) {
        if (!isCoil(pin.number))
            nets.push_back(pin.net);
    }
    std::sort(nets.begin(), nets.end());
    nets.erase(std::unique(nets.begin(), nets.end()), nets.end());
    return nets;
}

const RelayPositions &SwitchingModel::positions(int component) const
{
    return d->components[toPlace(component)].positions;
}

int SwitchingModel::gangOf(int component) const
{
    return d->components[toPlace(component)].gang;
}

int SwitchingModel::gangCount() const
{
    return static_cast<int>(d->gangs.size());
}

const RelayGang &SwitchingModel::gang(int number) const
{
    return d->gangs[toPlace(number)];
}

const std::vector<NetContact> &SwitchingModel::contactsOf(int gang, int position) const
{
    return d->contacts[toPlace(gang)][toPlace(position)];
}

const std::vector<PassiveComponent> &SwitchingModel::passives() const
{
    return d->passives;
}

const std::vector<InterfacePin> &SwitchingModel::interfacePins() const
{
    return d->interfacePins;
}

QStringList SwitchingModel::unknownComponents() const
{
    QStringList unknown;
    for (const auto &component : d->components) {
        if (component.gang != none && gang(component.gang).isUnknown)
            unknown.append(component.ref);
    }
    return unknown;
}

QSharedPointer<const RelayContactMap> SwitchingModel::relayContacts() const
{
    const auto map = QSharedPointer<RelayContactMap>::create();
    for (const auto &component : d->components) {
        const bool connectsNothing =
            component.isSwitch && component.role != SwitchingRole::Passive && component.gang == none;
        if (connectsNothing || (component.gang != none && !gang(component.gang).isUnknown))
            map->insert(component.ref, {component.gang, component.positions.positions});
    }
    return map;
}
}
