#ifndef VELK_NAMING_PINSEARCH_H
#define VELK_NAMING_PINSEARCH_H

#include <velk/VelkExport.h>
#include <velk/model/EDAException.h>
#include <velk/model/EDAPin.h>
#include <velk/model/EDAProvider.h>

#include <QList>
#include <QMap>
#include <QSharedPointer>
#include <QString>
#include <QStringList>

namespace Velk {

/// A pin as people write it.
struct PinDescription
{
    QMap<QString, QString> properties; ///< of its component, as EDAComponent::matchesProperties() takes them
    QString ref; ///< instead of the properties, if not empty: "K3#2", or "K3" where one netlist only has a K3
    QString pin; ///< its number, or else its name
};

/// The pin that somebody meant, and what else fits.
struct PinChoice
{
    QSharedPointer<EDAComponent> component; ///< of those that fit the first one that has the pin
    QSharedPointer<EDAPin> pin;             ///< by number, or else the first one of the name
    /// What has the properties too: first those with such a pin, then the others, each in the netlist's order.
    QList<QSharedPointer<EDAComponent>> otherComponents;
    int componentsWithPin; ///< how many of all that fit have such a pin, 1 or more
    QStringList otherPins; ///< the numbers of the component's other pins of this name
};

/// That a netlist lacks what somebody wrote, with what there is instead.
class VELK_EXPORT NameNotFoundException : public EDAException
{
public:
    /// What the netlist lacks.
    enum class Kind
    {
        Properties, ///< no component has them all
        Reference,  ///< no component has it, or components of several netlists
        Pin,        ///< the component has none of that number or name
        Net,        ///< no net has that name, or nets of several netlists
    };

    /// \a message is what message() returns.
    NameNotFoundException(Kind missing, const QString &message);
    ~NameNotFoundException();
    NameNotFoundException(const NameNotFoundException &other);
    NameNotFoundException &operator=(const NameNotFoundException &other);
    NameNotFoundException(NameNotFoundException &&other) noexcept;
    NameNotFoundException &operator=(NameNotFoundException &&other) noexcept;

    Kind kind() const; ///< what is missing

private:
    Kind m_kind;
};

/// The component of this reference: "K3#2", or "K3" where one netlist only has a K3. Throws a NameNotFoundException
/// with what comes nearest.
VELK_EXPORT QSharedPointer<EDAComponent> findComponent(const EDAProvider &netlist, const QString &ref);

/// The component of this reference, or of a text as "KEY=VALUE" that is none all components with this property, as
/// NetlistSelection finds them; one at least. Throws a NameNotFoundException with what comes nearest.
VELK_EXPORT QList<QSharedPointer<EDAComponent>> findComponents(const EDAProvider &netlist, const QString &text);

/// The net of this name, or all of them where a netlist has several of one name. A joined net is found by each of the
/// names that it was joined from too: "OUT#1+IN#2" by "IN#2", and by "IN" where all nets that are drawn so are part of
/// it. Throws a NameNotFoundException with what comes nearest.
VELK_EXPORT QList<QSharedPointer<EDANet>> findNets(const EDAProvider &netlist, const QString &name);

/// The pin that \a wanted describes. Throws a NameNotFoundException with what comes nearest, as in "K9: no component
/// has this reference; there are K19#1, K8#1", and EDAPartNotFoundException for a component without a part.
VELK_EXPORT PinChoice findPin(const EDAProvider &netlist, const PinDescription &wanted);
}

#endif
