#include "cli/commands/RouteEnd.h"

#include "cli/terminal/CommandError.h"
#include "cli/terminal/Message.h"

#include <CLI/CLI.hpp>

#include <velk/naming/References.h>
#include <velk/naming/Suggestions.h>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace VelkCli {

namespace {

/// What is missing was asked for under this name, to be put before a message.
QString placeOf(NameNotFoundException::Kind kind, const EndNames &names)
{
    switch (kind) {
    case NameNotFoundException::Kind::Properties:
        return names.place + names.properties + u": "_s;
    case NameNotFoundException::Kind::Reference:
        return names.place + names.reference + u' ';
    case NameNotFoundException::Kind::Pin:
    case NameNotFoundException::Kind::Net:
        break;
    }
    return names.place;
}

void reportOtherComponents(const PinChoice &choice, const PinDescription &wanted, const EndNames &names)
{
    const auto matching = choice.otherComponents.size() + 1;
    if (matching == 1)
        return;
    const QString pinText =
        choice.componentsWithPin < matching
            ? u", %1 of them with a pin '%2'"_s.arg(QString::number(choice.componentsWithPin), wanted.pin)
            : QString();
    printMessage(u"velk: %1%2 %3 fits %4 components%5: %6 was taken, not %7"_s.arg(
        names.place, names.properties, EDAComponent::propertiesToString(wanted.properties), QString::number(matching),
        pinText, choice.component->ref, enumeration(refsOf(choice.otherComponents))));
}

void reportOtherPins(const PinChoice &choice, const PinDescription &wanted, const EndNames &names)
{
    if (!choice.otherPins.isEmpty())
        printMessage(u"velk: %1%2 %3 fits %4 pins of %5: %6 was taken, not %7"_s.arg(
            names.place, names.pin, wanted.pin, QString::number(choice.otherPins.size() + 1), choice.component->ref,
            choice.pin->number, enumeration(choice.otherPins)));
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
    description();
}

QString EndOptions::option() const
{
    return QString::fromStdString(name);
}

PinDescription EndOptions::description() const
{
    return {parseProperties(option(), toQStringList(properties)), toQString(reference), toQString(pinText)};
}

RouteEnd findEnd(const EDAProvider &netlist, const PinDescription &wanted, const EndNames &names)
{
    try {
        const PinChoice choice = findPin(netlist, wanted);
        reportOtherComponents(choice, wanted, names);
        reportOtherPins(choice, wanted, names);
        return {choice.component, EDANetNode::create(choice.component->ref, choice.pin->number)};
    } catch (const NameNotFoundException &exception) {
        throw CommandError{placeOf(exception.kind(), names) + exception.message()};
    }
}

RouteEnd findEnd(const EDAProvider &netlist, const EndOptions &options)
{
    const QString name = options.option();
    return findEnd(netlist, options.description(), {{}, name, name + u"-ref"_s, name + u"-pin"_s});
}
}
