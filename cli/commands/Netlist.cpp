#include "cli/commands/Netlist.h"

#include "cli/commands/Warnings.h"
#include "cli/terminal/CommandError.h"
#include "cli/terminal/Progress.h"

#include <velk/kicad/KiCadReader.h>
#include <velk/model/EDAException.h>

#include <QFileInfo>

#include <utility>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace VelkCli {

namespace {

QString syntaxErrorText(KiCadReadingMode mode)
{
    return mode == KiCadReadingMode::Default ? u"a closing parenthesis without an opening one"_s
                                             : u"a parenthesis that closes nothing, or a list without a name"_s;
}

QString encodingErrorText(const KiCadReader &reader)
{
    return u"is not UTF-8 at line %1, column %2"_s.arg(QString::number(reader.getEncodingErrorLine()),
                                                       QString::number(reader.getEncodingErrorColumn()));
}

QSharedPointer<KiCadToken> readTree(KiCadReader &reader, const QFile &file, KiCadReadingMode mode)
{
    const QString fileName = shownName(file.fileName());
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
    auto root = reader.getRoot();
    if (root.isNull() || root->name != u"export"_s)
        throw CommandError{u"%1: is not a KiCad netlist: it does not begin with \"(export\""_s.arg(fileName)};
    if (reader.getEncodingErrorLine() > 0 && mode == KiCadReadingMode::Default)
        throw CommandError{u"%1: %2"_s.arg(fileName, encodingErrorText(reader))};
    return root;
}

struct ReadNetlist
{
    std::unique_ptr<KiCadNetParser> parser;
    QStringList warnings;
};

ReadNetlist readNetlist(const QString &path, KiCadReadingMode mode)
{
    WatchedFile file(path);
    const QString fileName = shownName(path);
    Progress::begin(u"reading "_s + fileName, file.size());
    KiCadReader reader(&file, mode);
    const auto root = readTree(reader, file, mode);
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
    QStringList warnings = parser->warnings();
    if (reader.getEncodingErrorLine() > 0)
        warnings.prepend(encodingErrorText(reader) + u", and taken as Latin-1 there"_s);
    return {std::move(parser), warnings};
}

// A pipe cannot be read twice.
bool canBeReadTolerantly(const QString &fileName)
{
    if (fileName == standardStream || !QFileInfo(fileName).isFile())
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
        auto [parser, warnings] = readNetlist(fileName, mode);
        for (QString &warning : warnings)
            warning.prepend(shownName(fileName) + u": "_s);
        printWarnings(warnings);
        return std::move(parser);
    } catch (const CommandError &error) {
        if (mode == KiCadReadingMode::Tolerant || !canBeReadTolerantly(fileName))
            throw;
        throw CommandError{error.message + u"; try --tolerant, which can read this file"_s};
    }
}
}

Netlists readNetlists(const QStringList &fileNames, KiCadReadingMode mode)
{
    Netlists netlists;
    for (const QString &fileName : fileNames)
        netlists.push_back(loadNetlist(fileName, mode));
    return netlists;
}

MultipleEDAProvider joined(const Netlists &netlists, const QStringList &connectorTypes)
{
    QList<EDAProvider *> providers;
    for (const auto &netlist : netlists)
        providers.append(netlist.get());
    Progress::begin(u"joining the netlists"_s);
    return MultipleEDAProvider(providers, connectorTypes);
}

MultipleEDAProvider loadNetlists(const QStringList &fileNames, const QStringList &connectorTypes, KiCadReadingMode mode)
{
    return joined(readNetlists(fileNames, mode), connectorTypes);
}

std::unique_ptr<EDAProvider> loadOneOrJoin(const QStringList &fileNames, KiCadReadingMode mode)
{
    if (fileNames.size() == 1)
        return loadNetlist(fileNames.first(), mode);
    return std::make_unique<MultipleEDAProvider>(
        loadNetlists(fileNames, {MultipleEDAProvider::DEFAULT_CONNECTOR_COMPONENT_TYPE}, mode));
}

QString shownName(const QString &fileName)
{
    return fileName == standardStream ? u"standard input"_s : fileName;
}

QStringList shownNames(const QStringList &fileNames)
{
    QStringList names;
    for (const QString &fileName : fileNames)
        names.append(shownName(fileName));
    return names;
}
}
