#ifndef VELK_CHECK_WORDING_H
#define VELK_CHECK_WORDING_H

#include <QString>
#include <QStringList>

namespace Velk {

/// "K1, K2 and 7 more": the first few names.
QString listed(const QStringList &names);
/// "pin '1'" or "pins '1', '2' and 7 more".
QString listedPins(const QStringList &numbers);
/// "'A', 'B' and 7 more".
QString listedInQuotes(const QStringList &names);
}

#endif
