#ifndef VELK_NAMING_EDITDISTANCE_H
#define VELK_NAMING_EDITDISTANCE_H

#include <QString>

namespace Velk {

/// How many letters have to be put in, taken out, replaced or exchanged with the next to make one text of the other.
/// Takes time in proportion to the product of their lengths.
int editDistance(const QString &a, const QString &b);
}

#endif
