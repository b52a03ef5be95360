#include "tests/support/Copies.h"
#include "tests/support/PlainProvider.h"
#include "tests/support/RandomContacts.h"
#include "tests/support/RandomSystems.h"
#include "tests/support/StubProvider.h"
#include "tests/support/SystemCount.h"
#include "tests/support/TestRegistry.h"
#include "tests/support/TextTable.h"

#include <velk/model/EDAException.h>
#include <velk/provider/MultipleEDAProvider.h>
#include <velk/routing/Routing.h>

#include <QLoggingCategory>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QTest>

#include <algorithm>
#include <future>
#include <memory>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace {

/// "K1 K2 | U3/1" for each path: the components, then the additional nodes.
QStringList toTexts(const QList<RoutingPath> &paths)
{
    QStringList texts;
    for (const auto &path : paths) {
        QStringList words;
        for (const auto &component : path.switchingComponents)
            words.append(component->ref);
        words.append(u"|"_s);
        for (const auto &node : path.additionalNodes)
            words.append(node->ref + u'/' + node->pin);
        texts.append(words.join(u' '));
    }
    return texts;
}

/// "N0 K1/1/2 N3 K2/1/2=0 N4 | U3/1@N3": the same with the pins and nets and, where they are told, positions.
QStringList toTexts(const QList<TracedPath> &paths)
{
    QStringList texts;
    for (const auto &path : paths) {
        QStringList words;
        for (const TracedStep &step : path.steps) {
            const QString position = step.position < 0 ? QString() : u"=%1"_s.arg(step.position);
            words += {step.net->name, u"%1/%2/%3"_s.arg(step.component->ref, step.entryPin, step.exitPin) + position};
        }
        words += {path.lastNet->name, u"|"_s};
        for (const auto &[node, net] : path.additionalNodes)
            words.append(u"%1/%2@%3"_s.arg(node->ref, node->pin, net->name));
        texts.append(words.join(u' '));
    }
    return texts;
}

QList<RoutingPath> untraced(const QList<TracedPath> &paths)
{
    QList<RoutingPath> result;
    for (const auto &path : paths) {
        result.append(RoutingPath());
        for (const auto &step : path.steps)
            result.last().switchingComponents.append(step.component);
        for (const auto &node : path.additionalNodes)
            result.last().additionalNodes.append(node.node);
    }
    return result;
}

/// Those of the paths as drawn that some state makes.
QList<TracedPath> filteredByStates(QList<TracedPath> paths, const RelayContactMap &relays, const EDAProvider &netlist)
{
    QList<TracedPath> result;
    for (TracedPath &path : paths) {
        QMap<int, QList<TracedStep>> stepsOfGangs;
        for (const TracedStep &step : std::as_const(path.steps)) {
            if (relays.contains(step.component->ref))
                stepsOfGangs[relays[step.component->ref].gang].append(step);
        }
        bool isPossible = true;
        for (TracedStep &step : path.steps) {
            if (!relays.contains(step.component->ref))
                continue;
            step.position = lowestPosition(stepsOfGangs[relays[step.component->ref].gang], relays, netlist);
            isPossible = isPossible && step.position >= 0;
        }
        if (isPossible)
            result.append(path);
    }
    return result;
}

using Properties = QMap<QString, QString>;
const Properties fromU1{{u"Id"_s, u"U1"_s}};
const Properties toD1{{u"Id"_s, u"D1"_s}};

/// U1 and D1 with so many relays in series between them.
std::unique_ptr<StubProvider> chain(int relays)
{
    auto system = systemOf(u"U1 Source 1\nD1 DUT 1"_s);
    QString last = u"U1/1"_s;
    for (int i = 1; i <= relays; ++i) {
        const QString ref = u"K%1"_s.arg(i);
        system->add(ref, u"Relay"_s, {u"1"_s, u"2"_s});
        system->connect(u"N%1"_s.arg(i), {last, ref + u"/1"_s});
        last = ref + u"/2"_s;
    }
    system->connect(u"END"_s, {last, u"D1/1"_s});
    return system;
}

/// The definition of a path, without any pruning: walks all ways over the nets, tests each against the rules
/// at its end only. Nets may be passed again when \a revisits is set, for a walk of bounded length.
class BruteForce
{
public:
    BruteForce(const StubProvider &netlist, int switches, int nodes, bool revisits)
        : system(netlist)
        , maxSwitches(switches)
        , maxNodes(nodes)
        , mayRevisit(revisits)
    {
    }

    QList<TracedPath> paths()
    {
        walk(u"U1/1"_s, {});
        std::stable_sort(found.begin(), found.end(), [](const auto &a, const auto &b) {
            return std::pair(a.steps.size(), a.additionalNodes.size()) <
                   std::pair(b.steps.size(), b.additionalNodes.size());
        });
        return found;
    }

private:
    QSharedPointer<EDANet> netOf(const QString &node) const
    {
        const auto it = std::find_if(system.nets.cbegin(), system.nets.cend(), [&](const auto &net) {
            return net->findNode(node.section(u'/', 0, 0), node.section(u'/', 1));
        });
        return it == system.nets.cend() ? nullptr : *it;
    }

    QString typeOf(const EDANetNode &node) const
    {
        const auto component = system.getComponentByRef(node.ref);
        return component ? component->type().toLower() : QString();
    }

