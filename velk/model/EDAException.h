#ifndef VELK_MODEL_EDAEXCEPTION_H
#define VELK_MODEL_EDAEXCEPTION_H

#include <velk/VelkExport.h>
#include <velk/model/EDAComponent.h>
#include <velk/model/EDAPart.h>

#include <QMap>
#include <QSharedPointer>
#include <QString>

namespace Velk {

/// An element that a netlist lacks, or a search that was called off. Thrown by value, by KiCadNetParser::parse, the
/// searches of Routing and findPin(). It is not a std::exception: catch it as Velk::EDAException.
class VELK_EXPORT EDAException
{
public:
    /// \a message is what message() returns.
    explicit EDAException(const QString &message);
    ~EDAException();
    EDAException(const EDAException &other);
    EDAException &operator=(const EDAException &other);
    EDAException(EDAException &&other) noexcept;
    EDAException &operator=(EDAException &&other) noexcept;

    /// What is wrong and where, in one line of English, in the words of the netlist.
    QString message() const;

private:
    QString m_message;
};

/// "Could not find KiCad token for path '...'"
class VELK_EXPORT KiCadTokenNotFoundException : public EDAException
{
public:
    /// \a path is where the element should be.
    explicit KiCadTokenNotFoundException(const QString &path);
    ~KiCadTokenNotFoundException();
    KiCadTokenNotFoundException(const KiCadTokenNotFoundException &other);
    KiCadTokenNotFoundException &operator=(const KiCadTokenNotFoundException &other);
    KiCadTokenNotFoundException(KiCadTokenNotFoundException &&other) noexcept;
    KiCadTokenNotFoundException &operator=(KiCadTokenNotFoundException &&other) noexcept;

    /// Where the element should be, as "/export/components/comp[2]/ref" or "/export/nets/net[GND]/node/pin".
    /// A number in brackets is a position counted from 0; other text names the element.
    QString path() const;

private:
    QString m_path;
};

/// "No component matching properties '...' found"
class VELK_EXPORT EDAComponentNotFoundException : public EDAException
{
public:
    /// \a properties are what was asked for.
    explicit EDAComponentNotFoundException(const QMap<QString, QString> &properties);
    ~EDAComponentNotFoundException();
    EDAComponentNotFoundException(const EDAComponentNotFoundException &other);
    EDAComponentNotFoundException &operator=(const EDAComponentNotFoundException &other);
    EDAComponentNotFoundException(EDAComponentNotFoundException &&other) noexcept;
    EDAComponentNotFoundException &operator=(EDAComponentNotFoundException &&other) noexcept;

    /// What was asked for; the key "ref" stands for the reference where a net names an unknown component.
    QMap<QString, QString> properties() const;

private:
    QMap<QString, QString> m_properties;
};

/// "No part found for name '...' of component '...'"
class VELK_EXPORT EDAPartNotFoundException : public EDAException
{
public:
    /// \a component must not be null.
    EDAPartNotFoundException(const QSharedPointer<EDAComponent> &component, const QString &partName);
    ~EDAPartNotFoundException();
    EDAPartNotFoundException(const EDAPartNotFoundException &other);
    EDAPartNotFoundException &operator=(const EDAPartNotFoundException &other);
    EDAPartNotFoundException(EDAPartNotFoundException &&other) noexcept;
    EDAPartNotFoundException &operator=(EDAPartNotFoundException &&other) noexcept;

    QSharedPointer<EDAComponent> component() const; ///< the component whose part is missing
    QString partName() const;                       ///< its name, as the component has it

private:
    QSharedPointer<EDAComponent> m_component;
    QString m_partName;
};

/// "No pin '...' found for part '...' of component '...'"
class VELK_EXPORT EDAPinNotFoundException : public EDAException
{
public:
    /// \a part and \a component must not be null.
    EDAPinNotFoundException(const QSharedPointer<EDAPart> &part, const QSharedPointer<EDAComponent> &component,
                            const QString &pin);
    ~EDAPinNotFoundException();
    EDAPinNotFoundException(const EDAPinNotFoundException &other);
    EDAPinNotFoundException &operator=(const EDAPinNotFoundException &other);
    EDAPinNotFoundException(EDAPinNotFoundException &&other) noexcept;
    EDAPinNotFoundException &operator=(EDAPinNotFoundException &&other) noexcept;

    QSharedPointer<EDAPart> part() const;           ///< the part that lacks the pin
    QSharedPointer<EDAComponent> component() const; ///< the component of that part
    QString pin() const;                            ///< as asked for: a number, or in a query also a name

private:
    QSharedPointer<EDAPart> m_part;
    QSharedPointer<EDAComponent> m_component;
    QString m_pin;
};

/// "The search was called off": by the function that Routing::setInterruption() was given.
class VELK_EXPORT EDASearchCalledOffException : public EDAException
{
public:
    EDASearchCalledOffException();
    ~EDASearchCalledOffException();
    EDASearchCalledOffException(const EDASearchCalledOffException &other);
    EDASearchCalledOffException &operator=(const EDASearchCalledOffException &other);
    EDASearchCalledOffException(EDASearchCalledOffException &&other) noexcept;
    EDASearchCalledOffException &operator=(EDASearchCalledOffException &&other) noexcept;
};
}

#endif
