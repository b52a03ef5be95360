#include "benchmarks/Board.h"

namespace VelkBenchmarks {

using namespace Velk;

Board::Board(const QString &boardTitle)
    : title(boardTitle)
{
}

QSharedPointer<EDANet> Board::addNet(const QString &name)
{
    nets.append(EDANet::create(name));
    return nets.last();
}

void Board::addPart(const QSharedPointer<EDAPart> &part)
{
    parts.append(part);
    partsByName.insert(part->name, part);
}

void Board::addComponent(const QSharedPointer<EDAComponent> &component)
{
    components.append(component);
    componentsByRef.insert(component->ref, component);
}

QSharedPointer<EDAComponent> Board::getComponentByRef(const QString &ref) const
{
    return componentsByRef.value(ref);
}

QSharedPointer<EDAComponent> Board::getComponentByProperties(const QMap<QString, QString> &properties) const
{
    for (const auto &component : components) {
        if (component->matchesProperties(properties))
            return component;
    }
    return {};
}

QSharedPointer<EDAPart> Board::getPartByName(const QString &name) const
{
    return partsByName.value(name);
}
}
