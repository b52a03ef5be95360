#include <velk/ini/EDAPhysicalIniGenerator.h>

#include <velk/ini/IniInspection.h>
#include <velkini/IniWriter.h>

using namespace Qt::StringLiterals;

namespace Velk {

QString EDAPhysicalIniGenerator::DEFAULT_SOURCE_COMPONENT_TYPE = u"Source"_s;

EDAPhysicalIniGenerator::EDAPhysicalIniGenerator(EDAProvider *netlist)
    : provider(netlist)
    , componentTypesThatAreExported{DEFAULT_SOURCE_COMPONENT_TYPE}
{
}

EDAPhysicalIniGenerator::~EDAPhysicalIniGenerator() = default;
EDAPhysicalIniGenerator::EDAPhysicalIniGenerator(const EDAPhysicalIniGenerator &other) = default;
EDAPhysicalIniGenerator &EDAPhysicalIniGenerator::operator=(const EDAPhysicalIniGenerator &other) = default;
EDAPhysicalIniGenerator::EDAPhysicalIniGenerator(EDAPhysicalIniGenerator &&other) noexcept = default;
EDAPhysicalIniGenerator &EDAPhysicalIniGenerator::operator=(EDAPhysicalIniGenerator &&other) noexcept = default;

void EDAPhysicalIniGenerator::setComponentTypesThatAreExported(const QList<QString> &types)
{
    componentTypesThatAreExported = types;
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
    const auto components = provider->getComponents();
    for (const auto &component : components) {
        if (!isComponentExported(component))
            continue;
        writer.writeSection(u"device->%1"_s.arg(component->ref), {});
        const auto &properties = component->properties;
        for (auto it = properties.cbegin(); it != properties.cend(); ++it)
            writer.writeProperty(it.key(), it.value(), {});
    }
}

bool EDAPhysicalIniGenerator::isComponentExported(const QSharedPointer<EDAComponent> &component) const
{
    return component && componentTypesThatAreExported.contains(component->type(), Qt::CaseInsensitive);
}
}
