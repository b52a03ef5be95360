#include <velk/naming/PinNames.h>

#include <QHash>

#include <utility>

using namespace Qt::StringLiterals;

namespace Velk {

namespace {

using NamesByNumber = QHash<QString, QString>;

/// The name by which to show each pin; empty where it is to be shown by its number.
NamesByNumber shownNames(const EDAPart &part)
{
    QHash<QString, int> pinsCalled; // so, by name or by number
    for (const auto &pin : part.pins) {
        if (!pin)
            continue;
        ++pinsCalled[pin->name];
        if (pin->number != pin->name)
            ++pinsCalled[pin->number];
    }
    NamesByNumber names;
    for (const auto &pin : part.pins) {
        if (pin && !names.contains(pin->number)) // the first of that number
            names.insert(pin->number, pinsCalled.value(pin->name) == 1 ? pin->name : QString());
    }
    return names;
}
}

class PinNamesPrivate
{
public:
    explicit PinNamesPrivate(const EDAProvider &provider)
        : netlist(provider)
    {
        const auto parts = netlist.getParts();
        for (const auto &part : parts) {
            if (part)
                namesByPart.insert(part->name, shownNames(*part));
        }
    }

    const EDAProvider &netlist;
    QHash<QString, NamesByNumber> namesByPart;
};

PinNames::PinNames(const EDAProvider &netlist)
    : d(std::make_shared<PinNamesPrivate>(netlist))
{
}

PinNames::~PinNames() = default;
PinNames::PinNames(const PinNames &other) = default;
PinNames &PinNames::operator=(const PinNames &other) = default;
PinNames::PinNames(PinNames &&other) noexcept = default;
PinNames &PinNames::operator=(PinNames &&other) noexcept = default;

QString PinNames::text(const QString &ref, const QString &pinNumber) const
{
    const auto component = d->netlist.getComponentByRef(ref);
    const auto part = component ? d->namesByPart.constFind(component->part) : d->namesByPart.cend();
    const QString name = part == d->namesByPart.cend() ? QString() : part->value(pinNumber);
    return u"%1.%2"_s.arg(ref, name.isEmpty() ? pinNumber : name);
}
}
