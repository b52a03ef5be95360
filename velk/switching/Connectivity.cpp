#include <velk/switching/Connectivity.h>

#include <velk/model/DisjointSets.h>

#include <QSharedData>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <numeric>

namespace Velk {

/// A contact as it leads away from a net, closed while its gang is in the position.
struct ContactOfNet
{
    int gang;
    int position;
    int otherNet;
};

/// The contacts of all positions by the nets that they lie on.
class ContactsByNet
{
public:
    explicit ContactsByNet(const SwitchingModel &model)
        : ends(static_cast<std::size_t>(model.netCount()) + 1)
    {
        forEach(model, [this](int net, const ContactOfNet &) { ++ends[static_cast<std::size_t>(net)]; });
        std::partial_sum(ends.cbegin(), ends.cend(), ends.begin());
        contacts.resize(ends.back());
        // From the end of each net's part to its begin, where the end of the part before it is.
        forEach(model, [this](int net, const ContactOfNet &contact) {
            contacts[--ends[static_cast<std::size_t>(net)]] = contact;
        });
    }

    template <typename Visit>
    void forEachOf(int net, Visit visit) const
    {
        const auto place = static_cast<std::size_t>(net);
        for (std::size_t i = ends[place]; i < ends[place + 1]; ++i)
            visit(contacts[i]);
    }

private:
    template <typename Visit>
    static void forEach(const SwitchingModel &model, Visit visit)
    {
        for (int gang = 0; gang < model.gangCount(); ++gang) {
            for (int position = 0; position < model.gang(gang).positionCount; ++position) {
                for (const NetContact &contact : model.contactsOf(gang, position)) {
                    visit(contact.net, {gang, position, contact.otherNet});
                    visit(contact.otherNet, {gang, position, contact.net});
                }
            }
        }
    }

    std::vector<std::size_t> ends;
    std::vector<ContactOfNet> contacts;
};

class ConnectivityPrivate : public QSharedData
{
public:
    explicit ConnectivityPrivate(const SwitchingModel &switchingModel)
        : model(switchingModel)
        , contacts(std::make_shared<ContactsByNet>(switchingModel))
        , positions(static_cast<std::size_t>(switchingModel.gangCount()), 0)
        , setOfNet(static_cast<std::size_t>(switchingModel.netCount()), SwitchingModel::none)
        , netsOfSet(static_cast<std::size_t>(switchingModel.netCount()))
    {
        std::vector<int> nets(setOfNet.size());
        std::iota(nets.begin(), nets.end(), 0);
        findSets(nets);
    }

    int &setOf(int net) { return setOfNet[static_cast<std::size_t>(net)]; }
    std::vector<int> &netsOf(int set) { return netsOfSet[static_cast<std::size_t>(set)]; }

    /// The nets of the sets that the contacts of the gang in its position touch, which are no sets any more.
    void dissolveSetsAt(int gang, std::vector<int> &nets)
    {
        for (const NetContact &contact : model.contactsOf(gang, positions[static_cast<std::size_t>(gang)])) {
            dissolve(setOf(contact.net), nets);
            dissolve(setOf(contact.otherNet), nets);
        }
    }

    /// All that they can reach has to be among the nets.
    void findSets(std::vector<int> &nets)
    {
        std::sort(nets.begin(), nets.end()); // so that a set is begun at its first net
        for (const int net : nets)
            setOf(net) = SwitchingModel::none;
        std::vector<int> reached;
        for (const int net : nets) {
            if (setOf(net) == SwitchingModel::none)
                markSetFrom(net, reached);
            netsOf(setOf(net)).push_back(net);
        }
    }

    const SwitchingModel model;
    const std::shared_ptr<const ContactsByNet> contacts;
    std::vector<int> positions; ///< by gang
    std::vector<int> setOfNet;
    std::vector<std::vector<int>> netsOfSet; ///< by the number of the set

private:
    void dissolve(int set, std::vector<int> &nets)
    {
        nets.insert(nets.end(), netsOf(set).cbegin(), netsOf(set).cend());
        netsOf(set).clear();
    }

