#include "tests/support/TestRegistry.h"

#include <velk/ini/EDAApplicationIniGenerator.h>
#include <velk/ini/EDAPhysicalIniGenerator.h>
#include <velk/kicad/KiCadNetParser.h>
#include <velk/kicad/KiCadReader.h>

#include <QFile>
#include <QProcess>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace {

KiCadNetParser demoBoard(const QString &name)
{
    QFile file(QStringLiteral(VELK_SOURCE_DIR "/examples/demo/%1.net").arg(name));
    KiCadReader reader(&file);
    if (reader.read() != KiCadNoError)
        qFatal("cannot read the demo system");
    KiCadNetParser parser(reader.getRoot());
    parser.parse();
    return parser;
}

/// Entries as "section/key=value", sorted.
QStringList readByQt(const QString &fileName)
{
    const QSettings settings(fileName, QSettings::IniFormat);
    QStringList entries;
    for (const QString &key : settings.allKeys()) // a value with a comma is a list for Qt
        entries.append(u"%1=%2"_s.arg(key, settings.value(key).toStringList().join(u", "_s)));
    entries.sort();
    return entries;
}

QStringList readByPython(const QString &fileName)
{
    QProcess python;
    python.start(u"python3"_s, {QStringLiteral(VELK_SOURCE_DIR "/tests/ini/read_ini.py"), fileName});
    if (!python.waitForFinished() || python.exitCode() != 0)
        return {u"python3: "_s + python.errorString() + QString::fromUtf8(python.readAllStandardError())};
    auto entries = QString::fromUtf8(python.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts);
    entries.sort();
    return entries;
}
}

/// What the generators write of the demo system, read by two programs that are not ours.
class ReadBackTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void physical()
    {
        const QString fileName = folder.filePath(u"physical.ini"_s);
        QFile file(fileName);
        KiCadNetParser instruments = demoBoard(u"instruments"_s);
        EDAPhysicalIniGenerator(&instruments).generate(&file);

        QStringList expected;
        for (const auto &component : instruments.getComponents()) {
            if (component->type() != u"Source"_s)
                continue;
            for (auto it = component->properties.cbegin(); it != component->properties.cend(); ++it)
                expected.append(u"device->%1/%2=%3"_s.arg(component->ref, it.key(), it.value()));
        }
        expected.sort();
        QVERIFY(expected.contains(u"device->U1/Note=4-wire, guard open"_s));
        QCOMPARE(readByQt(fileName), expected);
        QCOMPARE(readByPython(fileName), expected);
    }

    void application()
    {
        const QString fileName = folder.filePath(u"application.ini"_s);
        QFile file(fileName);
        KiCadNetParser instruments = demoBoard(u"instruments"_s);
        KiCadNetParser adapter = demoBoard(u"adapter"_s);
        EDAApplicationIniGenerator(&instruments, &adapter).generate(&file, u"instruments.net"_s, u"adapter.net"_s);

        const QStringList entries = readByQt(fileName);
        QCOMPARE(readByPython(fileName), entries);
        QCOMPARE(entries.size(), 2 + 2 + 2 * (1 + 60));
        for (const char *entry :
             {"ResourceManager/TestSystemEdaNet=instruments.net", "LogicalNames/DUT2=bench->DUT2",
              "bench->DUT/AppChannelTable=io_channel->ROUTE1", "io_channel->ROUTE1/ECU.VCC=DUT1!VCC",
              "io_channel->ROUTE2/ECU.VCC=DUT2!VCC", "io_channel->ROUTE1/SMU-No1.FORCE_HI=U1!FORCE_HI",
              "io_channel->ROUTE2/FGEN-No1-Ch2.OUT=U4!OUT", "io_channel->ROUTE1/PSU-No1.S+=U5!S+",
              "io_channel->ROUTE1/FGEN[2].OUT=FGEN!OUT", "io_channel->ROUTE2/SMU[2].GUARD=SMU!GUARD"})
            QVERIFY2(entries.contains(QLatin1String(entry)), entry);
    }

private:
    QTemporaryDir folder;
};

VELK_TEST(ReadBackTest)

#include "ReadBackTest.moc"
