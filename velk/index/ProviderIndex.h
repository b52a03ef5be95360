#ifndef VELK_INDEX_PROVIDERINDEX_H
#define VELK_INDEX_PROVIDERINDEX_H

#include <velk/index/NetlistIndex.h>
#include <velk/model/EDAProvider.h>

#include <memory>

namespace Velk {

/// What any provider holds at present, in numbers. Null elements are left out; of components of one reference and of
/// parts of one name there is the one that the provider's look-up finds.
std::unique_ptr<const NetlistIndex> indexOf(const EDAProvider &provider);
}

#endif
