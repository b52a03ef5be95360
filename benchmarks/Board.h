#ifndef VELK_BENCHMARKS_BOARD_H
#define VELK_BENCHMARKS_BOARD_H

#include <velk/model/EDAProvider.h>

#include <QHash>

namespace VelkBenchmarks {

/// A board that lies ready in memory. Its lists are handed out as they are, so whoever reads it pays for no copies.
class Board : public Velk::EDAProvider
{
public:
    QString title;
    QList<QSharedPointer<Velk::EDANet>> nets;
    QList<QSharedPointer<Velk::EDAComponent>> components;
    QList<QSharedPointer<Velk::EDAPart>> parts;

    explicit Board(const QString &boardTitle);

    QSharedPointer<Velk::EDANet> addNet(const QString &name);
    void addPart(const QSharedPointer<Velk::EDAPart> &part);
    bool hasPart(const QString &name) const { return partsByName.contains(name); }
    void addComponent(const QSharedPointer<Velk::EDAComponent> &component);

    QList<QSharedPointer<Velk::EDANet>> getNets() const override { return nets; }
    QList<QSharedPointer<Velk::EDAComponent>> getComponents() const override { return components; }
    QSharedPointer<Velk::EDAComponent> getComponentByRef(const QString &ref) const override;
    QSharedPointer<Velk::EDAComponent>
    getComponentByProperties(const QMap<QString, QString> &properties) const override;
    QList<QSharedPointer<Velk::EDAPart>> getParts() const override { return parts; }
    QSharedPointer<Velk::EDAPart> getPartByName(const QString &name) const override;

private:
    QHash<QString, QSharedPointer<Velk::EDAComponent>> componentsByRef;
    QHash<QString, QSharedPointer<Velk::EDAPart>> partsByName;
};
}

#endif
