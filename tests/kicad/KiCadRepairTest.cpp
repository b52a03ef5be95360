#include "tests/support/NetlistText.h"
#include "tests/support/Process.h"
#include "tests/support/StubProvider.h"
#include "tests/support/TestRegistry.h"
#include "tests/support/TextTable.h"

#include <velk/kicad/KiCadNetParser.h>
#include <velk/kicad/KiCadNetlistFile.h>
#include <velk/kicad/KiCadReader.h>
#include <velk/model/EDAException.h>

#include <QBuffer>
#include <QDirIterator>
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

Outcome readTree(const QByteArray &netlist, KiCadReadingMode mode)
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
    const Outcome outcome{modelToText(parser), parser.warnings().join(u"; "_s)};
    if (mode == KiCadReadingMode::Tolerant) { // a second parser finds the tree complete
        KiCadNetParser again(reader.getRoot(), mode);
        again.parse();
        if (modelToText(again) != outcome.model || again.warnings().size() > parser.warnings().size())
            return {{}, u"not complete: "_s + again.warnings().join(u"; "_s)};
    }
    return outcome;
}

// A file as a whole is never made into a tree.
Outcome read(const QByteArray &netlist, KiCadReadingMode mode)
{
    QBuffer buffer;
    buffer.setData(netlist);
    const auto file = KiCadNetlistFile(&buffer, {}, mode).netlist();
    const Outcome outcome = readTree(netlist, mode);
    const bool isSame = file ? modelToText(*file) == outcome.model && file->warnings().join(u"; "_s) == outcome.warnings
                             : outcome.model.isEmpty();
    return isSame ? outcome : Outcome{{}, u"other than without a tree: "_s + outcome.warnings};
}

/// Those of the lines, separated by "; ", that the model lacks.
QStringList linesNotIn(const QString &model, const QString &lines)
{
    QStringList missing = lines.split(u"; "_s, Qt::SkipEmptyParts);
    missing.removeIf([&](const QString &line) { return model.split(u'\n').contains(line); });
    return missing;
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
        QFETCH(QString, lines);
        const Outcome outcome = read(changedNetlist(), KiCadReadingMode::Tolerant);
        QTEST(outcome.warnings, "warnings");
        QCOMPARE(linesNotIn(outcome.model, lines), QStringList());
    }

    void tellsRepetitions_data()
    {
        addRowsFrom("repetitions.txt",
                    {"text", "replacement", "warnings", "lines", "tolerantWarnings", "tolerantLines"});
    }
    void tellsRepetitions()
    {
        QFETCH(QString, lines);
        QFETCH(QString, tolerantLines);
        const Outcome byDefault = read(changedNetlist(), KiCadReadingMode::Default);
        QTEST(byDefault.warnings, "warnings");
        QCOMPARE(linesNotIn(byDefault.model, lines), QStringList());
        const Outcome tolerant = read(changedNetlist(), KiCadReadingMode::Tolerant);
        QTEST(tolerant.warnings, "tolerantWarnings");
        QCOMPARE(linesNotIn(tolerant.model, tolerantLines), QStringList());
    }

    void readsAwkwardExports_data() { addRowsFrom("awkward_exports.txt", {"rejection", "meaning"}); }
    void readsAwkwardExports()
    {
        QFETCH(QString, meaning);
        for (const QString &folder : {u"quirks/"_s, u"quirks/kicad10/"_s}) {
            const QString name = folder + QString::fromUtf8(QTest::currentDataTag());
            const QByteArray netlist = bytesOf(QStringLiteral(VELK_TEST_DATA "/%1.net").arg(name));
            const Outcome outcome = read(netlist, KiCadReadingMode::Tolerant);
            if (name != u"quirks/missing_symbol"_s) // only KiCad 10 exports it
                QVERIFY2(outcome.model.contains(meaning), qPrintable(outcome.model + outcome.warnings));
        }
    }

    void takesNetsOfOneNameForOne()
    {
        QByteArray netlist = textOf("good.net").toUtf8();
        netlist.truncate(netlist.indexOf("(nets"));
        for (quint32 seed = 0; seed < 500; ++seed) {
            QRandomGenerator random(seed);
            QByteArray lists = "(nets ";
            QMap<QString, QList<QStringList>> nodes; // of each net of a name
            QMap<QString, QStringList> last;         // in the first list
            for (int count = random.bounded(8); count > 0; --count) {
                const bool isInFirst = lists.count("(nets") == 1;
                const QString name = u"N%1"_s.arg(random.bounded(3));
                const QStringList ofNet = randomNodes(random);
                nodes[name].append(ofNet);
                if (isInFirst)
                    last[name] = ofNet;
                lists += NetlistText::net(name.toUtf8(), ofNet) + (random.bounded(5) == 0 ? ") (nets " : "");
            }
            QString united;
            for (auto it = nodes.cbegin(); it != nodes.cend(); ++it)
                united += lineOf(it.key(), it->size() == 1 ? it->first() : eachOnce(*it));
            QString replaced;
            for (auto it = last.cbegin(); it != last.cend(); ++it)
                replaced += lineOf(it.key(), *it);
            const QByteArray text = netlist + lists + "))";
            QVERIFY2(read(text, KiCadReadingMode::Tolerant).model.endsWith(u"output\n"_s + united), text.constData());
            QVERIFY2(read(text, KiCadReadingMode::Default).model.endsWith(u"output\n"_s + replaced), text.constData());
        }
    }

    // Where the default takes a netlist, nothing changes.
    void equalsDefaultReading()
    {
        int taken = 0;
        for (const QString &folder : {QStringLiteral(VELK_TEST_DATA), QStringLiteral(VELK_SOURCE_DIR "/examples")}) {
            QDirIterator files(folder, {u"*.net"_s}, QDir::Files, QDirIterator::Subdirectories);
            while (files.hasNext()) {
                const QByteArray netlist = bytesOf(files.next());
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
            if (byDefault.model.isEmpty() || tolerant.warnings.contains(u"taken as one"_s))
                continue;
            QVERIFY2(tolerant.model == byDefault.model,
                     qPrintable(u"seed %1:\n%2\n%3\n%4"_s.arg(seed).arg(QString::fromUtf8(netlist), byDefault.model,
                                                                        tolerant.model)));
            ++taken;
        }
        QVERIFY(taken > 500);
    }

private:
    /// The good netlist with the change of the current row.
    static QByteArray changedNetlist()
    {
        QFETCH(QString, text);
        QFETCH(QString, replacement);
        QString netlist = textOf("good.net");
        const qsizetype position = netlist.indexOf(text);
        return position < 0 ? QByteArray() : netlist.replace(position, text.size(), replacement).toUtf8();
    }

    static QStringList randomNodes(QRandomGenerator &random)
    {
        const QStringList nodes{u"U1/1"_s, u"K1/1"_s, u"K1/2"_s, u"K2/1"_s, u"K2/2"_s};
        QStringList result;
        for (int count = random.bounded(4); count > 0; --count)
            result.append(nodes.at(random.bounded(nodes.size())));
        return result;
    }

    static QString lineOf(const QString &name, const QStringList &nodes)
    {
        return name + u':' + (nodes.isEmpty() ? QString() : u' ' + nodes.join(u' ')) + u'\n';
    }

    static QStringList eachOnce(const QList<QStringList> &nets)
    {
        QStringList nodes;
        for (const QStringList &net : nets)
            nodes += net;
        nodes.removeDuplicates();
        return nodes;
    }
};

VELK_TEST(KiCadRepairTest)

#include "KiCadRepairTest.moc"
