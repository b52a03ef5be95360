#include "cli/commands/SystemNames.h"

#include "cli/commands/SystemFileOptions.h"

#include <velk/facade/VelkSystemFile.h>
#include <velk/kicad/KiCadNetlistFile.h>
#include <velk/model/EDAException.h>
#include <velk/naming/PinSearch.h>
#include <velk/provider/MultipleEDAProvider.h>

#include <QFileInfo>
#include <QHash>

#include <exception>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace VelkCli {

namespace {

using Components = QList<QSharedPointer<EDAComponent>>;

QString lineOf(const QString &name, const QString &description)
{
    return description.isEmpty() ? name : name + u'\t' + description.simplified();
}

/// Those that have all properties that are given with the option.
Components meantBy(const QStringList &given, Components components)
{
    QMap<QString, QString> properties;
    for (const QString &property : given)
        properties.insert(property.section(u'=', 0, 0), property.section(u'=', 1));
    components.removeIf([&](const auto &component) { return !component->matchesProperties(properties); });
    return components;
}

QStringList references(const MultipleEDAProvider &netlist, const AskedValue &)
{
    QStringList lines;
    for (const auto &component : netlist.getComponents())
        lines.append(lineOf(component->ref, component->type()));
    return lines;
}

QStringList properties(const MultipleEDAProvider &netlist, const AskedValue &asked)
{
    QStringList lines;
    for (const auto &component : meantBy(asked.given.value(asked.option), netlist.getComponents())) {
        for (auto it = component->properties.cbegin(); it != component->properties.cend(); ++it)
            lines.append(it.key() + u'=' + it.value());
    }
    lines.sort();
    lines.removeDuplicates();
    return lines;
}

QStringList referencesAndProperties(const MultipleEDAProvider &netlist, const AskedValue &asked)
{
    return references(netlist, asked) + properties(netlist, {asked.option, asked.value, {}, {}});
}

/// Of the components that the line gives for this end.
QStringList pins(const MultipleEDAProvider &netlist, const AskedValue &asked)
{
    const QString end = asked.option.chopped(qsizetype(sizeof("-pin") - 1));
    const QString ref = asked.given.value(end + u"-ref"_s).value(0);
    const Components components = ref.isEmpty() ? meantBy(asked.given.value(end), netlist.getComponents())
                                                : Components{findComponent(netlist, ref)};
    QStringList lines;
    for (const auto &component : components) {
        const auto part = netlist.getPartByName(component->part);
        for (const auto &pin : part ? part->pins : QList<QSharedPointer<EDAPin>>())
            lines.append(pin->name.isEmpty() ? pin->number : lineOf(pin->name, pin->number));
    }
    lines.removeDuplicates();
    return lines;
}

/// Joined nets, and those that they were joined from.
QStringList nets(const MultipleEDAProvider &netlist, const AskedValue &)
{
    QStringList lines;
    for (const auto &net : netlist.getNets() + netlist.boardNets())
        lines.append(net->name);
    lines.removeDuplicates();
    return lines;
}

QStringList types(const MultipleEDAProvider &netlist, const AskedValue &)
{
    QStringList lines;
    for (const auto &component : netlist.getComponents())
        lines.append(component->type());
    lines.sort();
    lines.removeDuplicates();
    return lines;
}

using Names = QStringList (*)(const MultipleEDAProvider &netlist, const AskedValue &asked);

/// What there is for values that are called so in the help, or null.
Names namesFor(const QString &value)
{
    static const QHash<QString, Names> known{
        {u"REF"_s, references},
        {u"REF[=POSITION]"_s, references},
        {u"REF|KEY=VALUE"_s, referencesAndProperties},
        {u"KEY=VALUE"_s, properties},
        {u"PIN"_s, pins},
        {u"NET"_s, nets},
        {u"TYPE"_s, types},
    };
    return known.value(value);
}

/// As a command would have it that is given these words.
VelkSystemFile systemOf(const AskedValue &asked)
{
    if (asked.netlists.isEmpty())
        return VelkSystemFile::read(
            asked.given.value(u"--system"_s).value(0, toQString(usualSystemFile)).toStdString());
    VelkSystemFile system;
    for (const QString &netlist : asked.netlists)
        system.fileNames.push_back(netlist.toStdString());
    if (asked.given.contains(u"--tolerant"_s))
        system.options.readingMode = VelkReadingMode::Tolerant;
    return system;
}

/// Whether somebody who waits for a completion will hardly notice; what is no file, as a pipe, is not to be read at
/// all.
bool isReadAtOnce(const QStringList &fileNames)
{
    constexpr qint64 most = 16 << 20;
    qint64 size = 0;
    for (const QString &fileName : fileNames) {
        const QFileInfo file(fileName);
        size += file.isFile() ? file.size() : most + 1;
    }
    return size <= most;
}
}

QStringList namesInSystem(const AskedValue &asked)
try {
    const Names names = namesFor(asked.value);
    if (!names)
        return {};
    const VelkSystemFile system = systemOf(asked);
    const QStringList fileNames = toQStringList(system.fileNames);
    if (!isReadAtOnce(fileNames))
        return {};
    QList<KiCadNetlistFile> files;
    QList<EDAProvider *> netlists;
    for (const QString &fileName : fileNames) {
        files.append(KiCadNetlistFile(fileName, readingMode(isTolerant(system))));
        if (!files.last().refusal().isEmpty())
            return {};
        netlists.append(files.last().netlist().get());
    }
    return names(MultipleEDAProvider(netlists, toQStringList(system.options.connectorTypes)), asked);
} catch (const EDAException &) { // the command itself tells what is wrong
    return {};
} catch (const std::exception &) {
    return {};
}
}
