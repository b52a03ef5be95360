#include "tests/support/StubProvider.h"
#include "tests/support/TestRegistry.h"
#include "tests/support/TextTable.h"

#include <velk/kicad/KiCadNetParser.h>
#include <velk/kicad/KiCadReader.h>
#include <velk/model/EDAException.h>

#include <QDirIterator>
#include <QFile>
#include <QRandomGenerator>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace {

/// A line for each component, part and net: "K1 '5V' Relay [CompType=Relay]", "Relay of Device: 1=A:passive",
/// "/SIG: K1/1 U1/2".
QString modelToText(const EDAProvider &netlist)
{
    QString text;
    for (const auto &component : netlist.getComponents()) {
        text += u"%1 '%2' %3 [%4]\n"_s.arg(component->ref, component->value, component->part,
                                           EDAComponent::propertiesToString(component->properties));
    }
    for (const auto &part : netlist.getParts()) {
        text += u"%1 of %2:"_s.arg(part->name, part->lib);
        for (const auto &pin : std::as_const(part->pins))
            text += u" %1=%2:%3"_s.arg(pin->number, pin->name, pin->type);
        text += u'\n';
    }
    return text + netsToText(netlist.getNets());
}

struct Outcome
{
    QString model;    ///< empty where the netlist is rejected
    QString warnings; ///< or why it is
};

Outcome read(const QByteArray &netlist, KiCadReadingMode mode)
{
    KiCadReader reader(netlist, mode);
    if (reader.read() != KiCadNoError)
        return {{}, kiCadErrorText(KiCadSyntaxError)};
    KiCadNetParser parser(reader.getRoot(), mode);
    try {
        parser.parse();
    } catch (const EDAException &exception) {
        return {{}, exception.message()};
    }
    return {modelToText(parser), parser.warnings().join(u"; "_s)};
}

QByteArray contentOf(const QString &fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Drops or doubles one list of the text, at random.
void changeOneList(QByteArray &text, QRandomGenerator &random)
{
    QList<qsizetype> open;
    QList<std::pair<qsizetype, qsizetype>> lists; ///< start and length
    bool isQuoted = false;
    for (qsizetype i = 0; i < text.size(); ++i) {
        isQuoted ^= text.at(i) == '"';
        if (!isQuoted && text.at(i) == '(')
            open.append(i);
        else if (!isQuoted && text.at(i) == ')')
            lists.append({open.last(), i + 1 - open.takeLast()});
    }
    const auto [start, length] = lists.at(random.bounded(lists.size() - 1)); // the last one is all of it
    if (random.bounded(2) == 0)
        text.remove(start, length);
    else
        text.insert(start, text.mid(start, length));
}
}

class KiCadRepairTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void repairs_data() { addRowsFrom("tolerant_repairs.txt", {"text", "replacement", "warnings", "lines"}); }
    void repairs()
    {
        QFETCH(QString, text);
        QFETCH(QString, replacement);
        QFETCH(QString, lines);
        QByteArray netlist = textOf("good.net").toUtf8();
        QVERIFY(netlist.contains(text.toUtf8()));
        netlist.replace(netlist.indexOf(text.toUtf8()), text.size(), replacement.toUtf8());
        const Outcome outcome = read(netlist, KiCadReadingMode::Tolerant);
        QTEST(outcome.warnings, "warnings");
        for (const QString &line : lines.split(u"; "_s, Qt::SkipEmptyParts))
            QVERIFY2(outcome.model.split(u'\n').contains(line), qPrintable(line + u" in\n"_s + outcome.model));
    }

    void readsKiCad5()
    {
        const Outcome outcome =
            read(contentOf(QStringLiteral(VELK_TEST_DATA "/kicad5.net")), KiCadReadingMode::Tolerant);
        QCOMPARE(outcome.model, u"K1 'G6K-2F-Y' G6K-2 [CompType=Relay,Note=0.1\" pitch]\n"
                                "R1 '10k' R [Bench=2,CompType=Resistor]\n"
                                "U1 '~' SMU []\n"
                                "G6K-2 of Relay: 3=:passive 4=NO#:passive\n"
                                "R of Device: 1=:passive 2=:passive\n"
                                "SMU of instruments-rescue: HI=:\n"
                                "/OUT: R1/1 K1/4\n"
                                "GND: R1/2\n"
                                "Net-(K1-Pad3): U1/HI K1/3\n"_s);
        QCOMPARE(outcome.warnings,
                 u"/export/components/comp[R1]/libsource/part: 'R_Small' is an alias of 'R'; "
                 "/export/components/comp[U1]/libsource/part: 'SMU' is not listed, so it is taken as a part with the "
                 "pins that the nets name"_s);
    }

    void readsAwkwardExports_data() { addRowsFrom("awkward_exports.txt", {"rejection", "meaning"}); }
    void readsAwkwardExports()
    {
        QFETCH(QString, meaning);
        for (const QString &folder : {u"quirks/"_s, u"quirks/kicad10/"_s}) {
            const QString name = folder + QString::fromUtf8(QTest::currentDataTag());
            const QByteArray netlist = contentOf(QStringLiteral(VELK_TEST_DATA "/%1.net").arg(name));
            const Outcome outcome = read(netlist, KiCadReadingMode::Tolerant);
            if (name != u"quirks/missing_symbol"_s) // only KiCad 10 exports it
                QVERIFY2(outcome.model.contains(meaning), qPrintable(outcome.model + outcome.warnings));
        }
    }

    // Where the default takes a netlist, nothing changes.
    void equalsDefaultReading()
    {
        int taken = 0;
        for (const QString &folder : {QStringLiteral(VELK_TEST_DATA), QStringLiteral(VELK_SOURCE_DIR "/examples")}) {
            QDirIterator files(folder, {u"*.net"_s}, QDir::Files, QDirIterator::Subdirectories);
            while (files.hasNext()) {
                const QByteArray netlist = contentOf(files.next());
                const Outcome byDefault = read(netlist, KiCadReadingMode::Default);
                if (byDefault.model.isEmpty() || netlist.contains('\\'))
                    continue;
                const Outcome tolerant = read(netlist, KiCadReadingMode::Tolerant);
                QVERIFY2(tolerant.model == byDefault.model, qPrintable(files.filePath()));
                QCOMPARE(tolerant.warnings, QString());
                ++taken;
            }
        }
        QVERIFY(taken >= 28);
    }

    void equalsDefaultReadingOfChangedNetlists()
    {
        int taken = 0;
        for (quint32 seed = 0; seed < 3000; ++seed) {
            QRandomGenerator random(seed);
            QByteArray netlist = textOf("good.net").toUtf8();
            for (int changes = random.bounded(1, 5); changes > 0; --changes)
                changeOneList(netlist, random);
            const Outcome byDefault = read(netlist, KiCadReadingMode::Default);
            const Outcome tolerant = read(netlist, KiCadReadingMode::Tolerant);
            if (byDefault.model.isEmpty())
                continue;
            QVERIFY2(tolerant.model == byDefault.model,
                     qPrintable(u"seed %1:\n%2\n%3\n%4"_s.arg(seed).arg(QString::fromUtf8(netlist), byDefault.model,
                                                                        tolerant.model)));
            ++taken;
        }
        QVERIFY(taken > 500);
    }
};

VELK_TEST(KiCadRepairTest)

#include "KiCadRepairTest.moc"
