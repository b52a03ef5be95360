#include "cli/commands/SearchOptions.h"

#include <CLI/CLI.hpp>

using namespace Velk;

namespace VelkCli {

SearchOptions::SearchOptions()
    : maxSwitches(Routing::DEFAULT_MAX_SWITCHING_COMPONENTS_PER_PATH)
    , maxConnections(Routing::DEFAULT_MAX_ADDITIONAL_NODES_PER_PATH)
{
}

void SearchOptions::addTo(CLI::App &command, SystemFileOptions &system)
{
    system.fill(
        addNumber(command, "--max-switches", maxSwitches,
                  "Go on from a net that was reached over at most N switches, so that routes of up to N+1 are found"),
        [this](const VelkSystemFile &file) { maxSwitches = file.limits.maxSwitches; });
    system.fill(
        addNumber(command, "--max-connections", maxConnections, "Leave out routes with more side connections than N"),
        [this](const VelkSystemFile &file) { maxConnections = file.limits.maxConnections; });
    command.add_flag("--as-drawn", asDrawn,
                     "Cross relays from any pin to any other, as they are drawn, whatever positions they have");
    exclusions.addTo(command, system);
    relays.addTo(command, system);
}

Routing SearchOptions::routingOn(EDAProvider &netlist, const NetlistOptions &netlistOptions) const
{
    Routing routing(&netlist);
    routing.setComponentTypesThatAreSwitchable(toQStringList(netlistOptions.switchableTypes));
    routing.setComponentTypesThatAreInterfaces(toQStringList(netlistOptions.interfaceTypes));
    routing.setComponentTypesThatAreConnectors(toQStringList(netlistOptions.connectorTypes));
    routing.setMaxSwitchingComponentsPerPath(maxSwitches);
    routing.setMaxAdditionalNodesPerPath(maxConnections);
    routing.setExcludedComponents(exclusions.componentsIn(netlist, routing.componentTypesThatAreSwitchable()));
    QStringList excludedNets;
    for (const auto &net : exclusions.netsIn(netlist))
        excludedNets.append(net->name);
    excludedNets.removeDuplicates();
    routing.setExcludedNets(excludedNets);
    return routing;
}

std::optional<SwitchingModel> SearchOptions::switchingOf(const EDAProvider &netlist,
                                                         const NetlistOptions &netlistOptions) const
{
    if (asDrawn)
        return {};
    return loadSwitching(netlist, netlistOptions, relays);
}
}
