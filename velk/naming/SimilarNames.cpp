#include <velk/naming/SimilarNames.h>

#include <velk/naming/EditDistance.h>

#include <algorithm>
#include <cstdlib>
#include <tuple>
#include <utility>

namespace Velk {

namespace {

constexpr qsizetype shortestComparable = 5;
constexpr qsizetype longestComparable = 64;

bool hasComparableLength(const QString &name)
{
    return name.size() >= shortestComparable && name.size() <= longestComparable;
}

bool isSeparator(QChar c)
{
    return c.isSpace() || c == u'-' || c == u'_';
}

bool canBeWrittenTogether(QChar before, QChar after)
{
    return before.isLetterOrNumber() && after.isLetterOrNumber() && !(before.isNumber() && after.isNumber());
}

QString digitsOf(const QString &name)
{
    QString digits;
    for (const QChar c : name) {
        if (c.isDigit())
            digits.append(c);
    }
    return digits;
}

bool isAmidWord(const QString &name, qsizetype position)
{
    return position > 0 && position + 1 < name.size() && name.at(position - 1).isLetter() &&
           name.at(position).isLetter() && name.at(position + 1).isLetter();
}

/// Whether the longer name has one letter more, or names of one length differ in one letter or two exchanged ones.
bool isOneSlip(const QString &longer, const QString &shorter)
{
    const auto difference = std::mismatch(shorter.cbegin(), shorter.cend(), longer.cbegin());
    const qsizetype position = difference.first - shorter.cbegin();
    const QStringView restOfLonger = QStringView(longer).mid(position);
    const QStringView restOfShorter = QStringView(shorter).mid(position);
    if (longer.size() != shorter.size())
        return isAmidWord(longer, position) && restOfLonger.mid(1) == restOfShorter;
    if (restOfLonger.mid(1) == restOfShorter.mid(1))
        return isAmidWord(longer, position) && isAmidWord(shorter, position);
    return restOfLonger.size() > 1 && restOfLonger.mid(2) == restOfShorter.mid(2) &&
           restOfLonger.at(0) == restOfShorter.at(1) && restOfLonger.at(1) == restOfShorter.at(0) &&
           restOfLonger.at(0).isLetter() && restOfLonger.at(1).isLetter();
}

struct Shortened
{
    std::size_t hash; ///< of the name, or of the name without one of its characters
    int name;

    bool operator<(const Shortened &other) const { return std::tie(hash, name) < std::tie(other.hash, other.name); }
    bool operator==(const Shortened &other) const { return hash == other.hash && name == other.name; }
};

/// Names that are one slip apart have one of these in common.
std::vector<Shortened> shortenedNames(const QStringList &names)
{
    std::vector<Shortened> all;
    for (int i = 0; i < names.size(); ++i) {
        if (!hasComparableLength(names.at(i)))
            continue;
        all.push_back({qHash(names.at(i)), i});
        for (qsizetype j = 0; j < names.at(i).size(); ++j)
            all.push_back({qHash(QString(names.at(i)).remove(j, 1)), i});
    }
    std::sort(all.begin(), all.end());
    all.erase(std::unique(all.begin(), all.end()), all.end());
    return all;
}
}

QString plainName(const QString &name)
{
    const QString folded = name.trimmed().toCaseFolded();
    QString plain;
    for (qsizetype i = 0; i < folded.size();) {
        qsizetype end = i;
        while (end < folded.size() && isSeparator(folded.at(end)))
            ++end;
        const bool isDropped = i > 0 && end < folded.size() && canBeWrittenTogether(folded.at(i - 1), folded.at(end));
        if (!isDropped)
            plain += QStringView(folded).mid(i, end - i);
        if (end < folded.size())
            plain += folded.at(end);
        i = end + 1;
    }
    return plain;
}

bool resembles(const QString &name, const QString &known, int mostSlips)
{
    const auto trimmed = QStringView(name).trimmed();
    if (trimmed.isEmpty() || trimmed.front().toCaseFolded() != known.front().toCaseFolded())
        return false;
    const QString a = plainName(name);
    const QString b = plainName(known);
    if (a == b)
        return true;
    if (!hasComparableLength(a) || !hasComparableLength(b) || digitsOf(a) != digitsOf(b) ||
        std::abs(a.size() - b.size()) > mostSlips)
        return false;
    return editDistance(a, b) <= (a.left(4) == b.left(4) ? mostSlips : 1);
}

std::vector<std::pair<int, int>> slips(const QStringList &names)
{
    std::vector<std::pair<int, int>> pairs;
    const auto all = shortenedNames(names);
    for (auto first = all.cbegin(); first != all.cend();) {
        const auto end = std::find_if(first, all.cend(), [&](const Shortened &s) { return s.hash != first->hash; });
        if (end - first == 2) {
            const QString &a = names.at(first->name);
            const QString &b = names.at((first + 1)->name);
            if (a.size() < b.size() ? isOneSlip(b, a) : isOneSlip(a, b))
                pairs.emplace_back(first->name, (first + 1)->name);
        }
        first = end;
    }
    std::sort(pairs.begin(), pairs.end());
    pairs.erase(std::unique(pairs.begin(), pairs.end()), pairs.end());
    return pairs;
}
}
