#include "tests/support/Command.h"
#include "tests/support/TestRegistry.h"
#include "tests/support/TextTable.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMap>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTemporaryFile>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

/// The command is $0, the boards are $@.
Result shell(const QString &script, const QStringList &boards)
{
    return run(u"sh"_s, QStringList{u"-c"_s, script, QStringLiteral(VELK_COMMAND)} + boards);
}

/// What a command shows on a terminal that knows colours, where neither end of the output is left out.
QString onTerminal(const QString &commandLine, const QString &noColor = QString())
{
    return run(u"env"_s,
               {u"TERM=xterm"_s, u"NO_COLOR="_s + noColor, u"script"_s, u"-qec"_s, commandLine, u"/dev/null"_s})
        .output.remove(u'\r');
}

/// Nine layers of nine nets between U1 and D1, each with a relay to each net of the next, and from each net of the last
/// one six resistors to D1. A part is made of the pins that the nets name.
QString layeredBoard()
{
    QString components;
    QMap<QString, QString> nets;
    int count = 0;
    const auto add = [&](const QString &type, const QStringList &ends) {
        const QString ref = u"X%1"_s.arg(++count);
        components += u"(comp (ref %1) (libsource (part P%1)) (property (name CompType) (value %2)))"_s.arg(ref, type);
        for (qsizetype pin = 0; pin < ends.size(); ++pin)
            nets[ends.at(pin)] += u"(node (ref %1) (pin %2))"_s.arg(ref).arg(pin + 1);
    };
    add(u"Source"_s, {u"N0.0"_s});
    add(u"DUT"_s, {u"END"_s});
    for (int layer = 0; layer < 9; ++layer) {
        for (int from = 0; from < (layer == 0 ? 1 : 9); ++from) {
            for (int to = 0; to < 9; ++to)
                add(u"Relay"_s, {u"N%1.%2"_s.arg(layer).arg(from), u"N%1.%2"_s.arg(layer + 1).arg(to)});
        }
    }
    for (int i = 0; i < 54; ++i)
        add(u"Resistor"_s, {u"N9.%1"_s.arg(i % 9), u"END"_s});
    QString netTexts;
    for (auto net = nets.cbegin(); net != nets.cend(); ++net)
        netTexts += u"(net (name %1) %2)"_s.arg(net.key(), net.value());
    return u"(export (components %1) (libparts) (nets %2))"_s.arg(components, netTexts);
}

/// A query on the demo system, its text split at blanks.
Result routes(const char *options)
{
    return velk(QStringList{u"routes"_s} + QString::fromLatin1(options).split(u' ') + demo);
}
}

class CommandTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void routesAsText_data() { addRowsFrom("command_routes.txt", {"arguments", "status", "expected", "errors"}); }
    void routesAsText()
    {
        QFETCH(QString, arguments);
        QFETCH(QString, expected);
        const Result result = velk(QStringList{u"routes"_s} + arguments.split(u' ') + demo);
        QFETCH(QString, errors);
        QCOMPARE(result.errors, errors.replace(u'/', u'\n'));
        QTEST(QString::number(result.status), "status");
        QCOMPARE(result.output, expected.replace(u'/', u'\n'));
    }

    void routesAsJson()
    {
        const Result result = routes("--source Dev=FGEN --source Channel=1 --source-pin OUT --dut CompType=DUT "
                                     "--dut Bench=1 --dut-pin AUX --format json");
        const auto json = QJsonDocument::fromJson(result.output.toUtf8())[u"routes"_s].toArray();
        QCOMPARE(json.size(), 22);
        const auto relay = json.at(0)[u"switchingComponents"_s][1].toObject();
        QCOMPARE(relay.keys(), (QStringList{u"part"_s, u"properties"_s, u"ref"_s, u"value"_s}));
        QCOMPARE(relay[u"ref"_s].toString() + u' ' + relay[u"properties"_s][u"CompType"_s].toString(),
                 u"K404#2 Relay"_s);
        QVERIFY(json.at(0)[u"additionalConnections"_s].toArray().isEmpty());
        const auto connection = json.last()[u"additionalConnections"_s][0].toObject();
        QVERIFY(!connection[u"component"_s][u"ref"_s].toString().isEmpty());
        QCOMPARE(connection[u"pin"_s].toObject().keys(), (QStringList{u"name"_s, u"number"_s, u"type"_s}));
    }

    void firstRoutesInOtherForms()
    {
        const auto first = [](const QByteArray &bound, const QByteArray &format) {
            return routes(("--source Dev=DMM --source-pin HI --dut CompType=DUT --dut Bench=2 --dut-pin OUT "
                           "--max-switches 1 --max-routes " +
                           bound + " --format " + format)
                              .constData())
                .output;
        };
        const auto json = QJsonDocument::fromJson(first("1", "json").toUtf8()).object();
        QCOMPARE(json[u"routes"_s].toArray().size(), 1);
        QCOMPARE(json[u"more"_s], QJsonValue(true));
        QCOMPARE(QJsonDocument::fromJson(first("2", "json").toUtf8()).object().keys(), QStringList{u"routes"_s});
        QCOMPARE(first("1", "csv").count(u'\n'), 2);
        QCOMPARE(first("1", "dot").count(u"\"component R3#1\""_s), 0);
        QVERIFY(first("2", "dot").contains(u"\"component R3#1\""_s));
    }

    void routesAsCsvAndDrawing()
    {
        QCOMPARE(routes("--source Dev=DMM --source-pin HI --dut CompType=DUT --dut Bench=2 --dut-pin OUT "
                        "--max-switches 1 --format csv")
                     .output,
                 u"route,switches,source,switching components,dut,additional connections\n"
                 "1,2,U2#1.HI,K1#1 K307#2,J2#3.OUT,\n2,2,U2#1.HI,R3#1 K307#2,J2#3.OUT,\n"_s);
        const QString drawing = routes("--source Dev=FGEN --source Channel=2 --source-pin OUT --dut "
                                       "CompType=DUT --dut Bench=2 --dut-pin IN_P --format dot")
                                    .output;
        QVERIFY(drawing.startsWith(u"graph routes {\n"_s));
        QCOMPARE(drawing.count(u"\"component K503#2\" [label=\"K503#2\""_s), 1);
        QVERIFY(drawing.contains(u"-- \"component K503#2\" [label=\"11\"];"_s));
        QCOMPARE(drawing.count(u"label=\"12\""_s), 0); // the contact that leads elsewhere
    }

    void coloursOnTerminals()
    {
        const QString command = QStringLiteral(VELK_COMMAND " ");
        const QString query = u"routes --source-ref U2 --source-pin HI --dut-ref J1#3 --dut-pin IN_P --max-switches 1 "
                              "--switchable Relay --max-connections 1 --interface Resistor "_s +
                              demo.join(u' ');
        QCOMPARE(onTerminal(command + query),
                 u"1. \x1b[1;32mU2#1.HI\x1b[0m -> \x1b[36mK1#1\x1b[0m -> \x1b[36mK301#2\x1b[0m -> "
                 "\x1b[1;32mJ1#3.IN_P\x1b[0m (2 switches; also connects \x1b[33mR3#1.2\x1b[0m)\n"
                 "1 route: 1 of 2 switches\n"_s);
        QVERIFY(!onTerminal(command + query, u"1"_s).contains(u'\x1b'));
        QVERIFY(!onTerminal(command + query + u" --format csv"_s).contains(u'\x1b'));

        const QString list = u"list components "_s + demo.join(u' ');
        QString shown = onTerminal(command + list);
        QVERIFY(shown.startsWith(u"\x1b[1mREF"_s));
        QCOMPARE(shown.count(u"\x1b[36m"_s), 64);
        static const QRegularExpression codes(u"\x1b\\[[0-9;]*m"_s);
        QCOMPARE(shown.remove(codes), velk(list.split(u' ')).output);

        QVERIFY(onTerminal(command + u"check "_s + demo.first(2).join(u' '))
                    .startsWith(u"\x1b[1midentifier-once\x1b[0m: 1 finding\n  \x1b[36mX2#2\x1b[0m: no other "_s));
    }

    // A file that takes three seconds to come, read with and without a terminal.
    void progressOnTerminals()
    {
        QTemporaryDir folder;
        const Result result =
            shell(u"cd $2; mkfifo a b; (sleep 3; tee a <$1 >b) & $0 list nets b >plain 2>errors & "
                  "TERM=xterm NO_COLOR=1 script -qec \"$0 list nets a\" /dev/null; wait; cat errors >&2"_s,
                  {QStringLiteral(VELK_SOURCE_DIR "/") + demo.at(0), folder.path()});
        QCOMPARE(result.errors, QString());
        QVERIFY2(result.output.startsWith(u"\r\x1b[?7lvelk: reading a ("_s), qPrintable(result.output));
        const QString erased = u"\r\x1b[K"_s;
        QCOMPARE(result.output.section(erased, -1).remove(u'\r'), read(folder.filePath(u"plain"_s)));
    }

    // All ways to the last layer would have to be tried, since the resistors count there as side connections.
    void explanationsEndInTime()
    {
        QTemporaryDir folder;
        const QString board = folder.filePath(u"layers.net"_s);
        write(board, layeredBoard());
        const QString arguments =
            u"routes --tolerant --source CompType=Source --source-pin 1 --dut CompType=DUT --dut-pin 1 "
            "--interface Resistor --max-switches "_s;
        const Result result = velk((arguments + u"3 "_s + board).split(u' '));
        QCOMPARE(result.status, 1);
        QCOMPARE(result.output, u"no route from X1#1.1 to X2#1.1\n"_s);
        QVERIFY2(result.errors.endsWith(
                     u"velk: all routes are beyond the limits; the shortest chain has 10 switches, and it "
                     "would take long to find out which limits would do\n"_s),
                 qPrintable(result.errors));
    }

    void severalPinsOfAName()
    {
        const QString arguments = u"routes --source-ref U1 --source-pin OUT --dut-ref U1 --dut-pin 5 "_s;
        const Result result = velk((arguments + QStringLiteral(VELK_TEST_DATA "/quirks/pins.net")).split(u' '));
        QVERIFY2(result.errors.startsWith(u"velk: --source-pin OUT fits 2 pins of U1#1: 5 was taken, not 6\n"_s),
                 qPrintable(result.errors));
    }

    void trace()
    {
        const Result result = routes("--source Dev=PSU --source-pin S+ --dut-ref J1 --dut-pin SENSE+ --trace");
        QVERIFY(result.errors.startsWith(u"|["_s));
        QVERIFY(result.errors.endsWith(u"]\t(V_S+#3+/PSU1_SP#1+/VSENSE_P#2) found\n"_s));
        QCOMPARE(result.errors.count(u'\n'), 1);
    }

    void lists()
    {
        QCOMPARE(velk(QStringList{u"list"_s, u"types"_s, u"--format"_s, u"csv"_s} + demo).output,
                 u"type,count,switchable,interface,connector\nConnector,4,false,false,true\nDUT,2,false,true,"
                 u"false\n"
                 "Fuse,1,false,false,false\nLoad,2,false,false,false\nRelay,42,true,false,false\n"
                 "Resistor,7,true,false,false\nSource,6,false,true,false\n"_s);
        const auto list = [](const QString &what, const QStringList &options = {}) {
            const auto text = velk(QStringList{u"list"_s, what, u"--format"_s, u"json"_s} + options + demo).output;
            return QJsonDocument::fromJson(text.toUtf8())[what].toArray();
        };
        QCOMPARE(list(u"components"_s).size(), 64);
        QCOMPARE(list(u"components"_s, {u"--where"_s, u"CompType=Source"_s, u"--where"_s, u"Group=SMU"_s}).size(), 2);
        QCOMPARE(list(u"nets"_s).size(), 59);
        QCOMPARE(list(u"nets"_s)[0][u"nodes"_s][0].toObject().keys(), (QStringList{u"pin"_s, u"ref"_s}));
        QVERIFY(list(u"parts"_s)[0][u"pins"_s][0].toObject().contains(u"number"_s));
        QCOMPARE(
            velk(QStringList{u"list"_s, u"components"_s, u"--where"_s, u"Dev=PSU"_s, u"--format"_s, u"csv"_s} + demo)
                .output.section(u'\n', 0, 0)
                .section(u',', 0, 4),
            u"ref,value,part,CompType,Dev"_s);
        QVERIFY(velk(QStringList{u"list"_s, u"nets"_s} + demo)
                    .output.contains(u"  J1#3.SENSE+ X2#3.Pin_21 U5#1.S+ X1#1.Pin_21 X1#2.Pin_21 X2#2.Pin_21\n"_s));
    }

    void filterThatMatchesNothing()
    {
        const Result result = velk(QStringList{u"list"_s, u"components"_s, u"--where"_s, u"Dev=DM"_s} + demo);
        QCOMPARE(result.status, 0);
        QVERIFY(result.output.startsWith(u"REF"_s) && result.output.count(u'\n') == 1);
        QCOMPARE(result.errors, u"velk: warning: --where: no component has Dev=DM; values of Dev: DMM, SMU, PSU, FGEN, "
                                "RELAY_CARD\n"_s);
    }

    void refuses_data() { addRowsFrom("command_failures.txt", {"arguments", "expected"}); }
    void refuses()
    {
        QFETCH(QString, arguments);
        QFETCH(QString, expected);
        arguments.replace(u"QUERY"_s, u"routes --source Dev=PSU --dut Bench=1 --dut-pin SENSE+ --source-pin"_s);
        arguments.replace(u"DEMO"_s, demo.join(u' '));
        const Result result = velk(arguments.split(u' ', Qt::SkipEmptyParts));
        QCOMPARE(result.status, 2);
        QCOMPARE(result.output, QString());
        QVERIFY2(result.errors.startsWith(u"velk: "_s) && result.errors.contains(expected), qPrintable(result.errors));
        QCOMPARE(result.errors.count(u'\n'), 1);
    }

    void writesFiles()
    {
        QTemporaryDir folder;
        const QString name = folder.filePath(u"out.csv"_s);
        const QStringList arguments = QStringList{u"list"_s, u"types"_s, u"--format"_s, u"csv"_s} + demo;
        const Result result = velk(arguments + QStringList{u"-o"_s, name});
        QCOMPARE(result.status, 0);
        QCOMPARE(result.output, QString());
        QCOMPARE(read(name), velk(arguments).output);
    }

    void refusesNetlistsThatWereCutOff()
    {
        const QByteArray netlist =
            read(QStringLiteral(VELK_SOURCE_DIR "/examples/demo/adapter.net")).toUtf8().trimmed();
        for (const qsizetype length : {netlist.size() - 1, netlist.size() - 500, qsizetype(13'250)}) {
            QTemporaryFile file;
            QVERIFY(file.open() && file.write(netlist.left(length)) == length && file.flush());
            const Result result = velk({u"list"_s, u"nets"_s, file.fileName()});
            QCOMPARE(result.status, 2);
            QVERIFY2(result.errors.startsWith(u"velk: "_s + file.fileName()), qPrintable(result.errors));
        }
    }

    void keepsItsInputs()
    {
        QTemporaryDir folder;
        const QString board = folder.filePath(u"a.net"_s);
        const QString link = folder.filePath(u"link"_s);
        QVERIFY(QFile::copy(QStringLiteral(VELK_SOURCE_DIR "/") + demo.at(0), board) && QFile::link(board, link));
        for (const QStringList &arguments : {QStringList{u"list"_s, u"nets"_s, demo.at(1), board, u"-o"_s, link},
                                             {u"routes"_s, u"--source=A=B"_s, u"--source-pin=1"_s, u"--dut=A=B"_s,
                                              u"--dut-pin=1"_s, link, u"-o"_s, board},
                                             {u"ini"_s, u"physical"_s, board, u"-o"_s, board},
                                             {u"ini"_s, u"application"_s, u"--test-system"_s, demo.at(0),
                                              u"--application"_s, board, u"-o"_s, board}}) {
            const Result result = velk(arguments);
            QCOMPARE(result.status, 2);
            QVERIFY2(result.errors.contains(u"it would be overwritten"_s), qPrintable(result.errors));
        }
        QCOMPARE(read(board), read(QStringLiteral(VELK_SOURCE_DIR "/") + demo.at(0)));
    }

    // The command-line parser would take them for lists.
    void namesInBrackets()
    {
        QTemporaryDir folder;
        QVERIFY(QFile::copy(QStringLiteral(VELK_SOURCE_DIR "/") + demo.at(0), folder.filePath(u"[a,b]"_s)));
        const auto inFolder = [&](const QStringList &arguments) {
            return run(QStringLiteral(VELK_COMMAND), arguments, folder.path());
        };
        QCOMPARE(inFolder({u"list"_s, u"nets"_s, u"[a,b]"_s}).output, velk({u"list"_s, u"nets"_s, demo.at(0)}).output);
        QVERIFY(inFolder({u"ini"_s, u"application"_s, u"--test-system"_s, u"[a,b]"_s, u"--application"_s, u"[a,b]"_s})
                    .output.contains(u"TestSystemEdaNet=[a,b]\nApplicationEdaNet=[a,b]\n"_s));
        QCOMPARE(inFolder({u"list"_s, u"[x]"_s, u"[a,b]"_s}).errors,
                 u"velk: WHAT: [x] not in {components,parts,nets,types} (see velk list --help)\n"_s);
    }

    void messagesCannotSteerTheTerminal()
    {
        QTemporaryDir folder;
        const QString board = folder.filePath(u"a.net"_s);
        write(
            board,
            u"(export (components) (libparts) (nets (net (name \"N\") (node (ref \"\x1b[2J\u009b\") (pin \"1\")))))"_s);
        QCOMPARE(
            velk({u"list"_s, u"nets"_s, board}).errors,
            u"velk: %1: No component matching properties 'ref=\\x1B[2J\\x9B' found; try --tolerant, which can read "
            "this file\n"_s.arg(board));
        QCOMPARE(velk({u"list"_s, u"nets"_s, u"no\nfile"_s}).errors,
                 u"velk: no\\x0Afile: cannot be read: No such file or directory\n"_s);
        QVERIFY(velk({u"list"_s, u"\x1b"_s}).errors.startsWith(u"velk: WHAT: \\x1B not in"_s));

        write(board, u"(export (components) (libparts) (nets (net (name \"N\\nM\"))))"_s);
        QVERIFY(velk({u"list"_s, u"nets"_s, u"--tolerant"_s, board}).output.endsWith(u"\nN\\x0AM#1\n"_s));
    }

    void pipesAndFullDisks()
    {
        const QString expected = velk(QStringList{u"list"_s, u"nets"_s} + demo).output;
        QCOMPARE(shell(u"cat $1 | $0 list nets /dev/stdin $2 $3"_s, demo).output, expected);
        const Result closed = shell(u"$0 list nets $@ | :"_s, demo);
        QCOMPARE(closed.errors, QString());
        QCOMPARE(closed.status, 0);
        for (const QString &script : {u"$0 list nets $@ >/dev/full"_s, u"$0 --help >/dev/full"_s}) {
            const Result full = shell(script, demo);
            QCOMPARE(full.status, 2);
            QVERIFY2(full.errors.startsWith(u"velk: standard output: cannot be written"_s), qPrintable(full.errors));
        }
    }

    void iniFiles()
    {
        const QString physical = velk({u"ini"_s, u"physical"_s, demo.at(0)}).output;
        QVERIFY(physical.startsWith(u"[device->U1]\nCompType=Source\nDev=SMU\nDevNo=1\n"_s));
        QCOMPARE(physical.count(u"[device->"_s), 6);
        QVERIFY(velk({u"ini"_s, u"physical"_s, u"--type"_s, u"fuse"_s, demo.at(1), demo.at(0)})
                    .output.startsWith(u"[device->F1#2]\nCompType=Fuse\n"_s));
        const QStringList sides{u"ini"_s, u"application"_s, u"--test-system"_s, demo.at(0), u"--application"_s};
        QVERIFY(velk(sides + QStringList{demo.at(2), demo.at(1)})
                    .output.startsWith(
                        u"[ResourceManager]\nTestSystemEdaNet=%1\nApplicationEdaNet=%2, %3\n\n[LogicalNames]\n"_s.arg(
                            demo.at(0), demo.at(2), demo.at(1))));
        QVERIFY(velk(sides + QStringList{demo.at(2), u"--test-system-name"_s, u"T"_s, u"--application-name"_s, u"A"_s})
                    .output.startsWith(u"[ResourceManager]\nTestSystemEdaNet=T\nApplicationEdaNet=A\n"_s));
    }

    void tolerantReading()
    {
        const Result parts = velk({u"list"_s, u"parts"_s, u"--tolerant"_s, u"tests/data/kicad5.net"_s});
        QCOMPARE(parts.status, 0);
        QCOMPARE(parts.output.count(u'\n'), 4); // with the headings
        QCOMPARE(parts.errors.count(u"velk: warning: tests/data/kicad5.net: /export/components/comp["_s), 2);

        QTemporaryDir folder; // with a long list of warnings
        const QString many = folder.filePath(u"many.net"_s);
        write(many, u"(export (components) (libparts %1) (nets (net (name N) (node (ref R1) (pin 1)))))"_s.arg(
                        u"(libpart (part x))"_s.repeated(30)));
        const QStringList errors = velk({u"list"_s, u"nets"_s, u"--tolerant"_s, many}).errors.split(u'\n');
        QCOMPARE(errors.size(), 13);
        QVERIFY(errors.at(10).endsWith(u"net[N]/node/ref: component 'R1' is not listed, so the node is dropped"_s));
        QCOMPARE(errors.at(11), u"velk: warning: 20 more: missing, so the part has no pins"_s);
    }

    void iniWarnings_data() { addRowsFrom("ini_warnings.txt", {"text", "replacement", "status", "expected"}); }
    void iniWarnings()
    {
        QFETCH(QString, text);
        QFETCH(QString, replacement);
        QFETCH(QString, expected);
        QTemporaryDir folder;
        QStringList boards;
        for (const QString &board : {demo.at(0), demo.at(2)}) {
            boards.append(folder.filePath(board.section(u'/', -1)));
            write(boards.last(), read(QStringLiteral(VELK_SOURCE_DIR "/") + board).replace(text, replacement));
        }
        const QString output = folder.filePath(u"out.ini"_s);
        write(output, u"as it was"_s);
        const Result result = velk({u"ini"_s, u"application"_s, u"--test-system"_s, boards.at(0), u"--application"_s,
                                    boards.at(1), u"-o"_s, output});
        QTEST(QString::number(result.status), "status");
        QCOMPARE(result.errors.isEmpty(), expected.isEmpty());
        QVERIFY2(result.errors.contains(expected), qPrintable(result.errors));
        QCOMPARE(read(output) == u"as it was"_s, result.status != 0);
        QCOMPARE(QDir(folder.path()).entryList(QDir::Files).size(), 3);
    }

    void helpAndVersion()
    {
        for (const QStringList &command : {QStringList(),
                                           {u"routes"_s},
                                           {u"list"_s},
                                           {u"check"_s},
                                           {u"ini"_s},
                                           {u"ini"_s, u"physical"_s},
                                           {u"ini"_s, u"application"_s}}) {
            const Result result = velk(command + QStringList{u"--help"_s});
            QCOMPARE(result.status, 0);
            QCOMPARE(result.errors, QString());
            // The example works as it stands.
            QString example = result.output.section(u"  velk "_s, 1).section(u"\n\n"_s, 0, 0);
            const Result run = velk(example.remove(u'\\').simplified().split(u' '));
            QCOMPARE(run.status, 0);
            QVERIFY(!run.output.isEmpty());
        }
        QVERIFY(velk({u"--version"_s}).output.startsWith(u"velk "_s));
    }
};

VELK_TEST(CommandTest)

#include "CommandTest.moc"
