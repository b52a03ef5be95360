#include "tests/support/Boards.h"
#include "tests/support/TestRegistry.h"

#include <velk/facade/VelkSystem.h>
#include <velkplanning/VelkPlanner.h>

#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace {

VelkRouteEnd end(const std::string &ref, const std::string &pin)
{
    return {{}, pin, ref};
}

/// Of the board below.
const VelkConnection hiToA{{{{"Dev", "DMM"}}, "HI"}, end("J1#1", "A")};
const VelkConnection hiToB{end("U1", "HI"), end("J1", "B")};
const VelkConnection outToA{end("U2", "1"), end("J1", "A")};
const VelkConnection outToB{end("U2", "1"), end("J1", "B")};
const VelkConnection toD{end("U3", "1"), end("J1", "4")};
const VelkConnection toE{end("U4", "1"), end("J1", "5")};

VelkNodeInfo node(const std::string &component, const std::string &pin, const std::string &name = {})
{
    return {component, {pin, name, ""}};
}
}

class VelkPlannerTest : public QObject
{
    Q_OBJECT
    using Kind = VelkSystemException::Kind;
    using Positions = std::map<std::string, int>;

private Q_SLOTS:
    void plansStepByStep()
    {
        const auto steps = VelkPlanner(system).planSteps(
            {{"A", {{hiToA}}}, {"both", {{hiToA, outToB}}}, {"none", {{hiToA, outToA}}}, {"B", {{hiToB, toD}}}});
        QCOMPARE(steps.size(), std::size_t(4));
        const VelkNodeInfo hi = node("U1#1", "1", "HI");
        const VelkPlannedWay hiAndA{{{"N1#1", {"C", "", ""}, "K1#1", {"1", "", ""}, 1, "low"}}, "N2#1"};
        const VelkPlannedGroup hiWithA{{0}, {node("J1#1", "1", "A"), hi}, {}, {"N1#1", "N2#1"}, {}};
        QVERIFY(steps[0] == (VelkPlannedStep{"A",
                                             {VelkPlanResult::Optimal,
                                              {{"K1#1", 1}},
                                              {{"K1#1", "low"}},
                                              {hiAndA},
                                              {hiWithA},
                                              {{{0}, {node("U2#1", "1")}, {"R2#1"}}},
                                              {},
                                              {},
                                              {},
                                              {}},
                                             {},
                                             {"K1#1"},
                                             {}}));
        const VelkPlannedWay outAndB{
            {{"N5#1", {"1", "", ""}, "K2#1", {"2", "", ""}, 1}, {"N6#1", {"1", "", ""}, "K3#1", {"2", "", ""}, 1}},
            "N4#1"};
        QVERIFY(steps[1] ==
                (VelkPlannedStep{
                    "both",
                    {VelkPlanResult::Optimal,
                     {{"K1#1", 1}, {"K2#1", 1}, {"K3#1", 1}},
                     {{"K1#1", "low"}},
                     {hiAndA, outAndB},
                     {hiWithA, {{1}, {node("J1#1", "2", "B"), node("U2#1", "1")}, {}, {"N4#1", "N5#1", "N6#1"}, {}}},
                     {{{0, 1}, {}, {"R1#1", "R2#1"}}},
                     {},
                     {},
                     {},
                     {}},
                    {},
                    {"K2#1", "K3#1"},
                    {}}));
        QVERIFY(
            steps[2] ==
            (VelkPlannedStep{"none", {VelkPlanResult::Impossible, {}, {}, {}, {}, {}, {}, {}, {1}, {}}, {}, {}, {}}));
        const VelkPlannedWay hiAndB{
            {{"N1#1", {"C", "", ""}, "K1#1", {"2", "", ""}, 2, "high"}, {"N3#1", {"1", "", ""}, "R1#1", {"2", "", ""}}},
            "N4#1"};
        const VelkPlannedWay toDAlone{{{"N8#1", {"11", "", ""}, "K4#1", {"14", "", ""}, 1}}, "N10#1"};
        QVERIFY(steps[3] ==
                (VelkPlannedStep{"B",
                                 {VelkPlanResult::Optimal,
                                  {{"K1#1", 2}, {"K4#1", 1}},
                                  {{"K1#1", "high"}},
                                  {hiAndB, toDAlone},
                                  {{{0}, {node("J1#1", "2", "B"), hi}, {"R1#1"}, {"N1#1", "N3#1", "N4#1"}, {}},
                                   {{1}, {node("J1#1", "4"), node("U3#1", "1")}, {}, {"N10#1", "N8#1"}, {}}},
                                  {{{0}, {node("U2#1", "1")}, {"R2#1"}}},
                                  {},
                                  {},
                                  {},
                                  {}},
                                 {"K1#1", "K2#1", "K3#1"},
                                 {"K1#1", "K4#1"},
                                 {{false, {node("J1#1", "3"), node("J1#1", "4"), node("U3#1", "1")}, {{"K4#1"}}}}}));
    }

