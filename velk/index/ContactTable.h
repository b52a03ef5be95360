#ifndef VELK_INDEX_CONTACTTABLE_H
#define VELK_INDEX_CONTACTTABLE_H

#include <velk/index/Elements.h>
#include <velk/model/RelayContacts.h>

#include <cstddef>
#include <vector>

namespace Velk {

class NetlistIndex;

/// A contact as it is seen from one of its terminals.
struct NumberedContact
{
    int exit; ///< the other terminal
    int gang; ///< counted from 0
    int firstPosition;
    int endPosition; ///< behind those in which it is closed, in the table's list
};

/// The contacts of the relays that are known, in the numbers of an index. Each stands there twice, once for each of its
/// terminals. Those with a pin that the part lacks or that lies on no net are left out.
class ContactTable
{
public:
    ContactTable(const NetlistIndex &index, const RelayContactMap &relays);

    /// Whether the component connects what its contacts say, and not all its pins.
    bool isKnown(int component) const { return known[toSize(component)]; }
    /// Those of a terminal, by their other one.
    Elements<NumberedContact> contactsOf(int terminal) const
    {
        return {contacts.data() + firstContacts[toSize(terminal)],
                contacts.data() + firstContacts[toSize(terminal) + 1]};
    }
    /// Null where there is none, as on what is not known. The first terminal may be none.
    const NumberedContact *contactBetween(int terminal, int exit) const;
    /// The positions in which it is closed, ascending; one twice that lists it twice.
    Elements<int> positionsOf(const NumberedContact &contact) const
    {
        return {positions.data() + contact.firstPosition, positions.data() + contact.endPosition};
    }
    int gangCount() const { return gangs; }

private:
    class Builder;

    static std::size_t toSize(int number) { return static_cast<std::size_t>(number); }

    std::vector<bool> known;
    std::vector<int> firstContacts; ///< of each terminal, and one more
    std::vector<NumberedContact> contacts;
    std::vector<int> positions; ///< those of one contact after those of another
    int gangs = 0;
};
}

#endif
