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

    bool isOption(const QString &word) const { return !optionsAreOver && word.startsWith(u'-'); }
    ArgumentDescription optionOf(const QString &word) const;
    void add(const QString &word);
    void addArgument(const QString &word);
    QStringList optionLines() const;
    QStringList argumentLines() const;
    QStringList linesFor(const QString &word) const;
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
        if (word.contains(u'=') && !option.takesSeveral)
            option = {};
        optionsAreOver = word == u"--"_s;
    } else if (option.value.isEmpty()) {
        addArgument(word);
    } else if (!option.takesSeveral) {
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
    if (!command.positionals.value(position).takesSeveral)
        ++position;
}

QStringList valueLines(const ArgumentDescription &argument)
{
    if (argument.value.isEmpty() || !argument.choices.isEmpty())
        return argument.choices;
    return {u'\t' + argument.value};
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

QStringList LineSoFar::argumentLines() const
{
    if (position > 0 || command.subcommands.isEmpty())
        return valueLines(command.positionals.value(position));
    QStringList lines;
    for (const auto &subcommand : command.subcommands)
        lines.append(subcommand.name + u'\t' + subcommand.description.simplified());
    return lines;
}

QStringList LineSoFar::linesFor(const QString &word) const
{
    if (isOption(word))
        return word.contains(u'=') ? valueLines(optionOf(word)) : optionLines();
    return option.value.isEmpty() ? argumentLines() : valueLines(option);
}
}

QStringList completions(const CommandDescription &command, const QStringList &words)
{
    LineSoFar before{command, {}, {}};
    for (qsizetype i = 0; i + 1 < words.size(); ++i)
        before.add(words.at(i));
    const QString word = words.value(words.size() - 1);
    const QString beginning = before.isOption(word) ? word.mid(word.indexOf(u'=') + 1) : word;
    QStringList lines = before.linesFor(word);
    lines.removeIf([&](const QString &line) { return !line.startsWith(beginning) && !line.startsWith(u'\t'); });
    return lines;
}
}
