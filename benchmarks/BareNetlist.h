#ifndef VELK_BENCHMARKS_BARENETLIST_H
#define VELK_BENCHMARKS_BARENETLIST_H

#include <velk/kicad/KiCadToken.h>
#include <velk/model/EDAProvider.h>

#include <QByteArray>
#include <QHash>

#include <vector>

namespace VelkBenchmarks {

/// Where a text stands in a netlist.
struct TextPlace
{
    qsizetype offset;
    qsizetype length;
};

/// Where the texts of a netlist stand, each at one of its places: those of tokens are known from a scan, and parts of
/// them are looked for.
class TextPlaces
{
public:
    explicit TextPlaces(const QByteArray &scannedText);

    TextPlace of(const QString &text);

    const QByteArray netlist;

private:
    qsizetype addTextAt(qsizetype offset, QByteArrayView ends);
    TextPlace find(const QString &text) const;

    QHash<QString, TextPlace> places;
};

/// Texts of a netlist, by number. Nothing but their places is kept.
struct TextTable
{
    static constexpr int noText = -1;

    QByteArray netlist;
    std::vector<TextPlace> places;

    /// Made anew.
    std::vector<QString> texts() const;
};

/// What a tree of tokens costs alone: the same tree from the places of its texts.
class BareTree
{
public:
    BareTree(TextPlaces &places, const QSharedPointer<Velk::KiCadToken> &root);

    QSharedPointer<Velk::KiCadToken> make() const;

private:
    struct Token
    {
        int name;
        int value;
        qsizetype childCount;
    };

    TextTable table;
    std::vector<Token> tokens; ///< in the order of the netlist
};

/// The elements of a netlist.
struct ModelElements
{
    QList<QSharedPointer<Velk::EDAPart>> parts;
    QList<QSharedPointer<Velk::EDAComponent>> components;
    QList<QSharedPointer<Velk::EDANet>> nets;
};

/// What the model of a netlist costs alone: the same elements from the places of their texts. Nothing is looked up or
/// made to be searched. References, pins, types and names of parts and properties are shared, values are not.
class BareModel
{
public:
    BareModel(TextPlaces &places, const Velk::EDAProvider &netlist);

    ModelElements make() const;

private:
    struct Texts ///< numbers of an element's own texts, and of those in its list one after the other
    {
        std::vector<int> own;
        std::vector<int> listed;
    };

    TextTable table;
    std::vector<Texts> parts;      ///< name, library; number, name, type of pins
    std::vector<Texts> components; ///< reference, value, part; name, value of properties
    std::vector<Texts> nets;       ///< name; reference, pin of nodes
};
}

#endif
