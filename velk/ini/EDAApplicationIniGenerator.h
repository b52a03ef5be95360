#ifndef VELK_INI_EDAAPPLICATIONINIGENERATOR_H
#define VELK_INI_EDAAPPLICATIONINIGENERATOR_H

#include <velk/VelkExport.h>
#include <velk/model/EDAProvider.h>

#include <QList>
#include <QSharedDataPointer>
#include <QSharedPointer>
#include <QString>
#include <QStringList>

class QIODevice;

namespace Velk {

class ChannelTables;
class EDAApplicationIniGeneratorPrivate;

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
    static const int MAX_BENCHES;                       ///< 10,000; a DUT on a higher one is a typing error

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

    /// The components that are DUTs, also those on no bench, in their provider's order.
    QList<QSharedPointer<EDAComponent>> duts() const;
    /// The components that are sources, in their provider's order.
    QList<QSharedPointer<EDAComponent>> sources() const;
    /// Why the file would be so long that it must be a mistake: a DUT on a bench above MAX_BENCHES, or on one above
    /// which the sources alone would make more than 5,000,000 entries. Empty for other files. generate() writes it all
    /// the same.
    QString oversize() const;

    /// Writes the whole file; the two texts are written as they are. Its length grows with the highest bench
    /// number, whatever that is, times the pins of the sources; the memory needed does not. Null components and pins
    /// are passed over. The device is opened and closed unless it is open already, also when a provider throws.
    /// Failures of the device are not reported: ask it.
    void generate(QIODevice *device, const QString &testSystemEdaNet, const QString &applicationEdaNet) const;

    /// What readers would not take as it is meant in the file that generate() writes from the same texts, a line each,
    /// as in "[io_channel->ROUTE1]: the key DMM.HI occurs more than once": a key that stands in a section more than
    /// once, or in upper and lower case, and what Qt's QSettings or Python's configparser, as they are by default,
    /// misread. Each is told at the first section where it applies, in the order of the file.
    QStringList warnings(const QString &testSystemEdaNet, const QString &applicationEdaNet) const;

private:
    VELK_NO_EXPORT ChannelTables tables() const;
    template <typename Writer>
    VELK_NO_EXPORT void writeTo(Writer &writer, const QString &testSystemEdaNet,
                                const QString &applicationEdaNet) const;

    QSharedDataPointer<EDAApplicationIniGeneratorPrivate> d;
};
}

#endif
