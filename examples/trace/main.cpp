// Prints by which pins of which components the shortest route leads from net to net, from the first channel of the
// function generator to the AUX pin of the DUT on bench 1.
//
//     trace-example instruments.net matrix.net adapter.net

#include <velk/kicad/KiCadNetlistFile.h>
#include <velk/model/EDAException.h>
#include <velk/provider/MultipleEDAProvider.h>
#include <velk/routing/Routing.h>

#include <QFile>
#include <QLoggingCategory>
#include <QTextStream>

using namespace Qt::StringLiterals;

int main(int argc, char **argv)
try {
    QLoggingCategory::setFilterRules(u"routing.debug=false"_s); // else every net that the search visits is logged
    QList<Velk::KiCadNetlistFile> files;
    QList<Velk::EDAProvider *> boards;
    for (int i = 1; i < argc; ++i) {
        files.append(Velk::KiCadNetlistFile(QFile::decodeName(argv[i])));
        if (!files.last().refusal().isEmpty())
            throw Velk::EDAException(files.last().refusal());
        boards.append(files.last().netlist().get());
    }
    Velk::MultipleEDAProvider system(boards, {Velk::MultipleEDAProvider::DEFAULT_CONNECTOR_COMPONENT_TYPE});
    Velk::Routing routing(&system);
    routing.setMaxPaths(1);
    const auto paths = routing.findTracedPaths({{u"Dev"_s, u"FGEN"_s}, {u"Channel"_s, u"1"_s}}, u"OUT"_s,
                                               {{u"CompType"_s, u"DUT"_s}, {u"Bench"_s, u"1"_s}}, u"AUX"_s);
    QTextStream out(stdout);
    for (const auto &path : paths) {
        for (const auto &step : path.steps)
            out << step.net->name << ": " << step.component->ref << " from pin " << step.entryPin << " to pin "
                << step.exitPin << '\n';
        out << path.lastNet->name << '\n';
    }
} catch (const Velk::EDAException &exception) {
    QTextStream(stderr) << exception.message() << '\n';
    return 2;
}
