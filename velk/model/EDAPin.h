#ifndef VELK_MODEL_EDAPIN_H
#define VELK_MODEL_EDAPIN_H

#include <velk/VelkExport.h>

#include <QSharedPointer>
#include <QString>

namespace Velk {

/// One pin of a library part: a plain value, held through QSharedPointer.
class VELK_EXPORT EDAPin
{
public:
    QString number; ///< pin number as text, not always numeric ("1", "A1", "c32")
    QString name;   ///< pin name ("HI"); may be empty, several pins of a part may share one
    QString type;   ///< electrical type as KiCad writes it ("passive", "output"); may be empty

    EDAPin();
    ~EDAPin();
    EDAPin(const EDAPin &other);
    EDAPin &operator=(const EDAPin &other);
    EDAPin(EDAPin &&other) noexcept;
    EDAPin &operator=(EDAPin &&other) noexcept;

    /// A new pin, never null.
    static QSharedPointer<EDAPin> create(const QString &number, const QString &name, const QString &type);

    /// A new pin with the same contents.
    QSharedPointer<EDAPin> clone() const;
};
}

/// True if both are null, or neither is and number, name and type are equal.
VELK_EXPORT bool operator==(const QSharedPointer<Velk::EDAPin> &a, const QSharedPointer<Velk::EDAPin> &b);
/// The negation of ==.
VELK_EXPORT bool operator!=(const QSharedPointer<Velk::EDAPin> &a, const QSharedPointer<Velk::EDAPin> &b);

/// Text for diagnostics in Latin-1, as "EDAPin('3', 'OUT', 'output')"; the caller releases it with delete[].
VELK_EXPORT char *toString(const QSharedPointer<Velk::EDAPin> &pin);

#endif
