#include "tests/support/TestRegistry.h"
#include "tests/support/TextTable.h"

#include <velk/kicad/KiCadNetParser.h>
#include <velk/kicad/KiCadNetlistFile.h>
#include <velk/kicad/KiCadReader.h>
#include <velk/model/EDAException.h>
#include <velk/provider/MultipleEDAProvider.h>

#include <QTest>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace {

QByteArray goodNetlist()
{
    return textOf("good.net").toUtf8();
}

std::unique_ptr<KiCadNetParser> parse(const QByteArray &netlist)
{
    KiCadReader reader(netlist);
    reader.read();
    auto parser = std::make_unique<KiCadNetParser>(reader.getRoot());
    parser->parse();
    return parser;
}
}

class KiCadNetParserTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void buildsTheModel()
    {
        const auto parser = parse(goodNetlist());
        QStringList components;
        for (const auto &component : parser->getComponents()) {
            components.append(u"%1 '%2' %3 [%4]"_s.arg(component->ref, component->value, component->part,
                                                       EDAComponent::propertiesToString(component->properties)));
        }
        QCOMPARE(components, (QStringList{u"K1 '5V' Relay []"_s, u"K2 '5V' Relay [Bench=B1,Slot=3]"_s,
                                          u"U1 '' SMU [CompType=Source,dnp=]"_s}));
        const auto parts = parser->getParts();
        QCOMPARE(parts.size(), 2);
        QCOMPARE(parts.at(0), EDAPart::create(u"Relay"_s, u"Device"_s));
        QCOMPARE(parts.at(0)->pins,
                 (QList{EDAPin::create(u"1"_s, {}, {}), EDAPin::create(u"2"_s, u"B"_s, u"passive"_s)}));
        QVERIFY(parts.at(1)->lib.isNull());
        const auto nets = parser->getNets();
        QCOMPARE(nets, (QList{EDANet::create(u"/B"_s)->addNode(u"K1"_s, u"1"_s),
                              EDANet::create(u"/SIG"_s)->addNode(u"U1"_s, u"1"_s)->addNode(u"K1"_s, u"2"_s)}));
    }

    void handsOutCopiesExceptByProperties()
    {
        const auto parser = parse(goodNetlist());
        parser->getComponents().at(0)->value = u"x"_s;
        parser->getComponentByRef(u"K1"_s)->value = u"x"_s;
        parser->getPartByName(u"SMU"_s)->pins.clear();
        QCOMPARE(parser->getComponentByRef(u"K1"_s)->value, u"5V"_s);
        QCOMPARE(parser->getPartByName(u"SMU"_s)->pins.size(), 1);
        QVERIFY(parser->getNets().at(0).data() != parser->getNets().at(0).data());

        parser->getComponentByProperties({{u"Slot"_s, u"3"_s}})->value = u"x"_s;
        QCOMPARE(parser->getComponentByRef(u"K2"_s)->value, u"x"_s);
        QCOMPARE(parser->getComponentByProperties({})->ref, u"K1"_s);
        QVERIFY(parser->getComponentByProperties({{u"Slot"_s, u"4"_s}}).isNull());
        QVERIFY(parser->getComponentByRef(u"k1"_s).isNull());
        QVERIFY(parser->getPartByName({}).isNull());
    }

    // What a derived parser answers counts, not what was read.
    void asksDerivedParsers()
    {
        struct WithoutNets : KiCadNetParser
        {
            using KiCadNetParser::KiCadNetParser;
            QList<QSharedPointer<EDANet>> getNets() const override { return {}; }
        };
        KiCadReader reader(goodNetlist());
        reader.read();
        WithoutNets parser(reader.getRoot());
        parser.parse();
        QVERIFY(MultipleEDAProvider({&parser}, {}).getNets().isEmpty());
    }

    void copiesAndMoves()
    {
        const auto parser = parse(goodNetlist());
        KiCadNetParser copy(*parser);
        QCOMPARE(copy.getComponentByProperties({}).data(), parser->getComponentByProperties({}).data());
        KiCadNetParser moved(std::move(copy));
        QCOMPARE(moved.getNets(), parser->getNets());
        copy = *parser;
        moved = KiCadNetParser({}, KiCadReadingMode::Tolerant);
        QVERIFY(moved.getParts().isEmpty());
        moved = std::move(copy);
        QCOMPARE(moved.getParts(), parser->getParts());
        moved.parse(); // the tree goes along
        QCOMPARE(moved.warnings().size(), 5);
    }

    void namesWhatIsMissing_data() { addRowsFrom("parser_failures.txt", {"text", "replacement", "expected"}); }
    void namesWhatIsMissing()
    {
        QFETCH(QString, text);
        QFETCH(QString, replacement);
        QFETCH(QString, expected);
        QByteArray netlist = goodNetlist();
        QVERIFY(netlist.contains(text.toUtf8()));
        netlist.replace(netlist.indexOf(text.toUtf8()), text.size(), replacement.toUtf8());
        if (expected.startsWith(u'/'))
            expected = u"Could not find KiCad token for path '%1'"_s.arg(expected);
        QString message;
        try {
            parse(netlist);
        } catch (const EDAException &exception) {
            message = exception.message();
        }
        QCOMPARE(message, expected);
    }

    // Exports of small boards that are legal in KiCad and awkward in a netlist, of two versions of KiCad.
    void awkwardExports_data() { addRowsFrom("awkward_exports.txt", {"expected"}); }
    void awkwardExports()
    {
        for (const QString &folder : {u"quirks/"_s, u"quirks/kicad10/"_s}) {
            const QString name = folder + QString::fromUtf8(QTest::currentDataTag());
            if (name != u"quirks/missing_symbol"_s) // only KiCad 10 exports it
                QTEST(fileOf(name).errorText(), "expected");
        }
    }

    void sheetNamesCarryProperties_data() { addRowsFrom("sheet_names.txt", {"ref", "expected"}); }
    void sheetNamesCarryProperties()
    {
        QFETCH(QString, ref);
        QString found;
        const auto component = fileOf(u"quirks/sheet_names"_s).netlist()->getComponentByRef(ref);
        for (const auto &key : {u"Bench"_s, u"Card"_s, u"Group"_s, u"Slot"_s, u"n"_s}) {
            if (component->properties.contains(key))
                found += u"%1=%2."_s.arg(key, component->property(key));
        }
        QTEST(found, "expected");
    }

private:
    static KiCadNetlistFile fileOf(const QString &name)
    {
        return KiCadNetlistFile(QStringLiteral(VELK_TEST_DATA "/%1.net").arg(name));
    }
};

VELK_TEST(KiCadNetParserTest)

#include "KiCadNetParserTest.moc"
