#ifndef VELK_CLI_FORMATS_LISTFORMATS_H
#define VELK_CLI_FORMATS_LISTFORMATS_H

#include "cli/formats/Format.h"
#include "cli/formats/Table.h"

#include <velk/model/EDAProvider.h>
#include <velk/switching/RelayPositions.h>

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

/// What is known of a relay.
struct RelayRow
{
    QString ref;
    QString part; ///< as a table of relays has it
    Velk::RelayPositions positions;
    QString gang;   ///< the reference of the first relay of its gang; empty where it is alone
    bool isUnknown; ///< since it or another one of its gang is
};

Listing listComponents(const QList<QSharedPointer<Velk::EDAComponent>> &components);
Listing listParts(const QList<QSharedPointer<Velk::EDAPart>> &parts);
/// The netlist, which names the pins, has to stay.
Listing listNets(const QList<QSharedPointer<Velk::EDANet>> &nets, const Velk::EDAProvider &netlist);
Listing listTypes(const QList<TypeRow> &rows);
Listing listPositions(const QList<RelayRow> &rows);

/// A table, a row for each element or what it consists of, and {"NAME": [element]}.
const Formats<Listing> &listFormats();
}

#endif
