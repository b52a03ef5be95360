#ifndef VELK_NAMING_SIMILARNAMES_H
#define VELK_NAMING_SIMILARNAMES_H

#include <QString>
#include <QStringList>

#include <utility>
#include <vector>

namespace Velk {

/// What two names share that only differ in case, in blanks, or in hyphens and underscores between their letters:
/// "X-1", "x 1" and "X1", but not "X1-1" and "X11".
QString plainName(const QString &name);

/// Whether \a name is \a known but for at most \a mostSlips letters too many, missing, wrong or exchanged (beyond the
/// first only if the first four letters are right), or has the same plainName(). Never where they differ in digits or
/// in the first letter (\a known has one); with fewer than five characters, or more than 64, by the plain name only.
bool resembles(const QString &name, const QString &known, int mostSlips);

/// The pairs of these different names, by their positions, of which one is the other with one slip amid a word. Names
/// that differ at one place in several ways, as "SLOT_A" to "SLOT_D", are a series and no slips. In time near-linear in
/// the length of all names.
std::vector<std::pair<int, int>> slips(const QStringList &names);
}

#endif
