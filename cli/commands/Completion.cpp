#include "cli/commands/Completion.h"

using namespace Qt::StringLiterals;

namespace VelkCli {

namespace {

/// What the words so far leave to the next one.
struct LineSoFar
{
    CommandDescription command;
    ArgumentDescription option; ///< the one whose value may be next, or one without a value
    QStringList optionsGiven;   ///< those that may not be given again
    qsizetype position = 0;     ///< among the positional arguments
    bool optionsAreOver = false;
    QMap<QString, QStringList> given = {}; ///< as AskedValue has it
    QStringList netlists = {};

    bool isOption(const QString &word) const { return !optionsAreOver && word.startsWith(u'-'); }
    ArgumentDescription optionOf(const QString &word) const;
    void add(const QString &word);
    void addArgument(const QString &word);
    QStringList optionLines() const;
    QStringList valueLines(const ArgumentDescription &argument, const KnownValues &known) const;
    QStringList argumentLines(const KnownValues &known) const;
    QStringList linesFor(const QString &word, const KnownValues &known) const;
};

ArgumentDescription LineSoFar::optionOf(const QString &word) const
{
    for (const auto &each : command.options) {
        if (each.names.contains(word.section(u'=', 0, 0)))
            return each;
    }
    return {};
}

void LineSoFar::add(const QString &word)
{
    if (isOption(word) && word != u"-"_s) {
        option = optionOf(word);
        if (!option.isRepeatable)
            optionsGiven += option.names;
        if (!option.names.isEmpty())
            given[option.names.last()] += word.contains(u'=') ? QStringList{word.section(u'=', 1)} : QStringList();
        if (word.contains(u'=') && !option.takesSeveral)
            option = {};
        optionsAreOver = word == u"--"_s;
    } else if (option.value.isEmpty()) {
        addArgument(word);
    } else {
        given[option.names.last()].append(word);
        if (!option.takesSeveral)
            option = {};
    }
}

void LineSoFar::addArgument(const QString &word)
{
    for (const auto &subcommand : std::as_const(command.subcommands)) {
        if (subcommand.name == word) {
            *this = {subcommand, {}, {}};
            return;
        }
    }
    const ArgumentDescription argument = command.positionals.value(position);
    if (argument.value == u"NETLIST"_s)
        netlists.append(word);
    if (!argument.takesSeveral)
        ++position;
}

QStringList LineSoFar::valueLines(const ArgumentDescription &argument, const KnownValues &known) const
{
    if (argument.value.isEmpty() || !argument.choices.isEmpty())
        return argument.choices;
    const QStringList lines = known({argument.names.value(argument.names.size() - 1), argument.value, given, netlists});
    return lines.isEmpty() ? QStringList{u'\t' + argument.value} : lines;
}

QStringList LineSoFar::optionLines() const
{
    QStringList lines;
    for (const auto &each : command.options) {
        for (const QString &name : each.names) {
            if (!optionsGiven.contains(name))
                lines.append(name + u'\t' + each.description.simplified());
        }
    }
    return lines;
}

QStringList LineSoFar::argumentLines(const KnownValues &known) const
{
    if (position > 0 || command.subcommands.isEmpty())
        return valueLines(command.positionals.value(position), known);
    QStringList lines;
    for (const auto &subcommand : command.subcommands)
        lines.append(subcommand.name + u'\t' + subcommand.description.simplified());
    return lines;
}

QStringList LineSoFar::linesFor(const QString &word, const KnownValues &known) const
{
    if (isOption(word))
        return word.contains(u'=') ? valueLines(optionOf(word), known) : optionLines();
    return option.value.isEmpty() ? argumentLines(known) : valueLines(option, known);
}
}

QStringList completions(const CommandDescription &command, const QStringList &words, const KnownValues &known)
{
    LineSoFar before{command, {}, {}};
    for (qsizetype i = 0; i + 1 < words.size(); ++i)
        before.add(words.at(i));
    const QString word = words.value(words.size() - 1);
    const QString beginning = before.isOption(word) ? word.mid(word.indexOf(u'=') + 1) : word;
    QStringList lines = before.linesFor(word, known);
    lines.removeIf([&](const QString &line) { return !line.startsWith(beginning) && !line.startsWith(u'\t'); });
    return lines;
}
}
