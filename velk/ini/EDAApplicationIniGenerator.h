#ifndef VELK_INI_EDAAPPLICATIONINIGENERATOR_H
#define VELK_INI_EDAAPPLICATIONINIGENERATOR_H

#include <velk/VelkExport.h>
#include <velk/model/EDAProvider.h>

#include <QList>
#include <QMap>
#include <QSharedPointer>
#include <QString>
#include <QStringList>

class QIODevice;

namespace Velk {

class IniWriter;

/// Writes the application INI file of the test system's resource manager: the names of the two netlists, the
/// logical names of the benches and, for each bench, a channel table that maps every pin of its DUTs and of
/// all sources to a signal.
///
///     [ResourceManager]
///     TestSystemEdaNet=system.net
///     ApplicationEdaNet=application.net
///
///     [LogicalNames]
///     DUT=bench->DUT
///
///     [bench->DUT]
///     AppChannelTable=io_channel->ROUTE1
///
///     [io_channel->ROUTE1]
///     ; Type Dut, Reference J1
///     PWR.P1=X1!P1
///     ; Type Source, Reference U1
///     DMM-No1.HI=U1!HI
///     ; Type Source, Group DMM
///     DMM.HI=DMM!HI
///
/// A DUT's key is its property Group and the pin name, its value the property Identifier and the pin name. A
/// source's key is "Dev-NoDevNo", with "-ChChannel" where it has a channel, and its value the reference. The
/// sources that have a Group are written once more under its name, the second and later of a group as
/// "Group[2]", with the plain group as the value. Missing properties leave their place empty. A component
/// whose part is unknown has no pins here.
///
/// There are as many benches as the highest Bench property of a DUT says, at least one. The first is named
/// without its number (DUT, bench->DUT), its channel table with it. A DUT whose Bench is no number above 0 is
/// written nowhere.
class VELK_EXPORT EDAApplicationIniGenerator
{
public:
    static const QString DEFAULT_DUT_COMPONENT_TYPE;    ///< "Dut"
    static const QString DEFAULT_SOURCE_COMPONENT_TYPE; ///< "Source"

    /// Sources are taken from the one netlist only, DUTs from the other. Both must be valid, stay the
    /// caller's and outlive every generate(), during which they must not change.
    EDAApplicationIniGenerator(EDAProvider *testSystem, EDAProvider *application);
    ~EDAApplicationIniGenerator();
    EDAApplicationIniGenerator(const EDAApplicationIniGenerator &other);
    EDAApplicationIniGenerator &operator=(const EDAApplicationIniGenerator &other);
    EDAApplicationIniGenerator(EDAApplicationIniGenerator &&other) noexcept;
    EDAApplicationIniGenerator &operator=(EDAApplicationIniGenerator &&other) noexcept;

    /// Replaces the list of component types that are DUTs, DEFAULT_DUT_COMPONENT_TYPE alone at first. Types
    /// are compared without regard to case. The type of sources is fixed.
    void setComponentTypesDut(const QList<QString> &types);

    /// Writes the whole file; the two texts are written as they are. Its length grows with the highest bench
    /// number, whatever that is. The device is opened and closed unless it is open already. Failures of the
    /// device are not reported: ask it.
    void generate(QIODevice *device, const QString &testSystemEdaNet, const QString &applicationEdaNet) const;

private:
    using Components = QList<QSharedPointer<EDAComponent>>;

    bool isDut(const QSharedPointer<EDAComponent> &component) const;
    bool isSourceComponent(const QSharedPointer<EDAComponent> &component) const;
    Components duts() const;
    Components dutsOfBench(int bench) const;
    Components sourceComponents() const;
    QMap<QString, Components> sourceComponentsByGroup() const;
    int determineBenchCount() const;
    static QString logicalBenchName(int bench);
    static QString physicalBenchName(int bench);
    static QString appChannelTableName(int bench);

    static void writeGlobalParameters(IniWriter &writer, const QString &testSystemEdaNet,
                                      const QString &applicationEdaNet);
    static void writeLogicalNames(IniWriter &writer, int benchCount);
    void writeBenches(IniWriter &writer, int benchCount) const;
    static void writeBench(IniWriter &writer, int bench);
    void writeAppChannelTable(IniWriter &writer, int bench) const;
    void writeDuts(IniWriter &writer, int bench) const;
    void writeDut(IniWriter &writer, const QSharedPointer<EDAComponent> &dut) const;
    void writeSourceComponents(IniWriter &writer) const;
    void writeSourceComponent(IniWriter &writer, const QSharedPointer<EDAComponent> &source) const;
    void writeGroupComponents(IniWriter &writer) const;
    void writeComponentsOfOneGroup(IniWriter &writer, const Components &sources) const;
    void writeGroupComponent(IniWriter &writer, const QSharedPointer<EDAComponent> &source, int index) const;

    EDAProvider *testSystemProvider;
    EDAProvider *applicationProvider;
    QStringList componentTypesDut;
    QStringList componentTypesSource;
};
}

#endif
