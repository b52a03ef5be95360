#ifndef VELK_PROVIDER_ELEMENTCOPIES_H
#define VELK_PROVIDER_ELEMENTCOPIES_H

#include <velk/model/TextNumbers.h>

#include <QList>
#include <QSharedPointer>
#include <QString>
#include <QStringView>

#include <algorithm>
#include <vector>

namespace Velk {

/// Copies of the components or the parts of several netlists, whose names are unique, numbered from 0 as they come. Of
/// elements that have the same name in a netlist the last holds.
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

    /// Returns the number of the copy, which is the next one or that of the copy whose place it takes.
    int add(const QSharedPointer<Element> &copy)
    {
        Netlist &netlist = netlists.back();
        QString &suffixedName = (*copy).*name;
        const int number = netlist.first + netlist.names.add(QStringView(suffixedName).chopped(suffix.size()));
        if (number == static_cast<int>(copies.size())) {
            copies.push_back(copy);
        } else {
            suffixedName = (*copies[toSize(number)]).*name; // where the netlist has it from
            copies[toSize(number)] = copy;
        }
        return number;
    }

    /// The numbers in ascending order of the names.
    std::vector<int> inOrder() const
    {
        std::vector<SortedName> names;
        names.reserve(copies.size());
        for (const auto &copy : copies)
            names.push_back(SortedName((*copy).*name, static_cast<int>(names.size())));
        std::sort(names.begin(), names.end());
        std::vector<int> numbers;
        numbers.reserve(names.size());
        for (const SortedName &next : names)
            numbers.push_back(next.number);
        return numbers;
    }

    /// The copies of these numbers.
    QList<QSharedPointer<Element>> elements(const std::vector<int> &numbers) const
    {
        QList<QSharedPointer<Element>> result;
        result.reserve(static_cast<qsizetype>(numbers.size()));
        for (const int number : numbers)
            result.append(copies[toSize(number)]);
        return result;
    }

    /// Of the element of this name in a netlist, which count from 0; or none.
    int numberOf(qsizetype netlist, QStringView nameInNetlist) const
    {
        const Netlist &wanted = netlists[static_cast<std::size_t>(netlist)];
        const int number = wanted.names.numberOf(nameInNetlist);
        return number == none ? none : wanted.first + number;
    }

private:
    struct Netlist
    {
        int first; ///< number of its first copy
        TextNumbers<QStringView> names;
    };

    /// A name with its beginning in numbers, which decides most comparisons without a look at the text.
    struct SortedName
    {
        SortedName(const QString &sortedText, int numberOfElement)
            : text(sortedText)
            , number(numberOfElement)
        {
            for (qsizetype i = 0; i < 4; ++i) {
                beginning = beginning << 16U | unit(i);
                continuation = continuation << 16U | unit(i + 4);
            }
        }

        bool operator<(const SortedName &other) const
        {
            if (beginning != other.beginning)
                return beginning < other.beginning;
            return continuation == other.continuation ? text < other.text : continuation < other.continuation;
        }

        quint64 unit(qsizetype i) const { return i < text.size() ? text.at(i).unicode() : 0; }

        quint64 beginning = 0;
        quint64 continuation = 0;
        QStringView text;
        int number;
    };

    static std::size_t toSize(int number) { return static_cast<std::size_t>(number); }

    QString Element::*const name;
    QString suffix; ///< of the names in the netlist added last
    std::vector<Netlist> netlists;
    std::vector<QSharedPointer<Element>> copies;
};
}

#endif
