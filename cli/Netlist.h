#ifndef VELK_CLI_NETLIST_H
#define VELK_CLI_NETLIST_H

#include <velk/kicad/KiCadReadingMode.h>
#include <velk/provider/MultipleEDAProvider.h>

#include <QHash>
#include <QStringList>

#include <memory>

namespace VelkCli {

/// Reads the files and joins them at connectors of these types. Throws a CommandError that names the file for
/// the first one that cannot be read or is no netlist. Prints what tolerant reading warns of.
Velk::MultipleEDAProvider loadNetlists(const QStringList &fileNames, const QStringList &connectorTypes,
                                       Velk::KiCadReadingMode mode);

/// One file as it is, without the suffix "#1", or several joined.
std::unique_ptr<Velk::EDAProvider> loadOneOrJoin(const QStringList &fileNames, Velk::KiCadReadingMode mode);

QStringList refsOf(const QList<QSharedPointer<Velk::EDAComponent>> &components);

/// How people name the pins of a netlist, which has to stay: "U1#1.HI" by its name, or by its number where the name is
/// empty or could be taken for another pin of the component.
class PinNames
{
public:
    explicit PinNames(const Velk::EDAProvider &provider);
    QString text(const QString &ref, const QString &pinNumber) const;

private:
    const Velk::EDAProvider &netlist;
    QHash<QString, QHash<QString, QString>> namesByPart; ///< by pin number
};
}

#endif
