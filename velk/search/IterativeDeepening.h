#ifndef VELK_SEARCH_ITERATIVEDEEPENING_H
#define VELK_SEARCH_ITERATIVEDEEPENING_H

#include <QtGlobal>

#include <limits>

namespace Velk {

/// The passes of a depth-first search that finds paths in the order of results and stops after so many.
///
/// A pass goes as deep as its paths need: so many switches, and so many additional nodes. What it cuts off tells how
/// deep the next one has to go. Without a bound on the number of paths the only pass goes down to the limits.
class IterativeDeepening
{
public:
    /// No number of paths, or a negative one, is no bound.
    IterativeDeepening(qsizetype maxSwitches, qsizetype maxNodes, qsizetype maxPaths);

    bool isBounded() const { return bounded; }
    /// Whether as many paths are kept as are wanted.
    bool isComplete() const { return missing == 0; }
    /// Whether this pass goes as deep.
    bool reaches(qsizetype switches, qsizetype nodes) const
    {
        return switches <= depth.switches && nodes <= depth.nodes;
    }
    /// How many switches more this pass goes, after so many. Where their number is bounded, any number: what a pass
    /// cuts off has to be noted.
    qsizetype switchesLeft(qsizetype switches) const
    {
        return bounded ? std::numeric_limits<qsizetype>::max() : depth.switches - switches;
    }
    /// The same, noting where it does not that a branch is cut off which needs as much.
    bool enters(qsizetype switches, qsizetype nodes)
    {
        if (reaches(switches, nodes))
            return true;
        noteCut(switches, nodes);
        return false;
    }
    /// Tells that a branch was cut off which needs as much at least, and which this pass does not reach.
    void noteCut(qsizetype switches, qsizetype nodes);
    /// Counts a path that was found, and tells whether it is new: earlier passes have found those that need less.
    bool keep(qsizetype switches, qsizetype nodes)
    {
        if (bounded && (switches != depth.switches || nodes != depth.nodes))
            return false;
        --missing;
        return true;
    }

    /// False, changing nothing, if paths are complete or no branch was cut off within the limits.
    bool startNextPass();

private:
    struct Depth
    {
        qsizetype switches;
        qsizetype nodes;
    };

    const Depth limits;
    const bool bounded;
    qsizetype missing;
    Depth depth;
    Depth next; ///< the least that was cut off: by nodes where the switches suffice, else by switches
};
}

#endif