    void plansAStepFromAnyState()
    {
        const VelkPlanner planner(system);
        const auto steps = planner.planSteps({{"B", {{hiToB}}}, {"A", {{hiToA}}}});
        QVERIFY(planner.planStep({"B", {{hiToB}}}) == steps[0]);
        QVERIFY(planner.planStep({"A", {{hiToA}}}, {{"K1", 2}}, {"R1"}) == steps[1]);
        QVERIFY(planner.planStep({"A", {{hiToA}}}).transients.empty());
        const VelkTransient overR2{
            false, {node("J1#1", "1", "A"), node("U1#1", "1", "HI"), node("U2#1", "1")}, {{"K1#1"}}};
        QVERIFY(planner.planStep({"A", {{hiToA}}}, {}, {"R2#1"}).transients == std::vector{overR2});
    }

    void keepsOut()
    {
        const VelkPlanner planner(system);
        const auto conflictOf = [](const VelkPlan &plan) {
            return plan.result == VelkPlanResult::Impossible ? plan.conflict : std::vector<std::size_t>{99};
        };
        const std::vector<std::size_t> first{0};
        VelkPlanRequest request{{outToB}};
        QVERIFY(planner.plan(request).positions == (Positions{{"K2#1", 1}, {"K3#1", 1}}));
        request.withoutComponents = {"K4", "Gang=G"};
        QCOMPARE(conflictOf(planner.plan(request)), first);
        request.withoutComponents.clear();
        request.withoutNets = {"N6"};
        QCOMPARE(conflictOf(planner.plan(request)), first);

        VelkSystem without = system;
        without.setExcludedComponents({"K3"});
        QCOMPARE(conflictOf(VelkPlanner(without).plan({{outToB}})), first);
        without.setExcludedComponents({});
        without.setExcludedNets({"N6"});
        QCOMPARE(conflictOf(VelkPlanner(without).plan({{outToB}})), first);

        VelkPlanRequest uncoupled{{hiToA, outToB}};
        uncoupled.forbidsCouplings = true;
        QCOMPARE(conflictOf(planner.plan(uncoupled)), (std::vector<std::size_t>{0, 1}));
    }

    void allows()
    {
        const VelkPlanner planner(system);
        VelkPlanRequest request{{toE}};
        request.trustsUnknown = true;
        QVERIFY(planner.plan(request).result == VelkPlanResult::Impossible);
        request.allowedComponents = {"J2"};
        VelkPlan plan = planner.plan(request);
        QVERIFY(plan.result == VelkPlanResult::Optimal);
        QVERIFY(plan.groups.at(0).sideConnections == std::vector<VelkNodeInfo>{node("J2#1", "1")});
        QCOMPARE(plan.unknown, std::vector<std::string>{"X1#1"});
        request.trustsUnknown = false;
        QVERIFY(planner.plan(request).result == VelkPlanResult::Impossible);
        request.trustsUnknown = true;
        request.allowedComponents.clear();
        request.allowsSideConnections = true;
        QVERIFY(planner.plan(request).groups.at(0).sideConnections.size() == 1);

        request.fewestChanges = true;
        QVERIFY(planner.plan(request, {{"K8", 1}}).positions == (Positions{{"K6#1", 1}, {"K8#1", 1}}));
        QVERIFY(planner.plan(request, {{"K5", 1}}).positions == (Positions{{"K5#1", 1}, {"K6#1", 1}}));
    }

