#include "cli/commands/ExclusionOptions.h"

#include "cli/terminal/CommandError.h"
#include "cli/terminal/Message.h"

#include <CLI/CLI.hpp>

#include <velk/naming/PinSearch.h>
#include <velk/naming/References.h>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace VelkCli {

namespace {

using Named = ExclusionOptions::Named;

QList<Named> named(const QString &place, const std::vector<std::string> &texts)
{
    QList<Named> result;
    for (const std::string &text : texts)
        result.append({place, toQString(text)});
    return result;
}

QList<QSharedPointer<EDAComponent>> componentsMeant(const Named &component, const EDAProvider &netlist)
try {
    return findComponents(netlist, component.text);
} catch (const NameNotFoundException &exception) {
    const bool isReference = exception.kind() == NameNotFoundException::Kind::Reference;
    throw CommandError{component.place + (isReference ? u" "_s : u": "_s) + exception.message()};
}

/// Somebody who keeps out a connector may believe that ways keep out of it.
void warnIfNoneIsCrossed(const Named &named, const QList<QSharedPointer<EDAComponent>> &components,
                         const QStringList &crossedTypes)
{
    const auto isCrossed = [&](const auto &component) {
        return crossedTypes.contains(component->type(), Qt::CaseInsensitive);
    };
    if (std::none_of(components.cbegin(), components.cend(), isCrossed))
        printWarnings({u"%1 %2: keeps out nothing, since only components of CompType %3 are crossed; to keep out of "
                       "nets, use --without-net"_s.arg(named.place, named.text, crossedTypes.join(u" or "_s))});
}

QList<QSharedPointer<EDANet>> netsMeant(const Named &net, const EDAProvider &netlist)
try {
    return findNets(netlist, net.text);
} catch (const NameNotFoundException &exception) {
    throw CommandError{u"%1: %2"_s.arg(net.place, exception.message())};
}
}

void ExclusionOptions::addTo(CLI::App &command, SystemFileOptions &system)
{
    addRepeatable(command, "--without", components,
                  "Keep out this component, by its reference, or all components with this property")
        ->type_name("REF|KEY=VALUE");
    addRepeatable(command, "--without-net", nets,
                  "Keep out this net, by its name or, of a joined net, one that it was joined from")
        ->type_name("NET");
    system.add([this, &system](const VelkSystemFile &file) {
        componentsOfSystem = named(system.placeOfKey(u"without"_s), file.excludedComponents);
        netsOfSystem = named(system.placeOfKey(u"without-net"_s), file.excludedNets);
    });
}

QStringList ExclusionOptions::componentsIn(const EDAProvider &netlist, const QStringList &crossedTypes) const
{
    QStringList refs;
    for (const Named &component : componentsOfSystem + named(u"--without"_s, components)) {
        const auto meant = componentsMeant(component, netlist);
        warnIfNoneIsCrossed(component, meant, crossedTypes);
        refs += refsOf(meant);
    }
    refs.removeDuplicates();
    return refs;
}

QList<QSharedPointer<EDANet>> ExclusionOptions::netsIn(const EDAProvider &netlist) const
{
    QList<QSharedPointer<EDANet>> result;
    for (const Named &net : netsOfSystem + named(u"--without-net"_s, nets))
        result += netsMeant(net, netlist);
    return result;
}
}
