#include <velk/ini/TypedComponents.h>

#include <algorithm>
#include <iterator>

namespace Velk {

QList<QSharedPointer<EDAComponent>> componentsOfTypes(const EDAProvider &netlist, const QStringList &types)
{
    QList<QSharedPointer<EDAComponent>> result;
    const auto components = netlist.getComponents();
    std::copy_if(components.cbegin(), components.cend(), std::back_inserter(result), [&](const auto &component) {
        return component && types.contains(component->type(), Qt::CaseInsensitive);
    });
    return result;
}
}
