#include <velkplanning/PlanParts.h>

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <utility>

namespace Velk {

namespace {

/// Numbers in sets that can be united, the last ones also parted again.
class RevocableSets
{
public:
    explicit RevocableSets(int count)
        : parents(static_cast<std::size_t>(count))
        , sizes(static_cast<std::size_t>(count), 1)
    {
        std::iota(parents.begin(), parents.end(), 0);
    }

    bool areUnited(int number, int other) const { return rootOf(number) == rootOf(other); }

    void unite(int number, int other)
    {
        std::size_t root = rootOf(number);
        std::size_t otherRoot = rootOf(other);
        if (root == otherRoot)
            return;
        if (sizes[root] < sizes[otherRoot])
            std::swap(root, otherRoot);
        parents[otherRoot] = static_cast<int>(root);
        sizes[root] += sizes[otherRoot];
        united.push_back(otherRoot);
    }

    std::size_t unionCount() const { return united.size(); }

    /// Parts what was united since there were so many unions.
    void returnTo(std::size_t count)
    {
        for (; united.size() > count; united.pop_back()) {
            const std::size_t root = united.back();
            sizes[static_cast<std::size_t>(parents[root])] -= sizes[root];
            parents[root] = static_cast<int>(root);
        }
    }

private:
    /// By short ways, since the smaller set is united to the greater one.
    std::size_t rootOf(int number) const
    {
        auto root = static_cast<std::size_t>(number);
        while (parents[root] != static_cast<int>(root))
            root = static_cast<std::size_t>(parents[root]);
        return root;
    }

    std::vector<int> parents;
    std::vector<int> sizes;
    std::vector<std::size_t> united; ///< roots until then
};

/// Leaves out one part after the other. Half of them are united at once while the other half is tried, and so on.
class PartTrial
{
public:
    PartTrial(const std::vector<PlanPart> &planParts, const Connectivity &connectivity,
              const QList<ConnectionGroup> &connectionGroups)
        : parts(planParts)
        , state(connectivity)
        , groups(connectionGroups)
        , sets(connectivity.model().netCount())
        , isTied(planParts.size(), false)
    {
        std::vector<bool> isPart(static_cast<std::size_t>(state.model().gangCount()), false);
        for (const PlanPart &part : parts) {
            if (part.gang != SwitchingModel::none)
                isPart[static_cast<std::size_t>(part.gang)] = true;
        }
        for (int gang = 0; gang < state.model().gangCount(); ++gang) {
            if (!isPart[static_cast<std::size_t>(gang)])
                closeContacts(gang, state.position(gang));
        }
    }

    std::vector<bool> result()
    {
        tryEach(0, parts.size());
        return isTied;
    }

private:
    /// Each of these, while all others are there.
    void tryEach(std::size_t first, std::size_t last)
    {
        if (last - first == 0)
            return;
        if (last - first == 1) {
            tryWithout(first);
            return;
        }
        const std::size_t middle = first + (last - first) / 2;
        const std::size_t unions = sets.unionCount();
        addParts(middle, last);
        tryEach(first, middle);
        sets.returnTo(unions);
        addParts(first, middle);
        tryEach(middle, last);
        sets.returnTo(unions);
    }

    void tryWithout(std::size_t part)
    {
        if (parts[part].gang != SwitchingModel::none)
            closeContacts(parts[part].gang, 0);
        isTied[part] = areGroupsTied();
    }

    void addParts(std::size_t first, std::size_t last)
    {
        for (std::size_t i = first; i < last; ++i) {
            if (parts[i].gang != SwitchingModel::none)
                closeContacts(parts[i].gang, state.position(parts[i].gang));
            else
                goThrough(parts[i].passive);
        }
    }

    void closeContacts(int gang, int position)
    {
        for (const NetContact &contact : state.model().contactsOf(gang, position))
            sets.unite(contact.net, contact.otherNet);
    }

    void goThrough(int passive)
    {
        const auto &nets = state.model().passives()[static_cast<std::size_t>(passive)].nets;
        for (const int net : nets)
            sets.unite(nets.front(), net);
    }

    bool areGroupsTied() const
    {
        return std::all_of(groups.cbegin(), groups.cend(), [this](const ConnectionGroup &group) {
            return std::all_of(group.nets.cbegin(), group.nets.cend(),
                               [&](int net) { return sets.areUnited(net, group.nets.front()); });
        });
    }

    const std::vector<PlanPart> &parts;
    const Connectivity &state;
    const QList<ConnectionGroup> &groups;
    RevocableSets sets; ///< nets
    std::vector<bool> isTied;
};
}

std::vector<bool> areTiedWithout(const std::vector<PlanPart> &parts, const Connectivity &state,
                                 const QList<ConnectionGroup> &groups)
{
    return PartTrial(parts, state, groups).result();
}
}
