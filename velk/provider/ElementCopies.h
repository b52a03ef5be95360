#ifndef VELK_PROVIDER_ELEMENTCOPIES_H
#define VELK_PROVIDER_ELEMENTCOPIES_H

#include <velk/model/TextNumbers.h>

#include <QList>
#include <QSharedPointer>
#include <QString>
#include <QStringView>

#include <algorithm>
#include <array>
#include <vector>

namespace Velk {

/// Copies of the components or the parts of several netlists, whose names are unique. Of elements that have the same
/// name in a netlist the last holds.
template <typename Element>
class ElementCopies
{
public:
    static constexpr int none = -1;

    explicit ElementCopies(QString Element::*textOfName)
        : name(textOfName)
    {
    }

    /// The copies of another netlist are to be added next. There are at most so many, all with this suffix.
    void beginNetlist(const QString &suffixOfNames, qsizetype elementCount)
    {
        suffix = suffixOfNames;
        netlists.push_back({static_cast<int>(copies.size()), {}});
        netlists.back().names.reserve(elementCount);
    }

    void add(const QSharedPointer<Element> &copy)
    {
        Netlist &netlist = netlists.back();
        QString &suffixedName = (*copy).*name;
        const int position = netlist.first + netlist.names.add(QStringView(suffixedName).chopped(suffix.size()));
        if (position == static_cast<int>(copies.size())) {
            copies.push_back(copy);
            return;
        }
        suffixedName = (*copies[toSize(position)]).*name; // where the netlist has it from
        copies[toSize(position)] = copy;
    }

    /// In ascending order of their names, which gives them their numbers. Call it once, after all have been added.
    QList<QSharedPointer<Element>> sorted()
    {
        std::vector<SortedName> names;
        names.reserve(copies.size());
        for (const auto &copy : copies)
            names.push_back(SortedName((*copy).*name, static_cast<int>(names.size())));
        std::sort(names.begin(), names.end());
        QList<QSharedPointer<Element>> result;
        result.reserve(static_cast<qsizetype>(names.size()));
        numbers.resize(names.size());
        for (const SortedName &next : names) {
            numbers[toSize(next.position)] = static_cast<int>(result.size());
            result.append(copies[toSize(next.position)]);
        }
        return result;
    }

    /// Where the element of this name in a netlist, which count from 0, has come in sorted(); or none.
    int numberOf(qsizetype netlist, QStringView nameInNetlist) const
    {
        const Netlist &wanted = netlists[static_cast<std::size_t>(netlist)];
        const int position = wanted.names.numberOf(nameInNetlist);
        return position == none ? none : numbers[toSize(wanted.first + position)];
    }

private:
    struct Netlist
    {
        int first; ///< position of its first copy
        TextNumbers<QStringView> names;
    };

    /// A name with its beginning in numbers, which decides most comparisons without a look at the text.
    struct SortedName
    {
        SortedName(const QString &sortedText, int positionOfElement)
            : text(sortedText)
            , position(positionOfElement)
        {
            for (qsizetype i = 0; i < 8; ++i)
                beginning[i / 4] = beginning[i / 4] << 16U | (i < text.size() ? text.at(i).unicode() : 0U);
        }

        bool operator<(const SortedName &other) const
        {
            return beginning == other.beginning ? text < other.text : beginning < other.beginning;
        }

        std::array<quint64, 2> beginning = {};
        QStringView text;
        int position;
    };

    static std::size_t toSize(int number) { return static_cast<std::size_t>(number); }

    QString Element::*const name;
    QString suffix; ///< of the names in the netlist added last
    std::vector<Netlist> netlists;
    std::vector<QSharedPointer<Element>> copies;
    std::vector<int> numbers; ///< by position
};
}

#endif
