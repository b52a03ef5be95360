#include <velk/facade/VelkRouting.h>

#include <velk/VelkVersion.h>
#include <velk/facade/StandardTypes.h>
#include <velk/facade/VelkRoutingPrivate.h>
#include <velk/kicad/KiCadNetlistFile.h>
#include <velk/kicad/KiCadReader.h>
#include <velk/model/EDAException.h>
#include <velk/model/RoutingLog.h>

using namespace Qt::StringLiterals;

namespace Velk {

namespace {

VelkRoutingException exceptionWith(const QString &message)
{
    return VelkRoutingException(message.toStdString());
}

QString errorText(const KiCadNetlistFile &file)
{
    switch (file.error()) {
    case KiCadNetlistFile::Error::Unreadable:
        return u"%1 (%2)"_s.arg(kiCadErrorText(KiCadOpenError), file.fileName());
    case KiCadNetlistFile::Error::Syntax:
        return u"Syntax error in KiCad file '%1' at line %2, column %3"_s.arg(
            file.fileName(), QString::number(file.errorLine()), QString::number(file.errorColumn()));
    case KiCadNetlistFile::Error::NoNetlist:
        return KiCadTokenNotFoundException(u"/export/libparts"_s).message();
    case KiCadNetlistFile::Error::None:
    case KiCadNetlistFile::Error::MissingElement:
        break;
    }
    return file.errorText();
}

KiCadNetlistFile loadNetlist(const std::string &fileName, VelkReadingMode mode)
{
    KiCadNetlistFile file(QString::fromStdString(fileName), toQt(mode));
    if (file.error() != KiCadNetlistFile::Error::None)
        throw exceptionWith(errorText(file));
    return file;
}
}

bool operator==(const VelkComponentInfo &a, const VelkComponentInfo &b)
{
    return a.ref == b.ref && a.value == b.value && a.part == b.part && a.properties == b.properties;
}

bool operator==(const VelkPinInfo &a, const VelkPinInfo &b)
{
    return a.number == b.number && a.name == b.name && a.type == b.type;
}

VelkRoutingException::VelkRoutingException(const std::string &message)
    : m_message(message)
{
}

VelkRoutingException::~VelkRoutingException() = default;
VelkRoutingException::VelkRoutingException(const VelkRoutingException &other) = default;
VelkRoutingException &VelkRoutingException::operator=(const VelkRoutingException &other) = default;
VelkRoutingException::VelkRoutingException(VelkRoutingException &&other) noexcept = default;
VelkRoutingException &VelkRoutingException::operator=(VelkRoutingException &&other) noexcept = default;

std::string VelkRoutingException::message() const
{
    return m_message;
}

VelkRoutingPrivate::VelkRoutingPrivate(const std::vector<std::string> &netlistFileNames,
                                       const std::vector<std::string> &connectorComponentTypes, VelkReadingMode mode)
{
    QList<KiCadNetlistFile> files;
    QList<EDAProvider *> netlists;
    for (const auto &fileName : netlistFileNames) {
        files.append(loadNetlist(fileName, mode));
        netlists.append(files.last().netlist().get());
        for (const QString &text : files.last().warnings())
            warnings.push_back(u"%1: %2"_s.arg(files.last().fileName(), text).toStdString());
    }
    const auto connectorTypes = connectorComponentTypes.empty()
                                    ? QList<QString>{MultipleEDAProvider::DEFAULT_CONNECTOR_COMPONENT_TYPE}
                                    : toQt(connectorComponentTypes);
    provider = std::make_unique<MultipleEDAProvider>(netlists, connectorTypes);
    components = std::make_unique<KnownComponents>(*provider);
    routing = std::make_unique<Routing>(provider.get());
    records = std::make_unique<RouteRecords>(*provider);
}

QList<RoutingPath> VelkRoutingPrivate::findPaths(const KnownComponents::Properties &sourceProperties,
                                                 const QString &sourcePin,
                                                 const KnownComponents::Properties &destinationProperties,
                                                 const QString &destinationPin) const
{
    const auto source = components->firstWith(sourceProperties);
    const auto destination = components->firstWith(destinationProperties);
    if (source && destination)
        return routing->findPathsBetween(source, sourcePin, destination, destinationPin);
    // Throws for what there is not.
    return routing->findPaths(toQt(sourceProperties), sourcePin, toQt(destinationProperties), destinationPin);
}

VelkRouting::VelkRouting(const std::vector<std::string> &netlistFileNames)
    : VelkRouting(netlistFileNames, {})
{
}

VelkRouting::VelkRouting(const std::vector<std::string> &netlistFileNames,
                         const std::vector<std::string> &connectorComponentTypes)
    : VelkRouting(netlistFileNames, connectorComponentTypes, VelkReadingMode::Default)
{
}

VelkRouting::VelkRouting(const std::vector<std::string> &netlistFileNames,
                         const std::vector<std::string> &connectorComponentTypes, VelkReadingMode mode)
try : d(new VelkRoutingPrivate(netlistFileNames, connectorComponentTypes, mode)) {
} catch (const EDAException &exception) {
    throw exceptionWith(exception.message());
}

VelkRouting::~VelkRouting()
{
    delete d;
}

VelkRouting &VelkRouting::operator=(const VelkRouting &other) = default;

std::string VelkRouting::version()
{
    return VELK_VERSION_STRING;
}

std::vector<VelkRoutingPath> VelkRouting::getRoutes(const std::map<std::string, std::string> &sourceProperties,
                                                    const std::string &sourcePin,
                                                    const std::map<std::string, std::string> &destinationProperties,
                                                    const std::string &destinationPin) const
try {
    const auto paths = d->findPaths(sourceProperties, QString::fromStdString(sourcePin), destinationProperties,
                                    QString::fromStdString(destinationPin));
    return d->records->of(paths);
} catch (const EDAException &exception) {
    throw exceptionWith(exception.message());
}

std::vector<std::string> VelkRouting::warnings() const
{
    return d->warnings;
}

void VelkRouting::setTraceEnabled(bool enabled)
{
    setRoutingLogEnabled(enabled);
}

bool VelkRouting::isTraceEnabled()
{
    return isRoutingLogged();
}

void VelkRouting::setInterfaceTypes(const std::vector<std::string> &types)
{
    d->routing->setComponentTypesThatAreInterfaces(toQt(types));
}

std::vector<std::string> VelkRouting::interfaceTypes() const
{
    return toStandard(d->routing->componentTypesThatAreInterfaces());
}

void VelkRouting::setSwitchableTypes(const std::vector<std::string> &types)
{
    d->routing->setComponentTypesThatAreSwitchable(toQt(types));
}

std::vector<std::string> VelkRouting::switchableTypes() const
{
    return toStandard(d->routing->componentTypesThatAreSwitchable());
}

// The limits go on bit by bit, and come back so: above the largest int they turn negative, which the search takes as
// "direct only".
void VelkRouting::setMaxAdditionalConnectionsPerPath(unsigned int limit)
{
    d->routing->setMaxAdditionalNodesPerPath(static_cast<int>(limit));
}

unsigned int VelkRouting::maxAdditionalConnectionsPerPath() const
{
    return static_cast<unsigned int>(d->routing->maxAdditionalNodesPerPath());
}

void VelkRouting::setMaxSwitchingComponentsPerPath(unsigned int limit)
{
    d->routing->setMaxSwitchingComponentsPerPath(static_cast<int>(limit));
}

unsigned int VelkRouting::maxSwitchingComponentsPerPath() const
{
    return static_cast<unsigned int>(d->routing->maxSwitchingComponentsPerPath());
}

// Bit by bit too: what turns negative is no bound either.
void VelkRouting::setMaxRoutes(std::size_t bound)
{
    d->routing->setMaxPaths(static_cast<qsizetype>(bound));
}

std::size_t VelkRouting::maxRoutes() const
{
    return static_cast<std::size_t>(d->routing->maxPaths());
}

void VelkRouting::setExcludedComponents(const std::vector<std::string> &refs)
{
    d->routing->setExcludedComponents(toQt(refs));
}

std::vector<std::string> VelkRouting::excludedComponents() const
{
    return toStandard(d->routing->excludedComponents());
}

void VelkRouting::setExcludedNets(const std::vector<std::string> &names)
{
    d->routing->setExcludedNets(toQt(names));
}

std::vector<std::string> VelkRouting::excludedNets() const
{
    return toStandard(d->routing->excludedNets());
}

std::vector<std::string> VelkRouting::unknownExclusions() const
{
    return toStandard(d->routing->unknownExclusions());
}
}
