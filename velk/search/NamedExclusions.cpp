#include <velk/search/NamedExclusions.h>

namespace Velk {

NamedExclusions::NamedExclusions(const QList<QString> &componentRefs, const QList<QString> &netNames)
    : refs(componentRefs)
    , names(netNames)
    , distinctRefs(refs.cbegin(), refs.cend())
    , distinctNames(names.cbegin(), names.cend())
{
}

std::shared_ptr<const Exclusions> NamedExclusions::in(const NetlistIndex &index) const
{
    const std::lock_guard lock(mutex);
    if (!latest || serialOfLatest != index.serial()) {
        latest = std::make_shared<const Exclusions>(numbered(index));
        serialOfLatest = index.serial();
    }
    return latest;
}

Exclusions NamedExclusions::numbered(const NetlistIndex &index) const
{
    Exclusions result(index);
    for (const QString &ref : distinctRefs) {
        const int component = index.componentNumber(ref);
        if (component != NetlistIndex::none)
            result.setComponent(component, true);
    }
    for (int net = 0; net < index.netCount(); ++net) {
        if (hasNet(index.net(net)->name))
            result.setNet(net, true);
    }
    const auto &boardNets = index.boardNets();
    for (qsizetype net = 0; net < boardNets.size(); ++net) {
        if (hasNet(boardNets.at(net)->name))
            result.setNet(index.joinedNetOf(net), true);
    }
    return result;
}
}
