#ifndef VELK_FACADE_VELKSYSTEMPRIVATE_H
#define VELK_FACADE_VELKSYSTEMPRIVATE_H

#include <velk/facade/SystemRecords.h>
#include <velk/facade/SystemSwitching.h>
#include <velk/facade/VelkSystem.h>
#include <velk/ini/EDAPhysicalIniGenerator.h>
#include <velk/kicad/KiCadNetlistFile.h>
#include <velk/model/EDAException.h>
#include <velk/model/RoutingLog.h>
#include <velk/naming/PinSearch.h>
#include <velk/provider/MultipleEDAProvider.h>
#include <velk/routing/Routing.h>

#include <functional>
#include <memory>
#include <optional>

namespace Velk {

/// What \a query returns, with the exceptions of the library turned into the one of the facade. Nothing is logged.
template <typename Query>
auto answered(Query query)
try {
    const RoutingLogSilence silence;
    return query();
} catch (const EDASearchCalledOffException &exception) {
    throw VelkSystemException(VelkSystemException::Kind::CalledOff, exception.message().toStdString());
} catch (const EDAException &exception) {
    throw VelkSystemException(VelkSystemException::Kind::NotFound, exception.message().toStdString());
}

/// What a VelkSystem and its copies share. Nothing of it changes: one that is to keep out of something else gets a
/// copy, which has the same netlist.
class VelkSystemPrivate
{
public:
    VelkSystemPrivate(const std::vector<std::string> &fileNames, const VelkSystemOptions &systemOptions);

    /// The pin that is meant. Throws an EDAException where there is none.
    PinChoice findEnd(const VelkRouteEnd &end) const;
    /// Each a reference or, as "KEY=VALUE", all with the property. Throws a NameNotFoundException.
    QStringList refsOfComponents(const std::vector<std::string> &texts) const;
    /// Throw a NameNotFoundException, changing nothing.
    void setExcludedComponents(const std::vector<std::string> &components);
    void setExcludedNets(const std::vector<std::string> &names);
    /// Set up for one query. Throws a VelkSystemException where it needs positions of relays and some are wrong.
    Routing routingWith(const VelkSearchOptions &searchOptions) const;

    /// For the INI files: one file as it is, without suffixes, or all as one.
    EDAProvider &asRead() const;
    QString fileNames() const; ///< as the application INI names the netlist
    EDAPhysicalIniGenerator physicalIni() const;
    /// What writes the file. Throws a VelkSystemException where it would be too large.
    std::function<void(QIODevice &)> applicationIni(const VelkSystemPrivate &application) const;

    /// A file without its netlist, which the joined one has copied.
    struct File
    {
        QString name;
        QStringList warnings;
        QList<KiCadRepetition> repetitions;
    };

    VelkSystemOptions options;
    QList<File> files;
    std::shared_ptr<KiCadNetParser> onlyNetlist; ///< null where there are several
    std::shared_ptr<MultipleEDAProvider> netlist;
    std::shared_ptr<const SystemRecords> records;
    std::shared_ptr<const SystemSwitching> switching;
    std::optional<Routing> routing; ///< by the types, with the exclusions; the limits come with each query
};
}

#endif
