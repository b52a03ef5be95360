#include <velk/coverage/ComponentNumbers.h>

#include <algorithm>

namespace Velk {

ComponentNumbers::ComponentNumbers(const EDAProvider &provider, const NetlistIndex *providerIndex)
    : netlist(provider)
    , index(providerIndex)
{
}

int ComponentNumbers::numberOf(const EDAComponent &component) const
{
    return index ? index->componentNumber(component.ref) : listing().numbers.value(component.ref, NetlistIndex::none);
}

const QSharedPointer<EDAComponent> &ComponentNumbers::component(int number) const
{
    return index ? index->component(number) : listing().components.at(number);
}

void ComponentNumbers::sort(std::vector<int> &numbers) const
{
    const auto &places = listing().places;
    std::sort(numbers.begin(), numbers.end(), [&](int number, int other) {
        return places[static_cast<std::size_t>(number)] < places[static_cast<std::size_t>(other)];
    });
}

// The first of a reference counts, since that is the one that look-ups find.
const ComponentNumbers::Listing &ComponentNumbers::listing() const
{
    std::call_once(isListed, [this] {
        listed.components = netlist.getComponents();
        listed.places.resize(static_cast<std::size_t>(index ? index->componentCount() : listed.components.size()));
        for (qsizetype place = listed.components.size() - 1; place >= 0; --place) {
            const auto &component = listed.components.at(place);
            if (component.isNull())
                continue;
            const int number = index ? index->componentNumber(component->ref) : static_cast<int>(place);
            listed.places[static_cast<std::size_t>(number)] = static_cast<int>(place);
            if (!index)
                listed.numbers.insert(component->ref, number);
        }
    });
    return listed;
}
}
