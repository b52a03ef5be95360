// What a query can be told beyond its two ends, without Qt: types, limits, tolerant reading. Asks for the ways from the
// function generator to the AUX pin of the DUT on bench 1 and from the current input of the multimeter to I_IN.
//
//     tour-example instruments.net matrix.net adapter.net

#include <velk/facade/VelkRouting.h>

#include <iostream>
#include <string>
#include <vector>

namespace {

void print(const std::vector<Velk::VelkRoutingPath> &routes)
{
    for (const auto &route : routes) {
        std::cout << "switch on:";
        for (const auto &component : route.switchingComponents)
            std::cout << ' ' << component.ref << " (" << component.value << ')';
        for (const auto &connection : route.additionalConnections)
            std::cout << ", also connects " << connection.component.ref << " pin " << connection.pin.name;
        std::cout << '\n';
    }
}

void showRoutes(const std::vector<std::string> &files)
{
    Velk::VelkRouting::setTraceEnabled(false);
    Velk::VelkRouting routing(files, {"Connector"}, Velk::VelkReadingMode::Tolerant);
    for (const auto &warning : routing.warnings())
        std::cerr << "warning: " << warning << '\n';

    routing.setMaxSwitchingComponentsPerPath(4);
    routing.setMaxAdditionalConnectionsPerPath(1);
    routing.setMaxRoutes(4);
    print(routing.getRoutes({{"Dev", "FGEN"}, {"Channel", "1"}}, "OUT", {{"CompType", "DUT"}, {"Bench", "1"}}, "AUX"));

    routing.setSwitchableTypes({"Relay", "Resistor", "Fuse"});
    print(routing.getRoutes({{"Dev", "DMM"}}, "AMPS", {{"CompType", "DUT"}, {"Bench", "1"}}, "I_IN"));
}
}

int main(int argc, char **argv)
{
    try {
        showRoutes(std::vector<std::string>(argv + 1, argv + argc));
        return 0;
    } catch (const Velk::VelkRoutingException &exception) {
        std::cerr << exception.message() << '\n';
        return 2;
    }
}
