#ifndef VELK_COVERAGE_COVERAGEMATRIX_H
#define VELK_COVERAGE_COVERAGEMATRIX_H

#include <velk/VelkExport.h>
#include <velk/model/EDAProvider.h>
#include <velk/routing/NodeWithComponent.h>
#include <velk/routing/Routing.h>

#include <QList>
#include <QMap>
#include <QSharedPointer>
#include <QString>

#include <memory>
#include <utility>

namespace Velk {

class CoverageMatrixPrivate;

/// A component without which pairs of pins that have a path have none any more.
struct CriticalComponent
{
    QSharedPointer<EDAComponent> component; ///< the provider's, never null
    QList<qsizetype> duts;                  ///< the DUT pins, by their numbers, that the source pin loses; ascending
};

/// The same for all source pins of a matrix.
struct CriticalPairs
{
    QSharedPointer<EDAComponent> component;      ///< the provider's, never null
    QList<std::pair<qsizetype, qsizetype>> lost; ///< source and DUT pin of each pair, by their numbers; ascending
};

/// Who reaches whom: over how few switches each pin of some components, the sources, reaches each pin of others, the
/// DUTs, by the paths that a Routing finds.
///
/// A row tells it of one source pin, and so do the losses. Each is computed when it is asked for and depends on no
/// other: threads may ask one object for different rows at once. Nothing is kept, so ask once for each row. Rows asked
/// for one after the other are the progress that can be told; Routing::setInterruption(), before the matrix is made,
/// calls them off by an EDASearchCalledOffException.
class VELK_EXPORT CoverageMatrix
{
public:
    static constexpr int unreached = -1; ///< in a row: there is no path

    /// The pins of the components of this type (without regard to case) that have all these properties and lie on a
    /// net, in the order of the provider's components and their parts' pins. Any type will do where it is empty, and
    /// where the properties have a "CompType" themselves.
    static QList<NodeWithComponent> pinsOnNets(const EDAProvider &netlist, const QString &type,
                                               const QMap<QString, QString> &properties = {});

    /// Of the paths that \a routing finds: those with setRelayContacts() that findTracedPaths() returns, with the
    /// limits, types, exclusions and required components that are set. A bound on their number plays no part. Pins are
    /// those of the routing's provider, which has to stay.
    CoverageMatrix(const Routing &routing, const QList<NodeWithComponent> &sources,
                   const QList<NodeWithComponent> &duts);
    ~CoverageMatrix();
    CoverageMatrix(const CoverageMatrix &other);
    CoverageMatrix &operator=(const CoverageMatrix &other);
    /// One that was moved from may be assigned to or destroyed, nothing else.
    CoverageMatrix(CoverageMatrix &&other) noexcept;
    CoverageMatrix &operator=(CoverageMatrix &&other) noexcept;

    QList<NodeWithComponent> sources() const; ///< as given
    QList<NodeWithComponent> duts() const;    ///< as given

    /// The number of switching components of the first path from this source pin to each DUT pin, or \a unreached.
    QList<int> row(qsizetype source) const;

    /// The components without which this source pin loses DUT pins that it reaches: exactly those pairs that have a
    /// path, and none if the component is excluded too. \a row is what row() has told. In the order of the provider's
    /// components.
    QList<CriticalComponent> criticalOf(qsizetype source, const QList<int> &row) const;

    /// What criticalOf() has told of the first source pins, or of all, put together by components: those that lose most
    /// pairs come first, among equals in the order of the provider's components.
    QList<CriticalPairs> criticalPairs(const QList<QList<CriticalComponent>> &ofSources) const;

    /// The components that the first paths from this source pin to the DUT pins cross, in the order of the provider's
    /// components.
    QList<QSharedPointer<EDAComponent>> onFirstPathsOf(qsizetype source, const QList<int> &row) const;

    /// Whether a path of any pair crosses the component. Depends on nothing else either.
    bool isOnAnyPath(const QSharedPointer<EDAComponent> &component) const;

private:
    std::shared_ptr<const CoverageMatrixPrivate> d;
};
}

#endif
