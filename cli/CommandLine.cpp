#include "cli/CommandLine.h"

#include "cli/CommandError.h"
#include "cli/Message.h"
#include "cli/Progress.h"
#include "cli/Suggestions.h"

#include <CLI/CLI.hpp>

#include <velk/VelkVersion.h>

#include <iostream>

using namespace Qt::StringLiterals;

namespace VelkCli {

namespace {

/// What was given instead of a subcommand.
QString wrongCommandText(const CLI::App &app)
{
    const auto given = app.remaining();
    if (given.front().rfind('-', 0) == 0)
        return QString::fromUtf8(CLI::ExtrasError(given).what());
    QStringList names;
    for (const auto *subcommand : app.get_subcommands([](const CLI::App *) { return true; }))
        names.append(QString::fromStdString(subcommand->get_name()));
    const QString word = QString::fromStdString(given.front());
    return u"no command '%1'; there are %2"_s.arg(word, enumeration(nearestFirst(word, names)));
}

bool isWrongCommand(const CLI::App &app)
{
    return app.get_require_subcommand_min() > 0 && !app.remaining().empty();
}

std::string usageMessage(const CLI::App *app, const CLI::Error &error)
{
    std::string command = "velk";
    while (!app->get_subcommands().empty() && !isWrongCommand(*app)) {
        app = app->get_subcommands().front();
        command += " " + app->get_name();
    }
    QString message = isWrongCommand(*app) ? wrongCommandText(*app) : QString::fromUtf8(error.what());
    message.remove(bracketGuard);
    return "velk: " + printable(message).toStdString() + " (see " + command + " --help)\n";
}
}

CommandLine::CommandLine()
    : app(std::make_unique<CLI::App>(
          "Finds the chains of relays and resistors between two pins of a test system.\n"
          "The system is drawn in KiCad, one netlist for each board, joined where the boards plug together.",
          "velk"))
    , routes(*app)
    , list(*app)
    , check(*app)
    , ini(*app)
{
    app->set_version_flag("--version", "velk " VELK_VERSION_STRING);
    app->require_subcommand(1);
    app->failure_message(usageMessage);
    app->footer(exampleHeading +
                "  velk list types examples/demo/instruments.net examples/demo/matrix.net\n"
                "\n" +
                exitStatusHeading +
                "  0  done; with velk routes: there are routes; with velk check: nothing is found\n"
                "  1  with velk routes: there are none; with velk check: something is found\n"
                "  2  wrong usage, unreadable input or an output that cannot be written\n"
                "\nEach command has a --help of its own, as velk routes --help.");
}

CommandLine::~CommandLine() = default;

const CLI::App &CommandLine::definitions() const
{
    return *app;
}

int CommandLine::run(int argc, char **argv)
{
    try {
        app->parse(guarded(argc, argv));
    } catch (const CLI::ParseError &error) {
        const int status = app->exit(error);
        if (!std::cout.flush())
            throw CommandError{u"standard output: cannot be written"_s};
        return status == 0 ? 0 : exitFailure;
    }
    return runChosen();
}

int CommandLine::runChosen() const
{
    const Progress progress;
    if (check.isChosen())
        return check.run();
    if (ini.isChosen())
        return ini.run();
    return routes.isChosen() ? routes.run() : list.run();
}
}
