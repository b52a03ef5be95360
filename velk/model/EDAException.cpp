#include <velk/model/EDAException.h>

using namespace Qt::StringLiterals;

namespace Velk {

EDAException::EDAException(const QString &message)
    : m_message(message)
{
}

EDAException::~EDAException() = default;
EDAException::EDAException(const EDAException &other) = default;
EDAException &EDAException::operator=(const EDAException &other) = default;
EDAException::EDAException(EDAException &&other) noexcept = default;
EDAException &EDAException::operator=(EDAException &&other) noexcept = default;

QString EDAException::message() const
{
    return m_message;
}

KiCadTokenNotFoundException::KiCadTokenNotFoundException(const QString &path)
    : EDAException(u"Could not find KiCad token for path '%1'"_s.arg(path))
    , m_path(path)
{
}

KiCadTokenNotFoundException::~KiCadTokenNotFoundException() = default;
KiCadTokenNotFoundException::KiCadTokenNotFoundException(const KiCadTokenNotFoundException &other) = default;
KiCadTokenNotFoundException &KiCadTokenNotFoundException::operator=(const KiCadTokenNotFoundException &other) = default;
KiCadTokenNotFoundException::KiCadTokenNotFoundException(KiCadTokenNotFoundException &&other) noexcept = default;
KiCadTokenNotFoundException &
KiCadTokenNotFoundException::operator=(KiCadTokenNotFoundException &&other) noexcept = default;

QString KiCadTokenNotFoundException::path() const
{
    return m_path;
}

EDAComponentNotFoundException::EDAComponentNotFoundException(const QMap<QString, QString> &properties)
    : EDAException(u"No component matching properties '%1' found"_s.arg(EDAComponent::propertiesToString(properties)))
    , m_properties(properties)
{
}

EDAComponentNotFoundException::~EDAComponentNotFoundException() = default;
EDAComponentNotFoundException::EDAComponentNotFoundException(const EDAComponentNotFoundException &other) = default;
EDAComponentNotFoundException &
EDAComponentNotFoundException::operator=(const EDAComponentNotFoundException &other) = default;
EDAComponentNotFoundException::EDAComponentNotFoundException(EDAComponentNotFoundException &&other) noexcept = default;
EDAComponentNotFoundException &
EDAComponentNotFoundException::operator=(EDAComponentNotFoundException &&other) noexcept = default;

QMap<QString, QString> EDAComponentNotFoundException::properties() const
{
    return m_properties;
}

EDAPartNotFoundException::EDAPartNotFoundException(const QSharedPointer<EDAComponent> &component,
                                                   const QString &partName)
    : EDAException(u"No part found for name '%1' of component '%2'"_s.arg(partName, component->ref))
    , m_component(component)
    , m_partName(partName)
{
}

EDAPartNotFoundException::~EDAPartNotFoundException() = default;
EDAPartNotFoundException::EDAPartNotFoundException(const EDAPartNotFoundException &other) = default;
EDAPartNotFoundException &EDAPartNotFoundException::operator=(const EDAPartNotFoundException &other) = default;
EDAPartNotFoundException::EDAPartNotFoundException(EDAPartNotFoundException &&other) noexcept = default;
EDAPartNotFoundException &EDAPartNotFoundException::operator=(EDAPartNotFoundException &&other) noexcept = default;

QSharedPointer<EDAComponent> EDAPartNotFoundException::component() const
{
    return m_component;
}

QString EDAPartNotFoundException::partName() const
{
    return m_partName;
}

EDAPinNotFoundException::EDAPinNotFoundException(const QSharedPointer<EDAPart> &part,
                                                 const QSharedPointer<EDAComponent> &component, const QString &pin)
    : EDAException(u"No pin '%1' found for part '%2' of component '%3'"_s.arg(pin, part->name, component->ref))
    , m_part(part)
    , m_component(component)
    , m_pin(pin)
{
}

EDAPinNotFoundException::~EDAPinNotFoundException() = default;
EDAPinNotFoundException::EDAPinNotFoundException(const EDAPinNotFoundException &other) = default;
EDAPinNotFoundException &EDAPinNotFoundException::operator=(const EDAPinNotFoundException &other) = default;
EDAPinNotFoundException::EDAPinNotFoundException(EDAPinNotFoundException &&other) noexcept = default;
EDAPinNotFoundException &EDAPinNotFoundException::operator=(EDAPinNotFoundException &&other) noexcept = default;

QSharedPointer<EDAPart> EDAPinNotFoundException::part() const
{
    return m_part;
}

QSharedPointer<EDAComponent> EDAPinNotFoundException::component() const
{
    return m_component;
}

QString EDAPinNotFoundException::pin() const
{
    return m_pin;
}

EDASearchCalledOffException::EDASearchCalledOffException()
    : EDAException(u"The search was called off"_s)
{
}

EDASearchCalledOffException::~EDASearchCalledOffException() = default;
EDASearchCalledOffException::EDASearchCalledOffException(const EDASearchCalledOffException &other) = default;
EDASearchCalledOffException &EDASearchCalledOffException::operator=(const EDASearchCalledOffException &other) = default;
EDASearchCalledOffException::EDASearchCalledOffException(EDASearchCalledOffException &&other) noexcept = default;
EDASearchCalledOffException &
EDASearchCalledOffException::operator=(EDASearchCalledOffException &&other) noexcept = default;
}
