#ifndef VELK_CHECK_SYSTEMCHECK_H
#define VELK_CHECK_SYSTEMCHECK_H

#include <velk/VelkExport.h>
#include <velk/check/Finding.h>
#include <velk/kicad/KiCadRepetition.h>
#include <velk/provider/MultipleEDAProvider.h>
#include <velk/switching/RelayTable.h>

#include <QList>
#include <QSharedDataPointer>
#include <QString>
#include <QStringList>

namespace Velk {

class SystemCheckPrivate;

/// Looks for what netlists may hold and an engineer hardly means: it costs a route, adds one, or leaves a signal out of
/// the INI files, and nothing else says so.
///
///     MultipleEDAProvider system({&instruments, &matrix}, {MultipleEDAProvider::DEFAULT_CONNECTOR_COMPONENT_TYPE});
///     const auto findings = SystemCheck(system).findings();
class VELK_EXPORT SystemCheck
{
public:
    /// Of all netlists of the system, joined at their connectors. \a joined has to stay.
    explicit SystemCheck(const MultipleEDAProvider &joined);
    ~SystemCheck();
    SystemCheck(const SystemCheck &other);
    SystemCheck &operator=(const SystemCheck &other);
    /// One that was moved from may be assigned to or destroyed, nothing else.
    SystemCheck(SystemCheck &&other) noexcept;
    SystemCheck &operator=(SystemCheck &&other) noexcept;

    /// Tells the next netlist's file, in the order of the netlists, and KiCadNetParser::repetitions(). Findings name
    /// the file as it is given here. Files that are the same twice are found by reading them once more, unless they
    /// cannot be read as files. Without it neither is looked for.
    void addFile(const QString &fileName, const QList<KiCadRepetition> &repetitions);

    /// Replaces the types of components that can be switched through, upper or lower case; at first, and so with the
    /// others, the defaults of Routing and EDAApplicationIniGenerator. Connectors are those at which the netlists were
    /// joined.
    void setComponentTypesThatAreSwitchable(const QStringList &types);
    /// Replaces the types that are interfaces.
    void setComponentTypesThatAreInterfaces(const QStringList &types);
    /// Replaces the types that are DUTs.
    void setComponentTypesDut(const QStringList &types);

    /// Replaces the types that conduct at all times, as resistors do; other switchable ones are relays.
    void setComponentTypesThatArePassive(const QStringList &types);

    QStringList componentTypesThatAreSwitchable() const; ///< as they were set
    QStringList componentTypesThatAreInterfaces() const; ///< as they were set
    QStringList componentTypesDut() const;               ///< as they were set
    QStringList componentTypesThatArePassive() const;    ///< as they were set

    /// Tells the positions of relays by their parts, see positionsOf(); at first only those of the table that is built
    /// in are known.
    void setRelayTables(const QList<RelayTable> &tables);
    QList<RelayTable> relayTables() const; ///< as they were set

    /// Leaves out what is accepted. A text is "CODE", for all that is found under a code, or "CODE:NAME", for what is
    /// found at a component, a net or what else is a finding's place: NAME is compared exactly, with "#n" or without,
    /// and may hold the wild cards "*" and "?". What is found at several places goes when all of them, or all of its
    /// nets, are left out. A text with an unknown code leaves out nothing.
    void setIgnored(const QStringList &texts);
    QStringList ignored() const; ///< as they were set

    /// All that is found, by code. Components of one part with the same fault are one finding. \a unusedIgnored gets a
    /// line for each text of setIgnored() that leaves out nothing, with what it might mean: "no-type:K9: leaves out
    /// nothing; there are K1#1, K2#1".
    QList<Finding> findings(QStringList *unusedIgnored = nullptr) const;

    /// What findings() has of a single DUT or source: on no bench, without Group or Identifier; without Dev or DevNo.
    /// The component need not be of a joined netlist, and Finding::netlists is empty.
    static QList<Finding> findingsOfDut(const EDAComponent &dut);
    static QList<Finding> findingsOfSource(const EDAComponent &source); ///< likewise

private:
    QSharedDataPointer<SystemCheckPrivate> d;
};
}

#endif
