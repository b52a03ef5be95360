#ifndef VELKPLANNING_SWITCHNETWORK_H
#define VELKPLANNING_SWITCHNETWORK_H

#include <velk/switching/SwitchingModel.h>

#include <cstddef>
#include <utility>
#include <vector>

namespace Velk {

/// Two nets that a gang connects in some of its positions.
struct SwitchLink
{
    int net;
    int otherNet;
    int gang;
    std::vector<int> positions; ///< in which it is closed, ascending

    int otherEnd(int end) const { return net + otherNet - end; }
};

/// Lists of numbers, one for each of the first numbers, one list behind the other in memory.
class NumberLists
{
public:
    /// For numbers below \a count; \a entries are pairs of a number and what belongs to it.
    NumberLists(int count, const std::vector<std::pair<int, int>> &entries);

    struct List
    {
        const int *first;
        const int *last;
        const int *begin() const { return first; }
        const int *end() const { return last; }
    };
    List of(int number) const
    {
        const auto place = static_cast<std::size_t>(number);
        return {items.data() + firsts[place], items.data() + firsts[place + 1]};
    }

private:
    std::vector<std::size_t> firsts;
    std::vector<int> items;
};

/// What a request does not change: which nets each gang connects in which positions, and what lies on the nets.
class SwitchNetwork
{
public:
    explicit SwitchNetwork(const SwitchingModel &switchingModel);

    const SwitchingModel model;
    const std::vector<SwitchLink> links; ///< between different nets, by gang
    const NumberLists linksOfNet;
    const NumberLists linksOfGang;
    const NumberLists passivesOfNet;
    const std::vector<std::vector<int>> netsOfUnknown; ///< of each relay that is not known those that it may connect
    const std::vector<int> restSets;                   ///< of each net the least net with which it is connected at rest
};
}

#endif
