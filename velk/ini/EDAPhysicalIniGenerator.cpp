#include <velk/ini/EDAPhysicalIniGenerator.h>

#include <velk/ini/IniInspection.h>
#include <velk/ini/TypedComponents.h>
#include <velkini/IniWriter.h>

using namespace Qt::StringLiterals;

namespace Velk {

QString EDAPhysicalIniGenerator::DEFAULT_SOURCE_COMPONENT_TYPE = u"Source"_s;

class EDAPhysicalIniGeneratorPrivate : public QSharedData
{
public:
    explicit EDAPhysicalIniGeneratorPrivate(EDAProvider *netlist)
        : provider(netlist)
    {
    }

    EDAProvider *provider;
    QStringList componentTypesThatAreExported{EDAPhysicalIniGenerator::DEFAULT_SOURCE_COMPONENT_TYPE};
};

EDAPhysicalIniGenerator::EDAPhysicalIniGenerator(EDAProvider *netlist)
    : d(new EDAPhysicalIniGeneratorPrivate(netlist))
{
}

EDAPhysicalIniGenerator::~EDAPhysicalIniGenerator() = default;
EDAPhysicalIniGenerator::EDAPhysicalIniGenerator(const EDAPhysicalIniGenerator &other) = default;
EDAPhysicalIniGenerator &EDAPhysicalIniGenerator::operator=(const EDAPhysicalIniGenerator &other) = default;
EDAPhysicalIniGenerator::EDAPhysicalIniGenerator(EDAPhysicalIniGenerator &&other) noexcept = default;
EDAPhysicalIniGenerator &EDAPhysicalIniGenerator::operator=(EDAPhysicalIniGenerator &&other) noexcept = default;

void EDAPhysicalIniGenerator::setComponentTypesThatAreExported(const QList<QString> &types)
{
    d->componentTypesThatAreExported = types;
}

QList<QSharedPointer<EDAComponent>> EDAPhysicalIniGenerator::devices() const
{
    return componentsOfTypes(*d->provider, d->componentTypesThatAreExported);
}

void EDAPhysicalIniGenerator::generate(QIODevice *device) const
{
    IniWriter writer(device);
    writer.open();
    writeTo(writer);
    writer.close();
}

QStringList EDAPhysicalIniGenerator::warnings() const
{
    IniInspection inspection;
    writeTo(inspection);
    return inspection.warnings();
}

template <typename Writer>
void EDAPhysicalIniGenerator::writeTo(Writer &writer) const
{
    const auto all = devices();
    for (const auto &device : all) {
        writer.writeSection(u"device->%1"_s.arg(device->ref), {});
        const auto &properties = device->properties;
        for (auto it = properties.cbegin(); it != properties.cend(); ++it)
            writer.writeProperty(it.key(), it.value(), {});
    }
}
}
