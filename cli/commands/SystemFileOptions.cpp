#include "cli/commands/SystemFileOptions.h"

#include "cli/terminal/CommandError.h"
#include "cli/terminal/Message.h"

#include <CLI/CLI.hpp>

#include <QFileInfo>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace VelkCli {

const std::string usualSystemFile = "velk.toml";

void SystemFileOptions::addTo(CLI::App &command, const std::vector<CLI::Option *> &netlists)
{
    netlistOptions = netlists;
    auto *option = addInputFile(command, "--system", fileName,
                                "Take the netlists, and what these options say, from this system file; without "
                                "netlists that is " +
                                    usualSystemFile + " in the current folder");
    for (CLI::Option *netlist : netlists)
        option->excludes(netlist);
}

void SystemFileOptions::fill(const CLI::Option *option, const Taking &taking)
{
    takings.emplace_back(option, taking);
}

void SystemFileOptions::add(const Taking &taking)
{
    takings.emplace_back(nullptr, taking);
}

bool SystemFileOptions::needsFile() const
{
    std::string missing;
    std::size_t given = 0;
    for (const CLI::Option *option : netlistOptions) {
        if (option->count() > 0)
            ++given;
        else
            missing += (missing.empty() ? "" : " and ") + option->get_name();
    }
    if (given == 0 && fileName.empty() && !QFileInfo::exists(QString::fromStdString(usualSystemFile)))
        throw CLI::RequiredError(missing + ", or a system file (--system FILE, or " + usualSystemFile +
                                 " in the current folder),");
    if (given > 0 && given < netlistOptions.size())
        throw CLI::RequiredError(missing);
    return given == 0;
}

void SystemFileOptions::take()
try {
    if (!needsFile())
        return;
    const bool isNamed = !fileName.empty();
    if (!isNamed)
        fileName = usualSystemFile;
    const VelkSystemFile file = VelkSystemFile::read(toQString(fileName).toStdString());
    if (!isNamed)
        printMessage(u"velk: using %1"_s.arg(toQString(fileName)));
    for (const auto &[option, taking] : takings) {
        if (option && option->count() > 0)
            continue;
        if (option)
            taken.insert(QString::fromStdString(option->get_name()));
        taking(file);
    }
} catch (const VelkSystemException &exception) {
    throw CommandError{QString::fromStdString(exception.message())};
}

QStringList SystemFileOptions::files() const
{
    return fileName.empty() ? QStringList() : QStringList{toQString(fileName)};
}

QString SystemFileOptions::placeOfKey(const QString &key) const
{
    return u"%1: %2"_s.arg(toQString(fileName), key);
}

QString SystemFileOptions::placeOf(const QString &option) const
{
    return taken.contains(option) ? placeOfKey(option.mid(2)) : option;
}

bool isTolerant(const VelkSystemFile &file)
{
    return file.options.readingMode == VelkReadingMode::Tolerant;
}
}
