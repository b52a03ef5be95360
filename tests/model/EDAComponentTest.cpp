#include "tests/support/Copies.h"
#include "tests/support/TestRegistry.h"
#include "tests/support/TextTable.h"

#include <velk/model/EDAComponent.h>

#include <QScopedArrayPointer>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace Velk;

class EDAComponentTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void create()
    {
        const auto plain = EDAComponent::create(u"K1"_s, u"10k"_s, u"Relay_SPDT"_s);
        // Value and part change places in this text.
        QCOMPARE(text(plain), "EDAComponent(ref='K1', value='Relay_SPDT', part='10k', properties=[])");

        const auto typed = EDAComponent::create(u"K1"_s, u"5V"_s, u"ID7"_s, u"SPDT"_s, u"Relay"_s);
        QCOMPARE(text(typed), "EDAComponent(ref='K1', value='SPDT', part='5V', "
                              "properties=[CompType=Relay, Identifier=ID7])");
        QCOMPARE(typed->identifier(), u"ID7"_s);
        QCOMPARE(typed->type(), u"Relay"_s);
        QCOMPARE(EDAComponent::create(u"K1"_s, u"5V"_s, u"ID7"_s, u"SPDT"_s)->part, u"SPDT"_s);

        const auto tricky = EDAComponent::create(u"%2"_s, u"%1"_s, u"%4"_s);
        QCOMPARE(text(tricky), "EDAComponent(ref='%2', value='%4', part='%1', properties=[])");
        QCOMPARE(text({}), "EDAComponent(nullptr)");
    }

    void matchesProperties_data() { addRowsFrom("property_matches.txt", {"properties", "expected"}); }
    void matchesProperties()
    {
        QFETCH(QString, properties);
        QMap<QString, QString> wanted;
        for (const QString &property : properties.replace(u'~', u' ').split(u"; "_s, Qt::SkipEmptyParts))
            wanted.insert(property.section(u'=', 0, 0), property.section(u'=', 1));
        const auto component = EDAComponent::create(u"U1"_s, {}, {});
        component->properties = {{u"Dev"_s, u"DMM"_s}, {u"DevNo"_s, u"1"_s}, {u"Note"_s, u"x"_s}};
        QTEST(component->matchesProperties(wanted) ? u"yes"_s : u"no"_s, "expected");
    }

    void propertiesToString()
    {
        QCOMPARE(EDAComponent::propertiesToString({{u"Group"_s, u"A"_s}, {u"Dev"_s, u"%2"_s}}), u"Dev=%2,Group=A"_s);
        QCOMPARE(EDAComponent::propertiesToString({}), QString());
    }

    void comparesContents()
    {
        const auto a = EDAComponent::create(u"K1"_s, u"v"_s, u"i"_s, u"p"_s);
        const auto b = a->clone();
        QCOMPARE(a, b);
        QVERIFY(QList{a}.contains(b));
        b->properties.insert(u"Slot"_s, u"1"_s);
        QVERIFY(a != b);
        QVERIFY(!a->properties.contains(u"Slot"_s));
        QVERIFY(a != QSharedPointer<EDAComponent>());
        QVERIFY(QSharedPointer<EDAComponent>() == QSharedPointer<EDAComponent>());
        const auto allOf = [](const EDAComponent &c) { return c.ref + c.value + c.part + c.identifier(); };
        QCOMPARE(textsOfCopies(*a, EDAComponent(), allOf), QStringList{u"K1vpi"_s});
    }

private:
    static QByteArray text(const QSharedPointer<EDAComponent> &component)
    {
        return QScopedArrayPointer<char>(toString(component)).data();
    }
};

VELK_TEST(EDAComponentTest)

#include "EDAComponentTest.moc"
