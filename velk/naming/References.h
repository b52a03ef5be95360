#ifndef VELK_NAMING_REFERENCES_H
#define VELK_NAMING_REFERENCES_H

#include <velk/VelkExport.h>
#include <velk/model/EDAComponent.h>

#include <QList>
#include <QSharedPointer>
#include <QString>
#include <QStringList>

namespace Velk {

/// What a netlist itself says for a reference, a part name or a net name of joined netlists: "K3" for "K3#2". What has
/// no number of a netlist stays as it is.
VELK_EXPORT QString drawnName(const QString &name);

/// The position, from 1 on, of the netlist that an element of joined netlists with this name is of: 2 for "K3#2". 0 for
/// what has no number of a netlist.
VELK_EXPORT int netlistOf(const QString &name);

/// The references of the components, of which none is null, in their order.
VELK_EXPORT QStringList refsOf(const QList<QSharedPointer<EDAComponent>> &components);
}

#endif
