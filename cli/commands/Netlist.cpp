#include "cli/commands/Netlist.h"

#include "cli/terminal/CommandError.h"
#include "cli/terminal/Message.h"
#include "cli/terminal/Progress.h"

#include <QFile>
#include <QFileInfo>

#include <exception>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace VelkCli {

namespace {

/// Reports what is read of it.
class WatchedFile : public QFile
{
public:
    using QFile::QFile;

    bool open(OpenMode mode) override
    {
        Progress::begin(u"reading "_s + shownName(fileName()), size());
        return fileName() == standardStream ? QFile::open(stdin, mode) : QFile::open(mode);
    }

    void close() override
    {
        QFile::close();
        Progress::begin(u"taking up what %1 holds"_s.arg(shownName(fileName())));
    }

protected:
    qint64 readData(char *data, qint64 maxSize) override
    {
        const qint64 count = QFile::readData(data, maxSize);
        if (count > 0)
            Progress::advance(count);
        return count;
    }
};

KiCadNetlistFile readNetlist(const QString &fileName, KiCadReadingMode mode)
{
    WatchedFile file(fileName);
    return {&file, shownName(fileName), mode};
}

// A pipe cannot be read twice.
bool canBeReadTolerantly(const QString &fileName)
{
    if (fileName == standardStream || !QFileInfo(fileName).isFile())
        return false;
    try {
        return readNetlist(fileName, KiCadReadingMode::Tolerant).refusal().isEmpty();
    } catch (const std::exception &) { // out of memory: the first error is what counts
        return false;
    }
}

KiCadNetlistFile loadNetlist(const QString &fileName, KiCadReadingMode mode)
{
    auto netlist = readNetlist(fileName, mode);
    const QString refusal = netlist.refusal();
    if (!refusal.isEmpty()) {
        const bool isRemedied = mode == KiCadReadingMode::Default && canBeReadTolerantly(fileName);
        throw CommandError{u"%1: %2%3"_s.arg(netlist.fileName(), refusal,
                                             isRemedied ? u"; try --tolerant, which can read this file"_s : QString())};
    }
    QStringList warnings = netlist.warnings();
    for (QString &warning : warnings)
        warning.prepend(netlist.fileName() + u": "_s);
    printWarnings(warnings);
    return netlist;
}
}

Netlists readNetlists(const QStringList &fileNames, KiCadReadingMode mode)
{
    Netlists netlists;
    for (const QString &fileName : fileNames)
        netlists.append(loadNetlist(fileName, mode));
    return netlists;
}

MultipleEDAProvider joined(const Netlists &netlists, const QStringList &connectorTypes)
{
    QList<EDAProvider *> providers;
    for (const auto &netlist : netlists)
        providers.append(netlist.netlist().get());
    Progress::begin(u"joining the netlists"_s);
    return MultipleEDAProvider(providers, connectorTypes);
}

MultipleEDAProvider loadNetlists(const QStringList &fileNames, const QStringList &connectorTypes, KiCadReadingMode mode)
{
    return joined(readNetlists(fileNames, mode), connectorTypes);
}

std::shared_ptr<EDAProvider> loadOneOrJoin(const QStringList &fileNames, const QStringList &connectorTypes,
                                           KiCadReadingMode mode)
{
    if (fileNames.size() == 1)
        return loadNetlist(fileNames.first(), mode).netlist();
    return std::make_shared<MultipleEDAProvider>(loadNetlists(fileNames, connectorTypes, mode));
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
