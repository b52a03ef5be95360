#include <velk/index/ContactTable.h>

#include <velk/index/NetlistIndex.h>

#include <algorithm>
#include <tuple>
#include <unordered_map>

namespace Velk {

class ContactTable::Builder
{
public:
    Builder(const NetlistIndex &netlist, const RelayContactMap &relays, ContactTable &madeTable)
        : index(netlist)
        , table(madeTable)
        , relaysOfComponents(toSize(netlist.componentCount()), nullptr)
    {
        gangNumbers.reserve(static_cast<std::size_t>(relays.size()));
        for (auto relay = relays.cbegin(); relay != relays.cend(); ++relay) {
            const int component = index.componentNumber(relay.key());
            if (component != NetlistIndex::none)
                relaysOfComponents[toSize(component)] = &relay.value();
        }
    }

    void build()
    {
        table.known.reserve(relaysOfComponents.size());
        table.firstContacts.reserve(toSize(index.firstPin(index.componentCount())) + 1);
        for (int component = 0; component < index.componentCount(); ++component) {
            const RelayContacts *relay = relaysOfComponents[toSize(component)];
            table.known.push_back(relay != nullptr);
            if (relay)
                addRelay(component, *relay);
            else
                table.firstContacts.resize(toSize(index.firstPin(component + 1)), nextContact());
        }
        table.firstContacts.push_back(nextContact());
        table.gangs = static_cast<int>(gangNumbers.size());
    }

private:
    /// Two terminals that are connected in a position.
    struct Closure
    {
        int terminal;
        int exit;
        int position;

        bool operator<(const Closure &other) const
        {
            return std::tie(terminal, exit, position) < std::tie(other.terminal, other.exit, other.position);
        }
    };

    void addRelay(int component, const RelayContacts &relay)
    {
        collectClosures(component, relay.positions);
        const int gang = gangNumbers.try_emplace(relay.gang, static_cast<int>(gangNumbers.size())).first->second;
        auto closure = closures.cbegin();
        for (int terminal = index.firstPin(component); terminal < index.firstPin(component + 1); ++terminal) {
            table.firstContacts.push_back(nextContact());
            while (closure != closures.cend() && closure->terminal == terminal)
                closure = addContact(closure, gang);
        }
    }

    void collectClosures(int component, const QList<ContactPosition> &positionsOfRelay)
    {
        closures.clear();
        for (int position = 0; position < positionsOfRelay.size(); ++position) {
            for (const Contact &contact : positionsOfRelay.at(position).closed) {
                const int terminal = index.numberedNode(component, contact.pin).terminal;
                const int exit = index.numberedNode(component, contact.otherPin).terminal;
                if (!isOnNet(terminal) || !isOnNet(exit))
                    continue;
                closures.push_back({terminal, exit, position});
                closures.push_back({exit, terminal, position});
            }
        }
        std::sort(closures.begin(), closures.end());
    }

    bool isOnNet(int terminal) const
    {
        return terminal != NetlistIndex::none && index.netOfTerminal(terminal) != NetlistIndex::none;
    }

    /// With all positions that follow of the same two terminals. Returns the closure behind them.
    std::vector<Closure>::const_iterator addContact(std::vector<Closure>::const_iterator closure, int gang)
    {
        const Closure first = *closure;
        const int firstPosition = nextPosition();
        for (; closure != closures.cend() && closure->terminal == first.terminal && closure->exit == first.exit;
             ++closure)
            table.positions.push_back(closure->position);
        table.contacts.push_back({first.exit, gang, firstPosition, nextPosition()});
        return closure;
    }

    int nextContact() const { return static_cast<int>(table.contacts.size()); }
    int nextPosition() const { return static_cast<int>(table.positions.size()); }

    const NetlistIndex &index;
    ContactTable &table;
    std::vector<const RelayContacts *> relaysOfComponents; ///< null where it is not known
    std::unordered_map<int, int> gangNumbers;
    std::vector<Closure> closures; ///< of the relay that is being added
};

ContactTable::ContactTable(const NetlistIndex &index, const RelayContactMap &relays)
{
    Builder(index, relays, *this).build();
}

const NumberedContact *ContactTable::contactBetween(int terminal, int exit) const
{
    if (terminal == NetlistIndex::none)
        return nullptr;
    const auto all = contactsOf(terminal);
    const auto isBefore = [](const NumberedContact &contact, int other) { return contact.exit < other; };
    const auto *found = std::lower_bound(all.begin(), all.end(), exit, isBefore);
    return found != all.end() && found->exit == exit ? found : nullptr;
}
}
