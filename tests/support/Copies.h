#ifndef VELK_TESTS_COPIES_H
#define VELK_TESTS_COPIES_H

#include <QStringList>

#include <utility>

/// What \a text tells of a copy, of one that was moved, and of \a other after each was assigned to it; equal texts
/// once.
template <typename Value, typename Text>
QStringList textsOfCopies(const Value &value, const Value &other, Text text)
{
    Value copy(value);
    QStringList texts{text(copy)};
    Value moved(std::move(copy));
    texts.append(text(moved));
    Value assigned(other);
    assigned = moved;
    texts.append(text(assigned));
    assigned = other;
    assigned = std::move(moved);
    texts.append(text(assigned));
    texts.removeDuplicates();
    return texts;
}

#endif
