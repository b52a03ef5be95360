#include <velk/coverage/CoverageMatrix.h>

#include <velk/routing/RoutingPrivate.h>

#include <QHash>
#include <QSet>

#include <algorithm>

namespace Velk {

class CoverageMatrixPrivate
{
public:
    using Components = QList<QSharedPointer<EDAComponent>>;

    CoverageMatrixPrivate(const Routing &routing, const QList<NodeWithComponent> &sourcePins,
                          const QList<NodeWithComponent> &dutPins)
        : provider(*routing.d->provider)
        , firstPaths(routing)
        , allPaths(routing)
        , sources(sourcePins)
        , duts(dutPins)
    {
        firstPaths.setMaxPaths(1);
        allPaths.setMaxPaths(0);
    }

    static QList<TracedPath> find(const Routing &routing, const NodeWithComponent &source, const NodeWithComponent &dut)
    {
        return routing.findTracedPathsBetween(source.component, source.node->pin, dut.component, dut.node->pin);
    }

    /// These, in the order of the provider's.
    Components inOrder(const QSet<QString> &refs) const
    {
        Components result;
        const auto components = provider.getComponents();
        for (const auto &component : components) {
            if (component && refs.contains(component->ref))
                result.append(component);
        }
        return result;
    }

    const EDAProvider &provider;
    Routing firstPaths;
    Routing allPaths;
    QList<NodeWithComponent> sources;
    QList<NodeWithComponent> duts;
};

namespace {

QSet<QString> refsOn(const TracedPath &path)
{
    QSet<QString> result;
    for (const TracedStep &step : path.steps)
        result.insert(step.component->ref);
    return result;
}

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
    : d(std::make_shared<const CoverageMatrixPrivate>(routing, sources, duts))
{
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
    for (const NodeWithComponent &dut : d->duts) {
        const auto paths = CoverageMatrixPrivate::find(d->firstPaths, d->sources.at(source), dut);
        result.append(paths.isEmpty() ? unreached : static_cast<int>(paths.first().steps.size()));
    }
    return result;
}

QList<CriticalComponent> CoverageMatrix::criticalOf(qsizetype source, const QList<int> &row) const
{
    QHash<QString, QList<qsizetype>> lost;
    for (qsizetype dut = 0; dut < row.size(); ++dut) {
        if (row.at(dut) <= 0)
            continue;
        const auto paths = CoverageMatrixPrivate::find(d->allPaths, d->sources.at(source), d->duts.at(dut));
        QSet<QString> onAll = refsOn(paths.first());
        for (const TracedPath &path : paths)
            onAll.intersect(refsOn(path));
        for (const QString &ref : std::as_const(onAll))
            lost[ref].append(dut);
    }
    QList<CriticalComponent> result;
    const auto components = d->inOrder({lost.keyBegin(), lost.keyEnd()});
    for (const auto &component : components)
        result.append({component, lost.value(component->ref)});
    return result;
}

QList<QSharedPointer<EDAComponent>> CoverageMatrix::onFirstPathsOf(qsizetype source, const QList<int> &row) const
{
    QSet<QString> refs;
    for (qsizetype dut = 0; dut < row.size(); ++dut) {
        if (row.at(dut) > 0)
            refs.unite(
                refsOn(CoverageMatrixPrivate::find(d->firstPaths, d->sources.at(source), d->duts.at(dut)).first()));
    }
    return d->inOrder(refs);
}

bool CoverageMatrix::isOnAnyPath(const QSharedPointer<EDAComponent> &component) const
{
    const auto crosses = [&](const TracedPath &path) { return refsOn(path).contains(component->ref); };
    for (const NodeWithComponent &source : d->sources) {
        for (const NodeWithComponent &dut : d->duts) {
            const auto paths = CoverageMatrixPrivate::find(d->allPaths, source, dut);
            if (std::any_of(paths.cbegin(), paths.cend(), crosses))
                return true;
        }
    }
    return false;
}
}
