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

/// Where in the arguments what is missing was asked for, to be put before a message.
QString placeOf(NameNotFoundException::Kind kind, const EndOptions &options)
{
    switch (kind) {
    case NameNotFoundException::Kind::Properties:
        return options.option() + u": "_s;
    case NameNotFoundException::Kind::Reference:
        return options.option() + u"-ref "_s;
    case NameNotFoundException::Kind::Pin:
        break;
    }
    return {};
}

void reportOtherComponents(const PinChoice &choice, const EndOptions &options)
{
    const auto matching = choice.otherComponents.size() + 1;
    if (matching == 1)
        return;
    const QString pinText = choice.componentsWithPin < matching
                                ? u", %1 of them with a pin '%2'"_s.arg(QString::number(choice.componentsWithPin),
                                                                        options.description().pin)
                                : QString();
    printMessage(u"velk: %1 %2 fits %3 components%4: %5 was taken, not %6"_s.arg(
        options.option(), EDAComponent::propertiesToString(options.description().properties), QString::number(matching),
        pinText, choice.component->ref, enumeration(refsOf(choice.otherComponents))));
}

void reportOtherPins(const PinChoice &choice, const EndOptions &options)
{
    if (!choice.otherPins.isEmpty())
        printMessage(u"velk: %1-pin %2 fits %3 pins of %4: %5 was taken, not %6"_s.arg(
            options.option(), options.description().pin, QString::number(choice.otherPins.size() + 1),
            choice.component->ref, choice.pin->number, enumeration(choice.otherPins)));
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
    return {parseProperties(option(), properties), toQString(reference), toQString(pinText)};
}

RouteEnd findEnd(const EDAProvider &netlist, const EndOptions &options)
{
    try {
        const PinChoice choice = findPin(netlist, options.description());
        reportOtherComponents(choice, options);
        reportOtherPins(choice, options);
        return {choice.component, EDANetNode::create(choice.component->ref, choice.pin->number)};
    } catch (const NameNotFoundException &exception) {
        throw CommandError{placeOf(exception.kind(), options) + exception.message()};
    }
}
}
