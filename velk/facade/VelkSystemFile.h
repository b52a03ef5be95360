#ifndef VELK_FACADE_VELKSYSTEMFILE_H
#define VELK_FACADE_VELKSYSTEMFILE_H

#include <velk/VelkExport.h>
#include <velk/facade/VelkSystem.h>

#include <string>
#include <vector>

namespace Velk {

/// What a system file says, mostly named "velk.toml": which netlists make up the system, and how it is asked. It is a
/// TOML file whose keys are called as the options of the command are:
///
///     netlists = ["instruments.net", "boards/matrix.net"]
///     passive = ["Resistor", "Fuse"]
///     max-switches = 7
///     without = ["K5#2"]
///
/// What a file does not say stays as it is by default. VelkSystem::open() makes a system of one.
struct VELK_EXPORT VelkSystemFile
{
    /// "netlists": their names, at least one. In the file these, and those of the tables of relays, are relative to its
    /// folder, here they can be opened.
    std::vector<std::string> fileNames;
    /// "connector", "switchable", "interface", "passive", "dut-type" and "device-type" (lists of types), "relays"
    /// (names of tables) and "tolerant".
    VelkSystemOptions options;
    VelkSearchOptions limits; ///< "max-switches", "max-connections" and "max-routes"; the rest is as by default
    /// "without": what routes are not to cross, each a reference or, as "KEY=VALUE", all components with the property.
    std::vector<std::string> excludedComponents;
    std::vector<std::string> excludedNets;    ///< "without-net": the names of nets that routes are not to enter
    std::vector<std::string> ignoredFindings; ///< "ignore": as VelkSystem::check() takes them

    /// Reads the file. Throws a VelkSystemException that names the file, the line and the column for what is no TOML,
    /// for a key that there is not, with the nearest ones, and for a value that cannot be; and one that names the file
    /// where it cannot be read or has more than 16 MiB. The netlists are not looked at.
    static VelkSystemFile read(const std::string &fileName);

    /// The text of a system file for this folder, with what each key is for. Keys that say what holds by default are
    /// comments. What is in \a limits besides the three limits has no key, and is lost.
    std::string toToml(const std::string &folder) const;
};

}

#endif
