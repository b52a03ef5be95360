#ifndef VELK_PROVIDER_MULTIPLEEDAPROVIDER_H
#define VELK_PROVIDER_MULTIPLEEDAPROVIDER_H

#include <velk/VelkExport.h>
#include <velk/model/EDAProvider.h>
#include <velk/model/IndexedProvider.h>

#include <QList>
#include <QMap>
#include <QSharedPointer>
#include <QString>

#include <memory>

namespace Velk {

class MultipleEDAProviderPrivate;

/// Several netlists, in practice boards that are plugged together, presented as one.
///
/// Every reference, part name and net name gets the suffix "#n", n being the position of its netlist in the
/// list counted from 1; values and properties stay as they are. A single netlist gets the suffix too.
///
/// Nets that hold the same pin number (as text) of the same connector become one net, named by their names
/// joined with "+", with all their nodes in that order. The nets are looked at in the order of the netlists.
/// One that holds a pin of a component of a connector type is joined with all nets still to be looked at that
/// hold this pin of a component with the same "Identifier" property; two without that property have the same.
/// The type of the other component plays no part, nor whether it belongs to another netlist. A joined net is
/// looked at again, last. A net node whose component is not listed is logged and joins nothing.
///
/// All is copied and joined in the constructor, in time near-linear in the number of nodes; afterwards the
/// object is read-only and does not touch the netlists that it was made from. Components and parts come in the order of
/// their suffixed names, ascending by UTF-16 code units.
///
/// Look-ups hand out the stored objects. Leave them as they are: changing them between queries is safe, but it does not
/// change the netlist. Components and parts go on being found by their former names, components by properties that they
/// both had and have. A search with the trace off goes by the nets, pins, references and types of before, and only
/// looks up its two ends in what is there now; one with the trace on goes by what is there now.
class VELK_EXPORT MultipleEDAProvider : public EDAProvider, public IndexedProvider
{
public:
    static const QString DEFAULT_CONNECTOR_COMPONENT_TYPE; ///< "Connector"

    /// \a netlists must be loaded and not null; they stay the caller's and may be destroyed once the
    /// constructor has returned. A component whose type is in \a connectorTypes, upper or lower case, is a
    /// connector; an empty list joins nothing.
    MultipleEDAProvider(const QList<EDAProvider *> &netlists, const QList<QString> &connectorTypes);
    ~MultipleEDAProvider() override;
    /// Copies share the model objects.
    MultipleEDAProvider(const MultipleEDAProvider &other);
    MultipleEDAProvider &operator=(const MultipleEDAProvider &other);
    /// One that was moved from may be assigned to or destroyed, nothing else.
    MultipleEDAProvider(MultipleEDAProvider &&other) noexcept;
    MultipleEDAProvider &operator=(MultipleEDAProvider &&other) noexcept;

    /// The joined nets, in the order in which joining finished them.
    QList<QSharedPointer<EDANet>> getNets() const override;
    QList<QSharedPointer<EDAComponent>> getComponents() const override;
    /// \a ref with its suffix: "K3#2".
    QSharedPointer<EDAComponent> getComponentByRef(const QString &ref) const override;
    QSharedPointer<EDAComponent> getComponentByProperties(const QMap<QString, QString> &properties) const override;
    QList<QSharedPointer<EDAPart>> getParts() const override;
    /// \a name with its suffix: "Relay#2".
    QSharedPointer<EDAPart> getPartByName(const QString &name) const override;

    /// How many netlists were joined.
    qsizetype netlistCount() const;
    /// The types of connectors, as they were given.
    QList<QString> connectorTypes() const;
    /// The nets of the netlists before they were joined, with their suffixes, netlist by netlist, in its order; those
    /// that were joined with no other are the same objects as in getNets().
    QList<QSharedPointer<EDANet>> boardNets() const;
    /// The position in getNets() of what the net at this position of boardNets() became or was joined into.
    qsizetype joinedNetOf(qsizetype boardNet) const;

    const NetlistIndex *netlistIndex() const override;

private:
    std::shared_ptr<const MultipleEDAProviderPrivate> d; ///< shared by copies
};
}

#endif
