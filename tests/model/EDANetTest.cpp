#include "tests/support/Copies.h"
#include "tests/support/TestRegistry.h"

#include <velk/model/EDANet.h>

#include <QScopedArrayPointer>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace Velk;

class EDANetTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void findsNodes()
    {
        const auto net = EDANet::create(u"N1"_s)->addNode(u"K1"_s, u"1"_s)->addNode(u"R4"_s, u"2"_s);
        QCOMPARE(net->findNode(u"R4"_s, u"2"_s).data(), net->nodes.at(1).data());
        QVERIFY(net->findNode(u"k1"_s, u"1"_s).isNull());
        QVERIFY(net->findNode(u"K1"_s, u"01"_s).isNull());
        QVERIFY(net->containsNode(EDANetNode::create(u"K1"_s, u"1"_s)));
    }

    void otherNodesDropsAllEqualOnes()
    {
        const auto net =
            EDANet::create(u"N1"_s)->addNode(u"K1"_s, u"1"_s)->addNode(u"R4"_s, u"2"_s)->addNode(u"K1"_s, u"1"_s);
        const auto others = net->otherNodes(EDANetNode::create(u"K1"_s, u"1"_s));
        QCOMPARE(others.size(), 1);
        QCOMPARE(others.at(0).data(), net->nodes.at(1).data());
        QCOMPARE(net->otherNodes(EDANetNode::create(u"K9"_s, u"1"_s)), net->nodes);
    }

    void comparesNodesInOrder()
    {
        const auto a = EDANet::create(u"A"_s)->addNode(u"K1"_s, u"1"_s)->addNode(u"K2"_s, u"1"_s);
        const auto reversed = EDANet::create(u"A"_s)->addNode(u"K2"_s, u"1"_s)->addNode(u"K1"_s, u"1"_s);
        QCOMPARE(a, EDANet::create(u"A"_s)->addNode(u"K1"_s, u"1"_s)->addNode(u"K2"_s, u"1"_s));
        QVERIFY(a != reversed);
        QVERIFY(a != EDANet::create(u"A"_s));
        QVERIFY(QSharedPointer<EDANet>() != a);
        QVERIFY(QSharedPointer<EDANet>() == QSharedPointer<EDANet>());
    }

    void clonesAndCopies()
    {
        const auto net = EDANet::create(u"A"_s)->addNode(u"K1"_s, u"1"_s);
        const auto clone = net->clone();
        QCOMPARE(clone, net);
        QVERIFY(clone->nodes.at(0).data() != net->nodes.at(0).data());
        QCOMPARE(clone->sharedFromThis().data(), clone.data());

        EDANet byValue(*net);
        QVERIFY(byValue.addNode(u"K2"_s, u"2"_s).isNull());
        QCOMPARE(byValue.nodes.size(), 2);
        QCOMPARE(textsOfCopies(byValue, EDANet(), [](const EDANet &n) { return n.name + n.nodes.last()->ref; }),
                 QStringList{u"AK2"_s});
        QCOMPARE(textsOfCopies(*net->nodes[0], EDANetNode(), [](const EDANetNode &n) { return n.ref + n.pin; }),
                 QStringList{u"K11"_s});
        QCOMPARE(net->nodes.size(), 1);
    }

    void prints()
    {
        const auto net = EDANet::create(u"GND"_s)->addNode(u"K1"_s, u"1"_s)->addNode(u"R4"_s, u"2"_s);
        QCOMPARE(QByteArray(QScopedArrayPointer<char>(toString(net)).data()),
                 "EDANet('GND', [EDANetNode(K1, 1), EDANetNode(R4, 2)])");
        QCOMPARE(QByteArray(QScopedArrayPointer<char>(toString(QSharedPointer<EDANet>())).data()), "EDANet(nullptr)");
        QCOMPARE(QByteArray(QScopedArrayPointer<char>(toString(QSharedPointer<EDANetNode>())).data()),
                 "EDANetNode(nullptr)");
    }
};

VELK_TEST(EDANetTest)

#include "EDANetTest.moc"
