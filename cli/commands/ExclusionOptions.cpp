#include "cli/commands/ExclusionOptions.h"

#include "cli/terminal/CommandError.h"

#include <CLI/CLI.hpp>

#include <velk/naming/NetlistSelection.h>
#include <velk/naming/PinSearch.h>
#include <velk/naming/References.h>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace VelkCli {

namespace {

/// The references of those with the property.
QStringList refsWithProperty(const QString &property, const EDAProvider &netlist)
{
    const NetlistSelection selection(netlist, parseProperties(u"--without"_s, {property}));
    const QString whyEmpty = selection.whyEmpty();
    if (!whyEmpty.isEmpty())
        throw CommandError{u"--without: "_s + whyEmpty};
    return refsOf(selection.components());
}

QStringList refsMeant(const QString &text, const EDAProvider &netlist)
try {
    const bool isProperty = text.contains(u'=') && netlist.getComponentByRef(text).isNull();
    return isProperty ? refsWithProperty(text, netlist) : QStringList{findComponent(netlist, text)->ref};
} catch (const NameNotFoundException &exception) {
    throw CommandError{u"--without "_s + exception.message()};
}

QStringList netNamesMeant(const QString &text, const EDAProvider &netlist)
try {
    QStringList names;
    for (const auto &net : findNets(netlist, text))
        names.append(net->name);
    return names;
} catch (const NameNotFoundException &exception) {
    throw CommandError{u"--without-net: "_s + exception.message()};
}
}

void ExclusionOptions::addTo(CLI::App &command, SystemFileOptions &system)
{
    auto *componentsOption =
        addRepeatable(command, "--without", components,
                      "Keep out this component, by its reference, or all components with this property");
    componentsOption->type_name("REF|KEY=VALUE");
    system.fill(componentsOption, [this](const VelkSystemFile &file) { components = file.excludedComponents; });
    auto *netsOption = addRepeatable(command, "--without-net", nets,
                                     "Keep out this net, by its name or, of a joined net, one that it was joined from");
    netsOption->type_name("NET");
    system.fill(netsOption, [this](const VelkSystemFile &file) { nets = file.excludedNets; });
}

void ExclusionOptions::applyTo(Routing &routing, const EDAProvider &netlist) const
{
    QStringList excludedComponents;
    for (const std::string &text : components)
        excludedComponents += refsMeant(toQString(text), netlist);
    QStringList excludedNets;
    for (const std::string &text : nets)
        excludedNets += netNamesMeant(toQString(text), netlist);
    routing.setExcludedComponents(excludedComponents);
    routing.setExcludedNets(excludedNets);
}
}
