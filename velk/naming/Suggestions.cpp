#include <velk/naming/Suggestions.h>

#include <velk/naming/EditDistance.h>

#include <algorithm>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;

namespace Velk {

namespace {

// A netlist may hold texts of a megabyte.
constexpr qsizetype longestCompared = 64;
constexpr qsizetype longestShown = 80;

struct Candidate
{
    bool isUnlike; ///< neither text contains the other
    int distance;
    QString text;

    bool operator<(const Candidate &other) const
    {
        return std::pair(isUnlike, distance) < std::pair(other.isUnlike, other.distance);
    }
};
}

QStringList nearestFirst(const QString &written, const QStringList &texts)
{
    const QString wanted = written.left(longestCompared).toLower();
    QStringList distinct = texts;
    distinct.removeDuplicates();
    std::vector<Candidate> candidates;
    for (const QString &text : std::as_const(distinct)) {
        const QString existing = text.left(longestCompared).toLower();
        const bool isUnlike = existing.isEmpty() || !(existing.contains(wanted) || wanted.contains(existing));
        candidates.push_back({isUnlike, editDistance(wanted, existing), text});
    }
    std::stable_sort(candidates.begin(), candidates.end());
    QStringList result;
    for (const Candidate &candidate : candidates)
        result.append(candidate.text);
    return result;
}

QString enumeration(const QStringList &texts)
{
    constexpr qsizetype mostShown = 8;
    if (texts.isEmpty())
        return u"none"_s;
    QStringList shown;
    for (const QString &text : texts.mid(0, mostShown))
        shown.append(text.size() <= longestShown ? text : text.left(longestShown - 1) + QChar(0x2026));
    if (texts.size() <= mostShown)
        return shown.join(u", "_s);
    return u"%1 and %2 more"_s.arg(shown.join(u", "_s), QString::number(texts.size() - mostShown));
}
}
