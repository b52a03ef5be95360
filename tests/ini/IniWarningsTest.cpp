#include "tests/support/Process.h"
#include "tests/support/StubProvider.h"
#include "tests/support/TestRegistry.h"

#include <velk/ini/EDAApplicationIniGenerator.h>
#include <velk/ini/EDAPhysicalIniGenerator.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QRandomGenerator>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace {

/// Mostly a letter, else with what some reader may take for something else.
QString iniText(QRandomGenerator &random)
{
    static const QStringList pieces{
        u"\""_s,     u"'"_s,      u","_s,      u";"_s,      u"\\"_s,  u"%"_s,          u":"_s,    u"="_s,
        u"["_s,      u"]"_s,      u"#"_s,      u"/"_s,      u" "_s,   u"@"_s,          u"\n"_s,   u"\t"_s,
        u"\u00a0"_s, u"\u0085"_s, u"\u2028"_s, u"\ufeff"_s, u"%41"_s, u"@Invalid()"_s, u"b//b"_s, u"b "_s,
        u"ä"_s,      u"Ä"_s,      u"😀"_s,      u"A"_s,      u"-"_s,   u"!"_s,          u"."_s,    QString()};
    if (random.bounded(6) != 0)
        return QChar(u'a' + random.bounded(3));
    QString text;
    for (int i = random.bounded(5); i > 0; --i)
        text += random.bounded(2) == 0 ? u"b"_s : pieces.at(random.bounded(pieces.size()));
    return text;
}

/// Sorted, the entries as "section/key=value".
class Entries
{
public:
    void add(const QString &section, const QString &key, const QString &value)
    {
        texts.append(u"%1/%2=%3"_s.arg(section, key, value));
        lowerCaseTexts.append(u"%1/%2=%3"_s.arg(section, key.toLower(), value));
        texts.sort();
        lowerCaseTexts.sort();
    }

    QStringList texts;
    QStringList lowerCaseTexts; ///< with keys in lower case, as configparser hands them out
};

struct WrittenFile
{
    QString name;
    Entries entries; ///< as they are meant
    QStringList warnings;
};

template <typename Generator, typename... Names>
WrittenFile writtenBy(const Generator &generator, const QString &fileName, const Names &...names)
{
    QFile file(fileName);
    generator.generate(&file, names...);
    return {fileName, {}, generator.warnings(names...)};
}

WrittenFile physicalIniFile(const QString &fileName, QRandomGenerator &random)
{
    StubProvider netlist;
    Entries entries;
    for (int i = random.bounded(1, 3); i > 0; --i) {
        const auto device = netlist.add(u"U%1"_s.arg(i) + iniText(random), u"Source"_s, {});
        for (int count = random.bounded(4); count > 0; --count) {
            const QString key = iniText(random);
            device->properties.insert(key, iniText(random));
            if (random.bounded(8) == 0)
                device->properties.insert(key.toUpper(), iniText(random));
        }
        for (auto it = device->properties.cbegin(); it != device->properties.cend(); ++it)
            entries.add(u"device->"_s + device->ref, it.key(), it.value());
    }
    WrittenFile file = writtenBy(EDAPhysicalIniGenerator(&netlist), fileName);
    file.entries = entries;
    return file;
}

/// Of a text in which nothing had to be escaped.
Entries entriesIn(const QString &ini)
{
    QString section;
    Entries entries;
    for (const QString &line : ini.split(u'\n')) {
        if (line.startsWith(u'['))
            section = line.sliced(1).chopped(1);
        else if (!line.isEmpty() && !line.startsWith(u';'))
            entries.add(section, line.section(u'=', 0, 0), line.section(u'=', 1));
    }
    return entries;
}

