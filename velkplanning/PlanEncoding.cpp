#include <velkplanning/PlanEncoding.h>

#include <velkplanning/Places.h>

#include <algorithm>
#include <functional>

namespace Velk {

PlanEncoding::PlanEncoding(const PlanProblem &planProblem, const WayCosts &wayCosts, const PlanCost &mostCost,
                           const PlanningTime &planningTime)
    : problem(planProblem)
    , costs(wayCosts)
    , budget(mostCost)
    , time(planningTime)
    , solver(planningTime)
    , nodes(planProblem.network.model.netCount())
    , labels(static_cast<std::size_t>(planProblem.network.model.netCount()))
{
    chooseMovable();
    tieFixed();
    addLabels();
    addLinks();
    for (const WayCosts::Flow &flow : costs.flows())
        addFlow(flow);
    if (problem.request.forbidsCouplings)
        addCouplings();
    if (!problem.request.trustsUnknown) {
        for (const auto &nets : problem.network.netsOfUnknown)
            addUnknownRelay(nets);
    }
}

void PlanEncoding::chooseMovable()
{
    const SwitchNetwork &network = problem.network;
    const bool hasRoom = costs.leavesRoomForOthers(budget);
    for (int gang = 0; gang < network.model.gangCount(); ++gang)
        moves.push_back(costs.isSuspect(gang) || (hasRoom && canHelpBesides(gang)));
    for (const WayCosts::Flow &flow : costs.flows()) {
        for (const int arc : costs.arcsWithin(budget, flow)) {
            const int link = costs.arcs()[placeOf(arc)].link;
            if (link != WayGraph::none)
                moves[placeOf(network.links[placeOf(link)].gang)] = true;
        }
    }
    positions.resize(moves.size());
    awayLiterals.resize(moves.size());
    for (int gang = 0; gang < network.model.gangCount(); ++gang) {
        moves[placeOf(gang)] = moves[placeOf(gang)] && problem.mayMove(gang);
        if (moves[placeOf(gang)])
            addPositions(gang);
    }
}

/// Whether another position than the usual one can be of use though no way leads over the gang: it has to open a
/// contact then. Where some pins are allowed it may also take two of them into an extent, which else were connected
/// outside of all.
bool PlanEncoding::canHelpBesides(int gang) const
{
    if (!problem.request.allowedComponents.empty() && !problem.request.allowsSideConnections)
        return true;
    const int usual = problem.usualPosition(gang);
    const auto links = problem.network.linksOfGang.of(gang);
    return std::any_of(links.begin(), links.end(), [&](int i) {
        const SwitchLink &link = problem.network.links[placeOf(i)];
        const auto count = placeOf(problem.network.model.gang(gang).positionCount);
        return problem.isClosed(link, usual) && link.positions.size() < count;
    });
}

void PlanEncoding::addPositions(int gang)
{
    const int count = problem.network.model.gang(gang).positionCount;
    auto &literals = positions[placeOf(gang)];
    const int away = solver.newVariable();
    awayLiterals[placeOf(gang)] = away;
    literals.push_back(-away);
    if (count == 2) {
        literals.push_back(away);
    } else {
        while (static_cast<int>(literals.size()) < count)
            literals.push_back(solver.newVariable());
        solver.addClause(literals);
        solver.addAtMostOne(literals);
    }
    for (int position = 0; position < count; ++position)
        solver.prefer(position == problem.usualPosition(gang) ? literals[placeOf(position)]
                                                              : -literals[placeOf(position)]);
}

void PlanEncoding::tieFixed()
{
    for (const SwitchLink &link : problem.network.links) {
        if (!moves[placeOf(link.gang)] && problem.isClosed(link, problem.usualPosition(link.gang)))
            nodes.unite(link.net, link.otherNet);
    }
}

int PlanEncoding::closedLiteral(int link)
{
    const SwitchLink &closed = problem.network.links[placeOf(link)];
    if (!moves[placeOf(closed.gang)])
        return problem.isClosed(closed, problem.usualPosition(closed.gang)) ? SatSolver::yes : -SatSolver::yes;
    const auto &literals = positions[placeOf(closed.gang)];
    if (closed.positions.size() == literals.size())
        return SatSolver::yes;
    if (closed.positions.size() == 1)
        return literals[placeOf(closed.positions.front())];
    const auto [known, isNew] = closedLiterals.try_emplace(link, 0);
    if (!isNew)
        return known->second;
    known->second = solver.newVariable();
    for (int position = 0; position < static_cast<int>(literals.size()); ++position) {
        const int literal = literals[placeOf(position)];
        solver.addImplication(literal, problem.isClosed(closed, position) ? known->second : -known->second);
    }
    return known->second;
}

void PlanEncoding::addLabels()
{
    const int netCount = problem.network.model.netCount();
    for (int net = 0; net < netCount; ++net) {
        if (problem.isWatched(net) && !problem.request.allowsSideConnections)
            classes.push_back(problem.network.restSets[placeOf(net)]);
    }
    std::sort(classes.begin(), classes.end());
    classes.erase(std::unique(classes.begin(), classes.end()), classes.end());
    const auto numbers = std::max(classes.size(), placeOf(problem.groupCount()));
    labelSize = 1;
    while ((std::size_t(1) << (labelSize - 1)) < numbers)
        ++labelSize;
    for (int net = 0; net < netCount; ++net) {
        if (problem.ownerOf(net) != PlanProblem::none || problem.isWatched(net) || problem.isBarred(net))
            fixLabel(net);
    }
}

void PlanEncoding::fixLabel(int net)
{
    Label &label = labels[placeOf(nodeOf(net))];
    const auto require = [&](const Label &code) {
        if (label.empty())
            label = code;
        else
            addLabelEquality(SatSolver::yes, label, code);
    };
    if (problem.ownerOf(net) != PlanProblem::none) {
        require(codeOf(true, problem.ownerOf(net)));
        return;
    }
    const bool hasClass = problem.isWatched(net) && !problem.request.allowsSideConnections;
    const Label code = hasClass ? classCodeOf(net) : Label();
    if (problem.isBarred(net) && hasClass) {
        require(code);
    } else if (problem.isBarred(net)) {
        solver.addClause({-labelOf(nodeOf(net)).front()});
    } else if (hasClass) {
        const Label &known = labelOf(nodeOf(net));
        for (std::size_t i = 1; i < known.size(); ++i) // unless it is that of a group
            solver.addEquality(-known.front(), known[i], code[i]);
    }
}

/// The label of pins that are connected with those on the net at rest.
PlanEncoding::Label PlanEncoding::classCodeOf(int net) const
{
    const int restSet = problem.network.restSets[placeOf(net)];
    const auto place = std::lower_bound(classes.cbegin(), classes.cend(), restSet);
    return codeOf(false, static_cast<int>(place - classes.cbegin()));
}

PlanEncoding::Label &PlanEncoding::labelOf(int node)
{
    Label &label = labels[placeOf(node)];
    while (label.size() < labelSize)
        label.push_back(solver.newVariable());
    return label;
}

PlanEncoding::Label PlanEncoding::codeOf(bool isGroup, int number) const
{
    Label code = {isGroup ? SatSolver::yes : -SatSolver::yes};
    for (std::size_t bit = 0; bit + 1 < labelSize; ++bit)
        code.push_back((number >> bit) & 1 ? SatSolver::yes : -SatSolver::yes);
    return code;
}

void PlanEncoding::addLabelEquality(int premise, const Label &label, const Label &other)
{
    for (std::size_t i = 0; i < label.size(); ++i)
        solver.addEquality(premise, label[i], other[i]);
}

void PlanEncoding::addLinks()
{
    for (std::size_t i = 0; i < problem.network.links.size(); ++i) {
        const SwitchLink &link = problem.network.links[i];
        const int node = nodeOf(link.net);
        const int other = nodeOf(link.otherNet);
        if (moves[placeOf(link.gang)] && node != other)
            addLabelEquality(closedLiteral(static_cast<int>(i)), labelOf(node), labelOf(other));
    }
}

// A label for what is coupled: it is the same over all passives, whether or not a group goes through them.
void PlanEncoding::addCouplings()
{
    const SwitchNetwork &network = problem.network;
    DisjointSets coupled = nodes;
    for (const PassiveComponent &passive : network.model.passives()) {
        for (const int net : passive.nets)
            coupled.unite(net, passive.nets.front());
    }
    std::map<int, Label> couplingLabels;
    const auto couplingLabelOf = [&](int net) -> const Label & {
        Label &label = couplingLabels[coupled.leastOf(net)];
        while (label.size() < labelSize)
            label.push_back(solver.newVariable());
        return label;
    };
    for (int group = 0; group < problem.groupCount(); ++group) {
        for (const int net : problem.groups.at(group).nets)
            addLabelEquality(SatSolver::yes, couplingLabelOf(net), codeOf(true, group));
    }
    for (std::size_t i = 0; i < network.links.size(); ++i) {
        const SwitchLink &link = network.links[i];
        if (moves[placeOf(link.gang)])
            addLabelEquality(closedLiteral(static_cast<int>(i)), couplingLabelOf(link.net),
                             couplingLabelOf(link.otherNet));
    }
}

// The nets that it may connect have one label, as far as groups reach them.
void PlanEncoding::addUnknownRelay(const std::vector<int> &nets)
{
    Label touched;
    while (touched.size() < labelSize)
        touched.push_back(solver.newVariable());
    for (const int net : nets) {
        const Label &label = labels[placeOf(nodeOf(net))];
        if (!label.empty())
            addLabelEquality(label.front(), label, touched);
    }
}

int PlanEncoding::throughLiteral(int passive)
{
    const auto [known, isNew] = throughLiterals.try_emplace(passive, 0);
    if (!isNew)
        return known->second;
    known->second = solver.newVariable();
    solver.prefer(-known->second);
    const auto &nets = problem.network.model.passives()[placeOf(passive)].nets;
    for (const int net : nets)
        addLabelEquality(known->second, labelOf(nodeOf(net)), labelOf(nodeOf(nets.front())));
    return known->second;
}

void PlanEncoding::addFlow(const WayCosts::Flow &flow)
{
    const int source = nodeOf(flow.source);
    const int target = nodeOf(flow.target);
    if (source == target)
        return;
    struct Uses
    {
        std::vector<int> into;
        std::vector<int> outOf;
    };
    std::map<int, Uses> usesOfNodes = {{source, {}}, {target, {}}};
    for (const int i : costs.arcsWithin(budget, flow)) {
        if (time.isUp()) // then it will not be solved, so that nothing comes of what is missing
            return;
        const WayGraph::Arc &arc = costs.arcs()[placeOf(i)];
        const int from = wayNodeOf(arc.from);
        const int to = wayNodeOf(arc.to);
        const int condition = arc.link != WayGraph::none ? closedLiteral(arc.link) : throughLiteral(arc.passive);
        if (from == to || to == source || from == target || condition == -SatSolver::yes)
            continue;
        const int use = solver.newVariable();
        solver.addImplication(use, condition);
        usesOfNodes[from].outOf.push_back(use);
        usesOfNodes[to].into.push_back(use);
    }
    const Label code = codeOf(true, flow.group);
    for (const auto &[node, uses] : usesOfNodes) {
        const bool isEnd = node == source || node == target;
        const bool hasOneWayIn = !isEnd && uses.into.size() == 1;
        const int isOn = isEnd ? int(SatSolver::yes) : hasOneWayIn ? uses.into.front() : solver.newVariable();
        if (node < problem.network.model.netCount())
            addLabelEquality(isOn, labelOf(node), code);
        for (const int use : uses.outOf)
            solver.addImplication(use, isOn);
        if (node != target)
            solver.addAnyOf(isOn, uses.outOf);
        if (hasOneWayIn)
            continue;
        for (const int use : uses.into)
            solver.addImplication(use, isOn);
        if (node != source)
            solver.addAnyOf(isOn, uses.into);
        if (!isEnd) // so that the way from the source never comes back, and has to end at the target
            solver.addAtMostOne(uses.into);
    }
}

/// Passives are nodes of their own, also where fixed gangs connect their nets.
int PlanEncoding::wayNodeOf(int node)
{
    return node < problem.network.model.netCount() ? nodeOf(node) : node;
}

std::vector<int> PlanEncoding::literalsOfCost(PlanCostLevel level) const
{
    std::vector<int> literals;
    if (level == PassivesThrough) {
        for (const auto &through : throughLiterals)
            literals.push_back(through.second);
        return literals;
    }
    for (std::size_t gang = 0; gang < moves.size(); ++gang) {
        if (!moves[gang])
            continue;
        const int usual = problem.usualPosition(static_cast<int>(gang));
        literals.push_back(level == GangsAway ? awayLiterals[gang] : -positions[gang][placeOf(usual)]);
    }
    return literals;
}

/// Of the gangs that do not move.
PlanCost PlanEncoding::fixedCost() const
{
    PlanCost cost = {};
    for (int gang = 0; gang < problem.network.model.gangCount(); ++gang) {
        if (!moves[placeOf(gang)]) {
            const PlanCost ofGang = costs.costOf(gang, problem.usualPosition(gang));
            std::transform(cost.cbegin(), cost.cend(), ofGang.cbegin(), cost.begin(), std::plus<>());
        }
    }
    return cost;
}

void PlanEncoding::readDraft()
{
    const SwitchingModel &model = problem.network.model;
    found = {};
    for (int gang = 0; gang < model.gangCount(); ++gang) {
        const auto &literals = positions[placeOf(gang)];
        const auto taken =
            std::find_if(literals.cbegin(), literals.cend(), [this](int literal) { return solver.isTrue(literal); });
        found.positions.push_back(moves[placeOf(gang)] ? static_cast<int>(taken - literals.cbegin())
                                                       : problem.usualPosition(gang));
    }
    for (const auto &[passive, literal] : throughLiterals) {
        if (solver.isTrue(literal))
            found.through.push_back(passive);
    }
}

SatSolver::Answer PlanEncoding::solve(SatSolver::Effort effort)
{
    while (true) {
        const auto answer = solver.solve(effort);
        if (answer != SatSolver::Answer::Satisfied)
            return answer;
        readDraft();
        DraftState state(problem, found);
        if (refuseStrayPins(state) || refuseDoubtfulNets(state))
            continue;
        found.through = state.neededPassives();
        return answer;
    }
}

void PlanEncoding::limitCosts(const PlanCost &cost)
{
    const PlanCost fixed = fixedCost();
    for (const auto level : {ChangedGangs, GangsAway, PassivesThrough}) {
        if (cost[level] <= budget[level] || isLimited[level])
            continue;
        isLimited[level] = true;
        if (fixed[level] > budget[level])
            solver.addClause({});
        else
            solver.addAtMost(budget[level] - fixed[level], literalsOfCost(level));
    }
}

// Pins that are allowed are labelled as in an extent, though they are in none.
bool PlanEncoding::refuseStrayPins(DraftState &state)
{
    if (problem.request.allowsSideConnections)
        return false;
    const auto nets = state.strayPins();
    for (const int net : nets)
        requireSupport(state, net);
    return !nets.empty();
}

/// A label of a group on what is connected with the net needs a contact or a passive that leads there.
void PlanEncoding::requireSupport(DraftState &state, int net)
{
    const SwitchNetwork &network = problem.network;
    const auto isInside = [&](int other) { return state.extentOf(other) == state.extentOf(net); };
    std::vector<int> clause = {-labelOf(nodeOf(net)).front()};
    for (std::size_t i = 0; i < network.links.size(); ++i) {
        if (isInside(network.links[i].net) != isInside(network.links[i].otherNet) &&
            problem.isPossible(network.links[i]))
            clause.push_back(closedLiteral(static_cast<int>(i)));
    }
    for (const auto &[passive, literal] : throughLiterals) {
        const auto &nets = network.model.passives()[placeOf(passive)].nets;
        if (std::any_of(nets.cbegin(), nets.cend(), isInside) && !std::all_of(nets.cbegin(), nets.cend(), isInside))
            clause.push_back(literal);
    }
    solver.addClause(clause);
}

bool PlanEncoding::refuseDoubtfulNets(DraftState &state)
{
    if (problem.request.trustsUnknown)
        return false;
    const auto nets = state.doubtfulNets();
    if (nets.empty())
        return false;
    auto clause = openingLiterals(state, nets.back());
    clause.push_back(-labelOf(nodeOf(nets.front())).front());
    solver.addClause(clause);
    return true;
}

/// One of them is true where the net is no longer connected with a forbidden pin, as it is in the state.
std::vector<int> PlanEncoding::openingLiterals(DraftState &state, int net)
{
    const SwitchNetwork &network = problem.network;
    std::map<int, int> linkTo = {{net, PlanProblem::none}}; // by which a net was reached
    std::vector<int> reached = {net};
    std::size_t next = 0;
    while (!problem.isForbidden(reached[next])) {
        const int from = reached[next++];
        for (const int i : network.linksOfNet.of(from)) {
            const SwitchLink &link = network.links[placeOf(i)];
            const int to = link.otherEnd(from);
            if (state.isClosed(link) && linkTo.try_emplace(to, i).second)
                reached.push_back(to);
        }
    }
    std::vector<int> literals;
    for (int at = reached[next]; linkTo[at] != PlanProblem::none;) {
        literals.push_back(-closedLiteral(linkTo[at]));
        at = network.links[placeOf(linkTo[at])].otherEnd(at);
    }
    return literals;
}
}
