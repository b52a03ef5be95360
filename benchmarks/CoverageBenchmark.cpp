#include "benchmarks/Suite.h"
#include "benchmarks/System.h"

#include <velk/coverage/CoverageMatrix.h>
#include <velk/switching/SwitchingModel.h>

#include <algorithm>
#include <memory>
#include <stdexcept>

namespace VelkBenchmarks {

using namespace Velk;
using namespace Qt::StringLiterals;

namespace {

using Rows = QList<QList<int>>;

Rows rowsOf(const CoverageMatrix &matrix)
{
    Rows rows;
    for (qsizetype source = 0; source < matrix.sources().size(); ++source)
        rows.append(matrix.row(source));
    return rows;
}

QList<QList<CriticalComponent>> criticalOf(const CoverageMatrix &matrix)
{
    QList<QList<CriticalComponent>> result;
    for (qsizetype source = 0; source < matrix.sources().size(); ++source)
        result.append(matrix.criticalOf(source, matrix.row(source)));
    return result;
}

/// By a query for each pair.
Rows rowsByQueries(const CoverageMatrix &matrix, Routing routing)
{
    routing.setMaxPaths(1);
    Rows rows;
    const auto sources = matrix.sources();
    const auto duts = matrix.duts();
    for (const auto &source : sources) {
        rows.append(QList<int>());
        for (const auto &dut : duts) {
            const auto paths =
                routing.findPathsBetween(source.component, source.node->pin, dut.component, dut.node->pin);
            rows.last().append(paths.isEmpty() ? CoverageMatrix::unreached
                                               : static_cast<int>(paths.first().switchingComponents.size()));
        }
    }
    return rows;
}

/// All sources and all DUTs of the exported system.
std::shared_ptr<const CoverageMatrix> exportedMatrix(bool asDrawn)
{
    const System &system = keptSystem("exported", exportedSystem);
    Routing routing = system.routing;
    if (!asDrawn)
        routing.setRelayContacts(SwitchingModel(system.provider).relayContacts());
    return std::make_shared<const CoverageMatrix>(routing, CoverageMatrix::pinsOnNets(system.provider, u"Source"_s),
                                                  CoverageMatrix::pinsOnNets(system.provider, u"DUT"_s));
}

NodeWithComponent pinOf(const EDAProvider &provider, const QMap<QString, QString> &properties, const QString &pin)
{
    const auto component = provider.getComponentByProperties(properties);
    const auto number = provider.getPartByName(component->part)->getPinByNumberOrName(pin)->number;
    return {EDANetNode::create(component->ref, number), component};
}

/// From the source of each of the first hundred queries to the DUT of each.
std::shared_ptr<const CoverageMatrix> matrixOfQueries(const System &system)
{
    QList<NodeWithComponent> sources;
    QList<NodeWithComponent> duts;
    for (std::size_t i = 0; i < std::min<std::size_t>(100, system.queries.size()); ++i) {
        const Query &query = system.queries[i];
        sources.append(pinOf(system.provider, query.source, query.sourcePin));
        duts.append(pinOf(system.provider, query.destination, query.destinationPin));
    }
    return std::make_shared<const CoverageMatrix>(system.routing, sources, duts);
}

Contender contender(const std::string &name, const std::function<Rows()> &make)
{
    return {name, [make] { return secondsToMake(make); }};
}
}

void registerCoverage(const Suite &suite)
{
    registerComparison("coverage/large", []() -> Comparison {
        const auto drawn = exportedMatrix(true);
        const auto realizable = exportedMatrix(false);
        return {{contender("velk", [realizable] { return rowsOf(*realizable); }),
                 contender("drawn", [drawn] { return rowsOf(*drawn); })},
                {}};
    });
    registerComparison("coverage/large-critical", []() -> Comparison {
        const auto matrix = exportedMatrix(false);
        return {{{"velk", [matrix] { return secondsToMake([&] { return criticalOf(*matrix); }); }}}, {}};
    });
    registerComparison("coverage/sparse", [suite]() -> Comparison {
        const System &system =
            keptSystem("sparse/" + std::to_string(suite.mainSize), [=] { return sparseSystem(suite.mainSize); });
        const auto matrix = matrixOfQueries(system);
        const auto byQueries = [matrix, &system] { return rowsByQueries(*matrix, system.routing); };
        if (byQueries() != rowsOf(*matrix))
            throw std::logic_error("the matrix differs from its pairs");
        return {{contender("velk", [matrix] { return rowsOf(*matrix); }), contender("queries", byQueries)},
                {{"pairs", static_cast<double>(matrix->sources().size() * matrix->duts().size())}}};
    });
}
}