    void markSetFrom(int first, std::vector<int> &reached)
    {
        reached.assign(1, first);
        setOf(first) = first;
        for (std::size_t i = 0; i < reached.size(); ++i) {
            contacts->forEachOf(reached[i], [&](const ContactOfNet &contact) {
                const bool isClosed = positions[static_cast<std::size_t>(contact.gang)] == contact.position;
                if (!isClosed || setOf(contact.otherNet) != SwitchingModel::none)
                    return;
                setOf(contact.otherNet) = first;
                reached.push_back(contact.otherNet);
            });
        }
    }
};

Connectivity::Connectivity(const SwitchingModel &model)
    : d(new ConnectivityPrivate(model))
{
}

Connectivity::~Connectivity() = default;
Connectivity::Connectivity(const Connectivity &other) = default;
Connectivity &Connectivity::operator=(const Connectivity &other) = default;
Connectivity::Connectivity(Connectivity &&other) noexcept = default;
Connectivity &Connectivity::operator=(Connectivity &&other) noexcept = default;

const SwitchingModel &Connectivity::model() const
{
    return d->model;
}

int Connectivity::position(int gang) const
{
    return d->positions[static_cast<std::size_t>(gang)];
}

const std::vector<int> &Connectivity::positions() const
{
    return d->positions;
}

void Connectivity::setPosition(int gang, int position)
{
    std::vector<int> nets;
    d->dissolveSetsAt(gang, nets);
    d->positions[static_cast<std::size_t>(gang)] = position;
    d->dissolveSetsAt(gang, nets);
    d->findSets(nets);
}

void Connectivity::setPositions(const std::vector<int> &positions)
{
    std::vector<int> nets;
    for (int gang = 0; gang < d->model.gangCount(); ++gang) {
        int &position = d->positions[static_cast<std::size_t>(gang)];
        if (position == positions[static_cast<std::size_t>(gang)])
            continue;
        d->dissolveSetsAt(gang, nets);
        position = positions[static_cast<std::size_t>(gang)];
        d->dissolveSetsAt(gang, nets);
    }
    d->findSets(nets);
}

int Connectivity::setOf(int net) const
{
    return d->setOfNet[static_cast<std::size_t>(net)];
}

const std::vector<int> &Connectivity::netsOf(int set) const
{
    return d->netsOfSet[static_cast<std::size_t>(set)];
}

bool Connectivity::areConnected(int net, int otherNet) const
{
    return setOf(net) == setOf(otherNet);
}

std::vector<CoupledSets> Connectivity::coupledSets() const
{
    const auto &passives = d->model.passives();
    const int netCount = d->model.netCount();
    DisjointSets coupled(netCount);
    for (const PassiveComponent &passive : passives) {
        for (const int net : passive.nets)
            coupled.unite(setOf(passive.nets.front()), setOf(net));
    }
    std::vector<CoupledSets> result;
    std::vector<int> places(static_cast<std::size_t>(netCount), SwitchingModel::none); // in it, by the first set
    for (int set = 0; set < netCount; ++set) {
        const int first = coupled.leastOf(set);
        if (setOf(set) != set || first == set)
            continue;
        int &place = places[static_cast<std::size_t>(first)];
        if (place == SwitchingModel::none) {
            place = static_cast<int>(result.size());
            result.push_back({{first}, {}});
        }
        result[static_cast<std::size_t>(place)].sets.push_back(set);
    }
    for (std::size_t passive = 0; passive < passives.size(); ++passive) {
        const auto &nets = passives[passive].nets;
        const int first = nets.empty() ? SwitchingModel::none : coupled.leastOf(setOf(nets.front()));
        const int place = nets.empty() ? SwitchingModel::none : places[static_cast<std::size_t>(first)];
        if (place != SwitchingModel::none)
            result[static_cast<std::size_t>(place)].passives.push_back(static_cast<int>(passive));
    }
    std::sort(result.begin(), result.end(),
              [](const CoupledSets &a, const CoupledSets &b) { return a.sets.front() < b.sets.front(); });
    return result;
}
}
