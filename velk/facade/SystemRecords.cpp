#include <velk/facade/SystemRecords.h>

#include <velk/facade/StandardTypes.h>
#include <velk/index/NetlistIndex.h>
#include <velk/naming/References.h>

namespace Velk {

SystemRecords::SystemRecords(const MultipleEDAProvider &netlist)
    : provider(netlist)
{
    for (const auto &part : provider.getParts()) {
        partNames.add(part->name);
        auto &[numbers, pins] = pinsOfParts.emplace_back();
        for (const auto &pin : part->pins) {
            if (numbers.add(pin->number) == static_cast<int>(pins.size()))
                pins.push_back(toStandard(*pin));
        }
    }
}

VelkPartInfo SystemRecords::of(const EDAPart &part)
{
    VelkPartInfo info{part.name.toStdString(), part.lib.toStdString(), {}};
    for (const auto &pin : part.pins)
        info.pins.push_back(toStandard(*pin));
    return info;
}

VelkPinInfo SystemRecords::pinOf(const EDAComponent &component, const QString &number) const
{
    const int part = partNames.numberOf(component.part);
    if (part != TextNumbers<QString>::none) {
        const auto &[numbers, pins] = pinsOfParts[static_cast<std::size_t>(part)];
        const int pin = numbers.numberOf(number);
        if (pin != TextNumbers<QString>::none)
            return pins[static_cast<std::size_t>(pin)];
    }
    return {number.toStdString(), {}, {}};
}

VelkNodeInfo SystemRecords::nodeOf(const QString &ref, const QString &pin) const
{
    const auto component = provider.getComponentByRef(ref);
    return {ref.toStdString(), component ? pinOf(*component, pin) : VelkPinInfo{pin.toStdString(), {}, {}}};
}

VelkNetInfo SystemRecords::of(const EDANet &net) const
{
    VelkNetInfo info{net.name.toStdString(), {}};
    info.pins.reserve(static_cast<std::size_t>(net.nodes.size()));
    for (const auto &node : net.nodes)
        info.pins.push_back(nodeOf(node->ref, node->pin));
    return info;
}

std::vector<VelkPlacedPin> SystemRecords::pinsOf(const EDAComponent &component) const
{
    std::vector<VelkPlacedPin> pins;
    const auto part = provider.getPartByName(component.part);
    for (const auto &pin : part ? part->pins : QList<QSharedPointer<EDAPin>>())
        pins.push_back({toStandard(*pin), nameOfNetAt(component, pin->number)});
    return pins;
}

// A system of too many pins has no index that tells.
std::string SystemRecords::nameOfNetAt(const EDAComponent &component, const QString &pin) const
{
    if (const auto *index = provider.netlistIndex()) {
        const int net = index->netOfTerminal(index->numberedNode(component.ref, pin).terminal);
        return net == NetlistIndex::none ? std::string() : index->net(net)->name.toStdString();
    }
    const auto node = EDANetNode::create(component.ref, pin);
    for (const auto &net : provider.getNets()) {
        if (net->containsNode(node))
            return net->name.toStdString();
    }
    return {};
}

VelkRouteStep SystemRecords::of(const TracedStep &step, const SystemSwitching *switching) const
{
    VelkRouteStep result{step.net->name.toStdString(), pinOf(*step.component, step.entryPin),
                         step.component->ref.toStdString(), pinOf(*step.component, step.exitPin)};
    if (step.position != TracedStep::asDrawn) {
        result.position = step.position;
        const auto relay = switching->contacts()->constFind(step.component->ref);
        result.positionName = relay->positions.at(step.position).name.toStdString();
    } else if (switching) {
        result.isUnknown = switching->isUnknown(step.component->ref);
    }
    return result;
}

VelkRoute SystemRecords::of(const TracedPath &path, const SystemSwitching *switching) const
{
    VelkRoute route{{}, path.lastNet->name.toStdString(), {}};
    route.steps.reserve(static_cast<std::size_t>(path.steps.size()));
    for (const TracedStep &step : path.steps)
        route.steps.push_back(of(step, switching));
    route.sideConnections.reserve(static_cast<std::size_t>(path.additionalNodes.size()));
    for (const TracedNode &additional : path.additionalNodes) {
        const VelkNodeInfo node = nodeOf(additional.node->ref, additional.node->pin);
        route.sideConnections.push_back({additional.net->name.toStdString(), node.component, node.pin});
    }
    return route;
}

VelkReach SystemRecords::of(const PathReach &reach) const
{
    VelkReach result{{}, {}, reach.isAlone, reach.isExcluded};
    for (const auto &net : reach.nets)
        result.nets.push_back(net->name.toStdString());
    for (const auto &node : reach.unpluggedPins)
        result.unpluggedPins.push_back(nodeOf(node->ref, node->pin));
    return result;
}

VelkCoverage SystemRecords::of(const CoverageMatrix &matrix, const QList<QList<int>> &rows,
                               const QList<CriticalPairs> &critical) const
{
    VelkCoverage result{of(matrix.sources()), of(matrix.duts()), {}, {}};
    for (const auto &row : rows) {
        auto &switches = result.switches.emplace_back();
        for (const int count : row)
            switches.push_back(count == CoverageMatrix::unreached ? std::nullopt : std::optional(count));
    }
    for (const auto &[component, lost] : critical)
        result.critical.push_back({component->ref.toStdString(), {lost.cbegin(), lost.cend()}});
    return result;
}

std::vector<VelkNodeInfo> SystemRecords::of(const QList<NodeWithComponent> &pins) const
{
    std::vector<VelkNodeInfo> result;
    for (const auto &pin : pins)
        result.push_back(nodeOf(pin.node->ref, pin.node->pin));
    return result;
}

VelkFinding SystemRecords::of(const Finding &finding)
{
    return {finding.name().toStdString(),   toStandard(finding.places),
            finding.text.toStdString(),     finding.advice().toStdString(),
            toStandard(finding.components), toStandard(finding.nets),
            toStandard(finding.pins),       {finding.netlists.cbegin(), finding.netlists.cend()},
            finding.message().toStdString()};
}

VelkNoRouteReason SystemRecords::of(const NoPathReason &reason, const SystemSwitching *switching) const
{
    VelkNoRouteReason result{reason.isComplete,
                             reason.isConnected,
                             {},
                             {},
                             of(reason.fromSource),
                             of(reason.fromDestination),
                             toStandard(refsOf(reason.between)),
                             reason.isConnectedInOtherDirection,
                             reason.isRealizable};
    if (reason.shortest >= 0)
        result.shortest = static_cast<std::size_t>(reason.shortest);
    for (const SufficientLimits &limits : reason.sufficientLimits)
        result.sufficientLimits.push_back({limits.maxSwitchingComponents, limits.maxAdditionalNodes,
                                           static_cast<std::size_t>(limits.switchingComponents),
                                           static_cast<std::size_t>(limits.additionalNodes)});
    result.excludedComponents = toStandard(refsOf(reason.excludedComponents));
    for (const auto &net : reason.excludedNets)
        result.excludedNets.push_back(net->name.toStdString());
    result.isConnectedOverOthers = reason.isConnectedOverOthers;
    if (reason.conflict) {
        result.conflict = VelkPositionConflict{of(reason.conflict->path, nullptr), {}};
        for (const TracedStep &step : reason.conflict->steps)
            result.conflict->steps.push_back(of(step, switching));
    }
    return result;
}

VelkRelayPositions SystemRecords::of(const SwitchingModel &model, int component)
{
    const RelayPositions &known = model.positions(component);
    const int gang = model.gangOf(component);
    VelkRelayPositions result{toStandard(known.rule), {}, {}, false};
    for (const ContactPosition &position : known.positions) {
        auto &[name, closed] = result.positions.emplace_back();
        name = position.name.toStdString();
        for (const Contact &contact : position.closed)
            closed.emplace_back(contact.pin.toStdString(), contact.otherPin.toStdString());
    }
    if (gang != SwitchingModel::none) {
        result.gang = toStandard(model.gang(gang).components);
        result.isUnknown = model.gang(gang).isUnknown;
    }
    return result;
}

std::vector<std::vector<VelkNodeInfo>> SystemRecords::of(const QList<QList<InterfacePin>> &sets) const
{
    std::vector<std::vector<VelkNodeInfo>> result;
    for (const auto &pins : sets) {
        auto &nodes = result.emplace_back();
        for (const InterfacePin &pin : pins)
            nodes.push_back(nodeOf(pin.ref, pin.number));
    }
    return result;
}

VelkConnections SystemRecords::of(const StateConnections &connections) const
{
    VelkConnections result{of(connections.connected), {}};
    for (const PinCoupling &coupling : connections.couplings)
        result.couplings.push_back({of(coupling.sets), toStandard(coupling.passives)});
    return result;
}
}
