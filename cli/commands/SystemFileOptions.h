#ifndef VELK_CLI_COMMANDS_SYSTEMFILEOPTIONS_H
#define VELK_CLI_COMMANDS_SYSTEMFILEOPTIONS_H

#include "cli/commands/Options.h"

#include <velk/facade/VelkSystemFile.h>

#include <QSet>

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace VelkCli {

/// The name of the system file of a folder.
extern const std::string usualSystemFile;

/// The system file that speaks where no netlists are given: the one that --system names, or else velk.toml in the
/// current folder.
class SystemFileOptions
{
public:
    using Taking = std::function<void(const Velk::VelkSystemFile &file)>;

    /// \a netlists are the options that name netlists; --system goes without them.
    void addTo(CLI::App &command, const std::vector<CLI::Option *> &netlists);
    /// Has take() hand the file to \a taking, unless \a option is given.
    void fill(const CLI::Option *option, const Taking &taking);
    /// Has take() hand the file to \a taking, whatever is given.
    void add(const Taking &taking);

    /// To be called when all arguments are parsed: reads the file if there are no netlists, and prints which one where
    /// nobody has named it. Throws a CLI::ParseError where there are neither.
    void take();

    /// For checkFiles(): the file that was taken, if one was.
    QStringList files() const;
    /// "velk.toml: passive", of what was taken.
    QString placeOfKey(const QString &key) const;
    /// The same if the file speaks for the option "--passive", else the option.
    QString placeOf(const QString &option) const;

private:
    bool needsFile() const;

    std::vector<CLI::Option *> netlistOptions;
    std::vector<std::pair<const CLI::Option *, Taking>> takings; ///< without an option whatever is given
    std::string fileName;
    QSet<QString> taken; ///< the options that are not given
};

/// Whether it asks for tolerant reading.
bool isTolerant(const Velk::VelkSystemFile &file);
}

#endif
