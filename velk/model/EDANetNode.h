#ifndef VELK_MODEL_EDANETNODE_H
#define VELK_MODEL_EDANETNODE_H

#include <velk/VelkExport.h>

#include <QSharedPointer>
#include <QString>

namespace Velk {

/// One node of a net, a pin of a component: a plain value, held through QSharedPointer. Several nets and
/// lists may hold the same object.
class VELK_EXPORT EDANetNode
{
public:
    QString ref; ///< reference designator of the component
    QString pin; ///< number (not name) of the pin on that component

    EDANetNode();
    ~EDANetNode();
    EDANetNode(const EDANetNode &other);
    EDANetNode &operator=(const EDANetNode &other);
    EDANetNode(EDANetNode &&other) noexcept;
    EDANetNode &operator=(EDANetNode &&other) noexcept;

    /// A new node, never null.
    static QSharedPointer<EDANetNode> create(const QString &ref, const QString &pin);

    /// A new node with the same contents.
    QSharedPointer<EDANetNode> clone() const;

    /// True if reference and pin are equal to these, case included.
    bool matches(const QString &wantedRef, const QString &wantedPin) const;
};
}

/// True if both are null, or neither is and reference and pin are equal.
VELK_EXPORT bool operator==(const QSharedPointer<Velk::EDANetNode> &a, const QSharedPointer<Velk::EDANetNode> &b);
/// The negation of ==.
VELK_EXPORT bool operator!=(const QSharedPointer<Velk::EDANetNode> &a, const QSharedPointer<Velk::EDANetNode> &b);

/// Text for diagnostics in Latin-1, as "EDANetNode(K1, 1)"; the caller releases it with delete[].
VELK_EXPORT char *toString(const QSharedPointer<Velk::EDANetNode> &node);

#endif
