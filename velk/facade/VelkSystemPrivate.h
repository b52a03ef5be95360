#ifndef VELK_FACADE_VELKSYSTEMPRIVATE_H
#define VELK_FACADE_VELKSYSTEMPRIVATE_H

#include <velk/facade/SystemRecords.h>
#include <velk/facade/SystemSwitching.h>
#include <velk/facade/VelkSystem.h>
#include <velk/ini/EDAPhysicalIniGenerator.h>
#include <velk/kicad/KiCadNetlistFile.h>
#include <velk/provider/MultipleEDAProvider.h>
#include <velk/routing/Routing.h>

#include <functional>
#include <memory>
#include <optional>

namespace Velk {

/// What a VelkSystem and its copies share. Nothing of it changes: one that is to keep out of something else gets a
/// copy, which has the same netlist.
class VelkSystemPrivate
{
public:
    VelkSystemPrivate(const std::vector<std::string> &fileNames, const VelkSystemOptions &systemOptions);

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
