#ifndef VELK_MODEL_EDANET_H
#define VELK_MODEL_EDANET_H

#include <velk/VelkExport.h>
#include <velk/model/EDANetNode.h>

#include <QEnableSharedFromThis>
#include <QList>
#include <QSharedPointer>
#include <QString>

namespace Velk {
class EDANet;
}

extern template class VELK_EXPORT QEnableSharedFromThis<Velk::EDANet>;

namespace Velk {

/// One electrical net: a plain value, held through QSharedPointer. A net copied by value shares the node
/// objects and belongs to no shared pointer until one takes ownership of it. A null pointer among the nodes is passed
/// over: it is neither found nor among the others nor cloned.
class VELK_EXPORT EDANet : public QEnableSharedFromThis<EDANet>
{
public:
    QString name;                            ///< as in the netlist ("/ROW1"); joined netlists: "SIG#1+IN#2"
    QList<QSharedPointer<EDANetNode>> nodes; ///< in the order in which they were added; may hold equal nodes

    EDANet();
    ~EDANet();
    EDANet(const EDANet &other);
    EDANet &operator=(const EDANet &other);
    EDANet(EDANet &&other) noexcept;
    EDANet &operator=(EDANet &&other) noexcept;

    /// A new net without nodes, never null.
    static QSharedPointer<EDANet> create(const QString &name);

    /// Appends a new node, also where an equal one is there already, and returns this net, so that calls can
    /// be chained: EDANet::create("GND")->addNode("K1", "1")->addNode("R4", "2"). Null (with the node
    /// appended) for a net that no QSharedPointer owns.
    QSharedPointer<EDANet> addNode(const QString &ref, const QString &pin);

    /// The first node that matches exactly, or null; the net's own object.
    QSharedPointer<EDANetNode> findNode(const QString &ref, const QString &pin) const;

    /// True if some node of the net equals \a node, which must not be null.
    bool containsNode(const QSharedPointer<EDANetNode> &node) const;

    /// All nodes, in order, that do not equal \a node; the net's own objects.
    QList<QSharedPointer<EDANetNode>> otherNodes(const QSharedPointer<EDANetNode> &node) const;

    /// A new net of the same name with copies of all nodes.
    QSharedPointer<EDANet> clone() const;
};
}

/// True if both are null, or neither is and the names are equal and the nodes are pairwise equal in order.
/// Nets with the same nodes in another order are unequal.
VELK_EXPORT bool operator==(const QSharedPointer<Velk::EDANet> &a, const QSharedPointer<Velk::EDANet> &b);
/// The negation of ==.
VELK_EXPORT bool operator!=(const QSharedPointer<Velk::EDANet> &a, const QSharedPointer<Velk::EDANet> &b);

/// Text for diagnostics in Latin-1, as "EDANet('GND', [EDANetNode(K1, 1), EDANetNode(R4, 2)])"; the caller
/// releases it with delete[].
VELK_EXPORT char *toString(const QSharedPointer<Velk::EDANet> &net);

#endif
