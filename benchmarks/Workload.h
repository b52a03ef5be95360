#ifndef VELK_BENCHMARKS_WORKLOAD_H
#define VELK_BENCHMARKS_WORKLOAD_H

#include "benchmarks/Board.h"

#include <QMap>

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace VelkBenchmarks {

/// What findPaths() is asked.
struct Query
{
    QMap<QString, QString> source;
    QString sourcePin;
    QMap<QString, QString> destination;
    QString destinationPin;
};

/// A test system as boards that are plugged together, and queries on it. The same arguments always make the same one.
struct Workload
{
    std::vector<std::unique_ptr<Board>> boards;
    std::vector<Query> queries; ///< all with routeCount routes
    std::map<std::string, Query> queriesWithoutRoute;
    qsizetype routeCount = 0;
    int maxSwitches = 5; ///< limits to search with
    int maxAdditionalNodes = 3;

    QList<Velk::EDAProvider *> providers() const;
    qsizetype nodeCount() const;
};

/// The properties of the components. Their number weighs on whatever copies or indexes components.
enum class Properties
{
    AsExported, ///< about as many as KiCad writes for a drawn system
    Few,        ///< what selects the component, and its type
};

/// What hangs on the ground net that all boards have in common, which grows with the system.
enum class Ground
{
    Interfaces, ///< a pin of each instrument and of each DUT
    Switches,   ///< besides, a resistor and a relay of each tree
};

/// Multiplexer trees on 8 boards, of about this many nodes in all. The system grows by further trees, instruments and
/// DUTs, each the same, so what surrounds a query does not depend on the size. Each query has 8 routes: 4 of 3 switches
/// and 4 of 5. No route leads over the ground net, which has too many pins of interfaces.
Workload sparseSystem(qsizetype nodes, Properties properties = Properties::AsExported,
                      Ground ground = Ground::Interfaces);

/// Crosspoint matrices on 8 boards, the columns of one being the rows of the next: {10, 12, 8} is a matrix of 10 rows
/// and 12 columns before one of 12 rows and 8 columns. Two source pins lie on the first rows of the first, two DUT pins
/// on the first columns of the last, so a route from one to another may have the remaining two as additional nodes. All
/// this many times over.
Workload crosspointCascade(const std::vector<int> &lines, int copies, int maxSwitches, qsizetype routeCount);

/// Matrices of \a lines rows and columns on 8 boards. An instrument leads to each row over a resistor, a DUT pin lies
/// at each column. Four matrices at a time share a bus, with a relay from each row to a line of it; a line has four
/// monitor inputs, too many for a route to pass it. All this many times over.
Workload crosspointGroups(int lines, int copies, qsizetype routeCount);

/// A matrix of \a lines rows and columns, the pins of an instrument (U1) at its rows, of a DUT (J1) at its columns. All
/// on one board, as the two below.
Workload crosspointMatrix(int lines);

/// So many lines, with a relay from each of them to each pin of an instrument (U1) and of a DUT (J1).
Workload sharedLines(int lines, int pins);

/// The two outer stages of a network: they lead lines in groups, one to each of some smaller networks between them.
struct SwitchStage
{
    int groupSize;
    int middleNetworks;
};

/// A network of two stages for each entry and a matrix in the middle, between the pins of an instrument (U1) and of a
/// DUT (J1). With as many networks in the middle as lines in a group it makes any permutation, but not if each
/// connection is kept where it was put first.
Workload switchedNetwork(int lines, const std::vector<SwitchStage> &stages);

/// The boards of examples/demo, without queries.
Workload demoSystem();

/// The files of the exported system that the tests use too: 2,000 relays in five matrices. Its query has 346 routes.
std::vector<std::string> exportedNetlists();
Workload exportedSystem();
}

#endif
