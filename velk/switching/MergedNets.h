#ifndef VELK_SWITCHING_MERGEDNETS_H
#define VELK_SWITCHING_MERGEDNETS_H

#include <velk/model/DisjointSets.h>

#include <QString>
#include <QStringList>

#include <vector>

namespace Velk {

/// Nets by number, of which those that share a pin are one, and the pins on them.
class MergedNets
{
public:
    static constexpr int none = -1;

    /// A pin of a component, which is given by its number.
    struct Pin
    {
        int component;
        QString number;
        int net;
    };
    /// The pins of a component, each once, in the order of their numbers.
    struct Pins
    {
        const Pin *first;
        const Pin *last;
        const Pin *begin() const { return first; }
        const Pin *end() const { return last; }
    };

    /// Adds a net; its pins are to be added next.
    void addNet(const QString &name);
    /// Puts a pin on the net that was added last.
    void addPin(int component, const QString &number);
    /// Adds a pin that is a net of its own, unless it lies on another.
    void addPinAlone(int component, const QString &number);
    /// To be called once, when all is added and before anything is asked.
    void merge();

    int count() const { return static_cast<int>(names.size()); }
    /// The names under which it was added, sorted.
    const QStringList &namesOf(int net) const { return names[static_cast<std::size_t>(net)]; }
    Pins pinsOf(int component) const;
    /// The net of a pin, or none.
    int netOf(int component, const QString &number) const;

private:
    void mergeNetsOfPins(DisjointSets &sets);
    void numberAnew(DisjointSets &sets);
    void findPinsOfComponents();

    std::vector<QStringList> names;
    std::vector<Pin> pins;              ///< when merged, by component, then number, each once
    std::vector<std::size_t> firstPins; ///< when merged, of each component, and one for the end
};
}

#endif
