#include "cli/Netlist.h"

#include "cli/CommandError.h"
#include "cli/Progress.h"
#include "cli/Warnings.h"

#include <velk/kicad/KiCadNetParser.h>
#include <velk/kicad/KiCadReader.h>
#include <velk/model/EDAException.h>

#include <QFileInfo>

#include <utility>
#include <vector>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace VelkCli {

namespace {

QString syntaxErrorText(KiCadReadingMode mode)
{
    return mode == KiCadReadingMode::Default ? u"a closing parenthesis without an opening one"_s
                                             : u"a parenthesis that closes nothing, or a list without a name"_s;
}

std::unique_ptr<KiCadNetParser> readNetlist(const QString &fileName, KiCadReadingMode mode)
{
    WatchedFile file(fileName);
    Progress::begin(u"reading "_s + fileName, file.size());
    KiCadReader reader(&file, mode);
    switch (reader.read()) {
    case KiCadNoError:
        break;
    case KiCadOpenError:
        throw CommandError{u"%1: cannot be read: %2"_s.arg(fileName, file.errorString())};
    case KiCadSyntaxError:
        throw CommandError{u"%1: %2 at line %3, column %4: %5"_s.arg(
            fileName, kiCadErrorText(KiCadSyntaxError), QString::number(reader.getErrorLine()),
            QString::number(reader.getErrorColumn()), syntaxErrorText(mode))};
    }
    const auto root = reader.getRoot();
    if (root.isNull() || root->name != u"export"_s)
        throw CommandError{u"%1: is not a KiCad netlist: it does not begin with \"(export\""_s.arg(fileName)};
    Progress::begin(u"taking up what %1 holds"_s.arg(fileName));
    auto parser = std::make_unique<KiCadNetParser>(root, mode);
    const QString cutOff =
        u"the file is not one list in parentheses as a whole; was it cut off, or is something around it?"_s;
    try {
        parser->parse();
    } catch (const EDAException &exception) {
        throw CommandError{
            u"%1: %2%3"_s.arg(fileName, exception.message(), reader.isComplete() ? QString() : u"; "_s + cutOff)};
    }
    parser->releaseTree();
    // The model would silently lack what followed.
    if (!reader.isComplete())
        throw CommandError{u"%1: %2"_s.arg(fileName, cutOff)};
    return parser;
}

// A pipe cannot be read twice.
bool canBeReadTolerantly(const QString &fileName)
{
    if (!QFileInfo(fileName).isFile())
        return false;
    try {
        readNetlist(fileName, KiCadReadingMode::Tolerant);
        return true;
    } catch (const CommandError &) {
        return false;
    } catch (const std::exception &) { // out of memory: the first error is what counts
        return false;
    }
}

std::unique_ptr<KiCadNetParser> loadNetlist(const QString &fileName, KiCadReadingMode mode)
{
    try {
        auto parser = readNetlist(fileName, mode);
        QStringList warnings = parser->warnings();
        for (QString &warning : warnings)
            warning.prepend(fileName + u": "_s);
        printWarnings(warnings);
        return parser;
    } catch (const CommandError &error) {
        if (mode == KiCadReadingMode::Tolerant || !canBeReadTolerantly(fileName))
            throw;
        throw CommandError{error.message + u"; try --tolerant, which can read this file"_s};
    }
}

/// The name by which to show each pin, by its number.
QHash<QString, QString> shownNames(const EDAPart &part)
{
    QHash<QString, int> pinsCalled; // so, by name or by number
    for (const auto &pin : std::as_const(part.pins)) {
        ++pinsCalled[pin->name];
        if (pin->number != pin->name)
            ++pinsCalled[pin->number];
    }
    QHash<QString, QString> names;
    for (const auto &pin : std::as_const(part.pins)) {
        if (!names.contains(pin->number)) // the first of that number
            names.insert(pin->number, pinsCalled.value(pin->name) == 1 ? pin->name : QString());
    }
    return names;
}
}

MultipleEDAProvider loadNetlists(const QStringList &fileNames, const QStringList &connectorTypes, KiCadReadingMode mode)
{
    std::vector<std::unique_ptr<KiCadNetParser>> parsers;
    QList<EDAProvider *> providers;
    for (const QString &fileName : fileNames) {
        parsers.push_back(loadNetlist(fileName, mode));
        providers.append(parsers.back().get());
    }
    Progress::begin(u"joining the netlists"_s);
    return MultipleEDAProvider(providers, connectorTypes);
}

std::unique_ptr<EDAProvider> loadOneOrJoin(const QStringList &fileNames, KiCadReadingMode mode)
{
    if (fileNames.size() == 1)
        return loadNetlist(fileNames.first(), mode);
    return std::make_unique<MultipleEDAProvider>(
        loadNetlists(fileNames, {MultipleEDAProvider::DEFAULT_CONNECTOR_COMPONENT_TYPE}, mode));
}

QStringList refsOf(const QList<QSharedPointer<EDAComponent>> &components)
{
    QStringList refs;
    for (const auto &component : components)
        refs.append(component->ref);
    return refs;
}

PinNames::PinNames(const EDAProvider &provider)
    : netlist(provider)
{
    const auto parts = netlist.getParts();
    for (const auto &part : parts)
        namesByPart.insert(part->name, shownNames(*part));
}

QString PinNames::text(const QString &ref, const QString &pinNumber) const
{
    const auto component = netlist.getComponentByRef(ref);
    const auto part = component ? namesByPart.constFind(component->part) : namesByPart.cend();
    const QString name = part == namesByPart.cend() ? QString() : part->value(pinNumber);
    return u"%1.%2"_s.arg(ref, name.isEmpty() ? pinNumber : name);
}
}
