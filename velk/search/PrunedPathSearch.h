#ifndef VELK_SEARCH_PRUNEDPATHSEARCH_H
#define VELK_SEARCH_PRUNEDPATHSEARCH_H

#include <velk/search/FoundPaths.h>
#include <velk/search/HeldPositions.h>
#include <velk/search/LastCrossings.h>
#include <velk/search/RequiredCrossings.h>
#include <velk/search/SearchBounds.h>

#include <QVarLengthArray>

#include <optional>

namespace Velk {

/// What a search is to keep of the paths that it finds.
enum class Kept
{
    Nothing,    ///< but their number
    Components, ///< and additional nodes
    Crossings,  ///< also by which ways they go and, where contacts of relays are given, the positions for it
};

/// The search of one query on the crossing graph of an index. It finds what PathSearch finds, without entering branches
/// from which the destination cannot be reached within the limits.
class PrunedPathSearch
{
public:
    /// All but the last have to stay.
    PrunedPathSearch(const NetlistIndex &netlist, const CrossingGraph &crossingGraph, const SearchRules &searchRules,
                     Interruption &searchInterruption, Kept keptOfPaths);

    /// All paths, or the first ones if their number is bounded: those with the fewest switching components first, among
    /// them those with the fewest additional nodes, among equals in depth-first order; they last as long as this. Where
    /// nothing is kept, only their number. Call it once. Throws EDASearchCalledOffException.
    const FoundPaths &run();

private:
    /// A net that a branch has come to, and by which component and terminal of it.
    struct Arrival
    {
        int net;
        int component;
        int terminal;
    };

    /// A net on the current branch and what is still to be crossed from it.
    struct Level
    {
        Arrival arrival;
        int switchesLeft; ///< that a net behind its rows may need
        const CrossingRow *nextRow;
        const CrossingRow *endRow;
        const CrossingRow *junction;     ///< the row to the junction that is being crossed, or null
        qsizetype additionalNodesBefore; ///< how many the branch had before this net
    };

    static constexpr qsizetype usualDepth = 8;

    /// What is being crossed from a net on the branch.
    struct Step
    {
        int component;
        Crossing crossing;
    };

    void searchOnce();
    void enterSourceNet();
    const CrossingRow *nextRow();
    void cross(const CrossingRow &row);
    void enterJunction(const CrossingRow &row);
    bool enterNet(const Arrival &arrival);
    bool searchFrom(const Arrival &arrival, qsizetype additionalNodesBefore);
    void keepPathsFrom(const Arrival &arrival, const NearNet &near);
    void keepPathsOverJunction(int net, const CrossingRow &entry);
    void crossLast(int lastNet);
    bool takeStep();
    void dropStep();
    bool allowRequired(int net);
    void leaveNet();
    bool isArrival(const CrossingRow &row, const Arrival &arrival) const;
    void collectAdditionalNodes(const Arrival &arrival);
    void dropAdditionalNodes(qsizetype countBefore);
    const NodeOnNet *firstKeptNode();
    void keepPath(int lastNet);
    void keepPositions();

    const NetlistIndex &index;
    const CrossingGraph &graph;
    const SearchRules &rules;
    Interruption &interruption;
    BorrowedMemory borrowed;
    IterativeDeepening deepening;
    SearchBounds bounds;
    LastCrossings lastCrossings;
    std::optional<HeldPositions> held;         ///< where contacts of relays are given: a crossing for each step
    std::optional<RequiredCrossings> required; ///< where there are any
    bool areStepsWatched;                      ///< by either of these
    const Kept kept;
    QVarLengthArray<Level, usualDepth> branch;
    QVarLengthArray<Step, usualDepth> steps; ///< one for each level, and for the net that a branch has just come to
    QVarLengthArray<NodeOnNet, usualDepth> additionalNodes; ///< of the branch
    /// Where the same are kept, if a path has needed them. Paths that have the same nodes share them.
    std::optional<const NodeOnNet *> keptNodes;
    FoundPaths &paths;
};
}

#endif
