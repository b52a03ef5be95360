#include <velk/routing/PathSearch.h>

#include <velk/model/RoutingLog.h>

using namespace Qt::StringLiterals;

namespace Velk {

PathSearch::PathSearch(const EDAProvider &netlist, const RoutingRules &routingRules, Interruption &searchInterruption,
                       const NodeWithComponent &sourceNode, const QSharedPointer<EDANetNode> &destinationNode)
    : provider(netlist)
    , rules(routingRules)
    , interruption(searchInterruption)
    , sourceComponent(sourceNode.component)
    , ends{sourceNode.node, destinationNode}
    , positions(netlist, rules.relayContacts)
    , exclusions(netlist, rules.exclusions)
    , deepening(rules.maxNetsSearched(), rules.maxAdditionalNodes, rules.maxPaths)
{
}

void PathSearch::run(const std::function<void()> &keep)
{
    keepCurrent = keep;
    do
        searchOnce();
    while (deepening.startNextPass());
}

void PathSearch::searchOnce()
{
    searchNode(sourceComponent, ends.source);
    while (!branch.isEmpty() && !deepening.isComplete()) {
        Level &level = branch.last();
        if (!level.exits.isEmpty()) {
            // Copies, since the branch may move in memory when it grows.
            const auto component = level.crossed.component;
            const auto exit = level.exits.takeFirst();
            searchNode(component, exit);
        } else if (!level.entries.isEmpty()) {
            crossNextComponent(level);
        } else {
            leaveNet();
        }
    }
}

// The component is the one over which the node was reached.
void PathSearch::searchNode(const QSharedPointer<EDAComponent> &component, const QSharedPointer<EDANetNode> &node)
{
    interruption.ask(); // each time, since a step goes over the whole netlist
    const auto net = findNetContainingNode(node);
    if (net.isNull()) {
        logRouting([&] {
            return u"No net found when searching for Node(Component.Ref=%1,PinNumber=%2)"_s.arg(node->ref, node->pin);
        });
        return;
    }
    if (visited.contains(net.data()) || exclusions.hasNet(*net))
        return;
    const bool found = net->containsNode(ends.destination);
    logNodeSearch(component, net, found);
    // Ask for the destination before the limit: a path may end one net beyond the last that is searched
    // further.
    if (found) {
        keepPath(net, node);
        return;
    }
    const std::size_t collectedBefore = additionalNodes.size();
    if (node != ends.source)
        collectAdditionalNodes(net, node);
    if (pathLimitReached()) {
        additionalNodes.resize(collectedBefore);
        return;
    }
    visited.insert(net.data());
    branch.append(Level{net, node, collectedBefore, switchableNodes(net, node), {}});
}

void PathSearch::crossNextComponent(Level &level)
{
    const auto entry = level.entries.takeFirst();
    level.crossed = entry;
    level.exits = possibleExits(entry, getOtherNodesOfComponent(entry.component, entry.node->pin));
}

void PathSearch::leaveNet()
{
    const Level level = branch.takeLast();
    visited.remove(level.net.data());
    additionalNodes.resize(level.additionalNodesBefore);
}

void PathSearch::keepPath(const QSharedPointer<EDANet> &net, const QSharedPointer<EDANetNode> &node)
{
    if (!crossesRequired() || !deepening.keep(branch.size(), static_cast<qsizetype>(additionalNodes.size())))
        return;
    lastNet = net;
    lastArrival = node;
    keepCurrent();
}

template <>
RoutingPath PathSearch::path()
{
    RoutingPath path;
    path.switchingComponents.reserve(branch.size());
    for (const Level &level : branch)
        path.switchingComponents.append(level.crossed.component);
    path.additionalNodes.reserve(static_cast<qsizetype>(additionalNodes.size()));
    for (const auto &node : additionalNodes)
        path.additionalNodes.append(node);
    return path;
}

template <>
TracedPath PathSearch::path()
{
    TracedPath path;
    path.steps = stepsOfBranch(lastArrival->pin);
    positions.tell(path.steps);
    path.lastNet = lastNet;
    for (qsizetype i = 0; i < branch.size(); ++i) {
        const Level &level = branch.at(i);
        const std::size_t end =
            i + 1 == branch.size() ? additionalNodes.size() : branch.at(i + 1).additionalNodesBefore;
        for (std::size_t node = level.additionalNodesBefore; node < end; ++node)
            path.additionalNodes.append({additionalNodes[node], level.net});
    }
    return path;
}

QList<TracedStep> PathSearch::stepsOfBranch(const QString &lastExitPin) const
{
    QList<TracedStep> steps;
    steps.reserve(branch.size());
    for (qsizetype i = 0; i < branch.size(); ++i) {
        const Level &level = branch.at(i);
        steps.append({level.net, level.crossed.node->pin, level.crossed.component,
                      i + 1 == branch.size() ? lastExitPin : branch.at(i + 1).arrival->pin});
    }
    return steps;
}

QSharedPointer<EDANet> PathSearch::findNetContainingNode(const QSharedPointer<EDANetNode> &node) const
{
    const auto nets = provider.getNets();
    for (const auto &net : nets) {
        if (net && net->containsNode(node))
            return net;
    }
    return {};
}

QList<NodeWithComponent> PathSearch::otherNodesWithComponentOfNet(const QSharedPointer<EDANet> &net,
                                                                  const QSharedPointer<EDANetNode> &node) const
{
    QList<NodeWithComponent> result;
    const auto otherNodes = net->otherNodes(node);
    for (const auto &other : otherNodes) {
        const auto component = provider.getComponentByRef(other->ref);
        if (component)
            result.append({other, component});
        else
            logRouting([&] { return u"No component found for component.ref '%1'"_s.arg(other->ref); });
    }
    return result;
}

QList<NodeWithComponent> PathSearch::switchableNodes(const QSharedPointer<EDANet> &net,
                                                     const QSharedPointer<EDANetNode> &node) const
{
    QList<NodeWithComponent> result;
    const auto others = otherNodesWithComponentOfNet(net, node);
    for (const auto &other : others) {
        if (rules.roles.of(other.component->type()).isSwitchable && ends.canCross(other.node, node) &&
            !exclusions.hasComponent(*other.component))
            result.append(other);
    }
    return result;
}

void PathSearch::collectAdditionalNodes(const QSharedPointer<EDANet> &net, const QSharedPointer<EDANetNode> &node)
{
    const auto others = otherNodesWithComponentOfNet(net, node);
    for (const auto &other : others) {
        if (rules.roles.of(other.component->type()).isInterface && ends.isAdditional(other.node, node))
            additionalNodes.push_back(other.node);
    }
}

QList<QSharedPointer<EDANetNode>> PathSearch::getOtherNodesOfComponent(const QSharedPointer<EDAComponent> &component,
                                                                       const QString &pinNumber) const
{
    const auto part = provider.getPartByName(component->part);
    if (part.isNull()) {
        logRouting(
            [&] { return u"No part found for name '%1' of component '%2'"_s.arg(component->part, component->ref); });
        return {};
    }
    QList<QSharedPointer<EDANetNode>> result;
    for (const auto &pin : std::as_const(part->pins)) {
        if (pin && pin->number != pinNumber)
            result.append(EDANetNode::create(component->ref, pin->number));
    }
    return result;
}

// Those by which some state of the relays makes the branch. It is looked through for each, which takes no longer than
// the netlist that is looked through next.
QList<QSharedPointer<EDANetNode>> PathSearch::possibleExits(const NodeWithComponent &entry,
                                                            const QList<QSharedPointer<EDANetNode>> &exits)
{
    if (!positions.isKnown(*entry.component))
        return exits;
    QList<QSharedPointer<EDANetNode>> result;
    for (const auto &exit : exits) {
        if (positions.arePossible(stepsOfBranch(exit->pin)))
            result.append(exit);
    }
    return result;
}

// Beyond this net it takes one switch more than to get here.
bool PathSearch::pathLimitReached()
{
    const auto nodes = static_cast<qsizetype>(additionalNodes.size());
    const qsizetype switches = branch.size() + 1;
    return !deepening.enters(switches, nodes);
}

bool PathSearch::crossesRequired() const
{
    if (rules.requiredComponents.isEmpty())
        return true;
    QSet<QString> missing(rules.requiredComponents.cbegin(), rules.requiredComponents.cend());
    for (const Level &level : branch)
        missing.remove(level.crossed.component->ref);
    return missing.isEmpty();
}

void PathSearch::logNodeSearch(const QSharedPointer<EDAComponent> &component, const QSharedPointer<EDANet> &net,
                               bool found) const
{
    logRouting([&] {
        const QString depth(visited.size() + 1, u'|');
        return u"%1[%2]\t(%3) %4"_s.arg(depth, EDAComponent::propertiesToString(component->properties), net->name,
                                        found ? u"found"_s : QString());
    });
}
}
