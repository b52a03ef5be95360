#ifndef VELK_MODEL_INDEXEDPROVIDER_H
#define VELK_MODEL_INDEXEDPROVIDER_H

#include <velk/VelkExport.h>

namespace Velk {

class NetlistIndex;

/// What a provider of Velk's own is besides an EDAProvider when its content never changes: it has the netlist in
/// numbers for those that search it. Not for use or implementation outside the library.
class VELK_EXPORT IndexedProvider
{
public:
    virtual ~IndexedProvider();

    /// Null where the index would not tell what the provider's queries tell.
    virtual const NetlistIndex *netlistIndex() const = 0;

protected:
    IndexedProvider();
    IndexedProvider(const IndexedProvider &other);
    IndexedProvider &operator=(const IndexedProvider &other);
};
}

#endif
