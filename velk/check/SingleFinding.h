#ifndef VELK_CHECK_SINGLEFINDING_H
#define VELK_CHECK_SINGLEFINDING_H

#include <velk/check/Finding.h>
#include <velk/check/Wording.h>

namespace Velk {

/// A finding as a check makes it: at each component by itself, so that it can be left out there, unless several belong
/// together.
class SingleFinding : public Finding
{
public:
    SingleFinding(FindingCode findingCode, const QStringList &foundAt, const QString &what, const QStringList &refs,
                  const QStringList &netNames = {}, const QStringList &pinNumbers = {});

    int group = 0; ///< neighbours of one code and group, other than 0, are told as one
};

/// One for each of these components, all of the same group.
QList<SingleFinding> findingsOfEach(FindingCode code, const QStringList &refs, const QString &text, int group);

/// The findings with the groups of neighbours put together, and with the netlists of their components and nets. Those
/// of a group differ in what they are about alone.
QList<Finding> gathered(const QList<SingleFinding> &findings);
}

#endif
