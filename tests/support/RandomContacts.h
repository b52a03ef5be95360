#ifndef VELK_TESTS_RANDOMCONTACTS_H
#define VELK_TESTS_RANDOMCONTACTS_H

#include <velk/model/EDAProvider.h>
#include <velk/model/RelayContacts.h>
#include <velk/routing/TracedPath.h>

#include <QRandomGenerator>
#include <QSet>
#include <QSharedPointer>
#include <QStringList>

#include <algorithm>

using RelayContactsPointer = QSharedPointer<const Velk::RelayContactMap>;

/// Lines "REF GANG PIN-PIN,PIN-PIN/PIN-PIN", with "/" between positions, or "REF GANG" for what never connects. Each
/// is there under "REF#1" too.
inline RelayContactsPointer contactsOf(const QString &description)
{
    Velk::RelayContactMap relays;
    for (const QString &line : description.split(u'\n', Qt::SkipEmptyParts)) {
        const QStringList words = line.split(u' ');
        Velk::RelayContacts relay{words.at(1).toInt(), {}};
        const QStringList positions = words.size() > 2 ? words.at(2).split(u'/') : QStringList();
        for (const QString &position : positions) {
            relay.positions.append(Velk::ContactPosition());
            for (const QString &pair : position.split(u',', Qt::SkipEmptyParts))
                relay.positions.last().closed.append({pair.section(u'-', 0, 0), pair.section(u'-', 1)});
        }
        relays.insert(words.at(0), relay);
        relays.insert(words.at(0) + QStringLiteral("#1"), relay);
    }
    return RelayContactsPointer::create(relays);
}

/// Of most relays: two to five positions, in which random pairs of their first pins are closed, or of a pin that is not
/// there. Some share a gang, and some never connect anything.
inline RelayContactsPointer randomContacts(const Velk::EDAProvider &netlist, QRandomGenerator &random)
{
    Velk::RelayContactMap relays;
    const auto components = netlist.getComponents();
    for (const auto &component : components) {
        const auto part = netlist.getPartByName(component->part);
        if (random.bounded(4) == 0 || !part ||
            component->type().compare(QStringLiteral("Relay"), Qt::CaseInsensitive) != 0)
            continue;
        Velk::RelayContacts relay{random.bounded(-3, 12), {}};
        const auto pin = [&] {
            const auto bound = random.bounded(6) == 0 ? part->pins.size() + 1 : qsizetype(3);
            const auto number = random.bounded(static_cast<int>(bound));
            return number < part->pins.size() ? part->pins.at(number)->number : QStringLiteral("9");
        };
        for (int positions = random.bounded(8) == 0 ? 0 : random.bounded(2, 6); positions > 0; --positions) {
            relay.positions.append(Velk::ContactPosition());
            for (int pairs = random.bounded(4); pairs > 0; --pairs)
                relay.positions.last().closed.append({pin(), pin()});
        }
        relays.insert(component->ref, relay);
    }
    return RelayContactsPointer::create(relays);
}

/// The lowest position that makes all the steps, which are over relays of one gang, found by trying them; -1 if none
/// does. A pin that the part lacks is no contact.
inline int lowestPosition(const QList<Velk::TracedStep> &steps, const Velk::RelayContactMap &relays,
                          const Velk::EDAProvider &netlist)
{
    for (int position = 0; position < 6; ++position) {
        const auto isClosed = [&](const Velk::TracedStep &step) {
            const auto closed = relays[step.component->ref].positions.value(position).closed;
            return netlist.getPartByName(step.component->part)->getPinByNumber(step.entryPin) &&
                   std::any_of(closed.cbegin(), closed.cend(), [&](const Velk::Contact &contact) {
                       return QSet{contact.pin, contact.otherPin} == QSet{step.entryPin, step.exitPin};
                   });
        };
        if (std::all_of(steps.cbegin(), steps.cend(), isClosed))
            return position;
    }
    return -1;
}

#endif
