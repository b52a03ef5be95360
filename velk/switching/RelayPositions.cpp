#include <velk/switching/RelayPositions.h>

#include <velk/model/References.h>
#include <velk/switching/PositionText.h>

#include <QMap>
#include <QSet>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace Velk {

namespace {

/// The pairs that two positions close, rest and on, of all contact sets of a component.
struct RestAndOn
{
    QList<Contact> rest;
    QList<Contact> on;

    QList<ContactPosition> positions() const { return {{{}, rest}, {{}, on}}; }
};

bool isOneOf(QChar character, char16_t first, char16_t last)
{
    return character >= first && character <= last;
}

/// The pins of a part that are no coils, each number once.
QList<QSharedPointer<EDAPin>> contactPins(const EDAPart &part)
{
    QList<QSharedPointer<EDAPin>> pins;
    QSet<QString> known;
    for (const auto &pin : std::as_const(part.pins)) {
        if (!pin || isCoil(pin->number) || known.contains(pin->number))
            continue;
        known.insert(pin->number);
        pins.append(pin);
    }
    return pins;
}

bool isContactNumber(const QString &number)
{
    return number.size() == 2 && isOneOf(number.at(0), u'1', u'9') && isOneOf(number.at(1), u'1', u'4');
}

/// The contacts of the set \a digit that has the functions \a functions, as u"124"; false where there is none such.
bool addContactSet(QChar digit, const QString &functions, RestAndOn &contacts)
{
    const auto pair = [digit](QChar first, QChar second) {
        return Contact{QString{digit} + first, QString{digit} + second};
    };
    const bool opens = functions == u"12"_s || functions == u"124"_s || functions == u"1234"_s;
    const bool closesFromOne = functions == u"14"_s || functions == u"124"_s;
    const bool closesFromThree = functions == u"34"_s || functions == u"1234"_s;
    if (opens)
        contacts.rest.append(pair(u'1', u'2'));
    if (closesFromOne)
        contacts.on.append(pair(u'1', u'4'));
    if (closesFromThree)
        contacts.on.append(pair(u'3', u'4'));
    return opens || closesFromOne || closesFromThree;
}

bool areContactNumbers(const QList<QSharedPointer<EDAPin>> &pins)
{
    return std::all_of(pins.cbegin(), pins.cend(), [](const auto &pin) { return isContactNumber(pin->number); });
}

/// By numbers that are contact numbers all.
std::optional<RestAndOn> byContactNumbers(const QList<QSharedPointer<EDAPin>> &pins)
{
    QMap<QChar, QString> functionsOfSets;
    for (const auto &pin : pins)
        functionsOfSets[pin->number.at(0)] += pin->number.at(1);
    RestAndOn contacts;
    for (auto set = functionsOfSets.begin(); set != functionsOfSets.end(); ++set) {
        std::sort(set->begin(), set->end());
        if (!addContactSet(set.key(), *set, contacts))
            return {};
    }
    return contacts;
}

/// A pin of a contact set by its name.
struct NamedContact
{
    QChar function; ///< c: common, o: normally open, n: normally closed
    QString set;    ///< what tells it from other sets, in small letters
};

std::optional<NamedContact> namedContact(const QString &pinName)
{
    constexpr std::pair<const char16_t *, char16_t> beginnings[] = {
        {u"com", u'c'}, {u"cm", u'c'}, {u"no", u'o'}, {u"nc", u'n'}, {u"c", u'c'}}; // the longest first
    const auto isInSetName = [](QChar unit) { return isOneOf(unit, u'a', u'z') || isOneOf(unit, u'0', u'9'); };
    QString name = pinName;
    for (QChar &unit : name) { // no letters but these, whatever other ones may have as their small ones
        if (isOneOf(unit, u'A', u'Z'))
            unit = QChar(unit.unicode() - u'A' + u'a');
    }
    for (const auto &[beginning, function] : beginnings) {
        if (!name.startsWith(QStringView(beginning)))
            continue;
        const QString set = name.mid(QStringView(beginning).size());
        return std::all_of(set.cbegin(), set.cend(), isInSetName) ? std::optional(NamedContact{function, set})
                                                                  : std::nullopt;
    }
    return {};
}

std::optional<RestAndOn> byPinNames(const QList<QSharedPointer<EDAPin>> &pins)
{
    QMap<QString, QMap<QChar, QString>> sets; // the number of each function's pin
    for (const auto &pin : pins) {
        const auto contact = namedContact(pin->name);
        if (!contact || sets[contact->set].contains(contact->function))
            return {};
        sets[contact->set].insert(contact->function, pin->number);
    }
    RestAndOn contacts;
    for (const auto &numbers : std::as_const(sets)) {
        if (!numbers.contains(u'c') || numbers.size() < 2)
            return {};
        if (numbers.contains(u'n'))
            contacts.rest.append({numbers.value(u'c'), numbers.value(u'n')});
        if (numbers.contains(u'o'))
            contacts.on.append({numbers.value(u'c'), numbers.value(u'o')});
    }
    return contacts;
}

/// The pairs without their order.
QSet<std::pair<QString, QString>> pairsIn(const QList<Contact> &contacts)
{
    QSet<std::pair<QString, QString>> pairs;
    for (const Contact &contact : contacts)
        pairs.insert(std::minmax(contact.pin, contact.otherPin));
    return pairs;
}

bool areSame(const RestAndOn &a, const RestAndOn &b)
{
    return pairsIn(a.rest) == pairsIn(b.rest) && pairsIn(a.on) == pairsIn(b.on);
}

RelayPositions byPins(const EDAPart &part)
{
    const auto pins = contactPins(part);
    if (pins.isEmpty())
        return {PositionsRule::NoContacts, {}};
    const bool areNumbers = areContactNumbers(pins);
    const auto numbered = areNumbers ? byContactNumbers(pins) : std::nullopt;
    const auto named = byPinNames(pins);
    if (numbered && named && !areSame(*numbered, *named))
        return {PositionsRule::Unknown, {}};
    if (numbered)
        return {PositionsRule::ContactNumbers, numbered->positions()};
    if (named)
        return {PositionsRule::PinNames, named->positions()};
    if (pins.size() == 2 && !areNumbers)
        return {PositionsRule::TwoPins, RestAndOn{{}, {{pins.at(0)->number, pins.at(1)->number}}}.positions()};
    return {PositionsRule::Unknown, {}};
}

RelayPositions byText(PositionsRule rule, const EDAComponent &relay, const QSharedPointer<EDAPart> &part,
                      const QString &text, const QString &place)
{
    QSet<QString> numbers;
    for (const auto &pin : part ? part->pins : QList<QSharedPointer<EDAPin>>()) {
        if (pin)
            numbers.insert(pin->number);
    }
    const PositionText read = readPositions(text, numbers);
    if (!read.problem.isEmpty())
        return {PositionsRule::Unknown, {}, PositionsError{{relay.ref}, place, text, read.column, read.problem}};
    return {rule, read.positions};
}

/// The row for the part by the name that its own netlist has for it.
std::optional<RelayTable::Row> rowFor(const EDAComponent &relay, const QSharedPointer<EDAPart> &part,
                                      const QList<RelayTable> &tables)
{
    const QString library = part ? part->lib : QString();
    for (const RelayTable &table : tables) {
        if (auto row = table.rowFor(library, drawnName(relay.part)))
            return row;
    }
    return RelayTable::builtIn().rowFor(library, drawnName(relay.part));
}
}

QString PositionsError::description() const
{
    if (place.isEmpty())
        return problem;
    return u"%1, column %2 of '%3': %4"_s.arg(place, QString::number(column), text, problem);
}

QString PositionsError::message() const
{
    return u"%1: %2"_s.arg(components.join(u", "_s), description());
}

bool isCoil(const QString &pinNumber)
{
    return pinNumber.size() == 2 && isOneOf(pinNumber.at(0), u'A', u'B') && isOneOf(pinNumber.at(1), u'1', u'9');
}

RelayPositions positionsOf(const EDAComponent &relay, const QSharedPointer<EDAPart> &part,
                           const QList<RelayTable> &tables)
{
    const QString field = relay.property(u"Positions"_s);
    if (!field.trimmed().isEmpty())
        return byText(PositionsRule::Field, relay, part, field, u"field Positions"_s);
    if (const auto row = rowFor(relay, part, tables))
        return byText(PositionsRule::Table, relay, part, row->positions, row->place);
    if (!part)
        return {PositionsRule::Unknown, {}};
    return byPins(*part);
}
}
