#include "tests/support/PlainPlanning.h"
#include "tests/support/PlanningText.h"
#include "tests/support/RandomRelays.h"
#include "tests/support/TestRegistry.h"
#include "tests/support/TextTable.h"

#include <velkplanning/ConnectionPlanner.h>

#include <velk/model/EDAException.h>

#include <QTest>

#include <functional>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace {

InterfacePin pinOf(const SwitchingModel &model, const QString &name)
{
    const QString ref = name.section(u'/', 0, 0);
    const QString number = name.section(u'/', 1);
    return {ref, number, model.netOf(ref, number)};
}

int netNamed(const SwitchingModel &model, const QString &name)
{
    for (int net = 0; net < model.netCount(); ++net) {
        if (model.netNames(net).contains(name))
            return net;
    }
    return SwitchingModel::none;
}

QString outcomeName(PlanResult result)
{
    switch (result) {
    case PlanResult::Optimal:
        return u"optimal"_s;
    case PlanResult::Feasible:
        return u"feasible"_s;
    case PlanResult::Impossible:
        return u"impossible"_s;
    case PlanResult::Unknown:
        break;
    }
    return u"unknown"_s;
}

/// A word for each number, with a blank before it.
template <typename WordOf>
QString wordsOf(const std::vector<int> &numbers, WordOf wordOf)
{
    QString text;
    for (const int number : numbers)
        text += u' ' + wordOf(number);
    return text;
}

QString planText(const ConnectionPlan &plan, const SwitchingModel &model)
{
    const auto number = [](int value) { return QString::number(value); };
    const auto passive = [&](int value) { return model.passives()[static_cast<std::size_t>(value)].ref; };
    QString text = outcomeName(plan.result) + wordsOf(plan.conflict, number);
    if (!plan.bottleneck.empty())
        text += u" over"_s + wordsOf(plan.bottleneck, [&](int net) { return model.netNames(net).join(u'+'); });
    for (std::size_t gang = 0; gang < plan.positions.size(); ++gang) {
        const QStringList &refs = model.gang(static_cast<int>(gang)).components;
        for (const QString &ref : plan.positions[gang] == 0 ? QStringList() : refs)
            text += u" %1=%2"_s.arg(ref).arg(plan.positions[gang]);
    }
    for (const PlannedGroup &group : plan.groups) {
        if (!group.through.empty())
            text += u"; through"_s + wordsOf(group.through, passive);
        if (!group.sideConnections.isEmpty())
            text += u"; side "_s + toText(group.sideConnections);
    }
    for (const PlannedCoupling &coupling : plan.couplings)
        text += u"; coupled"_s + wordsOf(coupling.groups, number) + u" by"_s + wordsOf(coupling.passives, passive);
    for (const auto &pins : plan.alsoConnected)
        text += u"; also "_s + toText(pins);
    for (const int component : plan.unknown)
        text += u"; touched by "_s + model.ref(component);
    return text;
}

bool hasPlan(const ConnectionPlan &plan)
{
    return plan.result == PlanResult::Optimal || plan.result == PlanResult::Feasible;
}

/// A system with a request and the positions before it.
struct RandomRequest
{
    explicit RandomRequest(quint32 number)
        : seed(number)
        , random(seed)
        , relays(random)
        , model(relays.netlist)
    {
        before = relays.randomPositions(model);
        for (const QString &pin : std::as_const(relays.pins)) {
            if (pinOf(model, pin).net != SwitchingModel::none && !model.netNames(pinOf(model, pin).net).isEmpty())
                pins.append(pin);
        }
        addConnections();
        addRules();
    }

    int stateCount() const
    {
        int count = 1;
        for (int gang = 0; gang < model.gangCount(); ++gang)
            count *= model.gang(gang).positionCount;
        return count;
    }

    /// Of the best plan for this request, from all at rest.
    PlainPlanning::Cost cost(const ConnectionRequest &wanted) const
    {
        return PlainPlanning(model, relays.netlist, wanted).costOf(ConnectionPlanner(model).plan(wanted));
    }

    QByteArray where() const { return "seed " + QByteArray::number(seed); }
    int randomComponent() { return random.bounded(model.componentCount()); }
    int randomNet() { return random.bounded(model.netCount()); }

    /// The same connections where components have other names or numbers.
    ConnectionRequest requestOn(const SwitchingModel &other,
                                const std::function<QString(const QString &)> &renamed) const
    {
        ConnectionRequest result = request;
        for (auto &[from, to] : result.connections) {
            from = pinOf(other, renamed(from.ref) + u'/' + from.number);
            to = pinOf(other, renamed(to.ref) + u'/' + to.number);
        }
        for (auto *components : {&result.excludedComponents, &result.allowedComponents}) {
            for (int &component : *components)
                component = other.componentOf(renamed(model.ref(component)));
        }
        for (int &net : result.excludedNets)
            net = netNamed(other, model.netNames(net).first());
        return result;
    }

