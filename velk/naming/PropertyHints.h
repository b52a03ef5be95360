#ifndef VELK_CLI_PROPERTYHINTS_H
#define VELK_CLI_PROPERTYHINTS_H

#include <velk/model/EDAComponent.h>

#include <QList>
#include <QMap>
#include <QString>

namespace VelkCli {

/// Why none of the components has all of these properties: a key that none has, with the keys that there are, a value
/// that none has, with the values that there are, or which component comes nearest.
QString whyNoneMatches(const QList<QSharedPointer<Velk::EDAComponent>> &components,
                       const QMap<QString, QString> &wanted);
}

#endif
