#include "tests/support/TestRegistry.h"
#include "tests/support/TextTable.h"

#include <velk/model/EDAException.h>
#include <velk/switching/PositionText.h>
#include <velk/switching/RelayPositions.h>

#include <QTest>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace {

QSharedPointer<EDAPart> partOf(const QString &name, const QString &library, const QString &pins)
{
    const auto part = EDAPart::create(name, library);
    for (const QString &pin : pins.split(u' ', Qt::SkipEmptyParts))
        part->pins.append(EDAPin::create(pin.section(u'=', 0, 0), pin.section(u'=', 1), {}));
    return part;
}

QString toText(const RelayPositions &found)
{
    static const QStringList rules{u"field"_s,    u"table"_s,     u"pin numbers"_s, u"pin names"_s,
                                   u"two pins"_s, u"coil only"_s, u"unknown"_s};
    if (found.error)
        return u"column %1: %2"_s.arg(QString::number(found.error->column), found.error->problem);
    const QString rule = rules.at(static_cast<int>(found.rule));
    return found.positions.isEmpty() ? rule : rule + u": "_s + positionsText(found.positions);
}

RelayPositions positionsBy(const QByteArray &table, const QString &field, const QString &part, const QString &library)
{
    EDAComponent relay;
    relay.ref = u"K7#2"_s;
    relay.part = part;
    if (!field.isEmpty())
        relay.properties.insert(u"Positions"_s, field);
    return positionsOf(relay, partOf(part, library, u"1 2 3"_s), {RelayTable(CsvTable(table, u"relays.csv"_s))});
}
}

class RelayPositionsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void positions_data() { addRowsFrom("relay_positions.txt", {"pins", "field", "expected"}); }
    void positions()
    {
        QFETCH(QString, pins);
        QFETCH(QString, field);
        EDAComponent relay;
        if (!field.isEmpty())
            relay.properties.insert(u"Positions"_s, field.replace(u'_', u"  "_s));
        QTEST(toText(positionsOf(relay, partOf(u"P"_s, {}, pins), {})), "expected");
    }

    void positionsAreWrittenAsTheyAreRead()
    {
        for (const QString &text : {u"/ 1-2"_s, u"1-2 /"_s, u"1-2 C-1 / 1-C C-2"_s, u"off: / CH 1: C-1 / / 1-2"_s})
            QCOMPARE(positionsText(readPositions(text, {u"1"_s, u"2"_s, u"C"_s}).positions), text);
    }

    void unknownPart()
    {
        EDAComponent relay;
        QCOMPARE(toText(positionsOf(relay, nullptr, {})), u"unknown"_s);
        relay.properties.insert(u"Positions"_s, u"/ 1-2"_s);
        QCOMPARE(toText(positionsOf(relay, nullptr, {})), u"column 3: the part has no pin '1'"_s);
    }

    void tables_data()
    {
        QTest::addColumn<QString>("table"); // one row a line
        QTest::addColumn<QString>("part");
        QTest::addColumn<QString>("expected");
        const QString row = u"table: / 1-2"_s;
        QTest::newRow("name in any library") << u"X,/ 1-2"_s << u"Own:X"_s << row;
        QTest::newRow("library and name") << u"Own:X,/ 1-2"_s << u"Own:X"_s << row;
        QTest::newRow("library in the name") << u"Own:X,/ 1-2"_s << u"Own:Own:X"_s << row;
        QTest::newRow("name without the library in it") << u"X,/ 1-2"_s << u"Own:Own:X"_s << row;
        QTest::newRow("no library") << u"Own:X,/ 1-2\n*:X,/ 1-3"_s << u":X"_s << u"unknown"_s;
        QTest::newRow("another library") << u"Own:X,/ 1-2"_s << u"Other:X"_s << u"unknown"_s;
        QTest::newRow("another case") << u"x,/ 1-2"_s << u"Own:X"_s << u"unknown"_s;
        QTest::newRow("any characters") << u"X*Y,/ 1-2"_s << u"Own:X12Y"_s << row;
        QTest::newRow("no characters") << u"X*,/ 1-2"_s << u"Own:X"_s << row;
        QTest::newRow("any characters thrice") << u"*X*1*,/ 1-2"_s << u"Own:2X01"_s << row;
        QTest::newRow("another order") << u"*X*1*2,/ 1-2"_s << u"Own:1X2"_s << u"unknown"_s;
        QTest::newRow("another beginning") << u"X*,/ 1-2"_s << u"Own:1X"_s << u"unknown"_s;
        QTest::newRow("pieces that overlap") << u"X1*1,/ 1-2"_s << u"Own:X1"_s << u"unknown"_s;
        QTest::newRow("the whole name") << u"X,/ 1-2"_s << u"Own:X1"_s << u"unknown"_s;
        QTest::newRow("other signs stand for themselves") << u"X.?[1],/ 1-2"_s << u"Own:X.?[1]"_s << row;
        QTest::newRow("a point is a point") << u"X.1,/ 1-2"_s << u"Own:X11"_s << u"unknown"_s;
        QTest::newRow("library by a pattern") << u"O*:X,/ 1-2"_s << u"Own:X"_s << row;
        QTest::newRow("name of joined netlists") << u"Own:X,/ 1-2"_s << u"Own:X#12"_s << row;
        QTest::newRow("first row") << u"Y,/ 1-3\nX*,/ 1-2\nX,/ 2-3"_s << u"Own:X"_s << row;
        QTest::newRow("commas in quotes") << u"X,\"/ 1-2, 2-3\""_s << u"Own:X"_s << u"table: / 1-2 2-3"_s;
        QTest::newRow("nothing") << u"X,"_s << u"Own:X"_s << u"column 1: expected '/' and another position"_s;
        QTest::newRow("before the built-in table") << u"*,/ 1-2"_s << u"Relay:DIPxx-1Axx-11x"_s << row;
    }
    void tables()
    {
        QFETCH(QString, table);
        QFETCH(QString, part);
        const auto found =
            positionsBy("part,positions\n" + table.toUtf8(), {}, part.section(u':', 1), part.section(u':', 0, 0));
        QTEST(toText(found), "expected");
    }

    void fieldComesBeforeTables()
    {
        QCOMPARE(toText(positionsBy("positions,part\n/ 1-2,X", u"/ 2-3"_s, u"X"_s, {})), u"field: / 2-3"_s);
    }

    void errorsNameTheirPlace()
    {
        const auto ofField = positionsBy("part,positions", u"/ 12"_s, u"X"_s, {});
        QVERIFY(ofField.error);
        QCOMPARE(ofField.error->message(), u"K7#2: field Positions, column 3 of '/ 12': expected PIN-PIN, not '12'"_s);
        const auto ofTable = positionsBy("part,positions\nY,\nX,/ 1-4", {}, u"X"_s, {});
        QVERIFY(ofTable.error);
        QCOMPARE(ofTable.error->message(), u"K7#2: relays.csv:3, column 3 of '/ 1-4': the part has no pin '4'"_s);
    }

    void readsTables_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("expected"); // rows as "line: cell|cell", or the message
        QTest::newRow("plain") << QByteArray("a,b\n1,2\n") << u"a|b; 2: 1|2"_s;
        QTest::newRow("mark, returns, no last line end")
            << QByteArray("\xEF\xBB\xBF a ,b\r\n1, 2 ") << u"a|b; 2: 1| 2 "_s;
        QTest::newRow("quotes") << QByteArray("a,b\n\"1,\"\"2\"\"\",\"3\n4\"\n5,6")
                                << u"a|b; 2: 1,\"2\"|3\n4; 4: 5|6"_s;
        QTest::newRow("empty lines and cells") << QByteArray("\na,b\n\n,\n1\n") << u"a|b; 5: 1|"_s;
        QTest::newRow("old line ends") << QByteArray("a\r1\r2") << u"a; 2: 1; 3: 2"_s;
        QTest::newRow("nothing") << QByteArray("\n")
                                 << u"t.csv: the table is empty; its first line names the columns"_s;
        QTest::newRow("longer row") << QByteArray("a,b\n1,2,3")
                                    << u"t.csv:2: 3 cells below 2 columns; a cell with a comma is put into quotes"_s;
        QTest::newRow("open quote") << QByteArray("a\n\"1\n2") << u"t.csv:2: a quote that does not end"_s;
        QTest::newRow("quote within")
            << QByteArray("a\n1\"\"2")
            << u"t.csv:2: a quote amid a cell; such a cell is put into quotes, and the quote written twice"_s;
        QTest::newRow("after a quote")
            << QByteArray("a\n\"1\" ")
            << u"t.csv:2: expected a comma after a cell in quotes; a quote in a cell is written twice"_s;
        QTest::newRow("other encoding") << QByteArray("a\n\xE4") << u"t.csv: the table is not UTF-8"_s;
    }
    void readsTables()
    {
        QFETCH(QByteArray, text);
        QString read;
        try {
            const CsvTable table(text, u"t.csv"_s);
            read = table.columns().join(u'|');
            for (const CsvTable::Row &row : table.rows())
                read += u"; %1: %2"_s.arg(QString::number(row.line), row.cells.join(u'|'));
        } catch (const EDAException &exception) {
            read = exception.message();
        }
        QTEST(read, "expected");
    }

    void missingColumn()
    {
        try {
            RelayTable(CsvTable("part;positions\n", u"t.csv"_s));
            QFAIL("the table was taken");
        } catch (const EDAException &exception) {
            QCOMPARE(exception.message(), u"t.csv: there is no column 'part', but 'part;positions'"_s);
        }
    }
};

VELK_TEST(RelayPositionsTest)

#include "RelayPositionsTest.moc"
