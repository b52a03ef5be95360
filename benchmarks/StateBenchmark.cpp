#include "benchmarks/Suite.h"
#include "benchmarks/System.h"

#include <velk/switching/Connectivity.h>
#include <velk/switching/StateConnections.h>
#include <velk/switching/SwitchingModel.h>

#include <memory>

namespace VelkBenchmarks {

using namespace Velk;

namespace {

const System &system()
{
    return keptSystem("exported", exportedSystem);
}

/// A state in which every tenth relay is set.
std::vector<int> someSet(const SwitchingModel &model)
{
    std::vector<int> positions(static_cast<std::size_t>(model.gangCount()), 0);
    for (std::size_t gang = 0; gang < positions.size(); gang += 10)
        positions[gang] = 1;
    return positions;
}

/// Of one change, each relay changing and changing back.
double secondsToChangeEach(Connectivity &state)
{
    const int gangs = state.model().gangCount();
    const double seconds = secondsOf([&] {
        for (int gang = 0; gang < gangs; ++gang) {
            const int position = state.position(gang);
            state.setPosition(gang, 1 - position);
            state.setPosition(gang, position);
        }
    });
    return seconds / (2.0 * gangs);
}
}

void registerStates()
{
    registerComparison("state/model", []() -> Comparison {
        const auto &provider = system().provider;
        return {{{"velk", [&] { return secondsToMake([&] { return std::make_unique<SwitchingModel>(provider); }); }}},
                {}};
    });
    registerComparison("state/large", []() -> Comparison {
        const auto model = std::make_shared<SwitchingModel>(system().provider);
        const auto connections = [model] {
            Connectivity state(*model);
            state.setPositions(someSet(*model));
            return connectionsIn(state);
        };
        return {{{"velk", [connections] { return secondsToMake(connections); }}}, {}};
    });
    registerComparison("state/change", []() -> Comparison {
        const auto state = std::make_shared<Connectivity>(SwitchingModel(system().provider));
        state->setPositions(someSet(state->model()));
        return {{{"velk", [state] { return secondsToChangeEach(*state); }}}, {}};
    });
}
}
