#include "cli/commands/Options.h"

#include "cli/terminal/CommandError.h"
#include "cli/terminal/Progress.h"

#include <CLI/CLI.hpp>

#include <velk/ini/EDAApplicationIniGenerator.h>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace VelkCli {

const std::string examplesFolder = VELK_EXAMPLES_FOLDER;
const std::string exampleHeading = "Example, from " VELK_EXAMPLES_FOLDER ":\n";
const std::string exitStatusHeading = "Exit status:\n";

CLI::Option *addRepeatable(CLI::App &command, const std::string &name, std::vector<std::string> &values,
                           const std::string &description)
{
    return command.add_option(name, values, description)->allow_extra_args(false);
}

CLI::Option *addNumber(CLI::App &command, const std::string &name, int &value, const std::string &description,
                       int least, int greatest)
{
    const auto toDecimal = [least, greatest](std::string &text) {
        bool isNumber = false;
        const int number = toQString(text).toInt(&isNumber);
        if (!isNumber || number < least || number > greatest)
            return u"'%1' is no whole number from %2 to %3"_s
                .arg(toQString(text), QString::number(least), QString::number(greatest))
                .toStdString();
        text = std::to_string(number);
        return std::string();
    };
    return command.add_option(name, value, description)
        ->transform(CLI::Validator(toDecimal, {}))
        ->type_name("N")
        ->capture_default_str();
}

CLI::Option *addTypesTo(CLI::App &command, const std::string &name, std::vector<std::string> &types,
                        const std::string &description)
{
    return addRepeatable(command, name, types, description)->type_name("TYPE")->capture_default_str();
}

CLI::Option *addDutTypeTo(CLI::App &command, std::vector<std::string> &types)
{
    types = {EDAApplicationIniGenerator::DEFAULT_DUT_COMPONENT_TYPE.toStdString()};
    return addTypesTo(command, "--dut-type", types, "CompType that is a DUT");
}

CLI::Option *addInputFile(CLI::App &command, const std::string &name, std::string &fileName,
                          const std::string &description)
{
    const auto refuseEmpty = [](const std::string &text) {
        return text.empty() ? u"expected the name of a file"_s.toStdString() : std::string();
    };
    return command.add_option(name, fileName, description)->check(CLI::Validator(refuseEmpty, {}))->type_name("FILE");
}

void addOutputTo(CLI::App &command, std::string &outputFile)
{
    const auto withoutStream = [](std::string &name) {
        if (toQString(name) == standardStream)
            name.clear();
        return std::string();
    };
    command.add_option("-o,--output", outputFile, "Write to this file instead of standard output")
        ->transform(CLI::Validator(withoutStream, {}))
        ->type_name("FILE");
}

CLI::Option *addTolerantTo(CLI::App &command, bool &tolerant)
{
    return command.add_flag("--tolerant", tolerant,
                            "Read whatever KiCad 4 to 10 write; what had to be completed is a warning");
}

KiCadReadingMode readingMode(bool tolerant)
{
    return tolerant ? KiCadReadingMode::Tolerant : KiCadReadingMode::Default;
}

namespace {

// Qt would put another character into it, and so name another file.
void requireUtf8(QByteArrayView argument)
{
    if (argument.isValidUtf8())
        return;
    QString shown;
    for (const char byte : argument) {
        const auto code = static_cast<unsigned char>(byte);
        shown += code < 0x80 ? QString(QLatin1Char(byte)) : u"\\x"_s + QString::number(code, 16).toUpper();
    }
    throw CommandError{u"%1: this argument is not UTF-8"_s.arg(shown)};
}
}

std::vector<std::string> guarded(int argc, char **argv)
{
    std::vector<std::string> arguments;
    for (int i = argc - 1; i > 0; --i) {
        requireUtf8(argv[i]);
        std::string argument = argv[i];
        if (!argument.empty() && (argument.front() == '[' || argument.front() == bracketGuard))
            argument.insert(argument.begin(), static_cast<char>(bracketGuard));
        arguments.push_back(argument);
    }
    return arguments;
}

QString toQString(const std::string &text)
{
    const QString result = QString::fromStdString(text);
    return result.startsWith(bracketGuard) ? result.mid(1) : result;
}

QStringList toQStringList(const std::vector<std::string> &texts)
{
    QStringList result;
    for (const auto &text : texts)
        result.append(toQString(text));
    return result;
}

QMap<QString, QString> parseProperties(const QString &option, const QStringList &texts)
{
    QMap<QString, QString> properties;
    for (const QString &text : texts) {
        const qsizetype sign = text.indexOf(u'=');
        if (sign <= 0)
            throw CommandError{u"%1 %2: expected KEY=VALUE"_s.arg(option, text)};
        const QString key = text.left(sign);
        const QString value = text.mid(sign + 1);
        if (properties.value(key, value) != value)
            throw CommandError{u"%1 %2: %3 has another value already, and both have to match"_s.arg(option, text, key)};
        properties.insert(key, value);
    }
    return properties;
}
}
