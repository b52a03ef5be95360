#include <velk/model/EDAPin.h>

using namespace Qt::StringLiterals;

namespace Velk {

EDAPin::EDAPin() = default;
EDAPin::~EDAPin() = default;
EDAPin::EDAPin(const EDAPin &other) = default;
EDAPin &EDAPin::operator=(const EDAPin &other) = default;
EDAPin::EDAPin(EDAPin &&other) noexcept = default;
EDAPin &EDAPin::operator=(EDAPin &&other) noexcept = default;

QSharedPointer<EDAPin> EDAPin::create(const QString &number, const QString &name, const QString &type)
{
    auto pin = QSharedPointer<EDAPin>::create();
    pin->number = number;
    pin->name = name;
    pin->type = type;
    return pin;
}

QSharedPointer<EDAPin> EDAPin::clone() const
{
    return QSharedPointer<EDAPin>::create(*this);
}
}

bool operator==(const QSharedPointer<Velk::EDAPin> &a, const QSharedPointer<Velk::EDAPin> &b)
{
    if (a.isNull() || b.isNull())
        return a.isNull() && b.isNull();
    return a->number == b->number && a->name == b->name && a->type == b->type;
}

bool operator!=(const QSharedPointer<Velk::EDAPin> &a, const QSharedPointer<Velk::EDAPin> &b)
{
    return !(a == b);
}

char *toString(const QSharedPointer<Velk::EDAPin> &pin)
{
    if (pin.isNull())
        return qstrdup("EDAPin(nullptr)");
    const QString text = u"EDAPin('%1', '%2', '%3')"_s.arg(pin->number, pin->name, pin->type);
    return qstrdup(text.toLatin1().constData());
}
