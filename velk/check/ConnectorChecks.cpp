#include <velk/check/ConnectorChecks.h>

#include <velk/model/DisjointSets.h>

#include <QHash>
#include <QMap>
#include <QSet>

#include <algorithm>
#include <map>
#include <set>
#include <utility>

using namespace Qt::StringLiterals;

namespace Velk {

namespace {

struct PlugContact
{
    int component;
    int net;
    bool isOfConnector;
};

/// What a pin of a connector belongs to: nets that are joined and, in them, sets of nets that are plugged together.
class ConnectorNets
{
public:
    void insert(int joinedNet, int pluggedSet, int netlist)
    {
        sets.insert({joinedNet, pluggedSet});
        setsOfNetlists[netlist].insert({joinedNet, pluggedSet});
    }

    bool hasOtherThan(int joinedNet, int pluggedSet) const { return sets.size() > sets.count({joinedNet, pluggedSet}); }
    bool hasOtherBeyond(int netlist, int joinedNet, int pluggedSet) const
    {
        return std::any_of(setsOfNetlists.cbegin(), setsOfNetlists.cend(), [&](const auto &entry) {
            return entry.first != netlist && entry.second.size() > entry.second.count({joinedNet, pluggedSet});
        });
    }
    /// Besides that set itself.
    bool hasJoinedWith(int joinedNet, int pluggedSet) const
    {
        auto found = sets.lower_bound({joinedNet, 0});
        if (found != sets.end() && *found == std::pair(joinedNet, pluggedSet))
            ++found;
        return found != sets.end() && found->first == joinedNet;
    }

private:
    using Sets = std::set<std::pair<int, int>>;

    Sets sets;
    std::map<int, Sets> setsOfNetlists;
};

/// Components and the pins at which something happens to them.
struct PinUses
{
    std::set<int> components;
    QStringList pins;

    /// Pins come one after the other.
    void addPin(const QString &pin)
    {
        if (pins.isEmpty() || pins.last() != pin)
            pins.append(pin);
    }
};

/// Components of other types at a connector's pins, by what becomes of their nets.
struct Meetings
{
    PinUses joined;
    PinUses apartInNetlist;
    PinUses apartInNetlists;
};

/// What makes pins of several components the same: the Identifier and the pin number.
using Pin = std::pair<QString, QString>;

class ConnectorChecks
{
public:
    explicit ConnectorChecks(const CheckedSystem &checkedSystem)
        : system(checkedSystem)
        , pluggedNets(system.netCount())
    {
        collectConnectors();
        collectContacts();
        plugIn();
    }

    QList<SingleFinding> run()
    {
        findMissingIdentifiers();
        findJoinsByEmptyIdentifiers();
        if (system.netlists().netlistCount() > 1) // the other connectors of a single one are not known
            findSingleIdentifiers();
        findIdentifiersRepeatedOnABoard();
        findIdentifiersOnOtherTypes();
        findDifferentPins();
        return findings;
    }

private:
    void collectConnectors();
    void collectContacts();
    void plugIn();
    void findMissingIdentifiers();
    void findJoinsByEmptyIdentifiers();
    void addJoin(const QString &pin, const QList<PlugContact> &inOneNet);
    void findSingleIdentifiers();
    void findIdentifiersRepeatedOnABoard();
    void addRepetition(const QString &identifier, const PinUses &uses);
    void findIdentifiersOnOtherTypes();
    void meetConnectors(const QString &pin, const QList<PlugContact> &atPin, Meetings &meetings);
    void addOtherTypes(const QString &identifier, const PinUses &uses, const QString &effect);
    void findDifferentPins();
    QHash<QString, int> countPins(const QList<int> &components, const QList<int> &connectors);
    QStringList wiredPins(int connector) const;
    const QSet<QString> &pinNumbersOf(const QString &part);
    QStringList netNames(const std::set<int> &numbers) const;

