#include "tests/support/Copies.h"
#include "tests/support/TestRegistry.h"

#include <velk/model/EDAPart.h>

#include <QScopedArrayPointer>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace Velk;

class EDAPartTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void findsPins()
    {
        const auto part = EDAPart::create(u"R"_s, u"Device"_s);
        QVERIFY(part->getPinByNumber(u"1"_s).isNull());
        part->pins = {EDAPin::create(u"1"_s, u"A"_s, u"passive"_s), EDAPin::create(u"2"_s, u"1"_s, u"passive"_s),
                      EDAPin::create(u"1"_s, u"A"_s, u"output"_s)};
        // Identity, since equal pins compare equal.
        QCOMPARE(part->getPinByNumberOrName(u"1"_s).data(), part->pins.at(0).data());
        QCOMPARE(part->getPinByName(u"1"_s).data(), part->pins.at(1).data());
        QCOMPARE(part->getPinByNumberOrName(u"A"_s).data(), part->pins.at(0).data());
        QVERIFY(part->getPinByNumber(u"01"_s).isNull());
        QVERIFY(part->getPinByNumberOrName(u"a"_s).isNull());
    }

    void comparesWithoutPins()
    {
        const auto part = EDAPart::create(u"R"_s, u"Device"_s);
        part->pins.append(EDAPin::create(u"3"_s, u"OUT"_s, u"output"_s));
        QCOMPARE(part, EDAPart::create(u"R"_s, u"Device"_s));
        QVERIFY(part != EDAPart::create(u"R"_s, {}));
        QVERIFY(part != QSharedPointer<EDAPart>());
        QVERIFY(part->pins.at(0) != EDAPin::create(u"3"_s, u"OUT"_s, {}));
        QCOMPARE(QByteArray(QScopedArrayPointer<char>(toString(part)).data()), "EDAPart('R', 'Device')");
        QCOMPARE(QByteArray(QScopedArrayPointer<char>(toString(part->pins.at(0))).data()),
                 "EDAPin('3', 'OUT', 'output')");
        QCOMPARE(QByteArray(QScopedArrayPointer<char>(toString(QSharedPointer<EDAPin>())).data()), "EDAPin(nullptr)");
        QCOMPARE(QByteArray(QScopedArrayPointer<char>(toString(QSharedPointer<EDAPart>())).data()), "EDAPart(nullptr)");
    }

    void clonesPins()
    {
        const auto part = EDAPart::create(u"R"_s, u"Device"_s);
        part->pins.append(EDAPin::create(u"3"_s, u"OUT"_s, u"output"_s));
        const auto copy = part->clone();
        QCOMPARE(copy->pins, part->pins);
        copy->pins.at(0)->number = u"4"_s;
        QCOMPARE(part->pins.at(0)->number, u"3"_s);
        QCOMPARE(textsOfCopies(*part, EDAPart(), [](const EDAPart &p) { return p.name + p.lib + p.pins[0]->number; }),
                 QStringList{u"RDevice3"_s});
        QCOMPARE(textsOfCopies(*part->pins[0], EDAPin(), [](const EDAPin &p) { return p.number + p.name + p.type; }),
                 QStringList{u"3OUToutput"_s});
    }
};

VELK_TEST(EDAPartTest)

#include "EDAPartTest.moc"
