#include "velk/check/ProviderView.h"

#include <algorithm>

using namespace Velk;

namespace VelkCli {

namespace {

template <typename Predicate>
QSharedPointer<EDAComponent> firstOf(const QList<QSharedPointer<EDAComponent>> &components, Predicate isWanted)
{
    const auto found = std::find_if(components.cbegin(), components.cend(), isWanted);
    return found == components.cend() ? QSharedPointer<EDAComponent>() : *found;
}
}

ProviderView::ProviderView(const EDAProvider &partProvider, const QList<QSharedPointer<EDAComponent>> &ownComponents,
                           const QList<QSharedPointer<EDANet>> &ownNets)
    : parts(partProvider)
    , components(ownComponents)
    , nets(ownNets)
{
}

QList<QSharedPointer<EDANet>> ProviderView::getNets() const
{
    return nets;
}

QList<QSharedPointer<EDAComponent>> ProviderView::getComponents() const
{
    return components;
}

QSharedPointer<EDAComponent> ProviderView::getComponentByRef(const QString &ref) const
{
    return firstOf(components, [&](const auto &component) { return component->ref == ref; });
}

QSharedPointer<EDAComponent> ProviderView::getComponentByProperties(const QMap<QString, QString> &properties) const
{
    return firstOf(components, [&](const auto &component) { return component->matchesProperties(properties); });
}

QList<QSharedPointer<EDAPart>> ProviderView::getParts() const
{
    return parts.getParts();
}

QSharedPointer<EDAPart> ProviderView::getPartByName(const QString &name) const
{
    return parts.getPartByName(name);
}
}
