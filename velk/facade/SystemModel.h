#ifndef VELK_FACADE_SYSTEMMODEL_H
#define VELK_FACADE_SYSTEMMODEL_H

#include <velk/VelkExport.h>
#include <velk/facade/VelkSystem.h>
#include <velk/switching/SwitchingModel.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace Velk {

class VelkSystemPrivate;

/// A VelkSystem in the numbers of its SwitchingModel, for the facades of other libraries that are built with this one.
/// Not installed. It shares what the system has read, finds what people write as VelkSystem does, throws its exceptions
/// and logs nothing. Threads may ask it at once.
class VELK_EXPORT SystemModel
{
public:
    /// With the exclusions that the system has now. Throws a VelkSystemException for positions that are wrong.
    explicit SystemModel(const VelkSystem &system);
    ~SystemModel();
    SystemModel(const SystemModel &other);
    SystemModel &operator=(const SystemModel &other);
    /// One that was moved from may be assigned to or destroyed, nothing else.
    SystemModel(SystemModel &&other) noexcept;
    SystemModel &operator=(SystemModel &&other) noexcept;

    const SwitchingModel &model() const;         ///< what the relays of the system do
    std::vector<int> excludedComponents() const; ///< of the system
    std::vector<int> excludedNets() const;       ///< of the system
    /// A pin that has to lie on a net. Throws a VelkSystemException where it does not, or is not there.
    InterfacePin pin(const VelkRouteEnd &end) const;
    /// What VelkSystem::setExcludedComponents() takes and throws.
    std::vector<int> components(const std::vector<std::string> &texts) const;
    /// What VelkSystem::setExcludedNets() takes and throws.
    std::vector<int> nets(const std::vector<std::string> &names) const;
    /// Of all gangs, by what VelkSystem::connected() takes and throws.
    std::vector<int> positions(const std::map<std::string, int> &positionsOfRelays) const;

    VelkNodeInfo record(const QString &ref, const QString &pin) const; ///< a pin of a component

private:
    std::shared_ptr<const VelkSystemPrivate> d;
};
}

#endif
