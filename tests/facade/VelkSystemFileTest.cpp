#include "tests/support/Boards.h"
#include "tests/support/TestRegistry.h"
#include "tests/support/TextTable.h"

#include <velk/facade/VelkSystemFile.h>

#include <QDir>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace {

using Texts = std::vector<std::string>;

/// All members but the names of files.
auto settingsOf(const VelkSystemFile &file)
{
    const VelkSystemOptions &options = file.options;
    return std::tuple(options.connectorTypes, options.switchableTypes, options.interfaceTypes, options.dutTypes,
                      options.deviceTypes, options.readingMode, options.passiveTypes, file.limits.maxSwitches,
                      file.limits.maxConnections, file.limits.maxRoutes, file.excludedComponents, file.excludedNets,
                      file.ignoredFindings);
}
}

class VelkSystemFileTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void refuses_data() { addCasesFrom("system_files.txt"); }
    void refuses()
    {
        QFETCH(QString, input);
        QFETCH(QString, expected);
        const QString message = refusal(input.toUtf8());
        const QString beginning = expected.section(u"..."_s, 0, 0);
        QVERIFY2(message == expected || (beginning != expected && message.startsWith(beginning)), qPrintable(message));
    }

    void refusesWhatIsNoText_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("beginning");
        QTest::newRow("not UTF-8") << QByteArray("netlists = [\"caf\xe9.net\"]") << u":1:16: "_s;
        QTest::newRow("UTF-16") << QByteArray("\xff\xfen\0", 4) << u":1:1: "_s;
        QTest::newRow("control character") << QByteArray("a = \1") << u":1:5: "_s;
        QTest::newRow("cut off") << QByteArray("\nnetlists = [\"a.net\",") << u":2:21: "_s;
        QTest::newRow("nested lists") << "a = " + QByteArray(1'000'000, '[') << u":1:9: "_s;
        QTest::newRow("keys nested over lines")
            << "a = " + ("[\n{" + QByteArray("a.").repeated(1000) + "a = ").repeated(126) << u":3:2006: "_s;
        QTest::newRow("nested keys") << QByteArray("\n") + QByteArray("a.").repeated(1'000'000)
                                     << u":2:1: more than 1000 dots in a line; give each text a line of its own"_s;
        QTest::newRow("too long") << QByteArray((16 << 20) + 1, '\n')
                                  << u": has more than 16 MiB, so that it can be no system file"_s;
    }
    void refusesWhatIsNoText()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, beginning);
        const QString message = refusal(bytes);
        QVERIFY2(message.startsWith(beginning), qPrintable(message));
    }

    void refusesWhatCannotBeRead()
    {
        for (const QString &name : {folder.path(), folder.filePath(u"none.toml"_s)}) {
            const QString message = messageOf(name);
            QVERIFY2(message.startsWith(name + u": cannot be read: "_s), qPrintable(message));
        }
    }

    void readsEveryKey()
    {
        const VelkSystemFile file =
            readFile("\xef\xbb\xbfnetlists = [\"a.net\", \"sub/b.net\", \"/c.net\", \"-\"]\r\n"
                     "connector = [\"A\"]\r\nswitchable = [\"B\", \"C\"]\ninterface = []\ndut-type = [\"D\"]\n"
                     "device-type = [\"E\"]\npassive = ['\"']\nrelays = [\"r.csv\"]\ntolerant = true\n"
                     "max-switches = -1\nmax-connections = 0x10\nmax-routes = 2_147_483_646\n"
                     "without = [\"K1#1\", \"Bench=2\"]\nwithout-net = [\"GND\"]\n"
                     "ignore = [\"no-type\", \"pin-alone-on-net:K7\"]\n");
        const std::string path = folder.path().toStdString();
        QCOMPARE(file.fileNames, (Texts{path + "/a.net", path + "/sub/b.net", "/c.net", path + "/-"}));
        QCOMPARE(file.options.relayTables, Texts{path + "/r.csv"});
        QVERIFY(settingsOf(file) == std::tuple(Texts{"A"}, Texts{"B", "C"}, Texts(), Texts{"D"}, Texts{"E"},
                                               VelkReadingMode::Tolerant, Texts{"\""}, -1, 16, std::size_t(2147483646),
                                               Texts{"K1#1", "Bench=2"}, Texts{"GND"},
                                               Texts{"no-type", "pin-alone-on-net:K7"}));
    }

    void readsLongLists()
    {
        const auto names = readFile("netlists = [\n" + QByteArray("\"../a.net\",\n").repeated(2000) + "]").fileNames;
        QCOMPARE(names.size(), std::size_t(2000));
        QCOMPARE(names.back(), folder.path().toStdString() + "/../a.net");
    }

    void leavesTheRestAsItIsByDefault()
    {
        QVERIFY(settingsOf(readFile("netlists = [\"a.net\"]\ntolerant = false")) == settingsOf(VelkSystemFile()));
    }

    void namesFilesOfTheCurrentFolder()
    {
        write(folder.filePath(u"velk.toml"_s), u"netlists = [\"a.net\", \"../b.net\", \"-\"]"_s);
        const QString before = QDir::currentPath();
        QVERIFY(QDir::setCurrent(folder.path()));
        const auto names = VelkSystemFile::read("velk.toml").fileNames;
        QVERIFY(QDir::setCurrent(before));
        QCOMPARE(names, (Texts{"a.net", "../b.net", "./-"}));
    }

    void writesWhatIsNotByDefault()
    {
        VelkSystemFile file;
        file.fileNames = {folder.filePath(u"a.net"_s).toStdString(), folder.filePath(u"../\"b\".net"_s).toStdString()};
        file.options.passiveTypes = {"Resistor", "Fuse\n"};
        const QString text = QString::fromStdString(file.toToml(folder.path().toStdString()));
        QVERIFY2(text.contains(u".\nnetlists = [\n    \"a.net\",\n    \"../\\\"b\\\".net\",\n]\n\n# "_s),
                 qPrintable(text));
        QVERIFY2(text.contains(u"\npassive = [\"Resistor\", \"Fuse\\u000a\"]\n"_s), qPrintable(text));
        QVERIFY2(text.contains(u"\n# connector = [\"Connector\"]\n"_s), qPrintable(text));
        QVERIFY2(text.contains(u"\n# tolerant = false\n"_s), qPrintable(text));
        QCOMPARE(text.count(u"\n# "_s) + text.startsWith(u"# "_s), 15 + 13); // a purpose each, and what is by default
    }

    void namesFilesByTheirWholeNamesForAFolderThatIsNotThere()
    {
        VelkSystemFile file;
        file.fileNames = {"/a.net"};
        const std::string text = file.toToml(folder.filePath(u"none"_s).toStdString());
        QVERIFY2(text.find("netlists = [\"/a.net\"]") != std::string::npos, text.c_str());
    }

    // What a link leads to has another parent than the link.
    void namesFilesBesideALink()
    {
        QVERIFY(QDir(folder.path()).mkpath(u"far/away"_s));
        QVERIFY(QFile::link(folder.filePath(u"far/away"_s), folder.filePath(u"link"_s)));
        VelkSystemFile file;
        file.fileNames = {folder.filePath(u"a.net"_s).toStdString()};
        const std::string text = file.toToml(folder.filePath(u"link"_s).toStdString());
        QVERIFY2(text.find("netlists = [\"../../a.net\"]") != std::string::npos, text.c_str());
    }

    void readsWhatItWrites()
    {
        for (quint32 seed = 0; seed < 300; ++seed) {
            QRandomGenerator random(seed);
            const VelkSystemFile file = randomFile(random);
            const VelkSystemFile again = readFile(QByteArray::fromStdString(file.toToml(folder.path().toStdString())));
            QVERIFY2(settingsOf(again) == settingsOf(file) && again.fileNames == file.fileNames &&
                         again.options.relayTables == file.options.relayTables,
                     qPrintable(u"seed %1"_s.arg(seed)));
        }
    }

