#ifndef VELK_MODEL_EDAPART_H
#define VELK_MODEL_EDAPART_H

#include <velk/VelkExport.h>
#include <velk/model/EDAPin.h>

#include <QList>
#include <QSharedPointer>
#include <QString>

namespace Velk {

/// A library part (a libpart of a KiCad netlist) with its pins: a plain value, held through QSharedPointer.
/// All look-ups compare exactly, case included: pin "01" is not pin "1". A null pointer among the pins is passed over:
/// it is neither found nor cloned.
class VELK_EXPORT EDAPart
{
public:
    QString name;                       ///< part name, by which components refer to it
    QString lib;                        ///< name of the library it comes from; may be empty
    QList<QSharedPointer<EDAPin>> pins; ///< in the order of the netlist; append to add, duplicates are allowed

    EDAPart();
    ~EDAPart();
    EDAPart(const EDAPart &other);
    EDAPart &operator=(const EDAPart &other);
    EDAPart(EDAPart &&other) noexcept;
    EDAPart &operator=(EDAPart &&other) noexcept;

    /// A new part without pins, never null.
    static QSharedPointer<EDAPart> create(const QString &name, const QString &lib);

    /// A new part with copies of all pins. (Copying by value, in contrast, shares the pin objects.)
    QSharedPointer<EDAPart> clone() const;

    /// The first pin of that number, or null. It is the part's own object: changing it changes the part.
    QSharedPointer<EDAPin> getPinByNumber(const QString &number) const;
    /// The first pin of that name, or null; the part's own object.
    QSharedPointer<EDAPin> getPinByName(const QString &pinName) const;
    /// The pin whose number is \a text, else the one whose name is \a text, else null.
    QSharedPointer<EDAPin> getPinByNumberOrName(const QString &text) const;
};
}

/// True if both are null, or neither is and name and library are equal. The pins are not compared.
VELK_EXPORT bool operator==(const QSharedPointer<Velk::EDAPart> &a, const QSharedPointer<Velk::EDAPart> &b);
/// The negation of ==.
VELK_EXPORT bool operator!=(const QSharedPointer<Velk::EDAPart> &a, const QSharedPointer<Velk::EDAPart> &b);

/// Text for diagnostics in Latin-1, as "EDAPart('R', 'Device')"; the caller releases it with delete[].
VELK_EXPORT char *toString(const QSharedPointer<Velk::EDAPart> &part);

#endif
