#include "tests/support/Copies.h"
#include "tests/support/JoinByScanning.h"
#include "tests/support/RandomSystems.h"
#include "tests/support/TestRegistry.h"
#include "tests/support/TextTable.h"

#include <velk/provider/MultipleEDAProvider.h>

#include <QLoggingCategory>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace {

/// A board with few pins and identifiers, so that nets meet often, some of them over several connectors in turn.
void fillRandomly(StubProvider &board, QRandomGenerator &random)
{
    const auto pick = [&](const QStringList &texts) { return texts.at(random.bounded(texts.size())); };
    const int componentCount = random.bounded(1, 9);
    for (int i = 0; i < componentCount; ++i) {
        board.add(u"X%1"_s.arg(random.bounded(8) == 0 ? 0 : i),
                  pick({u"Connector"_s, u"CONNECTOR"_s, u"Relay"_s, QString()}), {u"1"_s, u"2"_s},
                  pick({u"A"_s, u"B"_s, u"C"_s, u"D"_s, u"E"_s, u"F"_s, u""_s, QString()}));
    }
    const int netCount = random.bounded(0, 9);
    for (int i = 0; i < netCount; ++i) {
        QStringList nodes;
        for (int node = random.bounded(0, 6); node > 0; --node) // X8 is never listed
            nodes.append(u"X%1/%2"_s.arg(random.bounded(9)).arg(random.bounded(1, 4)));
        board.connect(u"N%1"_s.arg(i), nodes);
    }
}

using Properties = QMap<QString, QString>;
Properties randomProperties(QRandomGenerator &random)
{
    Properties result;
    for (const auto &[key, values] :
         {std::pair(u"CompType"_s, QStringList{u"Relay"_s, u"CONNECTOR"_s, u""_s, u"relay"_s}),
          std::pair(u"Identifier"_s, QStringList{u"A"_s, u"B"_s, u""_s, u"Z"_s})}) {
        if (random.bounded(3) > 0)
            result.insert(key, values.at(random.bounded(values.size())));
    }
    return result;
}
}

class MultipleEDAProviderTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void suffixesComponentsAndParts()
    {
        const auto boards =
            systemsOf(u"LOADS_R10 Relay 1\nLOADS_R10 Resistor 1 X1\nLOADS_R1 Resistor 1\n" // the last holds
                      "LOADS_R1! Relay 1\n--\nD5 Diode 1\nLOADS_R1 Resistor 2"_s);
        StubProvider &first = *boards[0], &second = *boards[1];
        first.components[1]->value = u"10k"_s;
        second.components.append(EDAComponent::create(u"X#1"_s, {}, {}));
        const MultipleEDAProvider joined({&first, &second}, {});

        QStringList components, parts;
        for (const auto &component : joined.getComponents())
            components.append(component->ref + u':' + component->part);
        QCOMPARE(components, (QStringList{u"D5#2:PD5#2"_s, u"LOADS_R1!#1:PLOADS_R1!#1"_s, u"LOADS_R1#1:PLOADS_R1#1"_s,
                                          u"LOADS_R1#2:PLOADS_R1#2"_s, u"LOADS_R10#1:PLOADS_R10#1"_s, u"X#1#2:#2"_s}));
        for (const auto &part : joined.getParts())
            parts.append(part->name);
        QCOMPARE(parts,
                 (QStringList{u"PD5#2"_s, u"PLOADS_R1!#1"_s, u"PLOADS_R1#1"_s, u"PLOADS_R1#2"_s, u"PLOADS_R10#1"_s}));

        QVERIFY(joined.getComponentByRef(u"LOADS_R1"_s).isNull());
        const auto component = joined.getComponentByRef(u"LOADS_R10#1"_s);
        QCOMPARE(component->value + component->identifier(), u"10kX1"_s);
        QCOMPARE(component.data(), joined.getComponentByProperties({{u"Identifier"_s, u"X1"_s}}).data());
        QVERIFY(joined.getComponentByProperties({{u"Identifier"_s, u"X1#1"_s}}).isNull());
        QCOMPARE(joined.getPartByName(u"PLOADS_R1#2"_s)->pins.at(0)->number, u"2"_s);
        QCOMPARE(first.components.at(0)->ref, u"LOADS_R10"_s);
        QCOMPARE(first.parts.at(0)->name, u"PLOADS_R10"_s);
    }

    void joinsNets_data() { addCasesFrom("joining_cases.txt"); }
    void joinsNets()
    {
        QFETCH(QString, input);
        const auto boards = systemsOf(input);
        QList<EDAProvider *> pointers;
        for (const auto &board : boards)
            pointers.append(board.get());
        const MultipleEDAProvider joined(pointers, {MultipleEDAProvider::DEFAULT_CONNECTOR_COMPONENT_TYPE});
        QTEST(netsToText(joined.getNets()).trimmed(), "expected");
        for (qsizetype i = 0; i < joined.getNets().size(); ++i)
            QCOMPARE(joined.getNets().at(i).data(), joined.getNets().at(i).data());
    }

    void nothingIsAConnectorWithoutTypes()
    {
        const auto boards = systemsOf(u"J1 Connector 1 X\nA: J1/1\n--\nJ1 Connector 1 X\nB: J1/1"_s);
        QCOMPARE(MultipleEDAProvider({boards[0].get(), boards[1].get()}, {}).getNets().size(), 2);
        const MultipleEDAProvider joined({boards[0].get(), boards[1].get()}, {u"Plug"_s, u"CONNECTOR"_s});
        const auto answers = [](const MultipleEDAProvider &provider) {
            return netsToText(provider.getNets()) + provider.getComponentByRef(u"J1#2"_s)->ref;
        };
        QCOMPARE(textsOfCopies(joined, MultipleEDAProvider({}, {}), answers),
                 QStringList{u"A#1+B#2: J1#1/1 J1#2/1\nJ1#2"_s});
    }

    void logsUnlistedComponents()
    {
        const auto board = systemOf(u"A: Z1/1"_s);
        QLoggingCategory::setFilterRules(u"routing.debug=true"_s);
        QTest::ignoreMessage(QtDebugMsg, QRegularExpression(u"^No component found for component.ref 'Z1#1'$"_s));
        const MultipleEDAProvider joined({board.get()}, {u"Connector"_s});
        QLoggingCategory::setFilterRules(u"routing.debug=false"_s);
    }

    // Of so many properties some share a place in any table.
    void findsByWhatComponentsHadAndHave()
    {
        StubProvider board;
        for (int i = 0; i < 2000; ++i)
            board.add(u"K%1"_s.arg(i), u"Relay"_s, {})->properties.insert(u"No"_s, QString::number(i));
        board.components.at(7)->properties.insert(u"Card"_s, u"1"_s);
        const MultipleEDAProvider joined({&board}, {});
        const auto changed = joined.getComponentByRef(u"K7#1"_s);
        for (int i = 0; i < 2000; ++i) {
            changed->properties.insert(u"No"_s, QString::number(i));
            const auto found = joined.getComponentByProperties({{u"Card"_s, u"1"_s}, {u"No"_s, QString::number(i)}});
            QCOMPARE(found, i == 7 ? changed : nullptr);
        }
    }

    void equalsTheScanOnRandomBoards()
    {
        for (quint32 seed = 0; seed < 3000; ++seed) {
            QRandomGenerator random(seed);
            std::vector<StubProvider> boards(static_cast<std::size_t>(random.bounded(1, 5)));
            QList<EDAProvider *> pointers;
            for (auto &board : boards) {
                fillRandomly(board, random);
                pointers.append(&board);
            }
            const QStringList types{u"connector"_s};
            const MultipleEDAProvider joined(pointers, types);
            const QString fast = netsToText(joined.getNets());
            const QString scanned = netsToText(joinByScanning(pointers, types));
            const Properties wanted = randomProperties(random);
            const auto all = joined.getComponents();
            const auto first =
                std::find_if(all.cbegin(), all.cend(), [&](const auto &c) { return c->matchesProperties(wanted); });
            const auto expected = first == all.cend() ? nullptr : first->data();
            QVERIFY2(joined.getComponentByProperties(wanted).data() == expected, qPrintable(u"seed %1"_s.arg(seed)));
            QVERIFY2(fast == scanned, qPrintable(u"seed %1:\n%2\n%3"_s.arg(seed).arg(fast, scanned)));

            QList<QStringList> names(joined.getNets().size());
            for (qsizetype net = 0; net < joined.boardNets().size(); ++net)
                names[joined.joinedNetOf(net)].append(joined.boardNets().at(net)->name);
            for (qsizetype net = 0; net < names.size(); ++net) {
                QStringList inJoinedName = joined.getNets().at(net)->name.split(u'+');
                inJoinedName.sort();
                names[net].sort();
                QCOMPARE(names.at(net), inJoinedName);
            }
        }
    }
};

VELK_TEST(MultipleEDAProviderTest)

#include "MultipleEDAProviderTest.moc"
