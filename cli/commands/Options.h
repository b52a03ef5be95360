#ifndef VELK_CLI_COMMANDS_OPTIONS_H
#define VELK_CLI_COMMANDS_OPTIONS_H

#include <velk/kicad/KiCadReadingMode.h>

#include <QMap>
#include <QString>
#include <QStringList>

#include <limits>
#include <string>
#include <vector>

namespace CLI {
class App;
class Option;
}

namespace VelkCli {

/// Where the examples and the documents are.
extern const std::string examplesFolder;

/// The paragraphs of a help's footer that begin so go to sections of their own in the manual page.
extern const std::string exampleHeading;
extern const std::string exitStatusHeading;

/// An option that may be given several times and takes one argument each time.
CLI::Option *addRepeatable(CLI::App &command, const std::string &name, std::vector<std::string> &values,
                           const std::string &description);

/// An option that takes a whole number in decimal digits, with a default. CLI11 alone takes an empty text for 0 and
/// "010" for 8.
CLI::Option *addNumber(CLI::App &command, const std::string &name, int &value, const std::string &description,
                       int least = std::numeric_limits<int>::min(), int greatest = std::numeric_limits<int>::max());

/// Repeatable, with the types as a default.
CLI::Option *addTypesTo(CLI::App &command, const std::string &name, std::vector<std::string> &types,
                        const std::string &description);
/// The option that tells which components the application INI takes for DUTs. Puts the default into the types.
CLI::Option *addDutTypeTo(CLI::App &command, std::vector<std::string> &types);
/// An option that takes the name of a file to read. It refuses an empty one, as a shell makes of a variable that is not
/// set, so that nobody takes for read what was not.
CLI::Option *addInputFile(CLI::App &command, const std::string &name, std::string &fileName,
                          const std::string &description);
/// "-" is standard output, as is no name.
void addOutputTo(CLI::App &command, std::string &outputFile);
CLI::Option *addTolerantTo(CLI::App &command, bool &tolerant);
Velk::KiCadReadingMode readingMode(bool tolerant);

/// What guarded() puts before an argument.
constexpr char16_t bracketGuard = u'\x01';

/// The arguments in the order in which CLI11 wants them, the last first. Those in brackets, as a file "[a,b]", which
/// CLI11 would take for lists, are guarded; toQString() takes the guard away. Throws a CommandError for one that is not
/// UTF-8.
std::vector<std::string> guarded(int argc, char **argv);

QString toQString(const std::string &text);
QStringList toQStringList(const std::vector<std::string> &texts);

/// Splits each "KEY=VALUE" at its first equals sign. Throws a CommandError that names \a option for a text
/// without a key or without the sign, and for a key that is given two different values.
QMap<QString, QString> parseProperties(const QString &option, const QStringList &texts);
}

#endif