    void walk(const QString &entry, TracedPath path)
    {
        const auto net = netOf(entry);
        const bool again = std::any_of(path.steps.cbegin(), path.steps.cend(),
                                       [&](const auto &step) { return step.net.data() == net.data(); });
        if (!net || (again && !mayRevisit) || path.steps.size() > 5)
            return;
        if (net->findNode(u"D1"_s, u"1"_s)) {
            path.lastNet = net;
            keepIfAllowed(path);
            return;
        }
        for (const auto &node : std::as_const(net->nodes)) {
            const QString text = node->ref + u'/' + node->pin;
            const QStringList interfaces{u"source"_s, u"dut"_s};
            if (entry != u"U1/1"_s && text != entry && text != u"U1/1"_s && interfaces.contains(typeOf(*node)))
                path.additionalNodes.append({node, net});
        }
        for (const auto &node : std::as_const(net->nodes)) {
            const auto component = system.getComponentByRef(node->ref);
            if (typeOf(*node) != u"relay"_s || node->ref + u'/' + node->pin == entry)
                continue;
            const auto part = system.getPartByName(component->part);
            for (const auto &pin : std::as_const(part->pins)) {
                if (pin->number == node->pin)
                    continue;
                TracedPath longer = path;
                longer.steps.append({net, node->pin, component, pin->number});
                walk(node->ref + u'/' + pin->number, longer);
            }
        }
    }

    // Every net but the last had to pass both limits.
    void keepIfAllowed(const TracedPath &path)
    {
        if (path.steps.isEmpty() ||
            (path.steps.size() <= qint64(maxSwitches) + 1 && path.additionalNodes.size() <= maxNodes))
            found.append(path);
    }

    const StubProvider &system;
    const int maxSwitches;
    const int maxNodes;
    const bool mayRevisit;
    QList<TracedPath> found;
};

/// A query on random boards that are joined, and so indexed.
class RandomQuery
{
public:
    explicit RandomQuery(quint32 number)
        : seed(number)
        , random(number)
        , boards(randomBoards(random))
        , joined({boards[0].get(), boards[1].get()}, {u"Connector"_s})
        , plain(joined)
        , maxSwitches(random.bounded(8) == 0 ? 2147483646 + random.bounded(2) : random.bounded(-1, 7))
        , maxNodes(random.bounded(8) == 0 ? 2147483646 : random.bounded(-1, 7))
        , destination(random.bounded(2) == 0 ? toD1 : Properties{{u"Side"_s, u"2"_s}})
        , contacts(randomContacts(joined, random))
    {
    }

    /// Searches that follow keep out of some components and nets. Of joined nets the joined provider is told a name
    /// that they were joined from.
    void exclude()
    {
        for (int i = random.bounded(3); i > 0; --i)
            excludedComponents.append(randomRef());
        for (int i = random.bounded(3); i > 0; --i) {
            const auto boardNet = random.bounded(joined.boardNets().size());
            excludedBoardNets.append(joined.boardNets().at(boardNet)->name);
            excludedNets.append(joined.getNets().at(joined.joinedNetOf(boardNet))->name);
        }
        pathCount = -1;
    }
    /// Of paths that were found before, those that are left.
    QStringList withoutExcluded(QList<TracedPath> paths) const
    {
        paths.removeIf([this](const TracedPath &path) {
            return excludedNets.contains(path.lastNet->name) ||
                   std::any_of(path.steps.cbegin(), path.steps.cend(), [this](const TracedStep &step) {
                       return excludedNets.contains(step.net->name) || excludedComponents.contains(step.component->ref);
                   });
        });
        return toTexts(paths);
    }
    /// Searches that follow find paths over these alone.
    void require(const QStringList &components)
    {
        requiredComponents = components;
        pathCount = -1;
    }
    /// Of paths that were found before, those that are left.
    QStringList overRequired(QList<TracedPath> paths) const
    {
        paths.removeIf([this](const TracedPath &path) {
            return std::any_of(requiredComponents.cbegin(), requiredComponents.cend(), [&path](const QString &ref) {
                return std::none_of(path.steps.cbegin(), path.steps.cend(),
                                    [&ref](const TracedStep &step) { return step.component->ref == ref; });
            });
        });
        return toTexts(paths);
    }
    QString randomRef()
    {
        const auto components = joined.getComponents();
        return components.at(random.bounded(components.size()))->ref;
    }
    QList<TracedPath> asDrawn() { return trace(joined, 0, {}); }
    QList<TracedPath> realizable() { return trace(joined, 0, contacts); }
    QStringList onIndexTraced(qsizetype maxPaths)
    {
        QLoggingCategory::setFilterRules(u"routing.debug=true"_s);
        const auto previous = qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
        const auto result = onIndex(maxPaths);
        qInstallMessageHandler(previous);
        QLoggingCategory::setFilterRules(u"routing.debug=false"_s);
        return result;
    }

