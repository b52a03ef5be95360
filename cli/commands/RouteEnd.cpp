#include "cli/commands/RouteEnd.h"

#include "cli/commands/CommandError.h"
#include "cli/commands/Netlist.h"
#include "cli/terminal/Message.h"

#include <CLI/CLI.hpp>

#include <velk/model/EDAException.h>
#include <velk/naming/PropertyHints.h>
#include <velk/naming/Suggestions.h>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace VelkCli {

namespace {

using Components = QList<QSharedPointer<EDAComponent>>;

bool hasPin(const EDAProvider &netlist, const EDAComponent &component, const QString &pin)
{
    return !netlist.getPartByName(component.part)->getPinByNumberOrName(pin).isNull();
}

void reportOthers(const Components &matching, qsizetype withPin, const EndOptions &options)
{
    const QString pinText = withPin < matching.size()
                                ? u", %1 of them with a pin '%2'"_s.arg(QString::number(withPin), options.pin())
                                : QString();
    printMessage(u"velk: %1 %2 fits %3 components%4: %5 was taken, not %6"_s.arg(
        options.option(), EDAComponent::propertiesToString(options.parsedProperties()),
        QString::number(matching.size()), pinText, matching.first()->ref, enumeration(refsOf(matching.mid(1)))));
}

QSharedPointer<EDAComponent> componentWithProperties(const EDAProvider &netlist, const EndOptions &options)
{
    const auto wanted = options.parsedProperties();
    const auto components = netlist.getComponents();
    Components matching;
    for (const auto &component : components) {
        if (component->matchesProperties(wanted))
            matching.append(component);
    }
    if (matching.isEmpty())
        throw CommandError{u"%1: %2; %3"_s.arg(options.option(), EDAComponentNotFoundException(wanted).message(),
                                               whyNoneMatches(components, wanted))};
    const auto others = std::stable_partition(matching.begin(), matching.end(), [&](const auto &component) {
        return hasPin(netlist, *component, options.pin());
    });
    if (matching.size() > 1)
        reportOthers(matching, others - matching.begin(), options);
    return matching.first();
}

/// Those that have this reference in the schematic of their board.
Components componentsDrawnAs(const QString &ref, const Components &components)
{
    Components result;
    for (const auto &component : components) {
        if (drawnName(component->ref) == ref)
            result.append(component);
    }
    return result;
}

QSharedPointer<EDAComponent> componentWithRef(const EDAProvider &netlist, const EndOptions &options)
{
    auto exact = netlist.getComponentByRef(options.ref());
    if (exact)
        return exact;
    const auto components = netlist.getComponents();
    const auto candidates = componentsDrawnAs(options.ref(), components);
    if (candidates.size() == 1)
        return candidates.first();
    const QString place = u"%1 %2: "_s.arg(options.refOption(), options.ref());
    if (candidates.isEmpty()) {
        const QString written = options.ref().contains(u'#') ? options.ref() : options.ref() + u'#';
        throw CommandError{place + u"no component has this reference; there are "_s +
                           enumeration(nearestFirst(written, refsOf(components)))};
    }
    throw CommandError{place + u"several netlists have it: "_s + enumeration(refsOf(candidates))};
}

QString noPinText(const EDAComponent &component, const EDAPart &part, const QString &pinText)
{
    QStringList pins;
    for (const auto &pin : part.pins) {
        const bool hasName = !pin->name.isEmpty() && pin->name != pin->number;
        pins.append(hasName ? u"%1 (%2)"_s.arg(pin->name, pin->number) : pin->number);
    }
    return u"no pin '%1' on %2; its pins: %3"_s.arg(pinText, component.ref, enumeration(nearestFirst(pinText, pins)));
}

void reportOtherPins(const EDAComponent &component, const EDAPart &part, const EDAPin &taken, const EndOptions &options)
{
    if (taken.number == options.pin())
        return;
    QStringList others;
    for (const auto &pin : part.pins) {
        if (pin->name == options.pin() && pin->number != taken.number)
            others.append(pin->number);
    }
    others.removeDuplicates();
    if (!others.isEmpty())
        printMessage(u"velk: %1-pin %2 fits %3 pins of %4: %5 was taken, not %6"_s.arg(
            options.option(), options.pin(), QString::number(others.size() + 1), component.ref, taken.number,
            enumeration(others)));
}
}

EndOptions::EndOptions(const std::string &optionName, const std::string &componentName)
    : name(optionName)
    , component(componentName)
{
}

void EndOptions::addTo(CLI::App &command)
{
    auto *byProperties =
        addRepeatable(command, name, properties, "Property of the " + component + "; all given must match")
            ->type_name("KEY=VALUE");
    command
        .add_option(name + "-ref", reference,
                    "The " + component + " by its reference instead, as K3#2, or K3 where one netlist only has a K3")
        ->type_name("REF")
        ->excludes(byProperties);
    command.add_option(name + "-pin", pinText, "Its pin, by number or name")->required()->type_name("PIN");
}

void EndOptions::check() const
{
    if (properties.empty() && reference.empty())
        throw CLI::RequiredError(name + " or " + name + "-ref");
    if (pinText.empty()) // else it would be a pin without a name
        throw CommandError{u"%1-pin: no pin is given"_s.arg(option())};
    parsedProperties();
}

QString EndOptions::option() const
{
    return QString::fromStdString(name);
}

QString EndOptions::refOption() const
{
    return option() + u"-ref"_s;
}

QMap<QString, QString> EndOptions::parsedProperties() const
{
    return parseProperties(option(), properties);
}

QString EndOptions::ref() const
{
    return toQString(reference);
}

QString EndOptions::pin() const
{
    return toQString(pinText);
}

RouteEnd findEnd(const EDAProvider &netlist, const EndOptions &options)
{
    const auto component =
        options.ref().isEmpty() ? componentWithProperties(netlist, options) : componentWithRef(netlist, options);
    const auto part = netlist.getPartByName(component->part); // without which no netlist is read
    const auto pin = part->getPinByNumberOrName(options.pin());
    if (pin.isNull())
        throw CommandError{noPinText(*component, *part, options.pin())};
    reportOtherPins(*component, *part, *pin, options);
    return {component, EDANetNode::create(component->ref, pin->number)};
}
}
