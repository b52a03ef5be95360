// Prints over how few switches the pins of the multimeter reach those of the DUT on bench 1, and without which
// components they do not.
//
//     coverage-example instruments.net matrix.net adapter.net

#include <velk/facade/VelkSystem.h>

#include <iostream>

int main(int argc, char **argv)
try {
    const Velk::VelkSystem system(std::vector<std::string>(argv + 1, argv + argc));

    Velk::VelkCoverageOptions options;
    options.sourceProperties = {{"Dev", "DMM"}};
    options.dutProperties = {{"Bench", "1"}};
    options.withCritical = true;
    const auto coverage = system.coverage(options);
    for (std::size_t row = 0; row < coverage.sources.size(); ++row)
        for (std::size_t column = 0; column < coverage.duts.size(); ++column)
            if (const auto switches = coverage.switches[row][column])
                std::cout << coverage.sources[row].pin.name << " reaches " << coverage.duts[column].pin.name << " over "
                          << *switches << '\n';
    for (const auto &[component, lost] : coverage.critical)
        std::cout << "pairs lost without " << component << ": " << lost.size() << '\n';
} catch (const std::exception &exception) {
    std::cerr << exception.what() << '\n';
    return 2;
}
