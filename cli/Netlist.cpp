#include "cli/Netlist.h"

#include "cli/CommandError.h"

#include <velk/kicad/KiCadNetParser.h>
#include <velk/kicad/KiCadReader.h>
#include <velk/model/EDAException.h>

#include <QFile>

#include <algorithm>
#include <memory>
#include <vector>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace VelkCli {

namespace {

QSharedPointer<KiCadToken> readTree(const QString &fileName)
{
    QFile file(fileName);
    KiCadReader reader(&file);
    switch (reader.read()) {
    case KiCadError::NoError:
        break;
    case KiCadError::CouldNotOpen:
        throw CommandError{u"%1: cannot be read: %2"_s.arg(fileName, file.errorString())};
    case KiCadError::SyntaxError:
        throw CommandError{
            u"%1: %2 at line %3, column %4: a closing parenthesis without an opening one"_s.arg(
                fileName, kiCadErrorText(KiCadError::SyntaxError), QString::number(reader.getErrorLine()),
                QString::number(reader.getErrorColumn()))};
    }
    const auto root = reader.getRoot();
    if (root.isNull() || root->name != u"export"_s)
        throw CommandError{u"%1: is not a KiCad netlist: it does not begin with \"(export\""_s.arg(fileName)};
    return root;
}

std::unique_ptr<KiCadNetParser> loadNetlist(const QString &fileName)
{
    try {
        auto parser = std::make_unique<KiCadNetParser>(readTree(fileName));
        parser->parse();
        return parser;
    } catch (const EDAException &exception) {
        throw CommandError{u"%1: %2"_s.arg(fileName, exception.message())};
    }
}
}

MultipleEDAProvider loadNetlists(const QStringList &fileNames, const QStringList &connectorTypes)
{
    std::vector<std::unique_ptr<KiCadNetParser>> parsers;
    QList<EDAProvider *> providers;
    for (const QString &fileName : fileNames) {
        parsers.push_back(loadNetlist(fileName));
        providers.append(parsers.back().get());
    }
    return MultipleEDAProvider(providers, connectorTypes);
}

QString pinText(const EDAProvider &netlist, const QString &ref, const QString &pinNumber)
{
    QString pinName = pinNumber;
    const auto component = netlist.getComponentByRef(ref);
    const auto part = component ? netlist.getPartByName(component->part) : nullptr;
    const auto pin = part ? part->getPinByNumber(pinNumber) : nullptr;
    if (pin && !pin->name.isEmpty()) {
        const auto sameName = std::count_if(part->pins.cbegin(), part->pins.cend(),
                                            [&](const auto &other) { return other->name == pin->name; });
        if (sameName == 1)
            pinName = pin->name;
    }
    return u"%1.%2"_s.arg(ref, pinName);
}
}
