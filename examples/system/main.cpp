// Prints how many relays a system has, the first route from the first channel of the function generator to the AUX pin
// of the DUT on bench 1, pin by pin, what is connected while its relays are set, and why there is none over a single
// relay.
//
//     system-example velk.toml

#include <velk/facade/VelkSystem.h>

#include <iostream>
#include <stdexcept>

int main(int argc, char **argv)
try {
    if (argc != 2)
        throw std::runtime_error("system-example: give it a system file");
    const auto system = Velk::VelkSystem::open(argv[1]);
    std::cout << system.components({{"CompType", "Relay"}}).size() << " relays\n";

    const Velk::VelkRouteEnd generator{{{"Dev", "FGEN"}, {"Channel", "1"}}, "OUT"};
    const Velk::VelkRouteEnd dut{{{"CompType", "DUT"}, {"Bench", "1"}}, "AUX"};
    const auto routes = system.routes(generator, dut);
    for (const auto &step : routes.at(0).steps)
        std::cout << step.net << ": " << step.component << " from pin " << step.pinIn.number << " to pin "
                  << step.pinOut.number << '\n';

    const auto state = routes.at(0).state();
    for (const auto &[relay, position] : state)
        std::cout << relay << " is set to position " << position << '\n';
    for (const auto &coupling : system.connected(state).couplings) {
        std::cout << "coupled:";
        for (const auto &pins : coupling.sets)
            for (const auto &pin : pins)
                std::cout << ' ' << pin.component << '.' << pin.pin.name;
        std::cout << '\n';
    }

    Velk::VelkSearchOptions options;
    options.maxSwitches = 1;
    const auto reason = system.whyNoRoute(generator, dut, options);
    for (const auto &limits : reason.sufficientLimits)
        std::cout << "over " << limits.switches << " switches, with a limit of " << limits.maxSwitches << '\n';
} catch (const std::exception &exception) {
    std::cerr << exception.what() << '\n';
    return 2;
}
