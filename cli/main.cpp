#include "cli/CommandError.h"
#include "cli/IniCommand.h"
#include "cli/ListCommand.h"
#include "cli/Message.h"
#include "cli/RoutesCommand.h"
#include "cli/Trace.h"

#include <CLI/CLI.hpp>

#include <exception>
#include <iostream>
#include <string>

namespace {

constexpr int exitFailure = 2;

int fail(const QString &message)
{
    VelkCli::printMessage(QStringLiteral("velk: ") + message);
    return exitFailure;
}

std::string usageMessage(const CLI::App *app, const CLI::Error &error)
{
    std::string command = "velk";
    while (!app->get_subcommands().empty()) {
        app = app->get_subcommands().front();
        command += " " + app->get_name();
    }
    const QString message = QString::fromUtf8(error.what()).remove(VelkCli::bracketGuard);
    return "velk: " + VelkCli::printable(message).toStdString() + " (see " + command + " --help)\n";
}

int run(int argc, char **argv)
{
    CLI::App app("Finds the chains of relays and resistors between two pins of a test system that is drawn in\n"
                 "KiCad, one netlist for each board, joined where the boards plug together.",
                 "velk");
    app.set_version_flag("--version", "velk " VELK_VERSION);
    app.require_subcommand(1);
    app.failure_message(usageMessage);
    const VelkCli::RoutesCommand routes(app);
    const VelkCli::ListCommand list(app);
    const VelkCli::IniCommand ini(app);
    app.footer("Example, from the source folder:\n"
               "  velk list types examples/demo/instruments.net examples/demo/matrix.net\n"
               "\nvelk routes --help, velk list --help and velk ini --help tell more.");
    try {
        app.parse(VelkCli::guarded(argc, argv));
        if (ini.isChosen())
            return ini.run();
        return routes.isChosen() ? routes.run() : list.run();
    } catch (const CLI::ParseError &error) {
        const int status = app.exit(error);
        if (!std::cout.flush())
            return fail(QStringLiteral("standard output: cannot be written"));
        return status == 0 ? 0 : exitFailure;
    }
}
}

int main(int argc, char **argv)
{
    try {
        VelkCli::setUpLogging();
        return run(argc, argv);
    } catch (const VelkCli::CommandError &error) {
        return fail(error.message);
    } catch (const std::exception &exception) {
        return fail(QString::fromUtf8(exception.what()));
    }
}
