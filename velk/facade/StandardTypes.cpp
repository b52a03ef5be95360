#include <velk/facade/StandardTypes.h>

namespace Velk {

QStringList toQt(const std::vector<std::string> &texts)
{
    QStringList result;
    result.reserve(static_cast<qsizetype>(texts.size()));
    for (const auto &text : texts)
        result.append(QString::fromStdString(text));
    return result;
}

QMap<QString, QString> toQt(const std::map<std::string, std::string> &properties)
{
    QMap<QString, QString> result;
    for (const auto &[key, value] : properties)
        result.insert(result.cend(), QString::fromStdString(key), QString::fromStdString(value));
    return result;
}

KiCadReadingMode toQt(VelkReadingMode mode)
{
    return mode == VelkReadingMode::Tolerant ? KiCadReadingMode::Tolerant : KiCadReadingMode::Default;
}

std::vector<std::string> toStandard(const QStringList &texts)
{
    std::vector<std::string> result;
    result.reserve(static_cast<std::size_t>(texts.size()));
    for (const QString &text : texts)
        result.push_back(text.toStdString());
    return result;
}

VelkComponentInfo toStandard(const EDAComponent &component)
{
    VelkComponentInfo info{
        component.ref.toStdString(), component.value.toStdString(), component.part.toStdString(), {}};
    for (auto it = component.properties.cbegin(); it != component.properties.cend(); ++it)
        info.properties.emplace_hint(info.properties.end(), it.key().toStdString(), it.value().toStdString());
    return info;
}

VelkPinInfo toStandard(const EDAPin &pin)
{
    return {pin.number.toStdString(), pin.name.toStdString(), pin.type.toStdString()};
}

VelkPositionsRule toStandard(PositionsRule rule)
{
    switch (rule) {
    case PositionsRule::Field:
        return VelkPositionsRule::Field;
    case PositionsRule::Table:
        return VelkPositionsRule::Table;
    case PositionsRule::ContactNumbers:
        return VelkPositionsRule::ContactNumbers;
    case PositionsRule::PinNames:
        return VelkPositionsRule::PinNames;
    case PositionsRule::TwoPins:
        return VelkPositionsRule::TwoPins;
    case PositionsRule::NoContacts:
        return VelkPositionsRule::NoContacts;
    case PositionsRule::Unknown:
        break;
    }
    return VelkPositionsRule::Unknown;
}
}
