#ifndef VELK_SWITCHING_CONNECTIVITY_H
#define VELK_SWITCHING_CONNECTIVITY_H

#include <velk/VelkExport.h>
#include <velk/switching/SwitchingModel.h>

#include <QSharedDataPointer>

#include <vector>

namespace Velk {

class ConnectivityPrivate;

/// Connected sets of nets that passive components couple with one another.
struct CoupledSets
{
    std::vector<int> sets;     ///< two or more, by their numbers, ascending
    std::vector<int> passives; ///< all that have a net in one of them, by their positions in the model, ascending
};

/// What is connected while relays are in certain positions, at first all of them at rest. A plain value that shares its
/// contents with its copies, each of which takes positions of its own.
///
/// Nets are connected if a chain of closed contacts leads from one to the other; each net belongs to one set of
/// connected nets, maybe alone. The number of a set is that of its first net, so it changes with the positions.
class VELK_EXPORT Connectivity
{
public:
    /// Takes time in proportion to the nets of the model and to the contacts of all positions.
    explicit Connectivity(const SwitchingModel &model);
    ~Connectivity();
    Connectivity(const Connectivity &other);
    Connectivity &operator=(const Connectivity &other);
    /// One that was moved from may be assigned to or destroyed, nothing else.
    Connectivity(Connectivity &&other) noexcept;
    Connectivity &operator=(Connectivity &&other) noexcept;

    const SwitchingModel &model() const; ///< a copy of the one that was given

    int position(int gang) const; ///< 0, which is rest, until it is set; the gang has to be one of the model's
    /// Of all gangs, by number.
    const std::vector<int> &positions() const;
    /// Looks again at the sets alone that the contacts of the gang touch, the ones it opens and the ones it closes. The
    /// gang has to be one of the model's and to have the position.
    void setPosition(int gang, int position);
    /// The same for all gangs at once, which is quicker than one after the other: no set is looked at twice. There has
    /// to be a position for each gang, which it has.
    void setPositions(const std::vector<int> &positions);

    /// The number of the set that the net belongs to. The net has to be one of the model's, here and below.
    int setOf(int net) const;
    /// The nets of the set of this number, ascending; none where no set has it. As long as no position changes.
    const std::vector<int> &netsOf(int set) const;
    bool areConnected(int net, int otherNet) const; ///< a net is connected with itself

    /// In the order of their first sets. Each call takes time in proportion to the nets and the passive components.
    std::vector<CoupledSets> coupledSets() const;

private:
    QSharedDataPointer<ConnectivityPrivate> d;
};
}

#endif