WrittenFile applicationIniFile(const QString &fileName, QRandomGenerator &random)
{
    StubProvider netlist;
    for (const QString &type : {u"Source"_s, u"Source"_s, u"Dut"_s}) {
        const auto component = netlist.add(u"X%1"_s.arg(netlist.components.size()) + iniText(random), type,
                                           {u"1="_s + iniText(random), u"2="_s + iniText(random)});
        component->properties.insert(u"Bench"_s, QString::number(random.bounded(1, 3)));
        for (const QString &key : {u"Group"_s, u"Identifier"_s, u"Dev"_s, u"DevNo"_s, u"Channel"_s})
            component->properties.insert(key, iniText(random));
    }
    WrittenFile file = writtenBy(EDAApplicationIniGenerator(&netlist, &netlist), fileName, iniText(random), u"a.net"_s);
    file.entries = entriesIn(read(fileName));
    return file;
}

QStringList readByQt(const QString &fileName)
{
    const QSettings settings(fileName, QSettings::IniFormat);
    QStringList entries;
    for (const QString &key : settings.allKeys()) {
        const QVariant value = settings.value(key); // a value with a comma is a list
        entries.append(u"%1=%2"_s.arg(key, value.typeId() == QMetaType::QString ? value.toString() : u"no text"_s));
    }
    entries.sort();
    return entries;
}

/// Without those for which QSettings reads some as they are: "@x" but not "@@x", "%x" but not "%41", two quotation
/// marks in a name, and "/x" where there is an "x" of the same value.
QStringList sureOf(const QStringList &warnings)
{
    QStringList sure;
    for (const QString &warning : warnings) {
        static const QRegularExpression unsure(
            u": (at sign|percent sign|empty name|quotation mark in the [ks]).* is misread by QSettings$"_s);
        if (!warning.contains(unsure))
            sure.append(warning);
    }
    return sure;
}

bool isPhysical(qint64 seed)
{
    return seed % 2 == 0;
}

bool mention(const QStringList &warnings, const QString &pattern)
{
    return !warnings.filter(QRegularExpression(pattern)).isEmpty();
}
}

class IniWarningsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    // Who is not warned of a file reads all of it as it is meant, and nobody is warned for nothing.
    void agreesWithReaders()
    {
        QTemporaryDir folder;
        QList<WrittenFile> files;
        for (quint32 seed = 0; seed < 3000; ++seed) {
            QRandomGenerator random(seed);
            const QString name = folder.filePath(u"%1.ini"_s.arg(seed, 4, 10, QChar(u'0')));
            files.append(isPhysical(seed) ? physicalIniFile(name, random) : applicationIniFile(name, random));
        }
        const auto python = run(u"python3"_s, {u"tests/ini/read_ini.py"_s, folder.path()});
        QCOMPARE(python.errors, QString());
        const QJsonArray readByPython = QJsonDocument::fromJson(python.output.toUtf8()).array();
        QCOMPARE(readByPython.size(), files.size());

        int silent = 0;
        for (qsizetype seed = 0; seed < files.size(); ++seed) {
            const WrittenFile &file = files.at(seed);
            const QByteArray place =
                u"seed %1\n%2\n%3"_s.arg(QString::number(seed), file.warnings.join(u'\n'), read(file.name)).toUtf8();
            const bool qtReads = readByQt(file.name) == file.entries.texts;
            QStringList byPython = readByPython.at(seed).toVariant().toStringList();
            byPython.sort();
            const bool pythonReads = byPython == file.entries.lowerCaseTexts;
            QVERIFY2(qtReads || mention(file.warnings, u"QSettings|more than once"_s), place);
            QVERIFY2(pythonReads || mention(file.warnings, u"configparser|more than once|in case only"_s), place);

            silent += file.warnings.isEmpty();
            if (!isPhysical(seed)) // what is meant is known there, else taken from what was written
                continue;
            const QStringList sure = sureOf(file.warnings);
            QVERIFY2(!qtReads || !mention(sure, u"by QSettings$|by QSettings and"_s), place);
            QVERIFY2(!pythonReads || !mention(sure, u"by configparser|and configparser|in case only"_s), place);
            QVERIFY2(!qtReads || !pythonReads || sure.isEmpty(), place);
        }
        QVERIFY(silent > 750 && silent < 2250);
    }
};

VELK_TEST(IniWarningsTest)

#include "IniWarningsTest.moc"
