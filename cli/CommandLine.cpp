#include "cli/CommandLine.h"

#include "cli/commands/Completion.h"
#include "cli/commands/SystemNames.h"
#include "cli/terminal/CommandError.h"
#include "cli/terminal/Progress.h"
#include "cli/terminal/Terminal.h"

#include <CLI/CLI.hpp>

#include <velk/VelkVersion.h>
#include <velk/naming/Suggestions.h>

#include <QRegularExpression>

#include <iostream>
#include <string>
#include <string_view>
#include <vector>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace VelkCli {

namespace {

QStringList commandNames(const CLI::App &app)
{
    QStringList names;
    for (const auto *subcommand : app.get_subcommands([](const CLI::App *) { return true; }))
        names.append(QString::fromStdString(subcommand->get_name()));
    return names;
}

QStringList optionNames(const CLI::App &app)
{
    QStringList names;
    for (const auto *option : app.get_options()) {
        if (!option->nonpositional())
            continue;
        for (const std::string &name : option->get_lnames())
            names.append(u"--"_s + QString::fromStdString(name));
    }
    return names;
}

/// What was given instead of a subcommand, or else the first option that there is not; empty if there is none.
QString unknownWord(const CLI::App &app)
{
    const QStringList words = toQStringList(app.remaining());
    if (app.get_require_subcommand_min() > 0)
        return words.value(0);
    static const QRegularExpression option(u"^-.*[^-]"_s);
    return words.value(words.indexOf(option));
}

QString unknownWordText(const CLI::App &app)
{
    const QString word = unknownWord(app).section(u'=', 0, 0);
    if (word.isEmpty())
        return {};
    const bool isOption = word.startsWith(u'-');
    const QString text = isOption ? u"no option '%1'; there are %2"_s : u"no command '%1'; there are %2"_s;
    return text.arg(word, enumeration(nearestFirst(word, isOption ? optionNames(app) : commandNames(app))));
}

// What is unknown comes first: a required option is missing because its name was mistyped.
std::string usageMessage(const CLI::App *app, const CLI::Error &error)
{
    std::string command = "velk";
    QString message = unknownWordText(*app);
    while (message.isEmpty() && !app->get_subcommands().empty()) {
        app = app->get_subcommands().front();
        command += " " + app->get_name();
        message = unknownWordText(*app);
    }
    if (message.isEmpty())
        message = QString::fromUtf8(error.what()).remove(bracketGuard);
    return "velk: " + printable(message).toStdString() + " (see " + command + " --help)\n";
}

/// "velk", "velk help" and "velk help routes" as "velk --help" and "velk routes --help".
std::vector<std::string> withHelpOption(std::vector<std::string> arguments)
{
    if (!arguments.empty() && arguments.back() == "help")
        arguments.pop_back();
    else if (!arguments.empty())
        return arguments;
    arguments.insert(arguments.begin(), "--help");
    return arguments;
}

/// For the scripts in cli/completions; nobody else has to know of it.
constexpr std::string_view completionRequest = "__complete";

void printCompletions(const CLI::App &app, int argc, char **argv)
{
    QStringList words;
    for (int i = 2; i < argc; ++i)
        words.append(QString::fromUtf8(argv[i]));
    for (const QString &line : completions(describe(app), words, namesInSystem))
        std::cout << line.toStdString() << '\n';
}
}

CommandLine::CommandLine()
    : app(std::make_unique<CLI::App>(
          "Finds the chains of relays and resistors between two pins of a test system.\n"
          "The system is drawn in KiCad, one netlist for each board, joined where the boards plug together.",
          "velk"))
    , routes(*app)
    , coverage(*app)
    , state(*app)
#ifdef VELK_HAS_PLANNING
    , plan(*app)
#endif
    , list(*app)
    , check(*app)
    , ini(*app)
    , system(*app)
{
    app->set_version_flag("--version", "velk " VELK_VERSION_STRING);
    app->require_subcommand(1);
    app->failure_message(usageMessage);
    app->footer(exampleHeading +
                "  velk list types examples/demo/instruments.net examples/demo/matrix.net\n"
                "\n" +
                exitStatusHeading +
                "  0  done; with velk routes: there are routes; with velk check: nothing is found\n"
                "  1  with velk routes: there are none; with velk check: something is found; with velk state "
                "--expect: something is missing or short; "
                "with velk plan: a step has no plan, or none was found in time; "
                "with velk coverage --compare: pairs of pins are lost or longer\n"
                "  2  wrong usage, unreadable input or an output that cannot be written\n"
                "\nEach command has a --help of its own, as velk routes --help.\n"
                "Start with docs/getting-started.md in " +
                examplesFolder + ".");
}

CommandLine::~CommandLine() = default;

const CLI::App &CommandLine::definitions() const
{
    return *app;
}

int CommandLine::run(int argc, char **argv)
{
    if (argc > 1 && argv[1] == completionRequest) {
        printCompletions(*app, argc, argv);
        return 0;
    }
    try {
        app->parse(withHelpOption(guarded(argc, argv)));
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
    if (coverage.isChosen())
        return coverage.run();
    if (state.isChosen())
        return state.run();
#ifdef VELK_HAS_PLANNING
    if (plan.isChosen())
        return plan.run();
#endif
    if (check.isChosen())
        return check.run();
    if (ini.isChosen())
        return ini.run();
    if (system.isChosen())
        return system.run();
    return routes.isChosen() ? routes.run() : list.run();
}
}
