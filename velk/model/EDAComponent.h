#ifndef VELK_MODEL_EDACOMPONENT_H
#define VELK_MODEL_EDACOMPONENT_H

#include <velk/VelkExport.h>

#include <QMap>
#include <QSharedPointer>
#include <QString>

namespace Velk {

/// One placed component of a netlist: a plain value, held through QSharedPointer and shared by whoever keeps
/// it. It knows its library part by name only and nothing of the nets that it lies on.
class VELK_EXPORT EDAComponent
{
public:
    /// Keys of the properties that Velk gives a meaning to. Keys are case-sensitive.
    static const QString BENCH;         ///< "Bench": number of the bench that a DUT belongs to, in decimal
    static const QString CARD;          ///< "Card"
    static const QString CHANNEL;       ///< "Channel": channel of an instrument
    static const QString DEVICE;        ///< "Dev": device name of an instrument
    static const QString DEVICE_NUMBER; ///< "DevNo": number among the devices of one name
    static const QString GROUP;         ///< "Group": name under which several sources are addressed together
    static const QString IDENTIFER;     ///< "Identifier" (the member's spelling is part of the interface)
    static const QString MODULE;        ///< "Module"
    static const QString SLOT;          ///< "Slot"
    static const QString TYPE;          ///< "CompType": component type, e.g. "Relay", "Connector", "DUT"

    QString ref;                       ///< reference designator ("K3"; joined netlists: "K3#1")
    QString value;                     ///< value as drawn ("10k"); any text, may be empty
    QString part;                      ///< name of the EDAPart that the component instantiates
    QMap<QString, QString> properties; ///< property name to value: KiCad fields and sheet-path properties

    EDAComponent();
    ~EDAComponent();
    EDAComponent(const EDAComponent &other);
    EDAComponent &operator=(const EDAComponent &other);
    EDAComponent(EDAComponent &&other) noexcept;
    EDAComponent &operator=(EDAComponent &&other) noexcept;

    /// A new component without properties, never null.
    static QSharedPointer<EDAComponent> create(const QString &ref, const QString &value, const QString &part);
    /// The same with the property IDENTIFER. Note the order: the identifier comes third, before \a part.
    static QSharedPointer<EDAComponent> create(const QString &ref, const QString &value, const QString &identifier,
                                               const QString &part);
    /// The same with the properties IDENTIFER and TYPE.
    static QSharedPointer<EDAComponent> create(const QString &ref, const QString &value, const QString &identifier,
                                               const QString &part, const QString &type);

    /// A new component with the same contents; it shares nothing with this one.
    QSharedPointer<EDAComponent> clone() const;

    /// The value stored under exactly \a key, or an empty string. A missing property and an empty one look
    /// alike.
    QString property(const QString &key) const;

    QString bench() const;        ///< property(BENCH)
    QString channel() const;      ///< property(CHANNEL)
    QString device() const;       ///< property(DEVICE)
    QString deviceNumber() const; ///< property(DEVICE_NUMBER)
    QString group() const;        ///< property(GROUP)
    QString identifier() const;   ///< property(IDENTIFER)
    QString type() const;         ///< property(TYPE)

    /// True if every entry of \a wanted equals this component's property of that name, case included. So an
    /// empty map matches every component, and an empty wanted value matches a component without the property.
    bool matchesProperties(const QMap<QString, QString> &wanted) const;

    /// "Dev=DMM,Group=A": the entries in ascending key order, without blanks. An empty map gives an empty
    /// text.
    static QString propertiesToString(const QMap<QString, QString> &map);
};
}

/// True if both are null, or neither is and reference, value, part and all properties are equal. Comparing
/// shared pointers, also within Qt containers, thus compares contents and not addresses.
VELK_EXPORT bool operator==(const QSharedPointer<Velk::EDAComponent> &a, const QSharedPointer<Velk::EDAComponent> &b);
/// The negation of ==.
VELK_EXPORT bool operator!=(const QSharedPointer<Velk::EDAComponent> &a, const QSharedPointer<Velk::EDAComponent> &b);

/// Text for diagnostics in Latin-1, in the form that Qt Test prints; the caller releases it with delete[].
/// The part stands after "value=" and the value after "part=", which readers of such output rely on.
VELK_EXPORT char *toString(const QSharedPointer<Velk::EDAComponent> &component);

#endif
