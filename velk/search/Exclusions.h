#ifndef VELK_SEARCH_EXCLUSIONS_H
#define VELK_SEARCH_EXCLUSIONS_H

#include <velk/index/NetlistIndex.h>

#include <cstddef>
#include <vector>

namespace Velk {

/// Components that a search does not cross and nets that it does not enter, in the numbers of an index: a bit for each,
/// so that a copy costs next to nothing, and leaving out one more nothing at all.
class Exclusions
{
public:
    /// Nothing is excluded at first.
    explicit Exclusions(const NetlistIndex &index)
        : components(toSize(index.componentCount()))
        , nets(toSize(index.netCount()))
    {
    }

    bool hasComponent(int component) const { return components[toSize(component)]; }
    void setComponent(int component, bool isExcluded) { components[toSize(component)] = isExcluded; }
    bool hasNet(int net) const { return nets[toSize(net)]; }
    void setNet(int net, bool isExcluded) { nets[toSize(net)] = isExcluded; }

private:
    static std::size_t toSize(int number) { return static_cast<std::size_t>(number); }

    std::vector<bool> components;
    std::vector<bool> nets;
};
}

#endif
