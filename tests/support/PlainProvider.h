#ifndef VELK_TESTS_PLAINPROVIDER_H
#define VELK_TESTS_PLAINPROVIDER_H

#include <velk/model/EDAProvider.h>

/// Hides what its target is besides an EDAProvider.
class PlainProvider : public Velk::EDAProvider
{
public:
    explicit PlainProvider(const Velk::EDAProvider &provider)
        : target(provider)
    {
    }
    QList<QSharedPointer<Velk::EDANet>> getNets() const override { return target.getNets(); }
    QList<QSharedPointer<Velk::EDAComponent>> getComponents() const override { return target.getComponents(); }
    QSharedPointer<Velk::EDAComponent> getComponentByRef(const QString &ref) const override
    {
        return target.getComponentByRef(ref);
    }
    QSharedPointer<Velk::EDAComponent> getComponentByProperties(const QMap<QString, QString> &properties) const override
    {
        return target.getComponentByProperties(properties);
    }
    QList<QSharedPointer<Velk::EDAPart>> getParts() const override { return target.getParts(); }
    QSharedPointer<Velk::EDAPart> getPartByName(const QString &name) const override
    {
        return target.getPartByName(name);
    }

private:
    const Velk::EDAProvider &target;
};

#endif
