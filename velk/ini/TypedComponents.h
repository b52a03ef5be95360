#ifndef VELK_INI_TYPEDCOMPONENTS_H
#define VELK_INI_TYPEDCOMPONENTS_H

#include <velk/model/EDAProvider.h>

#include <QStringList>

namespace Velk {

/// The components of one of these types, upper or lower case, in the order of the netlist. Nulls are passed over.
QList<QSharedPointer<EDAComponent>> componentsOfTypes(const EDAProvider &netlist, const QStringList &types);
}

#endif
