#include "cli/manual/Completions.h"

using namespace Qt::StringLiterals;

namespace VelkCli {

namespace {

using Completion = ArgumentDescription::Completion;

QString zshQuoted(QString text)
{
    return u"'%1'"_s.arg(text.replace(u"'"_s, u"'\\''"_s));
}

/// With a backslash before each of these characters, which have a meaning to _arguments.
QString escaped(QString text, const QString &characters)
{
    text.replace(u"\\"_s, u"\\\\"_s);
    for (const QChar character : characters)
        text.replace(character, QString(u'\\') + character);
    return text.replace(u'\n', u' ');
}

QString functionName(const CommandDescription &command)
{
    return u"_"_s + QString(command.path).replace(u' ', u'_');
}

QString action(const ArgumentDescription &argument)
{
    switch (argument.completion()) {
    case Completion::Choices:
        return u"(%1)"_s.arg(argument.choices.join(u' '));
    case Completion::Netlist:
        return u"_files -g \"*.net\""_s;
    case Completion::File:
        return u"_files"_s;
    case Completion::Nothing:
        break;
    }
    return u" "_s; // shows what is expected
}

QString valueSpecification(const ArgumentDescription &argument)
{
    if (argument.value.isEmpty())
        return {};
    return u":%1:%2"_s.arg(escaped(argument.value, u":"_s), action(argument));
}

/// With the sign for how a value may be attached: "-o+" and "--output=".
QString nameSpecification(const QString &name, const ArgumentDescription &option)
{
    if (option.value.isEmpty())
        return name;
    return name + (name.startsWith(u"--"_s) ? u'=' : u'+');
}

QString optionSpecification(const ArgumentDescription &option)
{
    const QString tail = u"[%1]"_s.arg(escaped(option.description, u"[]:"_s)) + valueSpecification(option);
    if (option.names.size() == 1) {
        const QString repeat = option.isRepeatable ? u"*"_s : QString();
        return zshQuoted(repeat + nameSpecification(option.names.first(), option) + tail);
    }
    QStringList names;
    for (const QString &name : option.names)
        names.append(nameSpecification(name, option));
    const QString head = option.isRepeatable ? u"\\*"_s : zshQuoted(u"(%1)"_s.arg(option.names.join(u' ')));
    return u"%1{%2}%3"_s.arg(head, names.join(u','), zshQuoted(tail));
}

QStringList argumentLines(const CommandDescription &command)
{
    QStringList result;
    for (const auto &option : command.options)
        result.append(optionSpecification(option));
    const auto arguments = command.looseArguments();
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        const QString position = arguments.at(i).takesSeveral ? u"*"_s : QString::number(i + 1);
        result.append(zshQuoted(position + valueSpecification(arguments.at(i))));
    }
    return result;
}

QString function(const CommandDescription &command)
{
    return u"%1() {\n    _arguments -s \\\n        %2\n}\n\n"_s.arg(functionName(command),
                                                                    argumentLines(command).join(u" \\\n        "_s));
}

QString functionOfParent(const CommandDescription &command)
{
    QStringList names;
    for (const auto &subcommand : command.subcommands) {
        const QString description = escaped(subcommand.description, {});
        names.append(zshQuoted(u"%1:%2"_s.arg(subcommand.name, description)));
    }
    QString text = uR"(@FUNCTION@() {
    local curcontext=$curcontext state line ret=1
    local -A opt_args
    _arguments -C \
        @ARGUMENT_LINES@ \
        '1: :->command' \
        '*:: :->arguments' && ret=0
    case $state in
    command)
        local -a commands=(
            @NAMES@
        )
        _describe command commands && ret=0
        ;;
    arguments)
        ((${+functions[@FUNCTION@_$line[1]]})) && @FUNCTION@_$line[1] && ret=0
        ;;
    esac
    return ret
}

)"_s;
    return text.replace(u"@FUNCTION@"_s, functionName(command))
        .replace(u"@ARGUMENT_LINES@"_s, argumentLines(command).join(u" \\\n        "_s))
        .replace(u"@NAMES@"_s, names.join(u"\n            "_s));
}
}

QString zshCompletion(const CommandDescription &command)
{
    QString script = u"#compdef %1\n# Made from the options of the command.\n\n"_s.arg(command.name);
    const auto commands = flattened(command);
    for (const auto &each : commands)
        script += each.subcommands.isEmpty() ? function(each) : functionOfParent(each);
    return script + functionName(command) + u" \"$@\"\n"_s;
}
}
