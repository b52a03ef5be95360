#ifndef VELK_CLI_COMMANDS_COMPLETION_H
#define VELK_CLI_COMMANDS_COMPLETION_H

#include "cli/commands/CommandDescription.h"

#include <QMap>

#include <functional>

namespace VelkCli {

/// A value that the line asks for, and what the words before it say.
struct AskedValue
{
    QString option;                   ///< by its last name; empty for a positional argument
    QString value;                    ///< what stands for it in the help, as "REF"
    QMap<QString, QStringList> given; ///< values of options, by their last names; those of flags are empty
    QStringList netlists;
};

/// The lines for a value, or none where nothing is known of it.
using KnownValues = std::function<QStringList(const AskedValue &asked)>;

/// What the last of \a words, which stand between "velk" and the cursor, can become, in the order of the definitions:
/// for each candidate its word and, where there is one, a tab and the description. Of "--format=js" only what follows
/// the sign is completed. For a value without choices those of \a known, or else the one line is a tab and what
/// stands for the value, as "\tFILE": the shells know which of them are files.
QStringList completions(const CommandDescription &command, const QStringList &words, const KnownValues &known);
}

#endif
