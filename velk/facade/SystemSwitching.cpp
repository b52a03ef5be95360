#include <velk/facade/SystemSwitching.h>

#include <velk/facade/StandardTypes.h>
#include <velk/naming/PinSearch.h>

#include <QFile>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace Velk {

namespace {

RelayTable readRelayTable(const QString &fileName)
{
    QFile file(fileName);
    const QByteArray text = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    if (file.error() != QFileDevice::NoError)
        throw EDAException(u"%1: cannot be read: %2"_s.arg(fileName, file.errorString()));
    return RelayTable(CsvTable(text, fileName));
}

QList<RelayTable> readRelayTables(const QStringList &fileNames)
try {
    QList<RelayTable> tables;
    for (const QString &fileName : fileNames)
        tables.append(readRelayTable(fileName));
    return tables;
} catch (const EDAException &exception) {
    throw VelkSystemException(VelkSystemException::Kind::Reading, exception.message().toStdString());
}

[[noreturn]] void refusePositions(const QString &message)
{
    throw VelkSystemException(VelkSystemException::Kind::Positions, message.toStdString());
}
}

SystemSwitching::SystemSwitching(const MultipleEDAProvider &systemNetlist, const VelkSystemOptions &options)
    : netlist(systemNetlist)
    , typesOfComponents{toQt(options.passiveTypes), toQt(options.switchableTypes), toQt(options.interfaceTypes)}
    , relayTables(readRelayTables(toQt(options.relayTables)))
{
}

SystemSwitching::Known::Known(const SwitchingModel &switchingModel)
    : model(switchingModel)
    , contacts(model.relayContacts())
{
    const QStringList refs = model.unknownComponents();
    unknown = {refs.cbegin(), refs.cend()};
}

const SystemSwitching::Known &SystemSwitching::known() const
{
    std::call_once(isKnown, [this] {
        knownOnce = std::make_unique<const Known>(SwitchingModel(netlist, typesOfComponents, relayTables));
    });
    return *knownOnce;
}

void SystemSwitching::requirePositions() const
{
    constexpr qsizetype most = 10;
    const auto &errors = model().errors();
    if (errors.isEmpty())
        return;
    QStringList messages;
    for (const PositionsError &error : errors.first(std::min(errors.size(), most)))
        messages.append(error.message());
    if (errors.size() > most)
        messages.append(u"%1 more whose positions are wrong"_s.arg(errors.size() - most));
    refusePositions(messages.join(u"; "_s));
}

int SystemSwitching::settableGang(const QString &ref, int position) const
{
    const int gang = model().gangOf(model().componentOf(ref));
    if (gang == SwitchingModel::none || model().gang(gang).isUnknown)
        refusePositions(u"%1 is no relay whose positions are known"_s.arg(ref));
    const int count = model().gang(gang).positionCount;
    if (position < 0 || position >= count)
        refusePositions(u"%1 has no position %2; there are 0 to %3"_s.arg(ref, QString::number(position),
                                                                          QString::number(count - 1)));
    return gang;
}

std::vector<int> SystemSwitching::positionsOfGangs(const std::map<std::string, int> &positions) const
{
    requirePositions();
    std::vector<int> result(static_cast<std::size_t>(model().gangCount()));
    std::vector<bool> isSet(result.size());
    for (const auto &[name, position] : positions) {
        const QString ref = findComponent(netlist, QString::fromStdString(name))->ref;
        const auto gang = static_cast<std::size_t>(settableGang(ref, position));
        if (isSet[gang] && result[gang] != position)
            refusePositions(u"%1 is to take position %2, but its gang position %3"_s.arg(
                ref, QString::number(position), QString::number(result[gang])));
        isSet[gang] = true;
        result[gang] = position;
    }
    return result;
}

Connectivity SystemSwitching::state(const std::map<std::string, int> &positions) const
{
    const std::vector<int> ofGangs = positionsOfGangs(positions);
    Connectivity state(model());
    state.setPositions(ofGangs);
    return state;
}
}
