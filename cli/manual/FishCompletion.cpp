#include "cli/manual/Completions.h"

using namespace Qt::StringLiterals;

namespace VelkCli {

namespace {

using Completion = ArgumentDescription::Completion;

QString fishQuoted(QString text)
{
    return u"'%1'"_s.arg(text.replace(u"\\"_s, u"\\\\"_s).replace(u"'"_s, u"\\'"_s));
}

/// True where the words so far are those of the command, or begin so if nothing but its arguments can follow.
QString condition(const CommandDescription &command)
{
    return (command.subcommands.isEmpty() ? u"__velk_in "_s : u"__velk_at "_s) + command.path;
}

QString line(const QString &condition, const QString &rest)
{
    return u"complete -c velk -n %1 %2\n"_s.arg(fishQuoted(condition), rest);
}

QString valuesOf(const ArgumentDescription &argument)
{
    switch (argument.completion()) {
    case Completion::Choices:
        return u"-a "_s + fishQuoted(argument.choices.join(u' '));
    case Completion::Netlist:
        return uR"(-k -a '(__fish_complete_suffix .net | string match -er "(/|[.]net)\z")')"_s; // no other files
    case Completion::File:
        return u"-F"_s;
    case Completion::Nothing:
        break;
    }
    return {};
}

QString optionLine(const CommandDescription &command, const ArgumentDescription &option)
{
    QStringList words;
    for (const QString &name : option.names)
        words.append(name.startsWith(u"--"_s) ? u"-l "_s + name.mid(2) : u"-s "_s + name.mid(1));
    if (!option.value.isEmpty())
        words.append(option.completion() == Completion::File ? u"-r"_s : u"-x"_s);
    words.append(valuesOf(option));
    words.append(u"-d "_s + fishQuoted(option.description));
    words.removeAll(QString());
    return line(condition(command), words.join(u' '));
}

/// Choices are offered until one of them is given, and what follows them only then.
QString wordLines(const CommandDescription &command)
{
    QString result;
    QString when = condition(command);
    const auto arguments = command.looseArguments();
    for (const auto &argument : arguments) {
        const QString seen = u"__fish_seen_subcommand_from "_s + argument.choices.join(u' ');
        if (argument.choices.isEmpty()) {
            result += line(when, valuesOf(argument));
        } else {
            result += line(when + u"; and not "_s + seen, valuesOf(argument));
            when += u"; and "_s + seen;
        }
    }
    return result;
}

QString lines(const CommandDescription &command)
{
    QString result;
    for (const auto &subcommand : command.subcommands)
        result += line(condition(command), u"-a %1 -d %2"_s.arg(subcommand.name, fishQuoted(subcommand.description)));
    result += wordLines(command);
    for (const auto &option : command.options)
        result += optionLine(command, option);
    return result;
}
}

QString fishCompletion(const CommandDescription &command)
{
    QString script = uR"(# Made from the options of the command.

function __velk_at
    set -l words (commandline -opc)
    set words[1] velk
    test "$words" = "$argv"
end

function __velk_in
    set -l words (commandline -opc)
    set words[1] velk
    string match -q -- "$argv *" "$words "
end

complete -c velk -f
)"_s;
    const auto commands = flattened(command);
    for (const auto &each : commands)
        script += lines(each);
    return script;
}
}
