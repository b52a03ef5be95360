#ifndef VELK_NAMING_NETLISTSELECTION_H
#define VELK_NAMING_NETLISTSELECTION_H

#include <velk/VelkExport.h>
#include <velk/model/EDAProvider.h>

#include <QList>
#include <QMap>
#include <QSharedPointer>
#include <QString>

namespace Velk {

/// The components that have certain properties, with their parts and nets. The reference, the value and the part are
/// asked for as the properties "ref", "value" and "part" of components that have no others of these names; the number
/// of the netlist may be left out, as in "K3" for "K3#1" and "K3#2".
class VELK_EXPORT NetlistSelection
{
public:
    /// Without properties that is the whole netlist. It stays the caller's and must outlive all queries.
    NetlistSelection(const EDAProvider &netlist, const QMap<QString, QString> &properties);
    ~NetlistSelection();
    NetlistSelection(const NetlistSelection &other);
    NetlistSelection(NetlistSelection &&other) noexcept;
    NetlistSelection &operator=(const NetlistSelection &other) = delete;

    /// In the order of the netlist, as all of these.
    QList<QSharedPointer<EDAComponent>> components() const;
    /// The parts of these components.
    QList<QSharedPointer<EDAPart>> parts() const;
    /// The nets on which one of these components lies.
    QList<QSharedPointer<EDANet>> nets() const;

    /// Why it holds no component, in the words of whyNoneMatches(); empty if it holds one.
    QString whyEmpty() const;

private:
    const EDAProvider &provider;
    QMap<QString, QString> wanted;
};
}

#endif
