// Prints the routes from the first channel of the function generator to the AUX pin of the DUT on bench 1,
// how many relays of the system lie on none of them, and how many DUT pins the multimeter reaches. Uses the Qt classes,
// which give access to the joined netlist.
//
//     qt-example instruments.net matrix.net adapter.net

#include <velk/coverage/CoverageMatrix.h>
#include <velk/kicad/KiCadNetlistFile.h>
#include <velk/model/EDAException.h>
#include <velk/provider/MultipleEDAProvider.h>
#include <velk/routing/Routing.h>

#include <QFile>
#include <QLoggingCategory>
#include <QSet>
#include <QTextStream>

using namespace Qt::StringLiterals;

namespace {

int printRoutes(const QStringList &fileNames)
{
    QList<Velk::KiCadNetlistFile> files;
    QList<Velk::EDAProvider *> boards;
    for (const QString &fileName : fileNames) {
        const Velk::KiCadNetlistFile file(fileName);
        if (!file.refusal().isEmpty())
            throw Velk::EDAException(u"%1: %2"_s.arg(fileName, file.refusal()));
        files.append(file);
        boards.append(file.netlist().get());
    }
    Velk::MultipleEDAProvider system(boards, {Velk::MultipleEDAProvider::DEFAULT_CONNECTOR_COMPONENT_TYPE});

    const Velk::Routing routing(&system);
    const auto paths = routing.findPaths({{u"Dev"_s, u"FGEN"_s}, {u"Channel"_s, u"1"_s}}, u"OUT"_s,
                                         {{u"CompType"_s, u"DUT"_s}, {u"Bench"_s, u"1"_s}}, u"AUX"_s);

    QTextStream out(stdout);
    QSet<QString> used;
    for (const auto &path : paths) {
        out << "switch on:";
        for (const auto &component : path.switchingComponents) {
            out << ' ' << component->ref;
            used.insert(component->ref);
        }
        out << '\n';
    }
    int unused = 0;
    const auto components = system.getComponents();
    for (const auto &component : components)
        unused += component->type() == u"Relay"_s && !used.contains(component->ref) ? 1 : 0;
    out << unused << " relays are on none of these routes\n";

    const auto sources = Velk::CoverageMatrix::pinsOnNets(system, u"Source"_s, {{u"Dev"_s, u"DMM"_s}});
    const auto duts = Velk::CoverageMatrix::pinsOnNets(system, u"DUT"_s);
    const Velk::CoverageMatrix matrix(routing, sources, duts);
    for (qsizetype i = 0; i < sources.size(); ++i) {
        const auto row = matrix.row(i);
        out << "pin " << sources.at(i).node->pin << " of " << sources.at(i).component->ref << " reaches "
            << row.size() - row.count(Velk::CoverageMatrix::unreached) << " of " << row.size()
            << " DUT pins, critical components: " << matrix.criticalOf(i, row).size() << '\n';
    }
    return paths.isEmpty() ? 1 : 0;
}
}

int main(int argc, char **argv)
{
    // Without this every net that the search visits is logged.
    QLoggingCategory::setFilterRules(u"routing.debug=false"_s);
    QStringList fileNames;
    for (int i = 1; i < argc; ++i)
        fileNames.append(QFile::decodeName(argv[i]));
    try {
        return printRoutes(fileNames);
    } catch (const Velk::EDAException &exception) {
        QTextStream(stderr) << exception.message() << '\n';
        return 2;
    }
}