    const CheckedSystem &system;
    DisjointSets pluggedNets;                         ///< those that connectors with Identifiers join
    QMap<QString, QList<int>> connectorsByIdentifier; ///< also the empty one
    QMap<QString, QList<int>> othersByIdentifier;     ///< of those only that connectors have; never the empty one
    QMap<Pin, QList<PlugContact>> contacts;           ///< of the components with these Identifiers and the empty one
    QHash<QString, QSet<QString>> pinNumbers;         ///< of the parts that were looked up
    QList<SingleFinding> findings;
};

void ConnectorChecks::collectConnectors()
{
    for (int i = 0; i < system.componentCount(); ++i) {
        if (system.types().isConnector(system.component(i)))
            connectorsByIdentifier[system.component(i).identifier()].append(i);
    }
    for (int i = 0; i < system.componentCount(); ++i) {
        const QString identifier = system.component(i).identifier();
        if (!identifier.isEmpty() && connectorsByIdentifier.contains(identifier) &&
            !system.types().isConnector(system.component(i)))
            othersByIdentifier[identifier].append(i);
    }
}

void ConnectorChecks::collectContacts()
{
    for (int i = 0; i < system.componentCount(); ++i) {
        const QString identifier = system.component(i).identifier();
        if (!connectorsByIdentifier.contains(identifier))
            continue;
        const bool isConnector = system.types().isConnector(system.component(i));
        for (const auto &node : system.nodesOf(i))
            contacts[{identifier, node.pin}].append({i, node.net, isConnector});
    }
}

void ConnectorChecks::plugIn()
{
    for (auto it = contacts.cbegin(); it != contacts.cend(); ++it) {
        if (it.key().first.isEmpty())
            continue;
        int plugged = -1;
        for (const PlugContact &contact : it.value()) {
            if (contact.isOfConnector && plugged >= 0)
                pluggedNets.unite(plugged, contact.net);
            if (contact.isOfConnector)
                plugged = contact.net;
        }
    }
}

void ConnectorChecks::findMissingIdentifiers()
{
    const auto connectors = connectorsByIdentifier.value({});
    for (const int connector : connectors) {
        const QString &ref = system.component(connector).ref;
        findings.append({FindingCode::IdentifierMissing, {ref}, u"a connector without Identifier"_s, {ref}});
    }
}

void ConnectorChecks::findJoinsByEmptyIdentifiers()
{
    const auto isOfConnector = [](const PlugContact &contact) { return contact.isOfConnector; };
    for (auto it = contacts.cbegin(); it != contacts.cend() && it.key().first.isEmpty(); ++it) {
        QMap<int, QList<PlugContact>> contactsByJoinedNet;
        for (const PlugContact &contact : it.value())
            contactsByJoinedNet[system.joinedNet(contact.net)].append(contact);
        for (auto &inOneNet : contactsByJoinedNet) {
            std::stable_partition(inOneNet.begin(), inOneNet.end(), isOfConnector);
            addJoin(it.key().second, inOneNet);
        }
    }
}

/// Where the nets of these contacts, which are one, those of connectors first, would not be one without this pin.
void ConnectorChecks::addJoin(const QString &pin, const QList<PlugContact> &inOneNet)
{
    std::set<int> nets;
    std::set<int> pluggedSets;
    QList<int> components;
    for (const PlugContact &contact : inOneNet) {
        nets.insert(contact.net);
        pluggedSets.insert(pluggedNets.leastOf(contact.net));
        components.append(contact.component);
    }
    if (pluggedSets.size() < 2 || !inOneNet.first().isOfConnector)
        return;
    const QStringList refs = system.refsOf(components);
    const QStringList names = netNames(nets);
    findings.append({FindingCode::JoinedByEmptyIdentifier,
                     names,
                     u"joined, since %1 have no Identifier, but all a pin '%2'"_s.arg(listed(refs), pin),
                     refs,
                     names,
                     {pin}});
}

void ConnectorChecks::findSingleIdentifiers()
{
    for (auto it = connectorsByIdentifier.cbegin(); it != connectorsByIdentifier.cend(); ++it) {
        if (it.key().isEmpty() || it.value().size() > 1 || othersByIdentifier.contains(it.key()))
            continue;
        const QString &ref = system.component(it.value().first()).ref;
        findings.append(
            {FindingCode::IdentifierOnce, {ref}, u"no other component has its Identifier '%1'"_s.arg(it.key()), {ref}});
    }
}

/// Halves of a connector, with different pins, may have the same.
void ConnectorChecks::findIdentifiersRepeatedOnABoard()
{
    QMap<std::pair<QString, int>, PinUses> usesByBoard; // after the Identifier
    for (auto it = contacts.cbegin(); it != contacts.cend(); ++it) {
        if (it.key().first.isEmpty())
            continue;
        QMap<int, QMap<int, int>> netsByBoard; // with a component for each
        for (const PlugContact &contact : it.value()) {
            if (contact.isOfConnector)
                netsByBoard[system.netlistOfComponent(contact.component)].insert(contact.net, contact.component);
        }
        for (auto board = netsByBoard.cbegin(); board != netsByBoard.cend(); ++board) {
            if (board.value().size() < 2)
                continue;
            PinUses &uses = usesByBoard[{it.key().first, board.key()}];
            uses.components.insert(board.value().cbegin(), board.value().cend());
            uses.addPin(it.key().second);
        }
    }
    for (auto uses = usesByBoard.cbegin(); uses != usesByBoard.cend(); ++uses)
        addRepetition(uses.key().first, uses.value());
}

void ConnectorChecks::addRepetition(const QString &identifier, const PinUses &uses)
{
    if (uses.components.size() < 2) // one with a pin on two nets
        return;
    const QStringList refs = system.refsOf({uses.components.cbegin(), uses.components.cend()});
    findings.append({FindingCode::IdentifierTwice,
                     refs,
                     u"have the Identifier '%1' on one board, which joins their nets at %2"_s.arg(
                         identifier, listedPins(uses.pins)),
                     refs,
                     {},
                     uses.pins});
}

/// Whether their nets join depends on which is read first, so those that may join in another order are told too.
void ConnectorChecks::findIdentifiersOnOtherTypes()
{
    for (auto it = othersByIdentifier.cbegin(); it != othersByIdentifier.cend(); ++it) {
        Meetings meetings;
        for (auto pin = contacts.lowerBound({it.key(), {}}); pin != contacts.end() && pin.key().first == it.key();
             ++pin)
            meetConnectors(pin.key().second, pin.value(), meetings);
        addOtherTypes(it.key(), meetings.joined, u"so nets join at %1"_s);
        addOtherTypes(it.key(), meetings.apartInNetlists,
                      u"so nets may join at %1 with the netlists in another order"_s);
        addOtherTypes(it.key(), meetings.apartInNetlist,
                      u"so nets may join at %1 with the nets of the netlist in another order"_s);
    }
}

void ConnectorChecks::meetConnectors(const QString &pin, const QList<PlugContact> &atPin, Meetings &meetings)
{
    const auto netlistOfContact = [this](const PlugContact &contact) {
        return system.netlistOfComponent(contact.component);
    };
    ConnectorNets connectorNets;
    for (const PlugContact &contact : atPin) {
        if (contact.isOfConnector)
            connectorNets.insert(system.joinedNet(contact.net), pluggedNets.leastOf(contact.net),
                                 netlistOfContact(contact));
    }
    for (const PlugContact &contact : atPin) {
        const int joinedNet = system.joinedNet(contact.net);
        const int pluggedSet = pluggedNets.leastOf(contact.net);
        if (contact.isOfConnector || !connectorNets.hasOtherThan(joinedNet, pluggedSet))
            continue;
        PinUses *uses = &meetings.apartInNetlist;
        if (connectorNets.hasJoinedWith(joinedNet, pluggedSet))
            uses = &meetings.joined;
        else if (connectorNets.hasOtherBeyond(netlistOfContact(contact), joinedNet, pluggedSet))
            uses = &meetings.apartInNetlists;
        uses->components.insert(contact.component);
        uses->addPin(pin);
    }
}

void ConnectorChecks::addOtherTypes(const QString &identifier, const PinUses &uses, const QString &effect)
{
    if (uses.components.empty())
        return;
    const QStringList refs = system.refsOf({uses.components.cbegin(), uses.components.cend()});
    const QStringList connectors = system.refsOf(connectorsByIdentifier.value(identifier));
    findings.append({FindingCode::IdentifierOnOtherType,
                     refs,
                     u"of no connector type, but with the Identifier '%1' of %2, %3"_s.arg(
                         identifier, listed(connectors), effect.arg(listedPins(uses.pins))),
                     refs + connectors,
                     {},
                     uses.pins});
}

void ConnectorChecks::findDifferentPins()
{
    for (auto it = connectorsByIdentifier.cbegin(); it != connectorsByIdentifier.cend(); ++it) {
        const QList<int> all = it.value() + othersByIdentifier.value(it.key());
        if (it.key().isEmpty() || all.size() < 2)
            continue;
        const QHash<QString, int> componentsWithPin = countPins(all, it.value());
        for (const int connector : it.value()) {
            QStringList pins = wiredPins(connector);
            pins.removeIf([&](const QString &pin) { return componentsWithPin.value(pin) != 1; });
            const QString &ref = system.component(connector).ref;
            if (!pins.isEmpty())
                findings.append({FindingCode::ConnectorPinsDiffer,
                                 {ref},
                                 u"nothing else with the Identifier '%1' has its %2"_s.arg(it.key(), listedPins(pins)),
                                 {ref},
                                 {},
                                 pins});
        }
    }
}

/// How many of the components have each pin that is wired at one of the connectors. Part by part, and by the smaller
/// of two sets: thousands of connectors may have a part of thousands of pins.
QHash<QString, int> ConnectorChecks::countPins(const QList<int> &components, const QList<int> &connectors)
{
    QHash<QString, int> counts;
    for (const int connector : connectors) {
        const QStringList pins = wiredPins(connector);
        for (const QString &pin : pins)
            counts.insert(pin, 0);
    }
    const QStringList wired = counts.keys();
    QHash<QString, int> componentsOfPart;
    for (const int component : components)
        ++componentsOfPart[system.component(component).part];
    for (auto part = componentsOfPart.cbegin(); part != componentsOfPart.cend(); ++part) {
        const auto &numbers = pinNumbersOf(part.key());
        const auto count = [&](const QString &pin) {
            const auto counted = counts.find(pin);
            if (counted != counts.end() && numbers.contains(pin))
                *counted += part.value();
        };
        if (wired.size() < numbers.size())
            std::for_each(wired.cbegin(), wired.cend(), count);
        else
            std::for_each(numbers.cbegin(), numbers.cend(), count);
    }
    return counts;
}

QStringList ConnectorChecks::wiredPins(int connector) const
{
    QStringList pins;
    for (const auto &node : system.nodesOf(connector)) {
        if (system.net(node.net).nodes.size() > 1)
            pins.append(node.pin);
    }
    return pins;
}

const QSet<QString> &ConnectorChecks::pinNumbersOf(const QString &part)
{
    const auto known = pinNumbers.constFind(part);
    if (known != pinNumbers.cend())
        return *known;
    QSet<QString> numbers;
    if (const auto partWithPins = system.netlists().getPartByName(part)) {
        for (const auto &pin : std::as_const(partWithPins->pins))
            numbers.insert(pin->number);
    }
    return *pinNumbers.insert(part, numbers);
}

QStringList ConnectorChecks::netNames(const std::set<int> &numbers) const
{
    QStringList names;
    for (const int number : numbers)
        names.append(system.net(number).name);
    return names;
}
}

QList<SingleFinding> connectorFindings(const CheckedSystem &system)
{
    return ConnectorChecks(system).run();
}
}
