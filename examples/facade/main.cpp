// Prints the routes from the positive output of power supply 1 to the supply pin of the DUT on bench 2. Uses
// the facade only, so nothing of Qt is seen here.
//
//     facade-example instruments.net matrix.net adapter.net

#include <velk/facade/VelkRouting.h>

#include <iostream>
#include <string>
#include <vector>

int main(int argc, char **argv)
{
    try {
        const Velk::VelkRouting routing(std::vector<std::string>(argv + 1, argv + argc));
        const auto routes =
            routing.getRoutes({{"Dev", "PSU"}, {"DevNo", "1"}}, "OUT+", {{"CompType", "DUT"}, {"Bench", "2"}}, "VCC");
        for (const auto &route : routes) {
            std::cout << "switch on:";
            for (const auto &component : route.switchingComponents)
                std::cout << ' ' << component.ref;
            std::cout << '\n';
        }
        return routes.empty() ? 1 : 0;
    } catch (const Velk::VelkRoutingException &exception) {
        std::cerr << exception.message() << '\n';
        return 2;
    }
}
