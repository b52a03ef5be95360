#ifndef VELK_CLI_CHECK_PROVIDERVIEW_H
#define VELK_CLI_CHECK_PROVIDERVIEW_H

#include <velk/model/EDAProvider.h>

namespace VelkCli {

/// A netlist with these components and nets, and the parts of another one that has to stay.
class ProviderView : public Velk::EDAProvider
{
public:
    ProviderView(const Velk::EDAProvider &partProvider, const QList<QSharedPointer<Velk::EDAComponent>> &ownComponents,
                 const QList<QSharedPointer<Velk::EDANet>> &ownNets = {});

    QList<QSharedPointer<Velk::EDANet>> getNets() const override;
    QList<QSharedPointer<Velk::EDAComponent>> getComponents() const override;
    QSharedPointer<Velk::EDAComponent> getComponentByRef(const QString &ref) const override;
    QSharedPointer<Velk::EDAComponent>
    getComponentByProperties(const QMap<QString, QString> &properties) const override;
    QList<QSharedPointer<Velk::EDAPart>> getParts() const override;
    QSharedPointer<Velk::EDAPart> getPartByName(const QString &name) const override;

private:
    const EDAProvider &parts;
    QList<QSharedPointer<Velk::EDAComponent>> components;
    QList<QSharedPointer<Velk::EDANet>> nets;
};
}

#endif
