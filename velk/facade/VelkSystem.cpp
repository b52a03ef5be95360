#include <velk/facade/VelkSystem.h>

#include <velk/check/SystemCheck.h>
#include <velk/coverage/CoverageMatrix.h>
#include <velk/facade/StandardTypes.h>
#include <velk/facade/SystemRecords.h>
#include <velk/facade/VelkSystemFile.h>
#include <velk/facade/VelkSystemPrivate.h>
#include <velk/index/NetlistIndex.h>
#include <velk/ini/EDAApplicationIniGenerator.h>
#include <velk/naming/NetlistSelection.h>
#include <velk/naming/References.h>
#include <velk/naming/Suggestions.h>
#include <velk/search/Interruption.h>

#include <QBuffer>
#include <QFileInfo>
#include <QSaveFile>

#include <tuple>

using namespace Qt::StringLiterals;

namespace Velk {

namespace {

constexpr int atRest = 0;

VelkSystemException exceptionWith(VelkSystemException::Kind kind, const QString &message)
{
    return {kind, message.toStdString()};
}

/// The part of this name or, without the suffix of its file, the only one that is drawn so.
QSharedPointer<EDAPart> partCalled(const QString &name, const QList<QSharedPointer<EDAPart>> &parts)
{
    QList<QSharedPointer<EDAPart>> drawnSo;
    QStringList names;
    for (const auto &part : parts) {
        if (part->name == name)
            return part;
        if (drawnName(part->name) == name)
            drawnSo.append(part);
        names.append(part->name);
    }
    if (drawnSo.size() == 1)
        return drawnSo.first();
    throw exceptionWith(VelkSystemException::Kind::NotFound,
                        drawnSo.isEmpty()
                            ? u"there is no part '%1'; there are %2"_s.arg(name, enumeration(nearestFirst(name, names)))
                            : u"several netlists have a part '%1'"_s.arg(name));
}

/// The first component with the properties that has the pin, or null: also where no index tells.
QSharedPointer<EDAComponent> componentWithPin(const MultipleEDAProvider &netlist, const PinDescription &wanted)
{
    const auto *index = netlist.netlistIndex();
    const auto hasPin = [&](const EDAComponent &component) {
        const auto part = netlist.getPartByName(component.part);
        return part && part->getPinByNumberOrName(wanted.pin);
    };
    return index ? index->componentWith(wanted.properties, hasPin) : nullptr;
}

using Writing = std::function<void(QIODevice &)>;

std::string textOf(const Writing &write)
{
    QBuffer buffer;
    write(buffer);
    return buffer.data().toStdString();
}

void writeFile(const std::string &fileName, const Writing &write)
{
    QSaveFile file(QString::fromStdString(fileName));
    const QFileInfo target(file.fileName());
    if (target.exists() && !target.isFile()) // which a new file would replace
        throw exceptionWith(VelkSystemException::Kind::Writing,
                            u"%1: cannot be written: it is no file"_s.arg(file.fileName()));
    const bool isOpen = file.open(QIODevice::WriteOnly);
    if (isOpen)
        write(file);
    if (!isOpen || !file.commit())
        throw exceptionWith(VelkSystemException::Kind::Writing,
                            u"%1: cannot be written: %2"_s.arg(file.fileName(), file.errorString()));
}
}

std::vector<std::string> VelkRoute::switches() const
{
    std::vector<std::string> refs;
    for (const VelkRouteStep &step : steps) {
        if (step.position != atRest)
            refs.push_back(step.component);
    }
    return refs;
}

std::vector<std::string> VelkRoute::resting() const
{
    std::vector<std::string> refs;
    for (const VelkRouteStep &step : steps) {
        if (step.position == atRest)
            refs.push_back(step.component);
    }
    return refs;
}

std::map<std::string, int> VelkRoute::state() const
{
    std::map<std::string, int> positions;
    for (const VelkRouteStep &step : steps) {
        if (step.position)
            positions.emplace(step.component, *step.position);
    }
    return positions;
}

bool operator==(const VelkPartInfo &a, const VelkPartInfo &b)
{
    return std::tie(a.name, a.library, a.pins) == std::tie(b.name, b.library, b.pins);
}

bool operator==(const VelkNodeInfo &a, const VelkNodeInfo &b)
{
    return std::tie(a.component, a.pin) == std::tie(b.component, b.pin);
}

bool operator==(const VelkNetInfo &a, const VelkNetInfo &b)
{
    return std::tie(a.name, a.pins) == std::tie(b.name, b.pins);
}

bool operator==(const VelkPlacedPin &a, const VelkPlacedPin &b)
{
    return std::tie(a.pin, a.net) == std::tie(b.pin, b.net);
}

bool operator==(const VelkRouteStep &a, const VelkRouteStep &b)
{
    const auto members = [](const VelkRouteStep &step) {
        return std::tie(step.net, step.pinIn, step.component, step.pinOut, step.position, step.positionName,
                        step.isUnknown);
    };
    return members(a) == members(b);
}

bool operator==(const VelkSideConnection &a, const VelkSideConnection &b)
{
    return std::tie(a.net, a.component, a.pin) == std::tie(b.net, b.component, b.pin);
}

bool operator==(const VelkRoute &a, const VelkRoute &b)
{
    return std::tie(a.steps, a.lastNet, a.sideConnections) == std::tie(b.steps, b.lastNet, b.sideConnections);
}

bool operator==(const VelkSufficientLimits &a, const VelkSufficientLimits &b)
{
    return std::tie(a.maxSwitches, a.maxConnections, a.switches, a.sideConnections) ==
           std::tie(b.maxSwitches, b.maxConnections, b.switches, b.sideConnections);
}

bool operator==(const VelkReach &a, const VelkReach &b)
{
    return std::tie(a.nets, a.unpluggedPins, a.isAlone, a.isExcluded) ==
           std::tie(b.nets, b.unpluggedPins, b.isAlone, b.isExcluded);
}

bool operator==(const VelkNoRouteReason &a, const VelkNoRouteReason &b)
{
    const auto members = [](const VelkNoRouteReason &reason) {
        return std::tie(reason.isComplete, reason.isConnected, reason.shortest, reason.sufficientLimits,
                        reason.fromSource, reason.fromDut, reason.between, reason.isConnectedInOtherDirection,
                        reason.isRealizable, reason.conflict, reason.excludedComponents, reason.excludedNets,
                        reason.isConnectedOverOthers);
    };
    return members(a) == members(b);
}

bool operator==(const VelkFinding &a, const VelkFinding &b)
{
    const auto members = [](const VelkFinding &finding) {
        return std::tie(finding.code, finding.places, finding.text, finding.advice, finding.components, finding.nets,
                        finding.pins, finding.files, finding.message);
    };
    return members(a) == members(b);
}

bool operator==(const VelkPositionConflict &a, const VelkPositionConflict &b)
{
    return std::tie(a.route, a.steps) == std::tie(b.route, b.steps);
}

bool operator==(const VelkRelayPosition &a, const VelkRelayPosition &b)
{
    return std::tie(a.name, a.closed) == std::tie(b.name, b.closed);
}

bool operator==(const VelkRelayPositions &a, const VelkRelayPositions &b)
{
    return std::tie(a.rule, a.positions, a.gang, a.isUnknown) == std::tie(b.rule, b.positions, b.gang, b.isUnknown);
}

bool operator==(const VelkCoupling &a, const VelkCoupling &b)
{
    return std::tie(a.sets, a.passives) == std::tie(b.sets, b.passives);
}

bool operator==(const VelkConnections &a, const VelkConnections &b)
{
    return std::tie(a.connected, a.couplings) == std::tie(b.connected, b.couplings);
}

bool operator==(const VelkCriticalComponent &a, const VelkCriticalComponent &b)
{
    return std::tie(a.component, a.lost) == std::tie(b.component, b.lost);
}

bool operator==(const VelkCoverage &a, const VelkCoverage &b)
{
    return std::tie(a.sources, a.duts, a.switches, a.critical) == std::tie(b.sources, b.duts, b.switches, b.critical);
}

VelkSystemException::VelkSystemException(Kind kind, const std::string &message)
    : m_kind(kind)
    , m_message(message)
{
}

VelkSystemException::~VelkSystemException() = default;
VelkSystemException::VelkSystemException(const VelkSystemException &other) = default;
VelkSystemException &VelkSystemException::operator=(const VelkSystemException &other) = default;
VelkSystemException::VelkSystemException(VelkSystemException &&other) noexcept = default;
VelkSystemException &VelkSystemException::operator=(VelkSystemException &&other) noexcept = default;

VelkSystemException::Kind VelkSystemException::kind() const
{
    return m_kind;
}

std::string VelkSystemException::message() const
{
    return m_message;
}

const char *VelkSystemException::what() const noexcept
{
    return m_message.c_str();
}

VelkSystemPrivate::VelkSystemPrivate(const std::vector<std::string> &fileNames, const VelkSystemOptions &systemOptions)
    : options(systemOptions)
{
    QList<KiCadNetlistFile> loaded;
    QList<EDAProvider *> netlists;
    for (const auto &fileName : fileNames) {
        const KiCadNetlistFile file(QString::fromStdString(fileName), toQt(options.readingMode));
        const QString refusal = file.refusal();
        if (!refusal.isEmpty())
            throw exceptionWith(VelkSystemException::Kind::Reading, u"%1: %2"_s.arg(file.fileName(), refusal));
        files.append({file.fileName(), file.warnings(), file.repetitions()});
        loaded.append(file);
        netlists.append(file.netlist().get());
    }
    if (loaded.size() == 1)
        onlyNetlist = loaded.first().netlist();
    const RoutingLogSilence silence;
    netlist = std::make_unique<MultipleEDAProvider>(netlists, toQt(options.connectorTypes));
    records = std::make_unique<SystemRecords>(*netlist);
    switching = std::make_unique<SystemSwitching>(*netlist, options);
    Routing typed(netlist.get());
    typed.setComponentTypesThatAreSwitchable(toQt(options.switchableTypes));
    typed.setComponentTypesThatAreInterfaces(toQt(options.interfaceTypes));
    typed.setComponentTypesThatAreConnectors(toQt(options.connectorTypes));
    routing = typed;
}

PinChoice VelkSystemPrivate::findEnd(const VelkRouteEnd &end) const
{
    PinDescription wanted{toQt(end.properties), QString::fromStdString(end.ref), QString::fromStdString(end.pin)};
    if (wanted.ref.isEmpty()) {
        // By properties alone all components would be looked at, to tell which others there are.
        if (const auto component = componentWithPin(*netlist, wanted))
            wanted.ref = component->ref;
    }
    return findPin(*netlist, wanted);
}

QStringList VelkSystemPrivate::refsOfComponents(const std::vector<std::string> &texts) const
{
    QStringList refs;
    for (const std::string &text : texts)
        refs += refsOf(findComponents(*netlist, QString::fromStdString(text)));
    return refs;
}

void VelkSystemPrivate::setExcludedComponents(const std::vector<std::string> &components)
{
    routing->setExcludedComponents(refsOfComponents(components));
}

void VelkSystemPrivate::setExcludedNets(const std::vector<std::string> &names)
{
    QStringList wholeNames;
    for (const std::string &name : names) {
        for (const auto &net : findNets(*netlist, QString::fromStdString(name)))
            wholeNames.append(net->name);
    }
    routing->setExcludedNets(wholeNames);
}

Routing VelkSystemPrivate::routingWith(const VelkSearchOptions &searchOptions) const
{
    Routing limited = *routing;
    limited.setMaxSwitchingComponentsPerPath(searchOptions.maxSwitches);
    limited.setMaxAdditionalNodesPerPath(searchOptions.maxConnections);
    limited.setMaxPaths(static_cast<qsizetype>(searchOptions.maxRoutes)); // what turns negative is no bound either
    limited.setInterruption(searchOptions.isCalledOff);
    QStringList required;
    for (const std::string &ref : searchOptions.requiredComponents)
        required.append(findComponent(*netlist, QString::fromStdString(ref))->ref);
    limited.setRequiredComponents(required);
    if (!searchOptions.asDrawn) {
        switching->requirePositions();
        limited.setRelayContacts(switching->contacts());
    }
    return limited;
}

EDAProvider &VelkSystemPrivate::asRead() const
{
    return onlyNetlist ? static_cast<EDAProvider &>(*onlyNetlist) : *netlist;
}

EDAPhysicalIniGenerator VelkSystemPrivate::physicalIni() const
{
    EDAPhysicalIniGenerator generator(&asRead());
    generator.setComponentTypesThatAreExported(toQt(options.deviceTypes));
    return generator;
}

std::function<void(QIODevice &)> VelkSystemPrivate::applicationIni(const VelkSystemPrivate &application) const
{
    EDAApplicationIniGenerator generator(&asRead(), &application.asRead());
    generator.setComponentTypesDut(toQt(application.options.dutTypes));
    if (const QString oversize = generator.oversize(); !oversize.isEmpty())
        throw exceptionWith(VelkSystemException::Kind::TooLarge, oversize);
    return [=, names = fileNames(), applicationNames = application.fileNames()](QIODevice &device) {
        generator.generate(&device, names, applicationNames);
    };
}

QString VelkSystemPrivate::fileNames() const
{
    QStringList names;
    for (const auto &file : files)
        names.append(file.name);
    return names.join(u", "_s);
}

VelkSystem::VelkSystem(const std::vector<std::string> &fileNames, const VelkSystemOptions &options)
    : d(std::make_shared<VelkSystemPrivate>(fileNames, options))
{
}

VelkSystem VelkSystem::open(const std::string &fileName)
{
    const VelkSystemFile file = VelkSystemFile::read(fileName);
    VelkSystem system(file.fileNames, file.options);
    try {
        system.setExcludedComponents(file.excludedComponents);
        system.setExcludedNets(file.excludedNets);
    } catch (const VelkSystemException &exception) {
        throw VelkSystemException(exception.kind(), fileName + ": " + exception.message());
    }
    system.systemFile = std::make_shared<const VelkSystemFile>(file);
    return system;
}

VelkSystem::~VelkSystem() = default;
VelkSystem::VelkSystem(const VelkSystem &other) = default;
VelkSystem &VelkSystem::operator=(const VelkSystem &other) = default;
VelkSystem::VelkSystem(VelkSystem &&other) noexcept = default;
VelkSystem &VelkSystem::operator=(VelkSystem &&other) noexcept = default;

std::vector<std::string> VelkSystem::fileNames() const
{
    std::vector<std::string> names;
    for (const auto &file : d->files)
        names.push_back(file.name.toStdString());
    return names;
}

VelkSystemOptions VelkSystem::options() const
{
    return d->options;
}

VelkSearchOptions VelkSystem::searchOptions() const
{
    return systemFile ? systemFile->limits : VelkSearchOptions();
}

std::vector<std::string> VelkSystem::warnings() const
{
    std::vector<std::string> texts;
    for (const auto &file : d->files) {
        for (const QString &warning : file.warnings)
            texts.push_back(u"%1: %2"_s.arg(file.name, warning).toStdString());
    }
    return texts;
}

std::vector<VelkComponentInfo> VelkSystem::components(const std::map<std::string, std::string> &properties) const
{
    std::vector<VelkComponentInfo> infos;
    for (const auto &component : NetlistSelection(*d->netlist, toQt(properties)).components())
        infos.push_back(toStandard(*component));
    return infos;
}

std::vector<VelkPartInfo> VelkSystem::parts(const std::map<std::string, std::string> &properties) const
{
    std::vector<VelkPartInfo> infos;
    for (const auto &part : NetlistSelection(*d->netlist, toQt(properties)).parts())
        infos.push_back(SystemRecords::of(*part));
    return infos;
}

std::vector<VelkNetInfo> VelkSystem::nets(const std::map<std::string, std::string> &properties) const
{
    std::vector<VelkNetInfo> infos;
    for (const auto &net : NetlistSelection(*d->netlist, toQt(properties)).nets())
        infos.push_back(d->records->of(*net));
    return infos;
}

VelkComponentInfo VelkSystem::component(const std::string &ref) const
{
    return answered([&] { return toStandard(*findComponent(*d->netlist, QString::fromStdString(ref))); });
}

VelkPartInfo VelkSystem::part(const std::string &name) const
{
    return SystemRecords::of(*partCalled(QString::fromStdString(name), d->netlist->getParts()));
}

VelkNetInfo VelkSystem::net(const std::string &name) const
{
    return answered([&] { return d->records->of(*findNets(*d->netlist, QString::fromStdString(name)).first()); });
}

std::vector<VelkPlacedPin> VelkSystem::pins(const std::string &ref) const
{
    return answered([&] { return d->records->pinsOf(*findComponent(*d->netlist, QString::fromStdString(ref))); });
}

VelkNodeInfo VelkSystem::pin(const VelkRouteEnd &end) const
{
    return answered([&] {
        const PinChoice choice = d->findEnd(end);
        return d->records->nodeOf(choice.component->ref, choice.pin->number);
    });
}

void VelkSystem::setExcludedComponents(const std::vector<std::string> &components)
{
    const auto changed = std::make_shared<VelkSystemPrivate>(*d);
    answered([&] { changed->setExcludedComponents(components); });
    d = changed;
}

std::vector<std::string> VelkSystem::excludedComponents() const
{
    return toStandard(d->routing->excludedComponents());
}

void VelkSystem::setExcludedNets(const std::vector<std::string> &names)
{
    const auto changed = std::make_shared<VelkSystemPrivate>(*d);
    answered([&] { changed->setExcludedNets(names); });
    d = changed;
}

std::vector<std::string> VelkSystem::excludedNets() const
{
    return toStandard(d->routing->excludedNets());
}

std::vector<VelkRoute> VelkSystem::routes(const VelkRouteEnd &source, const VelkRouteEnd &dut,
                                          const VelkSearchOptions &options) const
{
    return answered([&] {
        const PinChoice from = d->findEnd(source);
        const PinChoice to = d->findEnd(dut);
        const auto paths = d->routingWith(options).findTracedPathsBetween(from.component, from.pin->number,
                                                                          to.component, to.pin->number);
        Interruption interruption(options.isCalledOff);
        std::vector<VelkRoute> routes;
        routes.reserve(static_cast<std::size_t>(paths.size()));
        for (const auto &path : paths) {
            interruption.work(static_cast<std::size_t>(path.steps.size()));
            routes.push_back(d->records->of(path, options.asDrawn ? nullptr : d->switching.get()));
        }
        return routes;
    });
}

std::vector<VelkRoute> VelkSystem::routes(const VelkRouteEnd &source, const VelkRouteEnd &dut) const
{
    return routes(source, dut, searchOptions());
}

VelkNoRouteReason VelkSystem::whyNoRoute(const VelkRouteEnd &source, const VelkRouteEnd &dut,
                                         const VelkSearchOptions &options) const
{
    return answered([&] {
        const PinChoice from = d->findEnd(source);
        const PinChoice to = d->findEnd(dut);
        return d->records->of(d->routingWith(options).explainNoPathBetween(from.component, from.pin->number,
                                                                           to.component, to.pin->number),
                              options.asDrawn ? nullptr : d->switching.get());
    });
}

VelkNoRouteReason VelkSystem::whyNoRoute(const VelkRouteEnd &source, const VelkRouteEnd &dut) const
{
    return whyNoRoute(source, dut, searchOptions());
}

VelkCoverage VelkSystem::coverage(const VelkCoverageOptions &options) const
{
    return answered([&] {
        const CoverageMatrix matrix(
            d->routingWith(options.search),
            CoverageMatrix::pinsOnNets(*d->netlist, Routing::DEFAULT_INTERFACE_COMPONENT_TYPE_SOURCE,
                                       toQt(options.sourceProperties)),
            CoverageMatrix::pinsOnNets(*d->netlist, Routing::DEFAULT_INTERFACE_COMPONENT_TYPE_DUT,
                                       toQt(options.dutProperties)));
        const qsizetype sources = matrix.sources().size();
        QList<QList<int>> rows;
        QList<QList<CriticalComponent>> critical;
        for (qsizetype source = 0; source < sources; ++source) {
            rows.append(matrix.row(source));
            if (options.withCritical)
                critical.append(matrix.criticalOf(source, rows.last()));
            if (options.onProgress)
                options.onProgress(static_cast<std::size_t>(source) + 1, static_cast<std::size_t>(sources));
        }
        return d->records->of(matrix, rows, matrix.criticalPairs(critical));
    });
}

VelkCoverage VelkSystem::coverage() const
{
    VelkCoverageOptions options;
    options.search = searchOptions();
    return coverage(options);
}

VelkRelayPositions VelkSystem::positions(const std::string &ref) const
{
    return answered([&] {
        const auto relay = findComponent(*d->netlist, QString::fromStdString(ref));
        const SwitchingModel &model = d->switching->model();
        return SystemRecords::of(model, model.componentOf(relay->ref));
    });
}

std::vector<std::string> VelkSystem::unknownRelays() const
{
    return toStandard(d->switching->model().unknownComponents());
}

std::vector<std::string> VelkSystem::positionErrors() const
{
    std::vector<std::string> messages;
    for (const PositionsError &error : d->switching->model().errors())
        messages.push_back(error.message().toStdString());
    return messages;
}

VelkConnections VelkSystem::connected(const std::map<std::string, int> &positions) const
{
    return answered([&] { return d->records->of(connectionsIn(d->switching->state(positions))); });
}

std::vector<VelkFinding> VelkSystem::check(const std::vector<std::string> &ignored) const
{
    SystemCheck check(*d->netlist);
    for (const auto &file : d->files)
        check.addFile(file.name, file.repetitions);
    check.setComponentTypesThatAreSwitchable(toQt(d->options.switchableTypes));
    check.setComponentTypesThatAreInterfaces(toQt(d->options.interfaceTypes));
    check.setComponentTypesDut(toQt(d->options.dutTypes));
    check.setComponentTypesThatArePassive(d->switching->types().passives);
    check.setRelayTables(d->switching->tables());
    check.setIgnored(toQt(ignored) + (systemFile ? toQt(systemFile->ignoredFindings) : QStringList()));
    std::vector<VelkFinding> findings;
    for (const Finding &finding : check.findings())
        findings.push_back(SystemRecords::of(finding));
    return findings;
}

std::string VelkSystem::physicalIni() const
{
    return textOf([&](QIODevice &device) { d->physicalIni().generate(&device); });
}

void VelkSystem::writePhysicalIni(const std::string &fileName) const
{
    writeFile(fileName, [&](QIODevice &device) { d->physicalIni().generate(&device); });
}

std::string VelkSystem::applicationIni(const VelkSystem &application) const
{
    return textOf(d->applicationIni(*application.d));
}

void VelkSystem::writeApplicationIni(const std::string &fileName, const VelkSystem &application) const
{
    writeFile(fileName, d->applicationIni(*application.d));
}
}
