#include <velk/switching/MergedNets.h>

#include <algorithm>
#include <tuple>

namespace Velk {

namespace {

bool comesBefore(const MergedNets::Pin &a, const MergedNets::Pin &b)
{
    return std::tie(a.component, a.number) < std::tie(b.component, b.number);
}

std::size_t toIndex(int number)
{
    return static_cast<std::size_t>(number);
}
}

void MergedNets::addNet(const QString &name)
{
    names.push_back({name});
}

void MergedNets::addPin(int component, const QString &number)
{
    pins.push_back({component, number, count() - 1});
}

void MergedNets::addPinAlone(int component, const QString &number)
{
    pins.push_back({component, number, none});
}

void MergedNets::merge()
{
    std::stable_sort(pins.begin(), pins.end(), comesBefore);
    DisjointSets sets(count());
    mergeNetsOfPins(sets);
    numberAnew(sets);
    findPinsOfComponents();
}

// Leaves each pin once.
void MergedNets::mergeNetsOfPins(DisjointSets &sets)
{
    std::vector<Pin> each;
    for (const Pin &pin : pins) {
        if (each.empty() || comesBefore(each.back(), pin))
            each.push_back(pin);
        else if (each.back().net == none)
            each.back().net = pin.net;
        else if (pin.net != none)
            sets.unite(each.back().net, pin.net);
    }
    pins = std::move(each);
}

// A net that was made of several has the place of the first of them.
void MergedNets::numberAnew(DisjointSets &sets)
{
    std::vector<QStringList> merged;
    std::vector<int> numbers(names.size(), none);
    for (int net = 0; net < count(); ++net) {
        const int root = sets.leastOf(net);
        if (root == net) {
            numbers[toIndex(net)] = static_cast<int>(merged.size());
            merged.emplace_back();
        }
        merged[toIndex(numbers[toIndex(root)])] += names[toIndex(net)];
    }
    for (QStringList &netNames : merged)
        netNames.sort();
    for (Pin &pin : pins) {
        if (pin.net != none)
            pin.net = numbers[toIndex(sets.leastOf(pin.net))];
    }
    names = std::move(merged);
    for (Pin &pin : pins) {
        if (pin.net == none) {
            pin.net = count();
            names.emplace_back();
        }
    }
}

void MergedNets::findPinsOfComponents()
{
    for (std::size_t place = 0; place < pins.size(); ++place) {
        while (firstPins.size() <= toIndex(pins[place].component))
            firstPins.push_back(place);
    }
    firstPins.push_back(pins.size());
}

MergedNets::Pins MergedNets::pinsOf(int component) const
{
    const std::size_t number = toIndex(component);
    if (number + 1 >= firstPins.size()) // it comes after all that have any
        return {nullptr, nullptr};
    return {pins.data() + firstPins[number], pins.data() + firstPins[number + 1]};
}

int MergedNets::netOf(int component, const QString &number) const
{
    const Pins all = pinsOf(component);
    const auto *const found = std::lower_bound(
        all.begin(), all.end(), number, [](const Pin &pin, const QString &wanted) { return pin.number < wanted; });
    return found == all.end() || found->number != number ? none : found->net;
}
}
