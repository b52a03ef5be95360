#include "cli/Netlist.h"

#include "cli/CommandError.h"
#include "cli/Warnings.h"

#include <velk/kicad/KiCadNetParser.h>
#include <velk/kicad/KiCadReader.h>
#include <velk/model/EDAException.h>

#include <QFile>
#include <QFileInfo>

#include <algorithm>
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
    QFile file(fileName);
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
    auto parser = std::make_unique<KiCadNetParser>(root, mode);
    const QString cutOff = u"the file does not end with the parenthesis that closes it; was it cut off?"_s;
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

bool isOnlyPinCalled(const QString &text, const QSharedPointer<EDAPin> &pin, const EDAPart &part)
{
    return std::none_of(part.pins.cbegin(), part.pins.cend(), [&](const auto &other) {
        return other.data() != pin.data() && (other->name == text || other->number == text);
    });
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
    return MultipleEDAProvider(providers, connectorTypes);
}

std::unique_ptr<EDAProvider> loadOneOrJoin(const QStringList &fileNames, KiCadReadingMode mode)
{
    if (fileNames.size() == 1)
        return loadNetlist(fileNames.first(), mode);
    return std::make_unique<MultipleEDAProvider>(
        loadNetlists(fileNames, {MultipleEDAProvider::DEFAULT_CONNECTOR_COMPONENT_TYPE}, mode));
}

QString pinText(const EDAProvider &netlist, const QString &ref, const QString &pinNumber)
{
    const auto component = netlist.getComponentByRef(ref);
    const auto part = component ? netlist.getPartByName(component->part) : nullptr;
    const auto pin = part ? part->getPinByNumber(pinNumber) : nullptr;
    const bool isNamed = pin && !pin->name.isEmpty() && isOnlyPinCalled(pin->name, pin, *part);
    return u"%1.%2"_s.arg(ref, isNamed ? pin->name : pinNumber);
}
}
