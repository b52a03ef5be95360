#include "tests/support/NetlistText.h"
#include "tests/support/Process.h"
#include "tests/support/TestRegistry.h"

#include <velk/kicad/KiCadNetlistFile.h>
#include <velk/kicad/KiCadReader.h>
#include <velk/provider/MultipleEDAProvider.h>
#include <velk/routing/Routing.h>

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QScopedArrayPointer>
#include <QTemporaryDir>
#include <QTest>

#include <cstring>
#include <functional>
#include <memory>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace {

using NetlistText::net;
using NetlistText::node;
using NetlistText::pin;

QByteArray repeated(int count, const std::function<QByteArray(int)> &text)
{
    QByteArray result;
    for (int i = 0; i < count; ++i)
        result += text(i);
    return result;
}

QByteArray number(int i)
{
    return QByteArray::number(i);
}

QByteArray component(const QByteArray &ref, const QByteArray &type, const QByteArray &properties = {})
{
    return NetlistText::component(ref, "P", NetlistText::property("CompType", type) + properties);
}

/// From 0 on.
QByteArray pins(int count)
{
    return repeated(count, [](int i) { return NetlistText::pin(number(i)); });
}

/// N0, N1, ... with the pins of the component of the same numbers.
QByteArray netOfEachPin(const QByteArray &ref, int count)
{
    return repeated(count, [&](int i) { return net('N' + number(i), node(ref, number(i))); });
}

/// With a single part, P.
QByteArray netlist(const QByteArray &components, const QByteArray &pins, const QByteArray &nets)
{
    return NetlistText::netlist(components, NetlistText::libpart("P", pins), nets);
}

QSharedPointer<KiCadToken> read(const QByteArray &text)
{
    KiCadReader reader(text);
    return reader.read() == KiCadNoError ? reader.getRoot() : nullptr;
}

MultipleEDAProvider joined(const QList<QByteArray> &boards)
{
    QList<KiCadNetlistFile> files;
    QList<EDAProvider *> providers;
    for (const auto &board : boards) {
        QBuffer buffer;
        buffer.setData(board);
        files.append(KiCadNetlistFile(&buffer, {}));
        providers.append(files.last().netlist().get());
    }
    return MultipleEDAProvider(providers, {MultipleEDAProvider::DEFAULT_CONNECTOR_COMPONENT_TYPE});
}

qsizetype routeCount(MultipleEDAProvider &provider, const QString &from, const QString &to)
{
    const QMap<QString, QString> source{{EDAComponent::TYPE, u"Source"_s}};
    return Routing(&provider).findPaths(source, from, source, to).size();
}

/// What the command prints, or nothing if it fails.
QByteArray outputOf(const QStringList &arguments, const QByteArray &board)
{
    const QTemporaryDir folder;
    QProcess process;
    const QString fileName = folder.filePath(u"board.net"_s);
    write(fileName, board);
    process.start(QStringLiteral(VELK_COMMAND), arguments + QStringList{fileName});
    process.waitForFinished(-1);
    return process.exitCode() == 0 ? process.readAllStandardOutput() : QByteArray();
}

qsizetype linesOfNetList(const QByteArray &board)
{
    return outputOf({u"list"_s, u"nets"_s}, board).count('\n');
}

QByteArray peakMemory()
{
    const QByteArray status = bytesOf(u"/proc/self/status"_s);
    const qsizetype start = status.indexOf("VmHWM:") + 6;
    return status.mid(start, status.indexOf('\n', start) - start).simplified();
}
}

