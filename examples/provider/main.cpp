// A test system that comes from no file: a provider of one's own, here with a multimeter, a relay and a DUT. Joined
// providers give the fastest search, so a single one is wrapped too.
//
//     provider-example

#include <velk/model/EDAProvider.h>
#include <velk/provider/MultipleEDAProvider.h>
#include <velk/routing/Routing.h>

#include <QLoggingCategory>
#include <QTextStream>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

template <typename List, typename Condition>
auto firstOf(const List &list, Condition condition)
{
    const auto found = std::find_if(list.cbegin(), list.cend(), condition);
    return found == list.cend() ? typename List::value_type() : *found;
}

class SmallSystem : public Velk::EDAProvider
{
public:
    SmallSystem()
    {
        addPart(u"Meter"_s, {u"HI"_s, u"LO"_s});
        addPart(u"Relay"_s, {u"A"_s, u"B"_s});
        addPart(u"Plug"_s, {u"VCC"_s});
        components = {Velk::EDAComponent::create(u"U1"_s, u"6.5 digits"_s, u"meter"_s, u"Meter"_s, u"Source"_s),
                      Velk::EDAComponent::create(u"K1"_s, u"reed"_s, u"relay"_s, u"Relay"_s, u"Relay"_s),
                      Velk::EDAComponent::create(u"J1"_s, u"ECU"_s, u"plug"_s, u"Plug"_s, u"DUT"_s)};
        nets = {Velk::EDANet::create(u"MEASURE"_s)->addNode(u"U1"_s, u"1"_s)->addNode(u"K1"_s, u"1"_s),
                Velk::EDANet::create(u"SUPPLY"_s)->addNode(u"K1"_s, u"2"_s)->addNode(u"J1"_s, u"1"_s)};
    }

    QList<QSharedPointer<Velk::EDANet>> getNets() const override { return nets; }
    QList<QSharedPointer<Velk::EDAComponent>> getComponents() const override { return components; }
    QList<QSharedPointer<Velk::EDAPart>> getParts() const override { return parts; }

    QSharedPointer<Velk::EDAComponent> getComponentByRef(const QString &ref) const override
    {
        return firstOf(components, [&](const auto &component) { return component->ref == ref; });
    }
    QSharedPointer<Velk::EDAComponent> getComponentByProperties(const QMap<QString, QString> &wanted) const override
    {
        return firstOf(components, [&](const auto &component) { return component->matchesProperties(wanted); });
    }
    QSharedPointer<Velk::EDAPart> getPartByName(const QString &name) const override
    {
        return firstOf(parts, [&](const auto &part) { return part->name == name; });
    }

private:
    void addPart(const QString &name, const QStringList &pinNames)
    {
        const auto part = Velk::EDAPart::create(name, {});
        for (const QString &pinName : pinNames) {
            const QString number = QString::number(part->pins.size() + 1);
            part->pins.append(Velk::EDAPin::create(number, pinName, u"passive"_s));
        }
        parts.append(part);
    }

    QList<QSharedPointer<Velk::EDANet>> nets;
    QList<QSharedPointer<Velk::EDAComponent>> components;
    QList<QSharedPointer<Velk::EDAPart>> parts;
};
}

int main()
{
    QLoggingCategory::setFilterRules(u"routing.debug=false"_s);
    SmallSystem board;
    Velk::MultipleEDAProvider system({&board}, {});
    const Velk::Routing routing(&system);
    const auto paths =
        routing.findPaths({{u"CompType"_s, u"Source"_s}}, u"HI"_s, {{u"CompType"_s, u"DUT"_s}}, u"VCC"_s);

    QTextStream out(stdout);
    for (const auto &path : paths)
        out << "switch on: " << path.switchingComponents.first()->ref << '\n';
    return paths.isEmpty() ? 1 : 0;
}
