#include <velk/coverage/CoverageMatrix.h>

#include <QSet>
#include <QSharedData>

namespace Velk {

class CoverageMatrixPrivate : public QSharedData
{
public:
    Routing routing;
    QList<NodeWithComponent> sources;
    QList<NodeWithComponent> duts;

    QList<TracedPath> pathsTo(qsizetype source, qsizetype dut) const
    {
        const auto &from = sources.at(source);
        const auto &to = duts.at(dut);
        return routing.findTracedPathsBetween(from.component, from.node->pin, to.component, to.node->pin);
    }
};

namespace {

QSet<QPair<QString, QString>> pinsOnAnyNet(const EDAProvider &netlist)
{
    QSet<QPair<QString, QString>> result;
    const auto nets = netlist.getNets();
    for (const auto &net : nets) {
        if (net.isNull())
            continue;
        for (const auto &node : std::as_const(net->nodes)) {
            if (node)
                result.insert({node->ref, node->pin});
        }
    }
    return result;
}
}

QList<NodeWithComponent> CoverageMatrix::pinsOnNets(const EDAProvider &netlist, const QString &type,
                                                    const QMap<QString, QString> &properties)
{
    QList<NodeWithComponent> result;
    auto onNets = pinsOnAnyNet(netlist);
    const auto components = netlist.getComponents();
    for (const auto &component : components) {
        const bool isWanted = component &&
                              (type.isEmpty() || component->type().compare(type, Qt::CaseInsensitive) == 0) &&
                              component->matchesProperties(properties);
        const auto part = isWanted ? netlist.getPartByName(component->part) : nullptr;
        if (part.isNull())
            continue;
        for (const auto &pin : std::as_const(part->pins)) {
            if (pin && onNets.remove({component->ref, pin->number})) // once, where the part lists it twice
                result.append({EDANetNode::create(component->ref, pin->number), component});
        }
    }
    return result;
}

CoverageMatrix::CoverageMatrix(const Routing &routing, const QList<NodeWithComponent> &sources,
                               const QList<NodeWithComponent> &duts)
    : d(new CoverageMatrixPrivate{{}, routing, sources, duts})
{
    d->routing.setMaxPaths(1);
}

CoverageMatrix::~CoverageMatrix() = default;
CoverageMatrix::CoverageMatrix(const CoverageMatrix &other) = default;
CoverageMatrix &CoverageMatrix::operator=(const CoverageMatrix &other) = default;
CoverageMatrix::CoverageMatrix(CoverageMatrix &&other) noexcept = default;
CoverageMatrix &CoverageMatrix::operator=(CoverageMatrix &&other) noexcept = default;

QList<NodeWithComponent> CoverageMatrix::sources() const
{
    return d->sources;
}

QList<NodeWithComponent> CoverageMatrix::duts() const
{
    return d->duts;
}

QList<int> CoverageMatrix::row(qsizetype source) const
{
    QList<int> result;
    result.reserve(d->duts.size());
    for (qsizetype dut = 0; dut < d->duts.size(); ++dut) {
        const auto paths = d->pathsTo(source, dut);
        result.append(paths.isEmpty() ? unreached : static_cast<int>(paths.first().steps.size()));
    }
    return result;
}
}
