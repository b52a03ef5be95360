// Tells of a netlist why not to rely on it, or what it holds, and which pin is meant by a reference and a number or
// name.
//
//     load-example matrix.net K1 COM

#include <velk/kicad/KiCadNetlistFile.h>
#include <velk/naming/PinSearch.h>

#include <QFile>
#include <QTextStream>

using namespace Qt::StringLiterals;

int main(int argc, char **argv)
try {
    if (argc != 4)
        return 2;
    const Velk::KiCadNetlistFile file(QFile::decodeName(argv[1]));
    if (!file.refusal().isEmpty())
        throw Velk::EDAException(u"%1: %2"_s.arg(file.fileName(), file.refusal()));
    QTextStream out(stdout);
    out << file.netlist()->getComponents().size() << " components, " << file.warnings().size() << " warnings\n";
    const auto choice = Velk::findPin(*file.netlist(), {{}, QString::fromUtf8(argv[2]), QString::fromUtf8(argv[3])});
    out << "pin " << choice.pin->number << " of " << choice.component->ref << '\n';
} catch (const Velk::EDAException &exception) {
    QTextStream(stderr) << exception.message() << '\n';
    return 2;
}
