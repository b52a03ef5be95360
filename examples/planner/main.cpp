// Prints which relays to set so that the DUT of bench 2 is supplied, and then is measured as well: what moves, the way
// of each connection, and what may touch while it moves.
//
//     planner-example velk.toml

#include <velk/facade/VelkSystem.h>
#include <velkplanning/VelkPlanner.h>

#include <iostream>
#include <map>
#include <stdexcept>
#include <string>

int main(int argc, char **argv)
try {
    if (argc != 2)
        throw std::runtime_error("planner-example: give it a system file");
    const auto system = Velk::VelkSystem::open(argv[1]);
    const Velk::VelkPlanner planner(system);

    const std::map<std::string, std::string> supply{{"Dev", "PSU"}};
    const std::map<std::string, std::string> meter{{"Dev", "DMM"}};
    const std::map<std::string, std::string> dut{{"CompType", "DUT"}, {"Bench", "2"}};
    Velk::VelkPlanRequest supplied;
    supplied.connections = {{{supply, "OUT+"}, {dut, "VCC"}}, {{supply, "OUT-"}, {dut, "GND"}}};
    Velk::VelkPlanRequest measured = supplied;
    measured.connections.push_back({{meter, "HI"}, {dut, "OUT"}});

    const auto steps = planner.planSteps({{"supply", supplied}, {"measure", measured}});

    for (const auto &step : steps) {
        std::cout << step.name << (step.plan.result == Velk::VelkPlanResult::Optimal ? ": proven\n" : ": no proof\n");
        for (const auto &relay : step.toRest)
            std::cout << "  " << relay << " to rest\n";
        for (const auto &relay : step.toSet)
            std::cout << "  " << relay << " to position " << step.plan.positions.at(relay) << '\n';
        for (const auto &way : step.plan.ways) {
            std::cout << "  way:";
            for (const auto &crossed : way.steps)
                std::cout << ' ' << crossed.component;
            std::cout << " to " << way.lastNet << '\n';
        }
        for (const auto &transient : step.transients) {
            std::cout << "  may touch:";
            for (const auto &[component, pin] : transient.pins)
                std::cout << ' ' << component << '.' << pin.name;
            std::cout << '\n';
        }
    }
} catch (const std::exception &exception) {
    std::cerr << exception.what() << '\n';
    return 2;
}
