#ifndef VELK_CLI_FORMATS_LISTFORMATS_H
#define VELK_CLI_FORMATS_LISTFORMATS_H

#include "cli/formats/Format.h"
#include "cli/formats/Table.h"

#include <velk/model/EDAProvider.h>

#include <QJsonObject>

#include <functional>

namespace VelkCli {

/// One list in its three forms, of which the one that is wanted is made.
struct Listing
{
    QString name; ///< of what it lists
    std::function<Table()> toText;
    std::function<void(CsvWriter &)> writeCsv;
    qsizetype count;
    std::function<QJsonObject(qsizetype)> toJson;
};

/// A component type and what its components are.
struct TypeRow
{
    QString type;
    int count;
    bool isSwitchable;
    bool isInterface;
    bool isConnector;
};

Listing listComponents(const QList<QSharedPointer<Velk::EDAComponent>> &components);
Listing listParts(const QList<QSharedPointer<Velk::EDAPart>> &parts);
/// The netlist, which names the pins, has to stay.
Listing listNets(const QList<QSharedPointer<Velk::EDANet>> &nets, const Velk::EDAProvider &netlist);
Listing listTypes(const QList<TypeRow> &rows);

/// A table, a row for each element or what it consists of, and {"NAME": [element]}.
const Formats<Listing> &listFormats();
}

#endif
