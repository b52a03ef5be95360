#ifndef VELK_COVERAGE_COMPONENTNUMBERS_H
#define VELK_COVERAGE_COMPONENTNUMBERS_H

#include <velk/index/NetlistIndex.h>
#include <velk/model/EDAProvider.h>

#include <QHash>
#include <QList>

#include <mutex>
#include <vector>

namespace Velk {

/// The components of a provider by the numbers of its index, without one by their places in its list. Safe for threads.
class ComponentNumbers
{
public:
    /// Both have to stay. The provider is asked when the first number is.
    ComponentNumbers(const EDAProvider &provider, const NetlistIndex *providerIndex);

    int numberOf(const EDAComponent &component) const; ///< or NetlistIndex::none
    const QSharedPointer<EDAComponent> &component(int number) const;
    /// Puts numbers into the order of the provider's list.
    void sort(std::vector<int> &numbers) const;

private:
    struct Listing
    {
        QList<QSharedPointer<EDAComponent>> components; ///< by place
        QHash<QString, int> numbers;                    ///< by reference, where there is no index
        std::vector<int> places;                        ///< by number
    };

    const Listing &listing() const;

    const EDAProvider &netlist;
    const NetlistIndex *const index;
    mutable std::once_flag isListed;
    mutable Listing listed;
};
}

#endif
