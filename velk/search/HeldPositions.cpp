#include <velk/search/HeldPositions.h>

#include <velk/index/NetlistIndex.h>

#include <algorithm>
#include <iterator>

namespace Velk {

HeldPositions::HeldPositions(const ContactTable &contactTable, SearchMemory &searchMemory)
    : table(contactTable)
    , memory(searchMemory)
{
    memory.latestCrossings.clear(table.gangCount());
    memory.heldGangs.clear();
    memory.commonPositions.clear();
}

bool HeldPositions::take(const NumberedContact *contact)
{
    if (!contact) {
        memory.heldGangs.push_back({NetlistIndex::none, NetlistIndex::none, {nullptr, nullptr}, false});
        return true;
    }
    HeldGang held{contact->gang, latestCrossing(contact->gang), table.positionsOf(*contact), false};
    if (held.before != NetlistIndex::none && !narrow(held, memory.heldGangs[static_cast<std::size_t>(held.before)]))
        return false;
    memory.latestCrossings.set(held.gang, static_cast<int>(memory.heldGangs.size()));
    memory.heldGangs.push_back(held);
    return true;
}

void HeldPositions::release()
{
    const HeldGang &held = memory.heldGangs.back();
    if (held.gang != NetlistIndex::none)
        memory.latestCrossings.set(held.gang, held.before);
    if (held.ownsPositions)
        memory.commonPositions.pop_back();
    memory.heldGangs.pop_back();
}

int HeldPositions::lowestPosition(qsizetype crossing) const
{
    const int gang = memory.heldGangs[static_cast<std::size_t>(crossing)].gang;
    if (gang == NetlistIndex::none)
        return noPosition;
    return *memory.heldGangs[static_cast<std::size_t>(latestCrossing(gang))].positions.begin();
}

int HeldPositions::latestCrossing(int gang) const
{
    return memory.latestCrossings.has(gang) ? memory.latestCrossings.value(gang) : NetlistIndex::none;
}

// Most contacts are closed in one position, where there is nothing to be noted.
bool HeldPositions::narrow(HeldGang &held, const HeldGang &before)
{
    const auto isAmong = [](Elements<int> positions, Elements<int> others) {
        return std::includes(others.begin(), others.end(), positions.begin(), positions.end());
    };
    if (isAmong(held.positions, before.positions))
        return true;
    if (isAmong(before.positions, held.positions)) {
        held.positions = before.positions;
        return true;
    }
    std::vector<int> common;
    std::set_intersection(held.positions.begin(), held.positions.end(), before.positions.begin(),
                          before.positions.end(), std::back_inserter(common));
    if (common.empty())
        return false;
    memory.commonPositions.push_back(std::move(common));
    const std::vector<int> &kept = memory.commonPositions.back();
    held.positions = {kept.data(), kept.data() + kept.size()};
    held.ownsPositions = true;
    return true;
}
}
