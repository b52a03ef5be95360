#include "cli/commands/CommandDescription.h"

#include <CLI/CLI.hpp>

using namespace Qt::StringLiterals;

namespace VelkCli {

namespace {

QStringList namesOf(const CLI::Option &option)
{
    QStringList names;
    for (const auto &name : option.get_snames())
        names.append(u"-"_s + QString::fromStdString(name));
    for (const auto &name : option.get_lnames())
        names.append(u"--"_s + QString::fromStdString(name));
    return names;
}

/// CLI11 tells them in the name of the type only: "TYPE:{text,json}".
QStringList choicesOf(const QString &typeName)
{
    const QString choices = typeName.section(u":{"_s, 1).section(u'}', 0, 0);
    return choices.isEmpty() ? QStringList() : choices.split(u',');
}

QString valueOf(const CLI::Option &option, const QString &typeName, const QStringList &choices)
{
    if (option.get_items_expected_max() == 0)
        return {};
    QString type = typeName.section(u':', 0, 0);
    if (!type.isEmpty())
        return type;
    return option.get_positional() ? QString::fromStdString(option.get_name(true)) : choices.join(u'|');
}

/// Lists without their brackets.
QString defaultOf(const CLI::Option &option)
{
    QString text = QString::fromStdString(option.get_default_str());
    if (text.startsWith(u'[') && text.endsWith(u']'))
        text = text.mid(1, text.size() - 2).replace(u","_s, u", "_s);
    return text;
}

ArgumentDescription describe(const CLI::Option &option)
{
    const bool hasSeveral = option.get_items_expected_max() > 1;
    const QString typeName = QString::fromStdString(option.get_type_name());
    ArgumentDescription result;
    result.names = namesOf(option);
    result.choices = choicesOf(typeName);
    result.value = valueOf(option, typeName, result.choices);
    result.description = QString::fromStdString(option.get_description());
    result.defaultValue = defaultOf(option);
    result.isRequired = option.get_required();
    result.takesSeveral = hasSeveral && option.get_allow_extra_args();
    result.isRepeatable = hasSeveral;
    return result;
}
}

CommandDescription describe(const CLI::App &app, const QString &parentPath)
{
    CommandDescription result;
    result.name = QString::fromStdString(app.get_name());
    result.path = parentPath.isEmpty() ? result.name : parentPath + u' ' + result.name;
    result.description = QString::fromStdString(app.get_description());
    result.version = QString::fromStdString(app.version());
    result.footer = QString::fromStdString(app.get_footer()).split(u"\n\n"_s, Qt::SkipEmptyParts);
    for (const auto *option : app.get_options())
        (option->get_positional() ? result.positionals : result.options).append(describe(*option));
    const auto all = [](const CLI::App *) { return true; };
    for (const auto *subcommand : app.get_subcommands(all))
        result.subcommands.append(describe(*subcommand, result.path));
    return result;
}

QList<CommandDescription> flattened(const CommandDescription &command)
{
    QList<CommandDescription> result{command};
    for (const auto &subcommand : command.subcommands)
        result += flattened(subcommand);
    return result;
}
}
