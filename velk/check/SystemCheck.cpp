#include <velk/check/SystemCheck.h>

#include <velk/check/CheckedSystem.h>
#include <velk/check/ConnectorChecks.h>
#include <velk/check/FileChecks.h>
#include <velk/check/IgnoredFindings.h>
#include <velk/check/IniChecks.h>
#include <velk/check/NameChecks.h>
#include <velk/check/NetChecks.h>
#include <velk/check/RelayChecks.h>
#include <velk/check/SwappedPins.h>
#include <velk/ini/EDAApplicationIniGenerator.h>
#include <velk/routing/Routing.h>

#include <QSharedData>

#include <algorithm>

namespace Velk {

class SystemCheckPrivate : public QSharedData
{
public:
    explicit SystemCheckPrivate(const MultipleEDAProvider &joined)
        : system(joined)
        , types{joined.connectorTypes(),
                {Routing::DEFAULT_SWITCHABLE_COMPONENT_TYPE_RELAY, Routing::DEFAULT_SWITCHABLE_COMPONENT_TYPE_RESISTOR},
                {Routing::DEFAULT_INTERFACE_COMPONENT_TYPE_SOURCE, Routing::DEFAULT_INTERFACE_COMPONENT_TYPE_DUT},
                {EDAApplicationIniGenerator::DEFAULT_DUT_COMPONENT_TYPE},
                SwitchingTypes().passives}
    {
    }

    QList<SingleFinding> run() const
    {
        const CheckedSystem checked(system, types);
        const SwitchingModel model(system, {types.passives, types.switchables, types.interfaces}, relayTables);
        return fileFindings(files) + connectorFindings(checked) + swappedPinFindings(checked) + netFindings(checked) +
               relayFindings(checked, model) + nameFindings(checked) + iniFindings(checked);
    }

    const MultipleEDAProvider &system;
    ComponentTypes types;
    QList<RelayTable> relayTables;
    QList<CheckedFile> files;
    QStringList ignored;
};

namespace {

QList<Finding> asFindings(const QList<SingleFinding> &findings)
{
    return {findings.cbegin(), findings.cend()};
}
}

SystemCheck::SystemCheck(const MultipleEDAProvider &joined)
    : d(new SystemCheckPrivate(joined))
{
}

SystemCheck::~SystemCheck() = default;
SystemCheck::SystemCheck(const SystemCheck &other) = default;
SystemCheck &SystemCheck::operator=(const SystemCheck &other) = default;
SystemCheck::SystemCheck(SystemCheck &&other) noexcept = default;
SystemCheck &SystemCheck::operator=(SystemCheck &&other) noexcept = default;

void SystemCheck::addFile(const QString &fileName, const QList<KiCadRepetition> &repetitions)
{
    d->files.append({fileName, repetitions});
}

void SystemCheck::setComponentTypesThatAreSwitchable(const QStringList &types)
{
    d->types.switchables = types;
}

void SystemCheck::setComponentTypesThatAreInterfaces(const QStringList &types)
{
    d->types.interfaces = types;
}

void SystemCheck::setComponentTypesDut(const QStringList &types)
{
    d->types.duts = types;
}

void SystemCheck::setComponentTypesThatArePassive(const QStringList &types)
{
    d->types.passives = types;
}

QStringList SystemCheck::componentTypesThatAreSwitchable() const
{
    return d->types.switchables;
}

QStringList SystemCheck::componentTypesThatAreInterfaces() const
{
    return d->types.interfaces;
}

QStringList SystemCheck::componentTypesDut() const
{
    return d->types.duts;
}

QStringList SystemCheck::componentTypesThatArePassive() const
{
    return d->types.passives;
}

void SystemCheck::setRelayTables(const QList<RelayTable> &tables)
{
    d->relayTables = tables;
}

QList<RelayTable> SystemCheck::relayTables() const
{
    return d->relayTables;
}

void SystemCheck::setIgnored(const QStringList &texts)
{
    d->ignored = texts;
}

QStringList SystemCheck::ignored() const
{
    return d->ignored;
}

QList<Finding> SystemCheck::findings(QStringList *unusedIgnored) const
{
    auto found = d->run();
    IgnoredFindings ignoredFindings(d->ignored);
    ignoredFindings.removeFrom(found);
    if (unusedIgnored)
        *unusedIgnored = ignoredFindings.notes(found);
    std::stable_sort(found.begin(), found.end(),
                     [](const SingleFinding &a, const SingleFinding &b) { return a.code < b.code; });
    return gathered(found);
}

QList<Finding> SystemCheck::findingsOfDut(const EDAComponent &dut)
{
    return asFindings(dutFindings(dut));
}

QList<Finding> SystemCheck::findingsOfSource(const EDAComponent &source)
{
    return asFindings(sourceFindings(source));
}
}
