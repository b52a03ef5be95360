// Prints by which pins of which components the shortest route leads from net to net, from the sense input of the
// multimeter to the supply pin of the DUT on bench 1, which positions its relays take, and what is connected then.
//
//     trace-example instruments.net matrix.net adapter.net

#include <velk/kicad/KiCadNetlistFile.h>
#include <velk/model/EDAException.h>
#include <velk/provider/MultipleEDAProvider.h>
#include <velk/routing/Routing.h>
#include <velk/switching/StateConnections.h>

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
    const Velk::SwitchingModel relays(system);
    Velk::Routing routing(&system);
    routing.setRelayContacts(relays.relayContacts());
    routing.setMaxPaths(1);
    const auto paths = routing.findTracedPaths({{u"Dev"_s, u"DMM"_s}}, u"SENSE_HI"_s,
                                               {{u"CompType"_s, u"DUT"_s}, {u"Bench"_s, u"1"_s}}, u"VCC"_s);
    QTextStream out(stdout);
    Velk::Connectivity state(relays);
    for (const auto &path : paths) {
        for (const auto &step : path.steps) {
            out << step.net->name << ": " << step.component->ref << " from pin " << step.entryPin << " to pin "
                << step.exitPin << ", position " << step.position << '\n';
            const int gang = relays.gangOf(relays.componentOf(step.component->ref));
            if (step.position != Velk::TracedStep::asDrawn)
                state.setPosition(gang, step.position);
        }
        out << path.lastNet->name << '\n';
    }

    for (const auto &pins : Velk::connectionsIn(state).connected) {
        out << "connected:";
        for (const auto &pin : pins)
            out << ' ' << pin.ref << '.' << pin.number;
        out << '\n';
    }
} catch (const Velk::EDAException &exception) {
    QTextStream(stderr) << exception.message() << '\n';
    return 2;
}
