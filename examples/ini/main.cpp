// Writes physical.ini and application.ini for a test system and an application of one netlist each.
//
//     ini-example instruments.net adapter.net

#include <velk/ini/EDAApplicationIniGenerator.h>
#include <velk/ini/EDAPhysicalIniGenerator.h>
#include <velk/kicad/KiCadNetlistFile.h>
#include <velk/model/EDAException.h>

#include <QFile>
#include <QSaveFile>
#include <QTextStream>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

std::shared_ptr<Velk::KiCadNetParser> load(const QString &fileName)
{
    const Velk::KiCadNetlistFile file(fileName, Velk::KiCadReadingMode::Tolerant);
    for (const QString &warning : file.warnings())
        QTextStream(stderr) << fileName << ": " << warning << '\n';
    if (!file.refusal().isEmpty())
        throw Velk::EDAException(u"%1: %2"_s.arg(fileName, file.refusal()));
    return file.netlist();
}

bool writeFiles(const QString &testSystemFile, const QString &applicationFile)
{
    const auto testSystem = load(testSystemFile);
    const auto application = load(applicationFile);

    QSaveFile physicalIni(u"physical.ini"_s);
    physicalIni.open(QIODevice::WriteOnly);
    Velk::EDAPhysicalIniGenerator(testSystem.get()).generate(&physicalIni);

    QSaveFile applicationIni(u"application.ini"_s);
    applicationIni.open(QIODevice::WriteOnly);
    Velk::EDAApplicationIniGenerator generator(testSystem.get(), application.get());
    generator.generate(&applicationIni, testSystemFile, applicationFile);

    return physicalIni.commit() && applicationIni.commit();
}
}

int main(int argc, char **argv)
{
    if (argc != 3)
        return 2;
    try {
        return writeFiles(QFile::decodeName(argv[1]), QFile::decodeName(argv[2])) ? 0 : 2;
    } catch (const Velk::EDAException &exception) {
        QTextStream(stderr) << exception.message() << '\n';
        return 2;
    }
}
