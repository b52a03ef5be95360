#include <velk/facade/SystemModel.h>

#include <velk/facade/StandardTypes.h>
#include <velk/facade/VelkSystemPrivate.h>
#include <velk/naming/PinSearch.h>

using namespace Qt::StringLiterals;

namespace Velk {

namespace {

std::vector<int> numbersOfComponents(const SwitchingModel &model, const QStringList &refs)
{
    std::vector<int> numbers;
    for (const QString &ref : refs)
        numbers.push_back(model.componentOf(ref));
    return numbers;
}

/// Those without pins have no number.
std::vector<int> numbersOfNets(const SwitchingModel &model, const EDAProvider &netlist, const QStringList &names)
{
    std::vector<int> numbers;
    for (const QString &name : names) {
        for (const auto &net : findNets(netlist, name)) {
            if (const int number = model.netOf(*net); number != SwitchingModel::none)
                numbers.push_back(number);
        }
    }
    return numbers;
}
}

SystemModel::SystemModel(const VelkSystem &system)
    : d(system.d)
{
    answered([&] { d->switching->requirePositions(); });
}

SystemModel::~SystemModel() = default;
SystemModel::SystemModel(const SystemModel &other) = default;
SystemModel &SystemModel::operator=(const SystemModel &other) = default;
SystemModel::SystemModel(SystemModel &&other) noexcept = default;
SystemModel &SystemModel::operator=(SystemModel &&other) noexcept = default;

const SwitchingModel &SystemModel::model() const
{
    return d->switching->model();
}

std::vector<int> SystemModel::excludedComponents() const
{
    return numbersOfComponents(model(), d->routing->excludedComponents());
}

std::vector<int> SystemModel::excludedNets() const
{
    return answered([&] { return numbersOfNets(model(), *d->netlist, d->routing->excludedNets()); });
}

InterfacePin SystemModel::pin(const VelkRouteEnd &end) const
{
    return answered([&] {
        const PinChoice choice = d->findEnd(end);
        const QString &ref = choice.component->ref;
        const QString &number = choice.pin->number;
        const int net = model().netOf(ref, number);
        if (net == SwitchingModel::none || model().netNames(net).isEmpty())
            throw EDAException(u"pin %1 of %2 is on no net"_s.arg(number, ref));
        return InterfacePin{ref, number, net};
    });
}

std::vector<int> SystemModel::components(const std::vector<std::string> &texts) const
{
    return answered([&] { return numbersOfComponents(model(), d->refsOfComponents(texts)); });
}

std::vector<int> SystemModel::nets(const std::vector<std::string> &names) const
{
    return answered([&] { return numbersOfNets(model(), *d->netlist, toQt(names)); });
}

std::vector<int> SystemModel::positions(const std::map<std::string, int> &positionsOfRelays) const
{
    return answered([&] { return d->switching->positionsOfGangs(positionsOfRelays); });
}

VelkNodeInfo SystemModel::record(const QString &ref, const QString &pin) const
{
    return d->records->nodeOf(ref, pin);
}
}
