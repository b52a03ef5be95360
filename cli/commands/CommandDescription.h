#ifndef VELK_CLI_COMMANDS_COMMANDDESCRIPTION_H
#define VELK_CLI_COMMANDS_COMMANDDESCRIPTION_H

#include <QList>
#include <QString>
#include <QStringList>

namespace CLI {
class App;
}

namespace VelkCli {

/// An option or a positional argument.
struct ArgumentDescription
{
    QStringList names; ///< with their hyphens, the short ones first; empty for a positional argument
    QString value;     ///< what stands for its value, as "FILE"; empty for a flag
    QString description;
    QString defaultValue; ///< empty where there is none
    QStringList choices;  ///< empty where there are none
    bool isRequired = false;
    bool isRepeatable = false; ///< may be given several times
    bool takesSeveral = false; ///< values, one after the other
};

/// A command or subcommand as CLI11 knows it, for the manual page and the completions.
struct CommandDescription
{
    QString path; ///< "velk ini physical"
    QString name; ///< the last word of the path
    QString description;
    QString version;    ///< as "velk 1.0.0"; empty for a subcommand
    QStringList footer; ///< paragraphs
    QList<ArgumentDescription> options;
    QList<ArgumentDescription> positionals;
    QList<CommandDescription> subcommands;
};

/// \a parentPath is empty for the command itself.
CommandDescription describe(const CLI::App &app, const QString &parentPath = {});

/// The command and all below it, each before its subcommands.
QList<CommandDescription> flattened(const CommandDescription &command);
}

#endif
