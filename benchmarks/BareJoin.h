#ifndef VELK_BENCHMARKS_BAREJOIN_H
#define VELK_BENCHMARKS_BAREJOIN_H

#include <velk/provider/MultipleEDAProvider.h>

#include <vector>

namespace VelkBenchmarks {

/// The elements of joined boards, in the order in which a MultipleEDAProvider has them.
struct JoinedElements
{
    QList<QSharedPointer<Velk::EDAPart>> parts;
    QList<QSharedPointer<Velk::EDAComponent>> components;
    QList<QSharedPointer<Velk::EDANet>> boardNets;
    QList<QSharedPointer<Velk::EDANet>> nets;
};

/// What joining boards costs alone: copies of all their elements with suffixes, and the lists of the joined nets, from
/// numbers at hand. Nothing is looked up, sorted or made to be searched.
class BareJoin
{
public:
    /// \a joined is the outcome, \a providers what it was made of.
    BareJoin(const QList<Velk::EDAProvider *> &providers, const Velk::MultipleEDAProvider &joined);

    JoinedElements make() const;

private:
    void numberNets(const Velk::MultipleEDAProvider &joined);
    void makeParts(JoinedElements &elements) const;
    void makeComponents(JoinedElements &elements) const;
    void makeBoardNets(JoinedElements &elements) const;
    void makeNets(JoinedElements &elements) const;

    struct Board
    {
        QString suffix;
        QList<QSharedPointer<Velk::EDAPart>> parts;
        QList<QSharedPointer<Velk::EDAComponent>> components;
        QList<QSharedPointer<Velk::EDANet>> nets;
    };

    std::vector<Board> boards;
    // Elements of boards one after the other, as places in the outcome.
    std::vector<int> parts;
    std::vector<int> components;
    std::vector<int> partsOfComponents;
    std::vector<int> componentsOfNodes;
    std::vector<std::vector<int>> joinedBoardNets; ///< by net of the outcome
};
}

#endif
