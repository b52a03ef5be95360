#ifndef VELK_CLI_COMMANDS_ROUTEEND_H
#define VELK_CLI_COMMANDS_ROUTEEND_H

#include "cli/commands/Options.h"

#include <velk/naming/PinSearch.h>

namespace VelkCli {

/// The arguments that name one end of a route: a component, by its properties or its reference, and a pin of it.
class EndOptions
{
public:
    /// As "--source" and "source component".
    EndOptions(const std::string &optionName, const std::string &componentName);

    void addTo(CLI::App &command);
    /// Throws a CLI::ParseError where neither properties nor a reference are given, and what description() throws.
    void check() const;

    QString option() const; ///< "--source"
    /// Throws a CommandError as parseProperties() does.
    Velk::PinDescription description() const;

private:
    std::string name;
    std::string component;
    std::vector<std::string> properties;
    std::string reference;
    std::string pinText;
};

/// A pin of a netlist.
struct RouteEnd
{
    QSharedPointer<Velk::EDAComponent> component;
    QSharedPointer<Velk::EDANetNode> node;
};

/// What messages call an end: "--source", "--source-ref" and "--source-pin".
struct EndNames
{
    QString place; ///< put before each message
    QString properties;
    QString reference;
    QString pin;
};

/// The pin that the description names. Of several components it is a pin of the first one that has it, and a message
/// names the others. Throws a CommandError with what there is instead.
RouteEnd findEnd(const Velk::EDAProvider &netlist, const Velk::PinDescription &wanted, const EndNames &names);
/// The one that the arguments name.
RouteEnd findEnd(const Velk::EDAProvider &netlist, const EndOptions &options);
}

#endif
