#ifndef VELK_KICAD_KICADTOKEN_H
#define VELK_KICAD_KICADTOKEN_H

#include <velk/VelkExport.h>

#include <QEnableSharedFromThis>
#include <QList>
#include <QSharedPointer>
#include <QString>

namespace Velk {

/// One node of the tree that a KiCad netlist is read into: (name "value" (child ...) (child ...)). Always
/// held through QSharedPointer; a parent owns its children and a child does not know its parent. Copying a
/// token shares the children. Trees may be as deep as memory allows: destroying, comparing and printing one
/// does not recurse into it.
class VELK_EXPORT KiCadToken : public QEnableSharedFromThis<KiCadToken>
{
public:
    QString name;                               ///< keyword ("comp", "ref"); never empty in a tree that was read
    QString value;                              ///< quoted text; null or empty if there is none
    QList<QSharedPointer<KiCadToken>> children; ///< in file order; none may be null

    KiCadToken();
    /// A token without a value.
    explicit KiCadToken(const QString &tokenName);
    /// A token without children.
    KiCadToken(const QString &tokenName, const QString &tokenValue);
    ~KiCadToken();
    KiCadToken(const KiCadToken &other);
    KiCadToken &operator=(const KiCadToken &other);
    KiCadToken(KiCadToken &&other) noexcept;
    KiCadToken &operator=(KiCadToken &&other) noexcept;

    /// Adds \a token, which must not be null, as the last child and returns it.
    QSharedPointer<KiCadToken> append(const QSharedPointer<KiCadToken> &token);
    /// Adds a new token as the last child and returns it.
    QSharedPointer<KiCadToken> append(const QString &childName, const QString &childValue);
    QSharedPointer<KiCadToken> append(const QString &childName); ///< the same with a null value

    /// The token at \a path, or null. A path is a sequence of steps, each "/name" or "/name[sub='text']"; its
    /// first step names this token itself:
    ///
    ///     comp->find("/comp/libsource/part")
    ///     root->find("/export/libparts/libpart[part='R']")
    ///
    /// A step without a filter takes the first child of that name. A step with one takes the *last* child of
    /// that name which has a direct child `sub` with the value `text`. Names and values are compared exactly.
    /// Text that is no part of a step, such as the index in "/comp[2]", is ignored; a path without any step
    /// finds nothing. The token must be owned by a QSharedPointer.
    QSharedPointer<KiCadToken> find(const QString &path);
};
}

/// True if both are null, or neither is and names, values and all children, in order and down to the leaves,
/// are equal.
VELK_EXPORT bool operator==(const QSharedPointer<Velk::KiCadToken> &a, const QSharedPointer<Velk::KiCadToken> &b);
/// The negation of ==.
VELK_EXPORT bool operator!=(const QSharedPointer<Velk::KiCadToken> &a, const QSharedPointer<Velk::KiCadToken> &b);

/// Text for diagnostics in Latin-1, as "KiCadToken('comp', '', [KiCadToken('ref', 'R1')])"; the caller
/// releases it with delete[]. The text of each token ends at the first NUL in its name or value, without its children.
VELK_EXPORT char *toString(const QSharedPointer<Velk::KiCadToken> &token);

#endif
