#ifndef VELK_SEARCH_HELDPOSITIONS_H
#define VELK_SEARCH_HELDPOSITIONS_H

#include <velk/index/ContactTable.h>
#include <velk/search/SearchMemory.h>

namespace Velk {

/// In which positions the gangs of relays have to be for the crossings of a branch.
class HeldPositions
{
public:
    static constexpr int noPosition = -1;

    /// Both must stay.
    HeldPositions(const ContactTable &contactTable, SearchMemory &searchMemory);

    /// Adds a crossing of the branch, over this contact or, if that is null, over what takes no position. False, adding
    /// nothing, if no position is left to the gang in which all its contacts on the branch are closed.
    bool take(const NumberedContact *contact);
    /// Takes the last one away.
    void release();

    /// The lowest position that is left to the relay of a crossing, counted from 0, or noPosition.
    int lowestPosition(qsizetype crossing) const;

private:
    int latestCrossing(int gang) const;
    bool narrow(HeldGang &held, const HeldGang &before);

    const ContactTable &table;
    SearchMemory &memory;
};
}

#endif
