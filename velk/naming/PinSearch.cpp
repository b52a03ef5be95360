#include <velk/naming/PinSearch.h>

#include <velk/index/NetlistIndex.h>
#include <velk/model/IndexedProvider.h>
#include <velk/naming/NetlistSelection.h>
#include <velk/naming/PropertyHints.h>
#include <velk/naming/References.h>
#include <velk/naming/Suggestions.h>

#include <QSet>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace Velk {

namespace {

using Components = QList<QSharedPointer<EDAComponent>>;

bool hasPin(const EDAProvider &netlist, const EDAComponent &component, const QString &pin)
{
    const auto part = netlist.getPartByName(component.part);
    return part && part->getPinByNumberOrName(pin);
}

/// Those with the properties, if any with the pin first.
PinChoice choiceWithProperties(const EDAProvider &netlist, const PinDescription &wanted)
{
    auto components = netlist.getComponents();
    components.removeIf([](const auto &component) { return component.isNull(); });
    Components matching;
    for (const auto &component : std::as_const(components)) {
        if (component->matchesProperties(wanted.properties))
            matching.append(component);
    }
    if (matching.isEmpty())
        throw NameNotFoundException(NameNotFoundException::Kind::Properties,
                                    u"%1; %2"_s.arg(EDAComponentNotFoundException(wanted.properties).message(),
                                                    whyNoneMatches(components, wanted.properties)));
    const auto others = std::stable_partition(matching.begin(), matching.end(), [&](const auto &component) {
        return hasPin(netlist, *component, wanted.pin);
    });
    const auto withPin = static_cast<int>(others - matching.begin());
    return {matching.first(), nullptr, matching.mid(1), withPin, {}};
}

NameNotFoundException noPin(const EDAComponent &component, const EDAPart &part, const QString &written)
{
    QStringList pins;
    for (const auto &pin : part.pins) {
        if (!pin)
            continue;
        const bool hasName = !pin->name.isEmpty() && pin->name != pin->number;
        pins.append(hasName ? u"%1 (%2)"_s.arg(pin->name, pin->number) : pin->number);
    }
    return {NameNotFoundException::Kind::Pin,
            u"no pin '%1' on %2; its pins: %3"_s.arg(written, component.ref, enumeration(nearestFirst(written, pins)))};
}

/// Nets by a name that they have.
class NetsOfName
{
public:
    void add(const QString &name, const QSharedPointer<EDANet> &net)
    {
        if (!known.contains(net.data()))
            nets.append(net);
        known.insert(net.data());
        names.append(name);
    }
    /// As one for each netlist.
    QStringList distinctNames() const
    {
        QStringList result = names;
        result.removeDuplicates();
        return result;
    }

    QList<QSharedPointer<EDANet>> nets;

private:
    QSet<const EDANet *> known;
    QStringList names;
};

/// Calls \a visit with each name of a net, a joined one having those that it was joined from too.
template <typename Visit>
void visitNetNames(const EDAProvider &netlist, Visit visit)
{
    const auto nets = netlist.getNets();
    for (const auto &net : nets) {
        if (net)
            visit(net->name, net);
    }
    const auto *indexed = dynamic_cast<const IndexedProvider *>(&netlist);
    const auto *index = indexed ? indexed->netlistIndex() : nullptr;
    if (!index)
        return;
    const auto &boardNets = index->boardNets();
    for (qsizetype net = 0; net < boardNets.size(); ++net)
        visit(boardNets.at(net)->name, index->net(index->joinedNetOf(net)));
}

QStringList otherPinsCalled(const QString &written, const EDAPin &taken, const EDAPart &part)
{
    QStringList others;
    if (taken.number == written)
        return others;
    for (const auto &pin : part.pins) {
        if (pin && pin->name == written && pin->number != taken.number)
            others.append(pin->number);
    }
    others.removeDuplicates();
    return others;
}
}

