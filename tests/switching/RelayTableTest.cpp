#include "tests/support/TestRegistry.h"
#include "tests/support/TextTable.h"

#include <velk/switching/RelayPositions.h>

#include <QTest>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace {

/// A symbol's part, with pins as "NUMBER" or "NUMBER=NAME".
QSharedPointer<EDAPart> drawn(const QString &symbol, const QString &library, const QString &pins)
{
    auto part = EDAPart::create(symbol, library);
    for (const QString &pin : pins.split(u' '))
        part->pins.append(EDAPin::create(pin.section(u'=', 0, 0), pin.section(u'=', 1), {}));
    return part;
}

/// Positions as text with the pins of each pair and the pairs of each position sorted.
QString inOrder(const QString &positions)
{
    QStringList texts;
    for (const QString &position : positions.split(u'/')) {
        QStringList pairs = position.split(u' ', Qt::SkipEmptyParts);
        for (QString &pair : pairs) {
            QStringList pins = pair.split(u'-');
            pins.sort();
            pair = pins.join(u'-');
        }
        pairs.sort();
        texts.append(pairs.join(u' '));
    }
    return texts.join(u'/');
}

/// What Velk knows of a relay with this part: its positions in that order, "unknown" or a message.
QString told(const QSharedPointer<EDAPart> &part)
{
    const auto relay = EDAComponent::create(u"K1"_s, {}, part->name);
    const RelayPositions known = positionsOf(*relay, part, {});
    if (known.error)
        return known.error->message();
    QStringList texts;
    for (const ContactPosition &position : known.positions) {
        texts.append(QString());
        for (const Contact &contact : position.closed)
            texts.last() += contact.pin + u'-' + contact.otherPin + u' ';
    }
    return known.rule == PositionsRule::Unknown ? u"unknown"_s : inOrder(texts.join(u'/'));
}
}

/// The table that is built in, against symbols that are drawn here as the library has them.
class RelayTableTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void knowsRelaysOfKicad_data() { addRowsFrom("relay_parts.txt", {"symbols", "pins", "positions"}); }
    void knowsRelaysOfKicad()
    {
        QFETCH(QString, symbols);
        QFETCH(QString, pins);
        QFETCH(QString, positions);
        for (const QString &symbol : symbols.split(u' '))
            QCOMPARE(symbol + u": "_s + told(drawn(symbol, u"Relay"_s, pins)), symbol + u": "_s + inOrder(positions));
    }

    void knowsNothingOfOtherLibraries()
    {
        QCOMPARE(told(drawn(u"G5LE-1"_s, u"Relays"_s, u"1 2 3 4 5"_s)), u"unknown"_s);
        QCOMPARE(told(drawn(u"G5LE-1"_s, {}, u"1 2 3 4 5"_s)), u"unknown"_s);
    }
};

VELK_TEST(RelayTableTest)
#include "RelayTableTest.moc"
