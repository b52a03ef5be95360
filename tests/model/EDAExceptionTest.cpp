#include "tests/support/Copies.h"
#include "tests/support/TestRegistry.h"

#include <velk/model/EDAException.h>

#include <QTest>

#include <exception>
#include <type_traits>

using namespace Qt::StringLiterals;
using namespace Velk;

static_assert(!std::is_base_of_v<std::exception, EDAException>);

class EDAExceptionTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void fields()
    {
        const auto component = EDAComponent::create(u"R1"_s, {}, u"R"_s);
        const auto part = EDAPart::create(u"R"_s, {});
        const auto other = EDAComponent::create({}, {}, {});
        const auto otherPart = EDAPart::create({}, {});
        QCOMPARE(textsOfCopies(KiCadTokenNotFoundException(u"/export"_s), KiCadTokenNotFoundException({}),
                               [](const auto &e) { return e.path(); }),
                 QStringList{u"/export"_s});
        QCOMPARE(textsOfCopies(EDAComponentNotFoundException({{u"ref"_s, u"R7"_s}}), EDAComponentNotFoundException({}),
                               [](const auto &e) { return e.properties().value(u"ref"_s); }),
                 QStringList{u"R7"_s});
        QCOMPARE(textsOfCopies(EDAPartNotFoundException(component, u"%2"_s), EDAPartNotFoundException(other, {}),
                               [](const auto &e) { return e.component()->ref + u' ' + e.partName(); }),
                 QStringList{u"R1 %2"_s});
        QCOMPARE(textsOfCopies(
                     EDAPinNotFoundException(part, component, u"9"_s), EDAPinNotFoundException(otherPart, other, {}),
                     [](const auto &e) { return e.part()->name + u' ' + e.component()->ref + u' ' + e.pin(); }),
                 QStringList{u"R R1 9"_s});
    }
};

VELK_TEST(EDAExceptionTest)

#include "EDAExceptionTest.moc"