/// Inputs of a size that no board has, which take seconds and gigabytes; scripts/stress runs each on its own.
class StressTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void cleanup() { qInfo("peak memory %s", peakMemory().constData()); }

    void lineOf100Megabytes_data()
    {
        QTest::addColumn<QByteArray>("quote");
        QTest::newRow("name") << QByteArray();
        QTest::newRow("value") << QByteArray("\"");
    }
    void lineOf100Megabytes()
    {
        QFETCH(QByteArray, quote);
        constexpr int length = 100'000'000;
        KiCadReader reader("(a" + quote + QByteArray(length, 'x') + quote + "))");
        QCOMPARE(reader.read(), KiCadSyntaxError);
        QCOMPARE(reader.getErrorColumn(), 2 + length + 2 * quote.size() + 2);
        QCOMPARE(reader.getRoot()->name.size() + reader.getRoot()->value.size(), 1 + length);
    }

    void quoteThatNeverCloses()
    {
        KiCadReader reader("(a (b \"" + QByteArray("x)\n").repeated(33'000'000));
        QCOMPARE(reader.read(), KiCadNoError);
        QVERIFY(!reader.isComplete());
        QVERIFY(reader.getRoot()->children.isEmpty());
    }

    void tenMillionOpenTokens()
    {
        constexpr int depth = 10'000'000;
        const QByteArray input = QByteArray("(n").repeated(depth) + ')';
        const auto tree = read(input);
        QVERIFY(tree == read(input));
        QVERIFY(tree != read(input + ")(m)"));
        const auto copy = QSharedPointer<KiCadToken>::create(*tree);
        QVERIFY(copy == tree);
        const QScopedArrayPointer<char> text(toString(tree));
        // All but the innermost have a child.
        QCOMPARE(std::strlen(text.data()),
                 (depth - 1) * std::strlen("KiCadToken('n', '', [])") + std::strlen("KiCadToken('n', '')"));
    }

    void tenMillionTokensSideBySide()
    {
        const auto tree = read("(a" + QByteArray("(b)").repeated(10'000'000) + ')');
        QCOMPARE(tree->children.size(), 10'000'000);
        QVERIFY(tree->find(u"/a/b[c='d']"_s).isNull());
    }

    void millionNodesOnANet()
    {
        constexpr int components = 100'000;
        const auto nodes = repeated(components, [](int i) {
            return repeated(10, [i](int number) { return node('K' + ::number(i), ::number(number)); });
        });
        const auto relays = repeated(components, [](int i) { return component('K' + number(i), "Relay"); });
        auto provider = joined({netlist(relays + component("U1", "Source"), pins(11),
                                        net("A", node("U1", "0") + nodes) + net("B", node("U1", "1")))});
        QCOMPARE(provider.getNets().first()->nodes.size(), 10 * components + 1);
        QCOMPARE(routeCount(provider, u"0"_s, u"0"_s), 1);
        QCOMPARE(routeCount(provider, u"0"_s, u"1"_s), 0);
    }

    void componentOf100000Pins()
    {
        constexpr int count = 100'000;
        const auto board = netlist(component("U1", "Source"), pins(count), netOfEachPin("U1", count));
        auto provider = joined({board, board});
        QCOMPARE(provider.getNets().size(), 2 * count);
        QCOMPARE(routeCount(provider, u"99999"_s, u"99999"_s), 1);
        QCOMPARE(routeCount(provider, u"99999"_s, u"0"_s), 0);
        QCOMPARE(linesOfNetList(board), 1 + count);
    }

    // Most of these 400 million pins lie on no net.
    void componentsOfVeryManyPins()
    {
        const QByteArray relays = repeated(20000, [](int i) { return component("K" + number(i), "Relay"); });
        auto system = joined(
            {netlist(component("U1", "Source") + component("D1", "DUT") + relays, pins(20000),
                     net("A", node("U1", "1") + node("K7", "1")) + net("B", node("K7", "19999") + node("D1", "0")))});
        const auto paths =
            Routing(&system).findPaths({{u"CompType"_s, u"Source"_s}}, u"1"_s, {{u"CompType"_s, u"DUT"_s}}, u"0"_s);
        QCOMPARE(paths.size(), 1);
        QCOMPARE(paths.first().switchingComponents.first()->ref, u"K7#1"_s);
    }

    void millionNetsOverAConnector()
    {
        constexpr int count = 500'000;
        const auto board = netlist(component("X1", "Connector"), pins(count), netOfEachPin("X1", count));
        const auto provider = joined({board, board});
        QCOMPARE(provider.getNets().size(), count);
        QCOMPARE(provider.getNets().first()->name, u"N0#1+N0#2"_s);
    }

    // The name of the joined net is made of all names.
    void millionNetsOnAConnectorPin()
    {
        constexpr int nets = 1'000'000;
        const auto board = netlist(component("X1", "Connector"), pin("1"),
                                   repeated(nets, [](int i) { return net('N' + number(i), node("X1", "1")); }) +
                                       repeated(1000, [](int i) { return net('O' + number(i), QByteArray()); }));
        const auto provider = joined({board});
        QCOMPARE(provider.getNets().size(), 1001);
        QCOMPARE(provider.getNets().last()->nodes.size(), nets);
        QCOMPARE(provider.getNets().last()->name.count(u'+'), nets - 1);
        QCOMPARE(linesOfNetList(board), 1002);
    }

    void namesOfAMegabyte()
    {
        const QByteArray name(1'000'000, 'n');
        const auto board =
            netlist(repeated(20, [&](int i) { return component(name + number(i), name); }), pin(name),
                    repeated(20, [&](int i) { return net(name + number(i), node(name + number(i), name)); }));
        const auto provider = joined({board, board});
        QCOMPARE(provider.getNets().size(), 40);
        QVERIFY(provider.getComponentByProperties({{u"CompType"_s, QString::fromLatin1(name)}}));
        QCOMPARE(linesOfNetList(board), 21);
    }

    // The file is written to the end; a temporary one would be left behind otherwise.
    void interruptedWhileWriting()
    {
        const QTemporaryDir folder;
        const QString board = folder.filePath(u"board.net"_s);
        write(board, netlist(component("K1", "Relay"), pin("1"), net("A", node("K1", "1").repeated(500'000))));
        const QString output = folder.filePath(u"out.json"_s);
        QProcess process;
        process.start(QStringLiteral(VELK_COMMAND),
                      {u"list"_s, u"nets"_s, u"--format"_s, u"json"_s, u"-o"_s, output, board});
        const auto fileCount = [&folder] { return QDir(folder.path()).entryList(QDir::Files).size(); };
        while (fileCount() == 1 && !process.waitForFinished(0)) {
        }
        process.terminate();
        process.waitForFinished(-1);
        QCOMPARE(process.exitStatus(), QProcess::CrashExit); // in time
        QFile file(output);
        QCOMPARE(fileCount(), file.exists() ? 2 : 1);
        QVERIFY(!file.exists() || (file.open(QIODevice::ReadOnly) && file.readAll().endsWith("}\n")));
    }

    // There are 800 million ways from pin to pin.
    void routesThroughVeryManyPins()
    {
        constexpr int count = 40'000;
        const auto nodes = [](int from, int to) {
            return repeated(to - from, [from](int i) { return node("K1", number(from + i)); });
        };
        const auto board = netlist(
            component("U1", "Source") + component("K1", "Relay") + component("D1", "DUT"), pins(count),
            net("A", node("U1", "0") + nodes(0, count / 2)) + net("B", nodes(count / 2, count) + node("D1", "0")));
        const QStringList query{u"routes"_s, u"--source-ref"_s, u"U1"_s, u"--source-pin"_s, u"0"_s,  u"--dut-ref"_s,
                                u"D1"_s,     u"--dut-pin"_s,    u"0"_s,  u"--max-routes"_s, u"10"_s, u"--format"_s};
        QVERIFY(outputOf(query + QStringList{u"html"_s}, board).endsWith("</html>\n"));
        QVERIFY(outputOf(query + QStringList{u"dot"_s}, board).endsWith("}\n"));
    }

    // A table of them all has two billion cells.
    void propertiesThatNoOtherComponentHas()
    {
        constexpr int components = 20'000;
        const auto list = repeated(components, [](int i) {
            return component("K" + number(i), "Relay",
                             repeated(5, [i](int n) { return NetlistText::property("P" + number(5 * i + n), "x"); }));
        });
        const auto board = netlist(list, pin("1"), {});
        QCOMPARE(outputOf({u"list"_s, u"components"_s}, board).count('\n'), 1 + components);
    }

    void everythingManyTimes()
    {
        constexpr int count = 200'000;
        const auto many = [](const QByteArray &text) { return text.repeated(count); };
        const auto provider = joined({netlist(many(component("K1", "Relay")), many(pin("1")),
                                              many(net("N", node("K1", "1"))) + net("N", many(node("K1", "1"))))});
        QCOMPARE(provider.getComponents().size(), 1);
        QCOMPARE(provider.getNets().size(), 1);
        QCOMPARE(provider.getNets().first()->nodes.size(), count);
    }
};

VELK_TEST(StressTest)

#include "StressTest.moc"