    void endsWhenAsked()
    {
        const VelkPlanner planner(system);
        int asked = 0;
        VelkPlanRequest request{{hiToA, outToB}};
        request.isCalledOff = [&] { return ++asked > 0; };
        QVERIFY(planner.plan(request).result >= VelkPlanResult::Feasible);
        QVERIFY(asked > 0);
        request.isCalledOff = {};
        request.timeLimit = std::chrono::milliseconds(0);
        const auto result = planner.plan(request).result;
        QVERIFY(result == VelkPlanResult::Feasible || result == VelkPlanResult::Unknown);
    }

    void refuses()
    {
        const VelkPlanner planner(system);
        const auto refusalOf = [](const auto &query) {
            try {
                query();
            } catch (const VelkSystemException &exception) {
                return exception;
            }
            return VelkSystemException(Kind::Writing, "nothing");
        };
        const auto onNoNet = refusalOf([&] { planner.plan({{{end("U1", "HI"), end("J1", "6")}}}); });
        QVERIFY(onNoNet.kind() == Kind::NotFound);
        QCOMPARE(onNoNet.message(), std::string("pin 6 of J1#1 is on no net"));
        VelkPlanRequest unknown{{hiToA}};
        unknown.allowedComponents = {"J9"};
        QVERIFY(refusalOf([&] { planner.plan(unknown); }).kind() == Kind::NotFound);
        unknown.allowedComponents.clear();
        unknown.withoutNets = {"N99"};
        QVERIFY(refusalOf([&] { planner.planSteps({{"1", unknown}}); }).kind() == Kind::NotFound);
        QVERIFY(refusalOf([&] { planner.planStep({"1", {{hiToA}}}, {}, {"R9"}); }).kind() == Kind::NotFound);
        QVERIFY(refusalOf([&] { planner.plan({{hiToA}}, {{"K1", 3}}); }).kind() == Kind::Positions);
        const VelkSystem wrong({write(u"K1 [1 2] CompType=Relay, Positions=/~1\nA: K1/1\nB: K1/2"_s)});
        QVERIFY(refusalOf([&] { VelkPlanner(wrong).plan({}); }).kind() == Kind::Positions);
    }

private:
    std::string write(const QString &board) { return writeBoards(board, folder.path()).first().toStdString(); }

    QTemporaryDir folder;
    // U1 reaches A over K1 and B over K1 and R1, U2 reaches B over a gang. R2 couples, but is no way. K4 is a
    // changeover; U4 meets J2 on its way, and there something unknown.
    const VelkSystem system{
        {write(u"U1 [1=HI] CompType=Source, Dev=DMM\nU2 [1] CompType=Source\nU3 [1] CompType=Source\n"
               "U4 [1] CompType=Source\nJ1 [1=A 2=B 3 4 5 6] CompType=DUT\nJ2 [1] CompType=DUT\n"
               "K1 [C 1 2] CompType=Relay, Positions=/~low:~C-1~/~high:~C-2\n"
               "K2 [1 2] CompType=Relay, Gang=G\nK3 [1 2] CompType=Relay, Gang=G\n"
               "K4 [11 12 14] CompType=Relay\nK5 [1 2] CompType=Relay\nK6 [1 2] CompType=Relay\n"
               "K8 [1 2] CompType=Relay\nX1 [1 2 3] CompType=Relay\n"
               "R1 [1 2] CompType=Resistor\nR2 [1 2] CompType=Resistor, Through=no\n"
               "N1: U1/1 K1/C R2/1\nN2: K1/1 J1/1\nN3: K1/2 R1/1\nN4: R1/2 J1/2 K3/2\n"
               "N5: U2/1 K2/1 R2/2\nN6: K2/2 K3/1\nN8: U3/1 K4/11\nN9: K4/12 J1/3 X1/2\n"
               "N10: K4/14 J1/4\nN11: U4/1 K5/1 K8/1\nN12: K5/2 K8/2 K6/1 J2/1\n"
               "N13: K6/2 J1/5 X1/1"_s)}};
};

VELK_TEST(VelkPlannerTest)

#include "VelkPlannerTest.moc"
