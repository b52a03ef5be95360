// Prints the relays that connect the multimeter with an output and both sense pins of the DUT of bench 2 at once, and
// the components that each connection crosses.
//
//     planning-example instruments.net matrix.net adapter.net

#include <velk/kicad/KiCadNetlistFile.h>
#include <velk/model/EDAException.h>
#include <velk/naming/PinSearch.h>
#include <velk/provider/MultipleEDAProvider.h>
#include <velkplanning/ConnectionPlanner.h>
#include <velkplanning/ConnectionWays.h>

#include <QFile>
#include <QTextStream>

using namespace Qt::StringLiterals;

int main(int argc, char **argv)
try {
    QList<Velk::KiCadNetlistFile> files;
    QList<Velk::EDAProvider *> boards;
    for (int i = 1; i < argc; ++i) {
        files.append(Velk::KiCadNetlistFile(QFile::decodeName(argv[i])));
        if (!files.last().refusal().isEmpty())
            throw Velk::EDAException(files.last().refusal());
        boards.append(files.last().netlist().get());
    }
    const Velk::MultipleEDAProvider system(boards, {Velk::MultipleEDAProvider::DEFAULT_CONNECTOR_COMPONENT_TYPE});
    const Velk::ConnectionPlanner planner{Velk::SwitchingModel(system)};

    const QMap<QString, QString> meter{{u"Dev"_s, u"DMM"_s}};
    const QMap<QString, QString> dut{{u"CompType"_s, u"DUT"_s}, {u"Bench"_s, u"2"_s}};
    const auto pinOf = [&](const QMap<QString, QString> &properties, const QString &pin) {
        const auto choice = Velk::findPin(system, {properties, {}, pin});
        const int net = planner.model().netOf(choice.component->ref, choice.pin->number);
        return Velk::InterfacePin{choice.component->ref, choice.pin->number, net};
    };
    Velk::ConnectionRequest request;
    request.connections = {{pinOf(meter, u"HI"_s), pinOf(dut, u"OUT"_s)},
                           {pinOf(meter, u"SENSE_HI"_s), pinOf(dut, u"SENSE+"_s)},
                           {pinOf(meter, u"SENSE_LO"_s), pinOf(dut, u"SENSE-"_s)}};

    QTextStream out(stdout);
    const auto plan = planner.plan(request);
    for (std::size_t gang = 0; gang < plan.positions.size(); ++gang) {
        if (plan.positions[gang] != 0)
            out << planner.model().gang(static_cast<int>(gang)).components.join(u'+') << " to position "
                << plan.positions[gang] << '\n';
    }
    for (const auto &way : Velk::waysOf(planner.model(), request, plan)) {
        out << "way:";
        for (const auto &step : way.steps)
            out << ' ' << planner.model().ref(step.component);
        out << '\n';
    }
} catch (const Velk::EDAException &exception) {
    QTextStream(stderr) << exception.message() << '\n';
    return 2;
}
