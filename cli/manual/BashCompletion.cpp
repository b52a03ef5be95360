#include "cli/manual/Completions.h"

using namespace Qt::StringLiterals;

namespace VelkCli {

namespace {

using Completion = ArgumentDescription::Completion;

QString wordList(const QStringList &words)
{
    return u"mapfile -t COMPREPLY < <(compgen -W '%1' -- \"$cur\")"_s.arg(words.join(u' '));
}

QString completionCommand(const ArgumentDescription &argument)
{
    switch (argument.completion()) {
    case Completion::Choices:
        return wordList(argument.choices);
    case Completion::Netlist:
        return u"_velk_netlists"_s;
    case Completion::File:
        return u"_filedir"_s;
    case Completion::Nothing:
        break;
    }
    return u":"_s;
}

/// A branch of a case statement; none without patterns.
QString branch(const QStringList &patterns, const QString &action)
{
    return patterns.isEmpty() ? QString() : u"        %1) %2 ;;\n"_s.arg(patterns.join(u" | "_s), action);
}

QString wordPattern(const QString &path, const QString &word)
{
    return u"\"%1 %2\""_s.arg(path, word);
}

QStringList namePatterns(const CommandDescription &command, const ArgumentDescription &option)
{
    QStringList patterns;
    for (const QString &name : option.names)
        patterns.append(wordPattern(command.path, name));
    return patterns;
}

QStringList subcommandNames(const CommandDescription &command)
{
    QStringList names;
    for (const auto &subcommand : command.subcommands)
        names.append(subcommand.name);
    return names;
}

/// The patterns of all options with a value, or of those with several.
QStringList optionPatterns(const QList<CommandDescription> &commands, bool withSeveralOnly)
{
    QStringList patterns;
    for (const auto &command : commands) {
        for (const auto &option : command.options) {
            if (withSeveralOnly ? option.takesSeveral : !option.value.isEmpty())
                patterns += namePatterns(command, option);
        }
    }
    return patterns;
}

QStringList subcommandPatterns(const QList<CommandDescription> &commands)
{
    QStringList patterns;
    for (const auto &command : commands) {
        for (const QString &name : subcommandNames(command))
            patterns.append(wordPattern(command.path, name));
    }
    return patterns;
}

QString optionNames(const CommandDescription &command)
{
    QStringList names;
    for (const auto &option : command.options)
        names += option.names;
    return branch({u"\"%1\""_s.arg(command.path)}, wordList(names));
}

/// The branches for the values of the options and for the words at each position.
QString values(const CommandDescription &command)
{
    QString result;
    for (const auto &option : command.options) {
        if (option.completion() != Completion::Nothing)
            result += branch(namePatterns(command, option), completionCommand(option));
    }
    if (!command.subcommands.isEmpty())
        result += branch({wordPattern(command.path, u"0"_s)}, wordList(subcommandNames(command)));
    for (qsizetype i = 0; i < command.positionals.size(); ++i) {
        const auto &positional = command.positionals.at(i);
        const QString pattern = positional.takesSeveral ? u"\"%1 \"[0-9]*"_s.arg(command.path)
                                                        : wordPattern(command.path, QString::number(i));
        result += branch({pattern}, completionCommand(positional));
    }
    return result;
}
}

QString bashCompletion(const CommandDescription &command)
{
    const auto commands = flattened(command);
    QString names;
    QString allValues;
    for (const auto &each : commands) {
        names += optionNames(each);
        allValues += values(each);
    }
    QString script = uR"(# Made from the options of the command.

_velk_netlists()
{
    _filedir net
    ((${#COMPREPLY[@]})) || _filedir
}

_velk()
{
    local cur prev words cword split
    _init_completion -s || return

    # What the words before this one leave: the subcommand, an option that wants a value, the number of positionals.
    local command=velk option='' several=false position=0 i
    for ((i = 1; i < cword; i++)); do
        case "$command ${words[i]}" in
@SUBCOMMANDS@@SEVERAL@@OPTIONS@        "$command -"*) option='' several=false ;;
        *)
            [[ $option ]] || ((++position))
            $several || option=''
            ;;
        esac
    done
    $split && option=$prev

    if [[ $cur == -* ]] && ! $split; then
        case $command in
@NAMES@        esac
        return
    fi
    case "$command ${option:-$position}" in
@VALUES@    esac
}

complete -F _velk velk
)"_s;
    return script.replace(u"@SUBCOMMANDS@"_s, branch(subcommandPatterns(commands), u"command+=\" ${words[i]}\""_s))
        .replace(u"@OPTIONS@"_s, branch(optionPatterns(commands, false), u"option=${words[i]} several=false"_s))
        .replace(u"@SEVERAL@"_s, branch(optionPatterns(commands, true), u"option=${words[i]} several=true"_s))
        .replace(u"@NAMES@"_s, names)
        .replace(u"@VALUES@"_s, allValues);
}
}