    QStringList onIndex(qsizetype maxPaths = 0) { return findPaths(joined, maxPaths); }
    QStringList onAnyProvider(qsizetype maxPaths = 0) { return findPaths(plain, maxPaths); }
    QStringList realizableOnIndex(qsizetype maxPaths = 0) { return toTexts(trace(joined, maxPaths, contacts)); }
    QStringList realizableOnAnyProvider(qsizetype maxPaths) { return toTexts(trace(plain, maxPaths, contacts)); }
    QStringList filteredPaths() { return toTexts(filteredByStates(trace(joined, 0, {}), *contacts, joined)); }
    QString differenceText(const QStringList &found, const QStringList &expected) const
    {
        return u"seed %1:\n%2\nfound:\n%3\nexpected:\n%4"_s.arg(seed).arg(netsToText(joined.getNets()),
                                                                          found.join(u'\n'), expected.join(u'\n'));
    }

private:
    Routing routingOn(EDAProvider &provider, qsizetype maxPaths) const
    {
        Routing routing(&provider);
        routing.setMaxSwitchingComponentsPerPath(maxSwitches);
        routing.setMaxAdditionalNodesPerPath(maxNodes);
        routing.setMaxPaths(maxPaths);
        if (seed % 3 == 0)
            routing.setComponentTypesThatAreInterfaces({u"relay"_s, u"dut"_s, QString()});
        routing.setExcludedNets(&provider == &joined ? excludedBoardNets : excludedNets);
        routing.setExcludedComponents(excludedComponents);
        routing.setRequiredComponents(requiredComponents);
        return routing;
    }

    QList<TracedPath> trace(EDAProvider &provider, qsizetype maxPaths, const RelayContactsPointer &relays) const
    {
        Routing routing = routingOn(provider, maxPaths);
        routing.setRelayContacts(relays);
        return routing.findTracedPaths(fromU1, u"1"_s, destination, u"1"_s);
    }

    QStringList findPaths(EDAProvider &provider, qsizetype maxPaths)
    {
        const auto paths = trace(provider, maxPaths, {});
        Routing routing = routingOn(provider, maxPaths);
        routing.setRelayContacts(contacts); // not to be heeded
        const bool isSame = toTexts(untraced(paths)) == toTexts(routing.findPaths(fromU1, u"1"_s, destination, u"1"_s));
        if (!isSame)
            return {u"findPaths differs"_s};
        const auto count = routing.countPathsBetween(provider.getComponentByProperties(fromU1), u"1"_s,
                                                     provider.getComponentByProperties(destination), u"1"_s);
        if (maxPaths == 0)
            pathCount = paths.size();
        return count == pathCount ? toTexts(paths) : QStringList{u"another number"_s};
    }

    const quint32 seed;
    QRandomGenerator random;
    const std::vector<std::unique_ptr<StubProvider>> boards;
    MultipleEDAProvider joined;
    PlainProvider plain;
    const int maxSwitches;
    const int maxNodes;
    const Properties destination;
    const RelayContactsPointer contacts;
    QStringList excludedComponents;
    QStringList requiredComponents;
    QStringList excludedNets;
    QStringList excludedBoardNets; ///< the same by names that they were joined from
    qsizetype pathCount = -1;      ///< without a bound, once that is known
};

/// The paths, "PATH" for a direct one, or what is missing.
template <typename Search>
QString outcomeOf(Search search)
{
    try {
        const QString paths = toTexts(search()).join(u'\n');
        return paths == u"|"_s ? u"PATH"_s : paths;
    } catch (const EDAException &exception) {
        return exception.message();
    }
}

/// What \a search finds on the netlist, and on the same one joined, and so indexed, where references end in "#1".
template <typename Search>
QStringList onBothSearches(StubProvider &netlist, Search search)
{
    MultipleEDAProvider joined({&netlist}, {});
    QStringList texts;
    for (EDAProvider *provider : {static_cast<EDAProvider *>(&netlist), static_cast<EDAProvider *>(&joined)}) {
        Routing routing(provider);
        texts.append(toTexts(search(routing)).join(u'\n').remove(u"#1"_s));
    }
    return texts;
}

template <typename Element>
void changeRandomly(QList<QSharedPointer<Element>> &list, QRandomGenerator &random)
{
    const int change = random.bounded(4);
    if (change == 0)
        list.clear();
    else if (change == 1)
        list.append(QList(list));
    else if (change == 2 && !list.isEmpty())
        list[0].reset();
}

template <typename Element>
void addNull(QList<QSharedPointer<Element>> &list, QRandomGenerator &random)
{
    list.insert(random.bounded(list.size() + 1), nullptr);
}

void addNulls(StubProvider &board, QRandomGenerator &random)
{
    for (const auto &net : std::as_const(board.nets))
        addNull(net->nodes, random);
    for (const auto &part : std::as_const(board.parts))
        addNull(part->pins, random);
    addNull(board.nets, random);
    addNull(board.parts, random);
    addNull(board.components, random);
}

QStringList caughtMessages;
void catchMessage(QtMsgType, const QMessageLogContext &context, const QString &message)
{
    caughtMessages.append(QString::fromLatin1(context.category) + u": "_s + message);
}
}

class RoutingTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void findsPaths_data() { addCasesFrom("routing_cases.txt"); }
    void findsPaths()
    {
        QFETCH(QString, input);
        const auto netlist = systemOf(input);
        const auto found = onBothSearches(
            *netlist, [](const Routing &routing) { return routing.findPaths(fromU1, u"1"_s, toD1, u"1"_s); });
        QTEST(found.first(), "expected");
        QCOMPARE(found.last(), found.first());
    }

    void findsRealizablePaths_data() { addCasesFrom("realizable_cases.txt"); }
    void findsRealizablePaths()
    {
        QFETCH(QString, input);
        const auto netlist = systemOf(input.section(u"\n--"_s, 0, 0));
        const auto contacts = contactsOf(input.section(u"\n--"_s, 1));
        const auto found = onBothSearches(*netlist, [&](Routing &routing) {
            routing.setRelayContacts(contacts);
            return routing.findTracedPaths(fromU1, u"1"_s, toD1, u"1"_s);
        });
        QTEST(found.first(), "expected");
        QCOMPARE(found.last(), found.first());
    }

    void limits_data() { addRowsFrom("routing_limits.txt", {"relays", "maxSwitches", "maxNodes", "expected"}); }
    void limits()
    {
        QFETCH(QString, relays);
        QFETCH(QString, maxSwitches);
        QFETCH(QString, maxNodes);
        const auto netlist = chain(relays.toInt());
        const auto counts = onBothSearches(*netlist, [&](Routing &routing) {
            routing.setMaxSwitchingComponentsPerPath(maxSwitches.toInt());
            routing.setMaxAdditionalNodesPerPath(maxNodes.toInt());
            return routing.findPaths(fromU1, u"1"_s, toD1, u"1"_s);
        });
        for (const QString &paths : counts)
            QTEST(QString::number(paths.count(u'|')), "expected");
    }

    // Nothing of it is a result that anybody could rely on; the address sanitizer looks on.
    void survivesChangesOfWhatWasHandedOut()
    {
        for (quint32 seed = 0; seed < 300; ++seed) {
            QRandomGenerator random(seed);
            const auto boards = randomBoards(random);
            MultipleEDAProvider joined({boards[0].get(), boards[1].get()}, {u"Connector"_s});
            PlainProvider plain(joined);
            const Routing onIndex(&joined);
            const auto before = toTexts(onIndex.findPaths(fromU1, u"1"_s, toD1, u"1"_s));
            const auto nets = joined.getNets();
            for (const auto &net : nets)
                changeRandomly(net->nodes, random);
            QCOMPARE(toTexts(onIndex.findPaths(fromU1, u"1"_s, toD1, u"1"_s)), before);
            const auto parts = joined.getParts();
            for (const auto &part : parts)
                changeRandomly(part->pins, random);
            const auto components = joined.getComponents();
            for (const auto &component : components) {
                QString &text = random.bounded(2) == 0 ? component->part : component->ref;
                if (random.bounded(3) == 0)
                    text = random.bounded(2) == 0 ? u"K1#1"_s : QString();
                if (random.bounded(3) == 0)
                    component->properties.insert(EDAComponent::TYPE, u"Relay"_s);
            }
            for (const Routing &routing : {onIndex, Routing(&plain)})
                outcomeOf([&] { return routing.findPaths(fromU1, u"1"_s, toD1, u"1"_s); });
        }
    }

    void passesOverNullElements()
    {
        for (quint32 seed = 0; seed < 300; ++seed) {
            QRandomGenerator random(seed);
            const auto boards = randomBoards(random);
            const auto find = [&boards] {
                return onBothSearches(
                    *boards[0], [](const Routing &routing) { return routing.findPaths(fromU1, u"1"_s, toD1, u"1"_s); });
            };
            const auto expected = find();
            addNulls(*boards[0], random);
            QCOMPARE(find(), expected);
        }
    }

    void configuration()
    {
        const auto netlist = systemOf(u"U1 Source 1\nD1 DUT 1\nJ1 Load 1\nF1 Fuse 1,2\nF2 Fuse 1,2\n"
                                      "A: U1/1 F1/1\nB: F1/2 F2/1 J1/1\nC: F2/2 D1/1"_s);
        Routing routing(netlist.get());
        const Routing unchanged(routing);
        routing.setComponentTypesThatAreSwitchable({u"FUSE"_s});
        routing.setComponentTypesThatAreInterfaces({u"load"_s});
        QCOMPARE(toTexts(routing.findPaths(fromU1, u"1"_s, toD1, u"1"_s)), QStringList{u"F1 F2 | J1/1"_s});
        QCOMPARE(toTexts(routing.findPaths(fromU1, u"1"_s, fromU1, u"1"_s)), QStringList{u"|"_s});
        routing.setComponentTypesThatAreConnectors({u"Plug"_s});
        routing.setMaxSwitchingComponentsPerPath(1);
        routing.setMaxAdditionalNodesPerPath(2);
        routing.setMaxPaths(9);
        const auto textOf = [](const Routing &copy) {
            const QStringList types = copy.componentTypesThatAreSwitchable() + copy.componentTypesThatAreInterfaces() +
                                      copy.componentTypesThatAreConnectors();
            return u"%1 %2 %3 %4: %5"_s.arg(types.join(u' '))
                .arg(copy.maxSwitchingComponentsPerPath())
                .arg(copy.maxAdditionalNodesPerPath())
                .arg(copy.maxPaths())
                .arg(toTexts(copy.findPaths(fromU1, u"1"_s, toD1, u"1"_s)).join(u'\n'));
        };
        QCOMPARE(textsOfCopies(routing, Routing(nullptr), textOf),
                 QStringList{u"FUSE load Plug 1 2 9: F1 F2 | J1/1"_s});
        QCOMPARE(textOf(unchanged), u"Relay Resistor Source DUT Connector 5 3 0: "_s);
        routing.setComponentTypesThatAreSwitchable({});
        QVERIFY(routing.findPaths(fromU1, u"1"_s, toD1, u"1"_s).isEmpty());
        QVERIFY(unchanged.findPaths(fromU1, u"1"_s, toD1, u"1"_s).isEmpty());

        const auto seven = chain(7);
        Routing::DEFAULT_MAX_SWITCHING_COMPONENTS_PER_PATH = 6;
        const Routing later(seven.get());
        Routing::DEFAULT_MAX_SWITCHING_COMPONENTS_PER_PATH = 5;
        QCOMPARE(later.findPaths(fromU1, u"1"_s, toD1, u"1"_s).size(), 1);
    }

    void resolvesTheEnds_data()
    {
        addRowsFrom("routing_ends.txt", {"source", "sourcePin", "destination", "destinationPin", "expected"});
    }
    void resolvesTheEnds()
    {
        QFETCH(QString, source);
        QFETCH(QString, sourcePin);
        QFETCH(QString, destination);
        QFETCH(QString, destinationPin);
        const auto netlist = systemOf(u"U1 Source 1=HI,2=LO\nD1 DUT 1=IN\nP1 Source 1\nN: U1/1 D1/1\nM: U1/2"_s);
        netlist->parts.removeLast();
        const Routing routing(netlist.get());
        const auto byProperties = outcomeOf([&] {
            return routing.findPaths({{u"Id"_s, source}}, sourcePin, {{u"Id"_s, destination}}, destinationPin);
        });
        QTEST(byProperties, "expected");
        const auto byComponents = outcomeOf([&] {
            return routing.findPathsBetween(netlist->getComponentByRef(source), sourcePin,
                                            netlist->getComponentByRef(destination), destinationPin);
        });
        // A component that is null has no properties to tell of.
        static const QRegularExpression properties(u"'Id=.'"_s);
        QCOMPARE(byComponents, QString(byProperties).replace(properties, u"''"_s));
        QVERIFY(routing.findPaths({}, u"HI"_s, {}, u"LO"_s).isEmpty()); // no properties, not no components
    }

    void logsTheSearch()
    {
        const auto netlist = systemOf(u"U1 Source 1\nD1 DUT 1\nK1 Relay 1,2,3,4\nK2 Relay 1,2\n"
                                      "A: U1/1 Z1/1 K2/1 K1/1\nB: K1/2 D1/1\nC: Z2/1 K1/3"_s);
        netlist->parts.removeLast();
        caughtMessages.clear();
        QLoggingCategory::setFilterRules(u"routing.debug=true"_s);
        const auto previous = qInstallMessageHandler(catchMessage);
        const auto paths = Routing(netlist.get()).findPaths(fromU1, u"1"_s, toD1, u"1"_s);
        qInstallMessageHandler(previous);
        QLoggingCategory::setFilterRules(u"routing.debug=false"_s);
        QCOMPARE(toTexts(paths), QStringList{u"K1 |"_s});
        QCOMPARE(caughtMessages.join(u'\n'),
                 u"routing: |[CompType=Source,Id=U1]\t(A) \n"
                 "routing: No component found for component.ref 'Z1'\n"
                 "routing: No part found for name 'PK2' of component 'K2'\n"
                 "routing: ||[CompType=Relay,Id=K1]\t(B) found\n"
                 "routing: ||[CompType=Relay,Id=K1]\t(C) \n"
                 "routing: No component found for component.ref 'Z2'\n"
                 "routing: No component found for component.ref 'Z2'\n"
                 "routing: No net found when searching for Node(Component.Ref=K1,PinNumber=4)"_s);
    }

    // What a derived provider answers counts, not what was joined.
    void asksDerivedProviders()
    {
        struct WithoutNets : MultipleEDAProvider
        {
            using MultipleEDAProvider::MultipleEDAProvider;
            QList<QSharedPointer<EDANet>> getNets() const override { return {}; }
        };
        const auto board = chain(1);
        WithoutNets joined({board.get()}, {});
        QVERIFY(Routing(&joined).findPaths(fromU1, u"1"_s, toD1, u"1"_s).isEmpty());
        QVERIFY(MultipleEDAProvider({&joined}, {}).getNets().isEmpty());
    }

    // On joined netlists, which are indexed, branches without a way to the destination are cut.
    void prunedSearchEqualsExhaustiveSearch()
    {
        qsizetype total = 0;
        const int systems = systemCount(2500);
        for (int seed = 0; seed < systems; ++seed) {
            RandomQuery query(static_cast<quint32>(seed));
            const auto pruned = query.onIndex();
            const auto exhaustive = query.onAnyProvider();
            QVERIFY2(pruned == exhaustive, qPrintable(query.differenceText(pruned, exhaustive)));
            total += pruned.size();
        }
        QVERIFY(total > systems); // the systems do have paths
    }

    void boundedSearchFindsTheFirstPaths()
    {
        qsizetype cut = 0;
        const int systems = systemCount(1200);
        for (int seed = 0; seed < systems; ++seed) {
            RandomQuery query(static_cast<quint32>(seed));
            const auto all = query.onIndex();
            for (const qsizetype bound : {qsizetype(1), 1 + seed % (all.size() + 1), all.size() + 1}) {
                const auto expected = all.mid(0, bound);
                for (const auto &found : {query.onIndex(bound), query.onAnyProvider(bound)})
                    QVERIFY2(found == expected, qPrintable(query.differenceText(found, expected)));
                cut += all.size() - expected.size();
            }
        }
        QVERIFY(cut > systems); // the bounds do leave paths out
    }

    void realizablePathsAreThoseThatAStateMakes()
    {
        qsizetype total = 0;
        const int systems = systemCount(3000);
        for (int seed = 0; seed < systems; ++seed) {
            RandomQuery query(static_cast<quint32>(seed));
            const auto expected = query.filteredPaths();
            const auto found = query.realizableOnIndex();
            QVERIFY2(found == expected, qPrintable(query.differenceText(found, expected)));
            const qsizetype bound = 1 + seed % 5;
            for (const auto &first : {query.realizableOnIndex(bound), query.realizableOnAnyProvider(bound)})
                QVERIFY2(first == expected.mid(0, bound), qPrintable(query.differenceText(first, expected)));
            if (seed % 4 == 0)
                QCOMPARE(query.realizableOnAnyProvider(0), expected);
            total += expected.size();
        }
        QVERIFY(total > systems);
    }

    void exclusionsLeaveTheOtherPaths()
    {
        qsizetype total = 0;
        qsizetype left = 0;
        const int systems = systemCount(2000);
        for (int seed = 0; seed < systems; ++seed) {
            RandomQuery query(static_cast<quint32>(seed));
            const auto asDrawn = query.asDrawn();
            const auto realizable = query.realizable();
            query.exclude();
            const auto expected = query.withoutExcluded(asDrawn);
            const auto expectedRealizable = query.withoutExcluded(realizable);
            for (const qsizetype bound : {qsizetype(0), 1 + seed % (expected.size() + 2)}) {
                const auto mostOf = [bound](const QStringList &paths) { return bound ? paths.mid(0, bound) : paths; };
                QStringList (RandomQuery::*traced)(qsizetype) =
                    seed % 10 == 0 ? &RandomQuery::onIndexTraced : &RandomQuery::onIndex;
                for (const auto &found : {query.onIndex(bound), query.onAnyProvider(bound), (query.*traced)(bound)})
                    QVERIFY2(found == mostOf(expected), qPrintable(query.differenceText(found, mostOf(expected))));
                for (const auto &found : {query.realizableOnIndex(bound), query.realizableOnAnyProvider(bound)})
                    QVERIFY2(found == mostOf(expectedRealizable),
                             qPrintable(query.differenceText(found, mostOf(expectedRealizable))));
            }
            total += asDrawn.size();
            left += expected.size();
        }
        QVERIFY(left > systems / 2);
        QVERIFY(total - left > systems / 2);
    }

    // Of a path that there is, so that some are left.
    void pathsOverRequiredComponents()
    {
        qsizetype total = 0;
        qsizetype left = 0;
        const int systems = systemCount(2000);
        for (int seed = 0; seed < systems; ++seed) {
            RandomQuery query(static_cast<quint32>(seed));
            if (seed % 5 == 0)
                query.exclude();
            const auto asDrawn = query.asDrawn();
            const auto realizable = query.realizable();
            QStringList required;
            if (!asDrawn.isEmpty() && seed % 4 != 0) {
                for (const TracedStep &step : asDrawn.at(seed * 7 % asDrawn.size()).steps.mid(seed % 3, 1 + seed % 2))
                    required.append(step.component->ref);
            }
            query.require(required.isEmpty() ? QStringList{query.randomRef()} : required);
            const auto expected = query.overRequired(asDrawn);
            const auto expectedRealizable = query.overRequired(realizable);
            for (const qsizetype bound : {qsizetype(0), 1 + seed % (expected.size() + 2)}) {
                const auto mostOf = [bound](const QStringList &paths) { return bound ? paths.mid(0, bound) : paths; };
                for (const auto &found : {query.onIndex(bound), query.onAnyProvider(bound)})
                    QVERIFY2(found == mostOf(expected), qPrintable(query.differenceText(found, mostOf(expected))));
                for (const auto &found : {query.realizableOnIndex(bound), query.realizableOnAnyProvider(bound)})
                    QVERIFY2(found == mostOf(expectedRealizable),
                             qPrintable(query.differenceText(found, mostOf(expectedRealizable))));
            }
            total += asDrawn.size();
            left += expected.size();
        }
        QVERIFY(left > systems / 2);
        QVERIFY(total - left > systems / 2);
    }

    // Six layers of 40 nets have 4,000,000,000 paths from end to end, and a dead end has none.
    void firstPathsOverAComponent()
    {
        QString text = u"U1 Source 1\nD1 DUT 1\nDEAD Relay 1,2\nFUSE Fuse 1,2\nE: DEAD/2"_s;
        QMap<int, QStringList> nets;
        int relays = 0;
        const auto connect = [&](int from, int to) {
            text += u"\nK%1 Relay 1,2"_s.arg(++relays);
            nets[from].append(u"K%1/1"_s.arg(relays));
            nets[to].append(u"K%1/2"_s.arg(relays));
        };
        constexpr int width = 40;
        for (int net = 0; net < width; ++net)
            connect(-1, net);
        for (int net = 0; net < 5 * width * width; ++net)
            connect(net / width, (net / width / width + 1) * width + net % width);
        for (int net = 5 * width; net < 6 * width; ++net)
            connect(net, -2);
        nets[-1].append(u"U1/1"_s);
        nets[-2].append(u"D1/1"_s);
        nets[100] += {u"DEAD/1"_s, u"FUSE/1"_s};
        nets[140].append(u"FUSE/2"_s);
        for (auto net = nets.cbegin(); net != nets.cend(); ++net)
            text += u"\nN%1: "_s.arg(net.key()) + net->join(u' ');
        const auto board = systemOf(text);
        MultipleEDAProvider joined({board.get()}, {});
        Routing routing(&joined);
        routing.setMaxSwitchingComponentsPerPath(6);
        routing.setMaxPaths(10);
        routing.setRequiredComponents({u"K4321#1"_s, u"K7#1"_s});
        const auto paths = routing.findPaths(fromU1, u"1"_s, toD1, u"1"_s);
        QCOMPARE(paths.size(), 10);
        for (const RoutingPath &path : paths) {
            QCOMPARE(path.switchingComponents.size(), 7);
            QCOMPARE(path.switchingComponents.at(0)->ref, u"K7#1"_s);
            QCOMPARE(path.switchingComponents.at(3)->ref, u"K4321#1"_s);
        }
        routing.setExcludedComponents({u"K8#1"_s});
        for (const QString &ref : {u"DEAD#1"_s, u"FUSE#1"_s, u"K8#1"_s, u"K0#1"_s}) {
            routing.setRequiredComponents({ref});
            QVERIFY(routing.findPaths(fromU1, u"1"_s, toD1, u"1"_s).isEmpty());
            QCOMPARE(routing.requiredComponents(), QStringList{ref});
        }
    }

    void exclusions()
    {
        const auto boards = systemsOf(u"U1 Source 1\nK1 Relay 1,2\nK2 Relay 1,2\nX1 Connector 1,2 X\n"
                                      "A: U1/1 K1/1 K2/1\nB: K1/2 X1/1\nC: K2/2 X1/2\n--\n"
                                      "X1 Connector 1,2 X\nD1 DUT 1\nK1 Relay 1,2\n"
                                      "B: X1/1 K1/1\nC: X1/2 K1/1\nD: K1/2 D1/1"_s);
        MultipleEDAProvider joined({boards[0].get(), boards[1].get()}, {u"Connector"_s});
        Routing routing(&joined);
        const auto found = [&](const Routing &asked) { return toTexts(asked.findPaths(fromU1, u"1"_s, toD1, u"1"_s)); };
        const QStringList all{u"K1#1 K1#2 |"_s, u"K2#1 K1#2 |"_s};
        QCOMPARE(found(routing), all);
        QVERIFY(routing.unknownExclusions().isEmpty());

        routing.setExcludedComponents({u"K1#1"_s, u"K1"_s, u"k2#1"_s});
        routing.setExcludedNets({u"B"_s, u"D#1"_s, u"C#2"_s});
        QCOMPARE(routing.excludedComponents(), (QStringList{u"K1#1"_s, u"K1"_s, u"k2#1"_s}));
        QCOMPARE(routing.excludedNets(), (QStringList{u"B"_s, u"D#1"_s, u"C#2"_s}));
        QCOMPARE(routing.unknownExclusions(), (QStringList{u"K1"_s, u"k2#1"_s, u"B"_s, u"D#1"_s}));
        QVERIFY(found(routing).isEmpty());
        Routing copy(routing);
        copy.setExcludedNets({});
        QCOMPARE(found(copy), all.mid(1));
        copy.setExcludedComponents({});
        QCOMPARE(found(copy), all);
        QVERIFY(found(routing).isEmpty());

        // The same for another netlist in the place of the first.
        const auto plugless = systemOf(u"U1 Source 1\nD1 DUT 1\nK1 Relay 1,2\nN: U1/1 K1/1\nM: K1/2 D1/1"_s);
        joined = MultipleEDAProvider({plugless.get()}, {});
        QVERIFY(found(routing).isEmpty());
        QCOMPARE(routing.unknownExclusions(), (QStringList{u"K1"_s, u"k2#1"_s, u"B"_s, u"D#1"_s, u"C#2"_s}));
        routing.setExcludedComponents({});
        QCOMPARE(found(routing), QStringList{u"K1#1 |"_s});
        routing.setExcludedNets({u"M#1"_s});
        QVERIFY(found(routing).isEmpty());
        QVERIFY(routing.findPaths(toD1, u"1"_s, toD1, u"1"_s).isEmpty());
        QCOMPARE(routing.findPaths(fromU1, u"1"_s, fromU1, u"1"_s).size(), 1);
    }

    // The stack would not hold as many calls, nor would there be time for as many passes.
    void longChain()
    {
        const auto board = chain(100'000);
        MultipleEDAProvider joined({board.get()}, {});
        Routing routing(&joined);
        routing.setMaxSwitchingComponentsPerPath(2147483646);
        for (const qsizetype bound : {0, 1, 2}) {
            routing.setMaxPaths(bound);
            const auto paths = routing.findPaths(fromU1, u"1"_s, toD1, u"1"_s);
            QCOMPARE(paths.size(), 1);
            QCOMPARE(paths[0].switchingComponents.size(), 100'000);
            QCOMPARE(paths[0].switchingComponents.last()->ref, u"K100000#1"_s);
        }

        QStringList relays;
        for (int i = 1; i <= 100'000; ++i)
            relays.append(u"K%1 1 /1-2/1-2"_s.arg(i));
        routing.setRelayContacts(contactsOf(relays.join(u'\n')));
        const auto traced = routing.findTracedPaths(fromU1, u"1"_s, toD1, u"1"_s);
        QCOMPARE(traced.size(), 1);
        QCOMPARE(traced[0].steps.first().position, 1);
    }

    // There are 400,000,000 paths, which neither time nor memory would suffice for.
    void firstPathOverAComponentOfManyPins()
    {
        QStringList pins, nodes;
        for (int i = 0; i < 40'000; ++i) {
            pins.append(QString::number(i));
            nodes.append(u"K1/"_s + pins.last());
        }
        const auto board = systemOf(u"U1 Source 1\nD1 DUT 1\nK1 Relay %1\nA: U1/1 %2\nB: D1/1 %3"_s.arg(
            pins.join(u','), nodes.mid(20'000).join(u' '), nodes.mid(0, 20'000).join(u' ')));
        MultipleEDAProvider joined({board.get()}, {});
        Routing routing(&joined);
        routing.setMaxPaths(1);
        QCOMPARE(toTexts(routing.findPaths(fromU1, u"1"_s, toD1, u"1"_s)), QStringList{u"K1#1 |"_s});
    }

    void isCalledOff()
    {
        const auto board = chain(100);
        MultipleEDAProvider joined({board.get()}, {});
        for (EDAProvider *provider : {static_cast<EDAProvider *>(board.get()), static_cast<EDAProvider *>(&joined)}) {
            Routing routing(provider);
            routing.setMaxSwitchingComponentsPerPath(2147483646);
            routing.setInterruption([] { return true; });
            QVERIFY(routing.interruption()());
            QCOMPARE(outcomeOf([&] { return routing.findPaths(fromU1, u"1"_s, toD1, u"1"_s); }),
                     u"The search was called off"_s);
            QVERIFY(!routing.explainNoPath(fromU1, u"1"_s, toD1, u"1"_s).isComplete);
        }
    }

    // What each thread works with is its own, and what is made for some types is shared; the thread sanitizer looks on.
    void threadsShareAProvider()
    {
        const auto board =
            systemOf(u"U1 Source 1\nD1 DUT 1\nS1 Source 1\nD2 DUT 1\nK1 Relay 1,2\nK2 Relay 1,2\nF1 Fuse 1,2\n"
                     "A: U1/1 K1/1 F1/1\nB: K1/2 S1/1 D2/1 K2/1\nC: K2/2 F1/2 D1/1"_s);
        MultipleEDAProvider joined({board.get()}, {});
        PlainProvider plain(joined);
        const auto find = [](EDAProvider *provider, int types) {
            Routing routing(provider);
            if (types % 2 == 1)
                routing.setComponentTypesThatAreSwitchable({u"Relay"_s, u"Fuse"_s});
            if (types >= 2)
                routing.setComponentTypesThatAreInterfaces(QStringList{u"source"_s, u"dut"_s}.mid(types / 2 - 1));
            return toTexts(routing.findPaths(fromU1, u"1"_s, toD1, u"1"_s));
        };
        QList<QStringList> expected;
        for (int types = 0; types < 8; ++types)
            expected.append(find(&plain, types));
        QCOMPARE(expected.at(0), QStringList{u"K1#1 K2#1 | S1#1/1 D2#1/1"_s});
        QCOMPARE(expected.at(5), (QStringList{u"F1#1 |"_s, u"K1#1 K2#1 | D2#1/1"_s}));
        const auto findManyTimes = [&](int step) {
            int equal = 0;
            for (int i = 0; i < 400; ++i)
                equal += find(&joined, i * step % 8) == expected.at(i * step % 8);
            return equal;
        };
        auto other = std::async(std::launch::async, findManyTimes, 3);
        QCOMPARE(findManyTimes(1), 400);
        QCOMPARE(other.get(), 400);
    }

    void equalsBruteForceOnRandomSystems()
    {
        qsizetype total = 0;
        const int systems = systemCount(2500);
        for (int seed = 0; seed < systems; ++seed) {
            QRandomGenerator random(static_cast<quint32>(seed));
            const auto netlist = randomSystem(random);
            netlist->makesNewNets = random.bounded(4) == 0 && netlist->components.size() < 7; // else it takes long
            const int maxSwitches = random.bounded(-1, 5);
            const int maxNodes = random.bounded(-1, 5);
            Routing routing(netlist.get());
            routing.setMaxSwitchingComponentsPerPath(maxSwitches);
            routing.setMaxAdditionalNodesPerPath(maxNodes);
            const auto all = BruteForce(*netlist, maxSwitches, maxNodes, netlist->makesNewNets).paths();
            for (const qsizetype bound : {qsizetype(0), qsizetype(random.bounded(1, 8))}) {
                routing.setMaxPaths(bound);
                const auto found = toTexts(routing.findTracedPaths(fromU1, u"1"_s, toD1, u"1"_s));
                const auto expected = toTexts(bound == 0 ? all : all.mid(0, bound));
                QCOMPARE(toTexts(routing.findPaths(fromU1, u"1"_s, toD1, u"1"_s)),
                         toTexts(untraced(bound == 0 ? all : all.mid(0, bound))));
                QVERIFY2(found == expected,
                         qPrintable(u"seed %1, limits %2, %3 and %4:\n%5\nfound:\n%6\nexpected:\n%7"_s.arg(seed)
                                        .arg(maxSwitches)
                                        .arg(maxNodes)
                                        .arg(bound)
                                        .arg(netsToText(netlist->nets), found.join(u'\n'), expected.join(u'\n'))));
            }
            total += all.size();
        }
        QVERIFY(total > systems); // the systems do have paths
    }
};

VELK_TEST(RoutingTest)

#include "RoutingTest.moc"
