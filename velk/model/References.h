#ifndef VELK_MODEL_REFERENCES_H
#define VELK_MODEL_REFERENCES_H

#include <velk/VelkExport.h>

#include <QString>

namespace Velk {

/// What a netlist itself says for a reference, a part name or a net name of joined netlists: "K3" for "K3#2". What has
/// no number of a netlist stays as it is.
VELK_EXPORT QString drawnName(const QString &name);

/// The position, from 1 on, of the netlist that an element of joined netlists with this name is of: 2 for "K3#2". 0 for
/// what has no number of a netlist.
VELK_EXPORT int netlistOf(const QString &name);
}

#endif
