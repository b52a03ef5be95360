#ifndef VELK_CLI_COMMANDS_EXCLUSIONOPTIONS_H
#define VELK_CLI_COMMANDS_EXCLUSIONOPTIONS_H

#include "cli/commands/SystemFileOptions.h"

#include <velk/model/EDAProvider.h>

namespace VelkCli {

/// The options of every command that searches: which components and nets it keeps out of.
class ExclusionOptions
{
public:
    /// What somebody keeps out.
    struct Named
    {
        QString place; ///< as "--without", to be put before messages
        QString text;  ///< of a component the reference, or a property of all that are meant; of a net the name
    };

    /// What is given adds to what the system file says: what it keeps out for everybody stays out.
    void addTo(CLI::App &command, SystemFileOptions &system);
    /// The references of the components in the netlist that the options name. Throws a CommandError for a name that is
    /// not there, with what comes nearest, and warns of one that means nothing of \a crossedTypes.
    QStringList componentsIn(const Velk::EDAProvider &netlist, const QStringList &crossedTypes) const;
    /// The nets in the netlist that the options name. Throws a CommandError for a name that is not there, with what
    /// comes nearest.
    QList<QSharedPointer<Velk::EDANet>> netsIn(const Velk::EDAProvider &netlist) const;

private:
    std::vector<std::string> components;
    std::vector<std::string> nets;
    QList<Named> componentsOfSystem; ///< from the system file
    QList<Named> netsOfSystem;
};
}

#endif
