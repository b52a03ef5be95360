#include "tests/support/TestRegistry.h"
#include "tests/support/TextTable.h"

#include <velk/kicad/KiCadNetlistFile.h>

#include <QBuffer>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace {

/// Only what there is to tell.
QString outcomeOf(const KiCadNetlistFile &file)
{
    QString text = u"%1 %2"_s.arg(file.fileName()).arg(static_cast<int>(file.error()));
    if (!file.errorText().isEmpty())
        text += u' ' + file.errorText();
    if (file.errorLine() >= 0)
        text += u" at %1:%2"_s.arg(file.errorLine()).arg(file.errorColumn());
    if (file.encodingErrorLine() >= 0)
        text += u" encoding %1:%2"_s.arg(file.encodingErrorLine()).arg(file.encodingErrorColumn());
    return text + (file.isComplete() ? u" complete"_s : QString()) + (file.netlist() ? u" loaded"_s : QString());
}
}

class KiCadNetlistFileTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void tells_data()
    {
        addRowsFrom("netlist_files.txt", {"netlist", "mode", "outcome", "refusal", "warning"}); // the first warning
    }
    void tells()
    {
        QFETCH(QString, netlist);
        QFETCH(QString, mode);
        QFETCH(QString, warning);
        netlist.replace(u"GOOD"_s,
                        u"(export (components (comp (ref \"K1\") (value \"\") (libsource (part \"R\")))) "
                        "(libparts (libpart (part \"R\") (pins (pin (num \"1\") (name \"\") (type \"\")))))"_s);
        QByteArray text = netlist.replace(u'¶', u'\n').toLatin1();
        QBuffer buffer(&text);
        const KiCadNetlistFile file(&buffer, u"a.net"_s,
                                    mode.isEmpty() ? KiCadReadingMode::Default : KiCadReadingMode::Tolerant);
        QTEST(outcomeOf(file), "outcome");
        QTEST(file.refusal(), "refusal");
        QCOMPARE(file.warnings().value(0), warning);
        QCOMPARE(file.repetitions().size(), warning.contains(u"2 times"_s) ? 1 : 0);
    }

    void readsFiles()
    {
        const QString name = QStringLiteral(VELK_TEST_DATA "/two_relays.net");
        KiCadNetlistFile file(u"none.net"_s);
        QCOMPARE(outcomeOf(file), u"none.net 1 cannot be read: No such file or directory"_s);
        file = KiCadNetlistFile(name);
        const auto copy = file;
        file = KiCadNetlistFile(u"none.net"_s);
        QCOMPARE(outcomeOf(copy), name + u" 0 complete loaded"_s);
        QCOMPARE(copy.netlist()->getComponentByRef(u"K1"_s)->value, u"5 V"_s);
    }
};

VELK_TEST(KiCadNetlistFileTest)

#include "KiCadNetlistFileTest.moc"