private:
    VelkSystemFile readFile(const QByteArray &bytes)
    {
        const QString name = folder.filePath(u"velk.toml"_s);
        write(name, bytes);
        return VelkSystemFile::read(name.toStdString());
    }

    /// Behind the name of the file.
    QString refusal(const QByteArray &bytes)
    {
        const QString name = folder.filePath(u"velk.toml"_s);
        write(name, bytes);
        return messageOf(name).mid(name.size());
    }

    static QString messageOf(const QString &name)
    try {
        VelkSystemFile::read(name.toStdString());
        return u"nothing is thrown"_s;
    } catch (const VelkSystemException &exception) {
        return exception.kind() == VelkSystemException::Kind::Reading ? QString::fromStdString(exception.message())
                                                                      : u"another kind"_s;
    }

    static std::string randomText(QRandomGenerator &random)
    {
        static const QStringList pieces{u"a"_s, u"B"_s,    u"\""_s, u"'"_s, u"\\"_s, u"\n"_s,    u"\t"_s,
                                        u"#"_s, u"\x7f"_s, u"ä"_s,  u"😀"_s, u" "_s,  u"u0041"_s, u"="_s};
        QString text = u"t"_s;
        for (int i = random.bounded(6); i > 0; --i)
            text += pieces.at(random.bounded(int(pieces.size())));
        return text.toStdString();
    }

    static Texts randomTexts(QRandomGenerator &random, const QString &beginning = {}, int least = 0)
    {
        Texts texts;
        for (int i = random.bounded(least, 4); i > 0; --i)
            texts.push_back(beginning.toStdString() + randomText(random));
        return texts;
    }

    VelkSystemFile randomFile(QRandomGenerator &random) const
    {
        VelkSystemFile file;
        file.fileNames = randomTexts(random, folder.path() + u'/', 1);
        file.options.relayTables = randomTexts(random, folder.path() + u'/');
        for (auto *types : {&file.options.connectorTypes, &file.options.switchableTypes, &file.options.interfaceTypes,
                            &file.options.dutTypes, &file.options.deviceTypes, &file.options.passiveTypes,
                            &file.excludedComponents, &file.excludedNets}) {
            if (random.bounded(2) == 0)
                *types = randomTexts(random);
        }
        file.ignoredFindings = randomTexts(random, u"no-type:"_s);
        file.options.readingMode = random.bounded(2) == 0 ? VelkReadingMode::Default : VelkReadingMode::Tolerant;
        file.limits.maxSwitches = int(random.generate());
        file.limits.maxConnections = random.bounded(3) + 2;
        file.limits.maxRoutes = random.bounded(2147483647u);
        return file;
    }

    QTemporaryDir folder;
};

VELK_TEST(VelkSystemFileTest)

#include "VelkSystemFileTest.moc"
