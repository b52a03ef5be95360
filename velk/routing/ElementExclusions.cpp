#include <velk/routing/ElementExclusions.h>

#include <velk/model/IndexedProvider.h>

namespace Velk {

ElementExclusions::ElementExclusions(const EDAProvider &netlist,
                                     const QSharedPointer<const NamedExclusions> &exclusions)
    : named(exclusions)
{
    const auto *indexed = dynamic_cast<const IndexedProvider *>(&netlist);
    const auto *index = named && indexed ? indexed->netlistIndex() : nullptr;
    if (!index)
        return;
    const auto &boardNets = index->boardNets();
    for (qsizetype net = 0; net < boardNets.size(); ++net) {
        if (named->hasNet(boardNets.at(net)->name))
            joinedNets.insert(index->net(index->joinedNetOf(net)).data());
    }
}
}
