#include "tests/support/TestRegistry.h"

#include <velk/model/EDAException.h>

#include <QTest>

#include <exception>
#include <type_traits>

using namespace Qt::StringLiterals;
using namespace Velk;

class EDAExceptionTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void messagesAndFields()
    {
        const auto component = EDAComponent::create(u"R1"_s, {}, u"R"_s);
        const auto part = EDAPart::create(u"R"_s, {});

        const KiCadTokenNotFoundException token(u"/export/nets"_s);
        QCOMPARE(caughtMessage(token), u"Could not find KiCad token for path '/export/nets'"_s);
        QCOMPARE(token.path(), u"/export/nets"_s);

        const EDAComponentNotFoundException noComponent({{u"ref"_s, u"R7"_s}});
        QCOMPARE(caughtMessage(noComponent), u"No component matching properties 'ref=R7' found"_s);
        QCOMPARE(noComponent.properties().value(u"ref"_s), u"R7"_s);

        const EDAPartNotFoundException noPart(component, u"%2"_s);
        QCOMPARE(caughtMessage(noPart), u"No part found for name '%2' of component 'R1'"_s);
        QCOMPARE(noPart.component(), component);
        QCOMPARE(noPart.partName(), u"%2"_s);

        const EDAPinNotFoundException noPin(part, component, u"9"_s);
        QCOMPARE(caughtMessage(noPin), u"No pin '9' found for part 'R' of component 'R1'"_s);
        QCOMPARE(noPin.part(), part);
        QCOMPARE(noPin.component(), component);
        QCOMPARE(noPin.pin(), u"9"_s);
    }

private:
    template <typename Exception>
    static QString caughtMessage(const Exception &exception)
    {
        static_assert(!std::is_base_of_v<std::exception, Exception>);
        try {
            throw exception;
        } catch (const EDAException &caught) {
            return caught.message();
        }
    }
};

VELK_TEST(EDAExceptionTest)

#include "EDAExceptionTest.moc"
