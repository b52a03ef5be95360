#ifndef VELK_MODEL_RELAYCONTACTS_H
#define VELK_MODEL_RELAYCONTACTS_H

#include <QHash>
#include <QList>
#include <QString>

namespace Velk {

/// Two pins of a relay, by number, that are connected while it is in a position. It has no direction.
struct Contact
{
    QString pin;      ///< one of the two
    QString otherPin; ///< another pin than \a pin
};

/// A position that a relay can take.
struct ContactPosition
{
    QString name;          ///< as the drawing has it; may be empty
    QList<Contact> closed; ///< as they are written or, where they follow from the pins, by contact set
};

/// What a relay can do.
struct RelayContacts
{
    int gang;                         ///< relays of one number take the same position, all of them at once
    QList<ContactPosition> positions; ///< by number, the first one being rest; none if it never connects anything
};

/// The relays whose contacts are known, by reference. What is not listed connects all its pins with one another.
using RelayContactMap = QHash<QString, RelayContacts>;
}

#endif
