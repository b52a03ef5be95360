#ifndef VELK_SWITCHING_SWITCHINGMODEL_H
#define VELK_SWITCHING_SWITCHINGMODEL_H

#include <velk/VelkExport.h>
#include <velk/model/EDAProvider.h>
#include <velk/switching/RelayPositions.h>

#include <QList>
#include <QSharedDataPointer>
#include <QString>
#include <QStringList>

#include <vector>

namespace Velk {

class SwitchingModelPrivate;

/// Which components are what, by their types, which are compared without regard to case. The first role that fits
/// holds.
struct SwitchingTypes
{
    QStringList passives = {QStringLiteral("Resistor")}; ///< couple all their pins, always
    /// Those of them that are not passive are relays.
    QStringList switchables = {QStringLiteral("Relay"), QStringLiteral("Resistor")};
    QStringList interfaces = {QStringLiteral("Source"), QStringLiteral("DUT")}; ///< instruments and the device
};

/// What a component is while relays are set.
enum class SwitchingRole
{
    Passive,
    Relay,
    Interface,
    Other, ///< connects nothing; so does what is not populated
};

/// Relays that take the same position, since they are one that is drawn as several, or one alone.
struct RelayGang
{
    QStringList components; ///< their references, sorted
    int positionCount;      ///< at least 1; of an unknown one 1: it stays at rest
    bool isUnknown;         ///< the positions of one of them are not known
};

/// A contact between two nets, by number.
struct NetContact
{
    int net;       ///< that of the one pin
    int otherNet;  ///< that of the other one, which may be the same
    int component; ///< by its number in the model
};

/// A component that couples all its nets.
struct PassiveComponent
{
    QString ref;           ///< as the netlist has it
    bool isWay;            ///< whether a connection that is meant may lead through: unless its field `Through` is "no"
    std::vector<int> nets; ///< each once, ascending
};

/// A pin on a net, mostly one of an instrument or of the device.
struct InterfacePin
{
    QString ref;    ///< of its component
    QString number; ///< as the net has it
    int net;        ///< by its number in the model
};

/// A netlist as its relays make it: which positions they take, which contacts these close between which nets, what is
/// passive, and which pins are to be connected or kept apart. A plain value that shares its contents with its copies.
/// It does not change when the netlist does.
///
/// Nets that share a pin are one net here, and each pin of a relay that lies on none is a net of its own. Everything is
/// sorted by reference, then by pin number, as plain text; nets are numbered in the netlist's order.
class VELK_EXPORT SwitchingModel
{
public:
    static constexpr int none = -1; ///< instead of a number, where there is no such thing

    /// The netlist is asked for all that it holds, once, and not needed any more. See positionsOf() for \a tables.
    explicit SwitchingModel(const EDAProvider &netlist, const SwitchingTypes &types = SwitchingTypes(),
                            const QList<RelayTable> &tables = {});
    ~SwitchingModel();
    SwitchingModel(const SwitchingModel &other);
    SwitchingModel &operator=(const SwitchingModel &other);
    /// One that was moved from may be assigned to or destroyed, nothing else.
    SwitchingModel(SwitchingModel &&other) noexcept;
    SwitchingModel &operator=(SwitchingModel &&other) noexcept;

    /// Texts of positions that are wrong and gangs that do not fit, whose relays are taken as unknown.
    const QList<PositionsError> &errors() const;

    int netCount() const; ///< nets are numbered from 0 on, and so are components and gangs
    /// The names that the netlist has for what is one net here, sorted; none for the pin of a relay that lies on no
    /// net.
    QStringList netNames(int net) const;
    /// The net of a pin, or none: also for a component or pin that no net names and that is no pin of a relay.
    int netOf(const QString &ref, const QString &pinNumber) const;
    /// The number of one of the netlist's nets, or none: also for one without a pin of a component that is there.
    int netOf(const EDANet &net) const;

    int componentCount() const;                ///< of all roles
    const QString &ref(int component) const;   ///< as the netlist has it
    int componentOf(const QString &ref) const; ///< its number, or none
    SwitchingRole role(int component) const;   ///< by its type
    /// Those that nets name and, of a relay, those of its part, by number.
    QList<InterfacePin> pinsOf(int component) const;
    /// The nets of its pins that are no coils, each once, ascending.
    std::vector<int> contactNetsOf(int component) const;
    /// What a relay can do, before gangs are looked at. Others have no positions, by PositionsRule::NoContacts.
    const RelayPositions &positions(int component) const;
    /// The gang of a relay, or none: also for one without contacts.
    int gangOf(int component) const;

    int gangCount() const;                   ///< a relay without a gang being one by itself
    const RelayGang &gang(int number) const; ///< its relays and positions
    /// Contacts that the gang closes in a position, which it has to have. An unknown gang has those at rest of its
    /// members that are known.
    const std::vector<NetContact> &contactsOf(int gang, int position) const;

    const std::vector<PassiveComponent> &passives() const;  ///< sorted by reference
    const std::vector<InterfacePin> &interfacePins() const; ///< sorted by reference, then by number
    /// References of all relays of unknown gangs.
    QStringList unknownComponents() const;

    /// For Routing::setRelayContacts(): the relays of known gangs with their contacts, and those that connect nothing.
    QSharedPointer<const RelayContactMap> relayContacts() const;

private:
    QSharedDataPointer<SwitchingModelPrivate> d;
};
}

#endif
