#include "cli/manual/ManualPage.h"

#include "cli/commands/Options.h"

using namespace Qt::StringLiterals;

namespace VelkCli {

namespace {

using Arguments = QList<ArgumentDescription>;

/// Not the end of a sentence, after which there would be two blanks.
const QString dots = u"...\\&"_s;

/// As it stands: copied from the page, options and quotes have to work in a shell, and no line may be a request.
QString roff(const QString &text)
{
    static const std::pair<QChar, QString> escapes[] = {
        {u'\\', u"\\e"_s},  {u'-', u"\\-"_s},   {u'\'', u"\\(aq"_s}, {u'"', u"\\(dq"_s},
        {u'`', u"\\(ga"_s}, {u'^', u"\\(ha"_s}, {u'~', u"\\(ti"_s},
    };
    QString result = text;
    for (const auto &[character, escape] : escapes) // the backslash first
        result.replace(character, escape);
    result.replace(u"\n."_s, u"\n\\&."_s);
    return result.startsWith(u'.') ? u"\\&"_s + result : result;
}

QString bold(const QString &text)
{
    return u"\\fB"_s + roff(text) + u"\\fR"_s;
}

QString italic(const QString &text)
{
    return u"\\fI"_s + roff(text) + u"\\fR"_s;
}

QString sentence(const QString &text)
{
    return roff(text.endsWith(u'.') ? text : text + u'.');
}

/// "--output FILE", not to be broken.
QString usage(const QString &name, const ArgumentDescription &argument)
{
    QStringList words;
    if (!name.isEmpty())
        words.append(bold(name));
    if (!argument.value.isEmpty())
        words.append(italic(argument.value) + (argument.takesSeveral ? dots : QString()));
    return words.join(u"\\ "_s);
}

QString synopsis(const CommandDescription &command)
{
    QStringList words;
    for (const auto &option : command.options) {
        if (option.isRequired)
            words.append(usage(option.names.last(), option));
    }
    words.append(u"["_s + italic(u"OPTION"_s) + u"]"_s + dots);
    for (const auto &positional : command.positionals) {
        const QString shown = usage({}, positional);
        words.append(positional.isRequired ? shown : u"["_s + shown + u"]"_s);
    }
    return u".SY \"%1\"\n%2\n.YS\n"_s.arg(roff(command.path), words.join(u'\n'));
}

QString entry(const ArgumentDescription &argument)
{
    QStringList usages;
    for (const QString &name : argument.names)
        usages.append(usage(name, argument));
    if (argument.names.isEmpty())
        usages.append(usage({}, argument));

    QStringList sentences{sentence(argument.description)};
    if (!argument.choices.isEmpty())
        sentences.append(sentence(u"One of "_s + argument.choices.join(u", "_s)));
    if (!argument.defaultValue.isEmpty())
        sentences.append(sentence(u"Default: "_s + argument.defaultValue));
    if (argument.isRepeatable && !argument.takesSeveral)
        sentences.append(sentence(u"May be given several times"_s));
    return u".TP\n%1\n%2\n"_s.arg(usages.join(u", "_s), sentences.join(u'\n'));
}

QString entries(const Arguments &arguments)
{
    QString result;
    for (const auto &argument : arguments)
        result += entry(argument);
    return result;
}

/// The paragraph of the footer with this heading, without it.
QString footerSection(const CommandDescription &command, const std::string &heading)
{
    const QString start = QString::fromStdString(heading);
    for (const QString &paragraph : command.footer) {
        if (paragraph.startsWith(start))
            return paragraph.mid(start.size());
    }
    return {};
}

/// The paragraphs of the footer that have no section of their own.
QString remarks(const CommandDescription &command)
{
    QString result;
    for (const QString &paragraph : command.footer) {
        if (!paragraph.startsWith(QString::fromStdString(exampleHeading)) &&
            !paragraph.startsWith(QString::fromStdString(exitStatusHeading)))
            result += u".PP\n"_s + roff(paragraph.trimmed()) + u'\n';
    }
    return result;
}

QString section(const CommandDescription &command)
{
    return u".SS \"%1\"\n%2\n"_s.arg(roff(command.path), sentence(command.description)) + entries(command.positionals) +
           entries(command.options) + remarks(command);
}

/// Each line is a number and its meaning.
QString exitStatus(const CommandDescription &command)
{
    QString result;
    const auto lines = footerSection(command, exitStatusHeading).split(u'\n', Qt::SkipEmptyParts);
    for (const QString &line : lines) {
        const QString status = line.trimmed();
        result += u".TP\n%1\n%2\n"_s.arg(bold(status.section(u' ', 0, 0)),
                                         sentence(status.section(u' ', 1, -1, QString::SectionSkipEmpty)));
    }
    return result;
}

QString example(const CommandDescription &command)
{
    const QString text = footerSection(command, exampleHeading);
    if (text.isEmpty())
        return {};
    return u".PP\n%1:\n.PP\n.EX\n%2\n.EE\n"_s.arg(roff(command.description), roff(text));
}
}

QString manualPage(const CommandDescription &command)
{
    const QString summary = command.description.section(u'\n', 0, 0).chopped(1);
    QString synopses;
    QString sections;
    QString examples;
    const auto subcommands = flattened(command).mid(1);
    for (const auto &subcommand : subcommands) {
        sections += section(subcommand);
        if (subcommand.subcommands.isEmpty()) {
            synopses += synopsis(subcommand);
            examples += example(subcommand);
        }
    }
    return u".\\\" Made from the options of the command.\n"_s +
           u".TH %1 1 \"\" \"%2\" \"User Commands\"\n"_s.arg(roff(command.name.toUpper()), roff(command.version)) +
           u".nh\n.ad l\n.SH NAME\n%1 \\- %2\n"_s.arg(roff(command.name),
                                                      roff(summary.left(1).toLower() + summary.mid(1))) +
           u".SH SYNOPSIS\n"_s + synopses + u".SH DESCRIPTION\n%1\n"_s.arg(roff(command.description)) +
           remarks(command) + u".SH OPTIONS\n"_s + entries(command.options) + u".SH COMMANDS\n"_s + sections +
           u".SH EXIT STATUS\n"_s + exitStatus(command) +
           u".SH EXAMPLES\nThe files are those in %1.\n"_s.arg(roff(QString::fromStdString(examplesFolder))) + examples;
}
}
