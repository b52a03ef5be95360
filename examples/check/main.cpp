// Prints what in a system is probably not as it is meant, and what to do about it.
//
//     check-example instruments.net matrix.net adapter.net

#include <velk/check/SystemCheck.h>
#include <velk/kicad/KiCadNetlistFile.h>

#include <QFile>
#include <QTextStream>

int main(int argc, char **argv)
{
    QList<Velk::KiCadNetlistFile> files;
    QList<Velk::EDAProvider *> boards;
    for (int i = 1; i < argc; ++i) {
        files.append(Velk::KiCadNetlistFile(QFile::decodeName(argv[i])));
        if (!files.last().refusal().isEmpty())
            return 2;
        boards.append(files.last().netlist().get());
    }
    const Velk::MultipleEDAProvider system(boards, {Velk::MultipleEDAProvider::DEFAULT_CONNECTOR_COMPONENT_TYPE});
    const auto findings = Velk::SystemCheck(system).findings();
    for (const Velk::Finding &finding : findings)
        QTextStream(stdout) << finding.message() << "\n    " << finding.advice() << '\n';
    return findings.isEmpty() ? 0 : 1;
}
