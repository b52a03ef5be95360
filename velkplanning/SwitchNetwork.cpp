#include <velkplanning/SwitchNetwork.h>

#include <velk/model/DisjointSets.h>

#include <algorithm>
#include <map>
#include <numeric>

namespace Velk {

namespace {

using Entries = std::vector<std::pair<int, int>>;

std::vector<SwitchLink> linksIn(const SwitchingModel &model)
{
    std::vector<SwitchLink> links;
    for (int gang = 0; gang < model.gangCount(); ++gang) {
        std::map<std::pair<int, int>, std::vector<int>> positions; // by nets
        for (int position = 0; position < model.gang(gang).positionCount; ++position) {
            for (const NetContact &contact : model.contactsOf(gang, position)) {
                auto &closed = positions[std::minmax(contact.net, contact.otherNet)];
                if (closed.empty() || closed.back() != position)
                    closed.push_back(position);
            }
        }
        for (const auto &[nets, closed] : positions) {
            if (nets.first != nets.second)
                links.push_back({nets.first, nets.second, gang, closed});
        }
    }
    return links;
}

Entries linksByNet(const std::vector<SwitchLink> &links)
{
    Entries entries;
    for (std::size_t i = 0; i < links.size(); ++i) {
        entries.emplace_back(links[i].net, static_cast<int>(i));
        entries.emplace_back(links[i].otherNet, static_cast<int>(i));
    }
    return entries;
}

Entries linksByGang(const std::vector<SwitchLink> &links)
{
    Entries entries;
    for (std::size_t i = 0; i < links.size(); ++i)
        entries.emplace_back(links[i].gang, static_cast<int>(i));
    return entries;
}

Entries passivesByNet(const SwitchingModel &model)
{
    Entries entries;
    for (std::size_t i = 0; i < model.passives().size(); ++i) {
        for (const int net : model.passives()[i].nets)
            entries.emplace_back(net, static_cast<int>(i));
    }
    return entries;
}

std::vector<std::vector<int>> netsOfUnknownIn(const SwitchingModel &model)
{
    std::vector<std::vector<int>> nets;
    for (int component = 0; component < model.componentCount(); ++component) {
        const int gang = model.gangOf(component);
        if (gang != SwitchingModel::none && model.gang(gang).isUnknown)
            nets.push_back(model.contactNetsOf(component));
    }
    return nets;
}

std::vector<int> setsAtRest(const SwitchingModel &model)
{
    DisjointSets sets(model.netCount());
    for (int gang = 0; gang < model.gangCount(); ++gang) {
        for (const NetContact &contact : model.contactsOf(gang, 0))
            sets.unite(contact.net, contact.otherNet);
    }
    std::vector<int> least(static_cast<std::size_t>(model.netCount()));
    for (int net = 0; net < model.netCount(); ++net)
        least[static_cast<std::size_t>(net)] = sets.leastOf(net);
    return least;
}
}

NumberLists::NumberLists(int count, const std::vector<std::pair<int, int>> &entries)
    : firsts(static_cast<std::size_t>(count) + 1)
    , items(entries.size())
{
    for (const auto &entry : entries)
        ++firsts[static_cast<std::size_t>(entry.first) + 1];
    std::partial_sum(firsts.cbegin(), firsts.cend(), firsts.begin());
    auto next = firsts;
    for (const auto &[number, item] : entries)
        items[next[static_cast<std::size_t>(number)]++] = item;
}

SwitchNetwork::SwitchNetwork(const SwitchingModel &switchingModel)
    : model(switchingModel)
    , links(linksIn(model))
    , linksOfNet(model.netCount(), linksByNet(links))
    , linksOfGang(model.gangCount(), linksByGang(links))
    , passivesOfNet(model.netCount(), passivesByNet(model))
    , netsOfUnknown(netsOfUnknownIn(model))
    , restSets(setsAtRest(model))
{
}
}
