#ifndef VELK_SEARCH_MARKS_H
#define VELK_SEARCH_MARKS_H

#include <QtGlobal>

#include <vector>

namespace Velk {

/// Numbers noted for some of many nets or components, all forgotten at once. A query touches few of them, so a new
/// table for each query would cost more than the search.
class Marks
{
public:
    /// Forgets everything; afterwards numbers below \a size can be marked.
    void clear(int size)
    {
        if (entries.size() < static_cast<std::size_t>(size))
            entries.resize(static_cast<std::size_t>(size));
        if (++round == 0) { // all rounds have been used: the entries of the first could look like new ones
            entries.assign(entries.size(), Entry());
            round = 1;
        }
    }
    bool has(int number) const { return entry(number).round == round; }
    int value(int number) const { return entry(number).value; }
    void set(int number, int value = 0) { entries[static_cast<std::size_t>(number)] = {round, value}; }
    void unset(int number) { entries[static_cast<std::size_t>(number)].round = 0; }

private:
    struct Entry
    {
        quint16 round = 0; // no wider, so that tests can use them up
        int value = 0;
    };

    const Entry &entry(int number) const { return entries[static_cast<std::size_t>(number)]; }

    std::vector<Entry> entries;
    quint16 round = 0;
};
}

#endif