    quint32 seed;
    QRandomGenerator random;
    RandomRelays relays;
    SwitchingModel model;
    QStringList pins; ///< on nets that have a name
    ConnectionRequest request;
    std::vector<int> before;

private:
    QString randomPin() { return pins.at(random.bounded(pins.size())); }

    /// Half of them tied together in a random state, so that many requests have a plan.
    void addConnections()
    {
        PlainUnion tied = relays.tiedBy(model, relays.randomPositions(model));
        for (int i = random.bounded(5); i > 0; --i) {
            const QString from = randomPin();
            QString to = randomPin();
            for (int tries = 0; random.bounded(3) > 0 && tied.number(from) != tied.number(to) && tries < 20; ++tries)
                to = randomPin();
            request.connections.append({pinOf(model, from), pinOf(model, to)});
        }
    }

    void addRules()
    {
        const auto happens = [&](int oneIn) { return random.bounded(oneIn) == 0; };
        if (happens(4))
            request.excludedComponents = {randomComponent(), randomComponent()};
        if (happens(8))
            request.excludedNets = {netNamed(model, u"N0"_s)};
        if (happens(3))
            request.allowedComponents = {randomComponent(), randomComponent()};
        request.allowsSideConnections = happens(3);
        request.forbidsCouplings = happens(4);
        request.trustsUnknown = happens(3);
        request.aim = happens(3) ? PlanAim::FewestChanges : PlanAim::FewestAway;
    }
};

/// Sources S1, S2, ... and DUTs D1, D2, ... that a relay each connects with each of these lines.
StubProvider crosspoints(int ends, int lines)
{
    StubProvider netlist;
    for (int line = 0; line < lines; ++line)
        netlist.connect(u"L%1"_s.arg(line), {});
    for (int end = 0; end < ends; ++end) {
        for (const QString &ref : {u"S%1"_s.arg(end), u"D%1"_s.arg(end)}) {
            netlist.add(ref, ref.startsWith(u'S') ? u"Source"_s : u"DUT"_s, {u"1"_s});
            netlist.connect(ref, {ref + u"/1"_s});
            for (int line = 0; line < lines; ++line) {
                const QString relay = u"K%1.%2"_s.arg(ref).arg(line);
                netlist.add(relay, u"Relay"_s, {u"1"_s, u"2"_s});
                netlist.nets.last()->addNode(relay, u"1"_s);
                netlist.nets.at(line)->addNode(relay, u"2"_s);
            }
        }
    }
    return netlist;
}

/// Each source with the DUT of the same number.
ConnectionRequest crossing(int count, const SwitchingModel &model)
{
    ConnectionRequest request;
    for (int i = 0; i < count; ++i)
        request.connections.append({pinOf(model, u"S%1/1"_s.arg(i)), pinOf(model, u"D%1/1"_s.arg(i))});
    return request;
}
}

class ConnectionPlannerTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void plans_data() { addCasesFrom("planning_cases.txt"); }
    void plans()
    {
        QFETCH(QString, input);
        const PlanningText text(input);
        const SwitchingModel model = text.model();
        const auto before = text.before(model).positions;
        QTEST(planText(ConnectionPlanner(model).plan(text.request(model), before), model), "expected");
    }

    void equalsAllStatesOnRandomSystems()
    {
        QMap<PlanResult, int> results;
        for (quint32 seed = 0; seed < 1200; ++seed) {
            const RandomRequest asked(seed);
            if (asked.stateCount() > 1000)
                continue;
            const ConnectionPlan plan = ConnectionPlanner(asked.model).plan(asked.request, asked.before);
            const QString difference =
                PlainPlanning(asked.model, asked.relays.netlist, asked.request, asked.before).differenceOf(plan);
            QVERIFY2(difference.isEmpty(),
                     asked.where() + ", " + (planText(plan, asked.model) + u": "_s + difference).toUtf8());
            ++results[plan.result];
        }
        QVERIFY(results[PlanResult::Optimal] > 300 && results[PlanResult::Impossible] > 300);
    }

    // Names change the numbers of all that is sorted by them.
    void renamingChangesNothing()
    {
        for (quint32 seed = 0; seed < 500; ++seed) {
            const RandomRequest asked(seed);
            const auto renamed = [](const QString &ref) { return QString(ref).replace(u'K', u'Y') + u'#'; };
            StubProvider netlist;
            netlist.parts = asked.relays.netlist.parts;
            for (const auto &component : asked.relays.netlist.components) {
                netlist.components.prepend(EDAComponent::create(renamed(component->ref), QString(), component->part));
                netlist.components.first()->properties = component->properties;
            }
            for (const auto &net : asked.relays.netlist.nets) {
                netlist.nets.prepend(EDANet::create(net->name));
                for (const auto &node : std::as_const(net->nodes))
                    netlist.nets.first()->addNode(renamed(node->ref), node->pin);
            }
            const SwitchingModel model(netlist);
            const ConnectionRequest request = asked.requestOn(model, renamed);
            const ConnectionPlan plan = ConnectionPlanner(model).plan(request);
            QVERIFY2(PlainPlanning(model, netlist, request).costOf(plan) == asked.cost(asked.request), asked.where());
        }
    }

    void relaysAddedMakeNothingWorse()
    {
        for (quint32 seed = 0; seed < 500; ++seed) {
            RandomRequest asked(seed);
            const auto before = asked.cost(asked.request);
            asked.relays.netlist.add(u"A1"_s, u"Relay"_s, {u"1"_s, u"2"_s, u"3"_s})
                ->properties.insert(u"Positions"_s, u"/ 1-2 / 2-3"_s);
            for (const QString &pin : {u"1"_s, u"2"_s, u"3"_s})
                asked.relays.netlist.nets.at(asked.random.bounded(asked.relays.netlist.nets.size()))
                    ->addNode(u"A1"_s, pin);
            const SwitchingModel model(asked.relays.netlist);
            const ConnectionRequest request = asked.requestOn(model, [](const QString &ref) { return ref; });
            const ConnectionPlan plan = ConnectionPlanner(model).plan(request);
            QVERIFY2(PlainPlanning(model, asked.relays.netlist, request).costOf(plan) <= before, asked.where());
        }
    }

    void rulesAddedMakeNothingBetter()
    {
        for (quint32 seed = 0; seed < 500; ++seed) {
            RandomRequest asked(seed);
            const auto before = asked.cost(asked.request);
            QList<ConnectionRequest> harder(6, asked.request);
            harder[0].excludedComponents.push_back(asked.randomComponent());
            harder[1].excludedNets.push_back(asked.randomNet());
            harder[2].forbidsCouplings = true;
            harder[3].trustsUnknown = false;
            harder[4].allowsSideConnections = false;
            harder[5].allowedComponents.clear();
            for (const ConnectionRequest &request : std::as_const(harder))
                QVERIFY2(asked.cost(request) >= before, asked.where());
        }
    }

    // The same states, with other numbers of gangs away from rest. What is connected at rest must not count.
    void restAndOnExchangedLeaveItPossible()
    {
        for (quint32 seed = 0; seed < 500; ++seed) {
            RandomRequest asked(seed);
            asked.request.allowsSideConnections = true;
            asked.request.excludedComponents.clear();
            const bool isPossible = hasPlan(ConnectionPlanner(asked.model).plan(asked.request));
            for (const auto &component : std::as_const(asked.relays.netlist.components)) {
                QStringList positions = component->property(u"Positions"_s).split(u'/');
                std::rotate(positions.begin(), positions.begin() + 1, positions.end());
                if (component->property(u"Gang"_s).isEmpty() && component->properties.contains(u"Positions"_s))
                    component->properties.insert(u"Positions"_s, positions.join(u'/'));
            }
            const SwitchingModel exchanged(asked.relays.netlist);
            QVERIFY2(hasPlan(ConnectionPlanner(exchanged).plan(asked.request)) == isPossible, asked.where());
        }
    }

    void plansTheSameAgain()
    {
        for (quint32 seed = 0; seed < 200; ++seed) {
            const RandomRequest asked(seed);
            const ConnectionPlanner planner(asked.model);
            const QString first = planText(planner.plan(asked.request, asked.before), asked.model);
            QCOMPARE(planText(planner.plan(asked.request, asked.before), asked.model), first);
            QCOMPARE(planText(ConnectionPlanner(asked.model).plan(asked.request, asked.before), asked.model), first);
        }
    }

    void eachConnectionNeedsALine()
    {
        const SwitchingModel model(crosspoints(9, 8));
        const ConnectionPlanner planner(model);
        const ConnectionPlan plan = planner.plan(crossing(8, model));
        QCOMPARE(plan.result, PlanResult::Optimal);
        QCOMPARE(std::count(plan.positions.begin(), plan.positions.end(), 1), 16);
        QCOMPARE(planText(planner.plan(crossing(9, model)), model),
                 u"impossible 0 1 2 3 4 5 6 7 8 over L0 L1 L2 L3 L4 L5 L6 L7"_s);
    }

    void whatIsFoundInTimeHolds()
    {
        QMap<PlanResult, int> results;
        for (quint32 seed = 0; seed < 500; ++seed) {
            const RandomRequest asked(seed);
            if (asked.stateCount() > 1000)
                continue;
            quint32 left = seed % 12;
            const PlanningLimits limits{{}, [&] { return left == 0 || --left == 0; }};
            const ConnectionPlan plan = ConnectionPlanner(asked.model).plan(asked.request, asked.before, limits);
            const PlainPlanning plain(asked.model, asked.relays.netlist, asked.request, asked.before);
            const QString difference = plan.result == PlanResult::Feasible  ? plain.faultOf(plan)
                                       : plan.result == PlanResult::Unknown ? QString()
                                                                            : plain.differenceOf(plan);
            QVERIFY2(difference.isEmpty(), asked.where() + ": " + difference.toUtf8());
            ++results[plan.result];
        }
        QVERIFY(results[PlanResult::Optimal] > 50 && results[PlanResult::Impossible] > 10);
        QVERIFY(results[PlanResult::Feasible] > 0 && results[PlanResult::Unknown] > 50);
    }

    void endsWhenTheTimeIsUp_data()
    {
        QTest::addColumn<int>("milliseconds");
        QTest::addColumn<int>("questions"); // until it is called off
        QTest::newRow("no time") << 0 << -1;
        QTest::newRow("little time") << 2 << -1;
        QTest::newRow("called off at once") << -1 << 0;
        QTest::newRow("called off later") << -1 << 3;
    }
    void endsWhenTheTimeIsUp()
    {
        QFETCH(int, milliseconds);
        QFETCH(int, questions);
        const StubProvider netlist = crosspoints(24, 23);
        const SwitchingModel model(netlist);
        const ConnectionPlanner planner(model);
        for (const int connections : {24, 23, 12}) {
            int asked = 0;
            PlanningLimits limits;
            if (milliseconds >= 0)
                limits.time = std::chrono::milliseconds(milliseconds);
            if (questions >= 0)
                limits.isCalledOff = [&] { return asked++ >= questions; };
            const ConnectionRequest request = crossing(connections, model);
            const ConnectionPlan plan = planner.plan(request, {}, limits);
            if (hasPlan(plan))
                QCOMPARE(PlainPlanning(model, netlist, request).faultOf(plan), QString());
            QVERIFY(connections < 24 || !hasPlan(plan));
            QVERIFY(connections == 24 || plan.result != PlanResult::Impossible);
        }
    }

    void refusesWhatIsNotThere_data()
    {
        QTest::addColumn<QString>("fault");
        for (const QString &fault :
             {u"net too great"_s, u"net below none"_s, u"pin on no net"_s, u"excluded component"_s, u"excluded net"_s,
              u"allowed component"_s, u"too few positions"_s, u"a position too great"_s, u"a position below rest"_s,
              u"errors in the netlist"_s})
            QTest::newRow(qPrintable(fault)) << fault;
    }
    void refusesWhatIsNotThere()
    {
        QFETCH(QString, fault);
        StubProvider netlist;
        for (const QString &line : {u"S1 Source 1"_s, u"D1 DUT 1"_s, u"K1 Relay 1,2"_s, u"K2 Relay 1,2"_s,
                                    u"A: S1/1 K1/1"_s, u"B: D1/1 K1/2"_s})
            addLine(line, netlist);
        if (fault == u"errors in the netlist"_s)
            netlist.components.at(2)->properties.insert(u"Positions"_s, u"1-2"_s);
        const SwitchingModel model(netlist);
        ConnectionRequest request{{{pinOf(model, u"S1/1"_s), pinOf(model, u"D1/1"_s)}}};
        std::vector<int> before{0, 0};
        if (fault == u"net too great"_s)
            request.connections.first().to.net = model.netCount();
        else if (fault == u"net below none"_s)
            request.connections.first().from.net = SwitchingModel::none;
        else if (fault == u"pin on no net"_s)
            request.connections.first().to = pinOf(model, u"K2/1"_s);
        else if (fault == u"excluded component"_s)
            request.excludedComponents = {SwitchingModel::none};
        else if (fault == u"excluded net"_s)
            request.excludedNets = {model.netCount()};
        else if (fault == u"allowed component"_s)
            request.allowedComponents = {model.componentCount()};
        else if (fault == u"too few positions"_s)
            before = {0};
        else if (fault == u"a position too great"_s)
            before = {0, 2};
        else if (fault == u"a position below rest"_s)
            before = {-1, 0};
        QVERIFY_THROWS_EXCEPTION(EDAException, ConnectionPlanner(model).plan(request, before));
    }
};

VELK_TEST(ConnectionPlannerTest)

#include "ConnectionPlannerTest.moc"
