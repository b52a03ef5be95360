#include "cli/formats/ModelNames.h"

using namespace Velk;

namespace VelkCli {

namespace {

template <typename Names>
QStringList sortedNames(const std::vector<int> &numbers, const Names &namesOf)
{
    QStringList names;
    for (const int number : numbers)
        names += namesOf(number);
    names.sort();
    return names;
}
}

QStringList refsOfComponents(const SwitchingModel &model, const std::vector<int> &components)
{
    return sortedNames(components, [&](int component) { return model.ref(component); });
}

QStringList refsOfPassives(const SwitchingModel &model, const std::vector<int> &passives)
{
    return sortedNames(passives, [&](int passive) { return model.passives()[static_cast<std::size_t>(passive)].ref; });
}

QStringList refsOfGangs(const SwitchingModel &model, const std::vector<int> &gangs)
{
    return sortedNames(gangs, [&](int gang) { return model.gang(gang).components; });
}

QStringList namesOfNets(const SwitchingModel &model, const std::vector<int> &nets)
{
    return sortedNames(nets, [&](int net) { return model.netNames(net); });
}
}
