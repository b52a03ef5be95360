#ifndef VELK_FACADE_KNOWNCOMPONENTS_H
#define VELK_FACADE_KNOWNCOMPONENTS_H

#include <velk/model/EDAProvider.h>

#include <map>
#include <string>
#include <unordered_map>

namespace Velk {

/// Finds components by properties in standard types. Turning these into Qt's and looking them up takes longer than most
/// searches, so what has been found is kept for later queries.
class KnownComponents
{
public:
    using Properties = std::map<std::string, std::string>;

    /// \a netlist must stay as it is, and hand out the same objects at every call.
    explicit KnownComponents(const EDAProvider &netlist);

    /// As EDAProvider::getComponentByProperties() has it.
    QSharedPointer<EDAComponent> firstWith(const Properties &properties);

private:
    struct Hash
    {
        std::size_t operator()(const Properties &properties) const;
    };

    const EDAProvider &provider;
    std::unordered_map<Properties, QSharedPointer<EDAComponent>, Hash> known; ///< none of them null
};
}

#endif
