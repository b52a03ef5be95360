#include <velk/model/EDAPart.h>

using namespace Qt::StringLiterals;

namespace Velk {

EDAPart::EDAPart() = default;
EDAPart::~EDAPart() = default;
EDAPart::EDAPart(const EDAPart &other) = default;
EDAPart &EDAPart::operator=(const EDAPart &other) = default;
EDAPart::EDAPart(EDAPart &&other) noexcept = default;
EDAPart &EDAPart::operator=(EDAPart &&other) noexcept = default;

QSharedPointer<EDAPart> EDAPart::create(const QString &name, const QString &lib)
{
    auto part = QSharedPointer<EDAPart>::create();
    part->name = name;
    part->lib = lib;
    return part;
}

QSharedPointer<EDAPart> EDAPart::clone() const
{
    auto copy = create(name, lib);
    copy->pins.reserve(pins.size());
    for (const auto &pin : pins) {
        if (pin)
            copy->pins.append(pin->clone());
    }
    return copy;
}

QSharedPointer<EDAPin> EDAPart::getPinByNumber(const QString &number) const
{
    for (const auto &pin : pins) {
        if (pin && pin->number == number)
            return pin;
    }
    return {};
}

QSharedPointer<EDAPin> EDAPart::getPinByName(const QString &pinName) const
{
    for (const auto &pin : pins) {
        if (pin && pin->name == pinName)
            return pin;
    }
    return {};
}

QSharedPointer<EDAPin> EDAPart::getPinByNumberOrName(const QString &text) const
{
    if (auto pin = getPinByNumber(text))
        return pin;
    return getPinByName(text);
}
}

bool operator==(const QSharedPointer<Velk::EDAPart> &a, const QSharedPointer<Velk::EDAPart> &b)
{
    if (a.isNull() || b.isNull())
        return a.isNull() && b.isNull();
    return a->name == b->name && a->lib == b->lib;
}

bool operator!=(const QSharedPointer<Velk::EDAPart> &a, const QSharedPointer<Velk::EDAPart> &b)
{
    return !(a == b);
}

char *toString(const QSharedPointer<Velk::EDAPart> &part)
{
    if (part.isNull())
        return qstrdup("EDAPart(nullptr)");
    return qstrdup(u"EDAPart('%1', '%2')"_s.arg(part->name, part->lib).toLatin1().constData());
}