NameNotFoundException::NameNotFoundException(Kind missing, const QString &message)
    : EDAException(message)
    , m_kind(missing)
{
}

NameNotFoundException::~NameNotFoundException() = default;
NameNotFoundException::NameNotFoundException(const NameNotFoundException &other) = default;
NameNotFoundException &NameNotFoundException::operator=(const NameNotFoundException &other) = default;
NameNotFoundException::NameNotFoundException(NameNotFoundException &&other) noexcept = default;
NameNotFoundException &NameNotFoundException::operator=(NameNotFoundException &&other) noexcept = default;

NameNotFoundException::Kind NameNotFoundException::kind() const
{
    return m_kind;
}

QSharedPointer<EDAComponent> findComponent(const EDAProvider &netlist, const QString &ref)
{
    if (auto exact = netlist.getComponentByRef(ref))
        return exact;
    Components drawnSo;
    QStringList refs;
    const auto components = netlist.getComponents();
    for (const auto &component : components) {
        if (!component)
            continue;
        refs.append(component->ref);
        if (drawnName(component->ref) == ref)
            drawnSo.append(component);
    }
    if (drawnSo.size() == 1)
        return drawnSo.first();
    const QString written = ref.contains(u'#') ? ref : ref + u'#';
    const QString reason =
        drawnSo.isEmpty() ? u"no component has this reference; there are "_s + enumeration(nearestFirst(written, refs))
                          : u"several netlists have it: "_s + enumeration(refsOf(drawnSo));
    throw NameNotFoundException(NameNotFoundException::Kind::Reference, u"%1: %2"_s.arg(ref, reason));
}

QList<QSharedPointer<EDAComponent>> findComponents(const EDAProvider &netlist, const QString &text)
{
    const qsizetype sign = text.indexOf(u'=');
    if (sign <= 0 || netlist.getComponentByRef(text))
        return {findComponent(netlist, text)};
    const NetlistSelection selection(netlist, {{text.left(sign), text.mid(sign + 1)}});
    const QString whyEmpty = selection.whyEmpty();
    if (!whyEmpty.isEmpty())
        throw NameNotFoundException(NameNotFoundException::Kind::Properties, whyEmpty);
    return selection.components();
}

QList<QSharedPointer<EDANet>> findNets(const EDAProvider &netlist, const QString &name)
{
    NetsOfName exact;
    NetsOfName drawnSo;
    QStringList names;
    visitNetNames(netlist, [&](const QString &known, const QSharedPointer<EDANet> &net) {
        if (known == name)
            exact.add(known, net);
        else if (drawnName(known) == name)
            drawnSo.add(known, net);
        names.append(known);
    });
    if (!exact.nets.isEmpty())
        return exact.nets;
    if (drawnSo.nets.size() == 1 || drawnSo.distinctNames().size() == 1)
        return drawnSo.nets;
    throw NameNotFoundException(
        NameNotFoundException::Kind::Net,
        drawnSo.nets.isEmpty()
            ? u"there is no net '%1'; there are %2"_s.arg(name, enumeration(nearestFirst(name, names)))
            : u"several netlists have a net '%1': %2"_s.arg(name, enumeration(drawnSo.distinctNames())));
}

PinChoice findPin(const EDAProvider &netlist, const PinDescription &wanted)
{
    auto choice = wanted.ref.isEmpty() ? choiceWithProperties(netlist, wanted)
                                       : PinChoice{findComponent(netlist, wanted.ref), nullptr, {}, 1, {}};
    const auto part = netlist.getPartByName(choice.component->part);
    if (part.isNull())
        throw EDAPartNotFoundException(choice.component, choice.component->part);
    choice.pin = part->getPinByNumberOrName(wanted.pin);
    if (choice.pin.isNull())
        throw noPin(*choice.component, *part, wanted.pin);
    choice.otherPins = otherPinsCalled(wanted.pin, *choice.pin, *part);
    return choice;
}
}
