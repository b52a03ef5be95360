#ifndef VELK_KICAD_KICADNETPARSER_H
#define VELK_KICAD_KICADNETPARSER_H

#include <velk/VelkExport.h>
#include <velk/kicad/KiCadReadingMode.h>
#include <velk/kicad/KiCadRepetition.h>
#include <velk/kicad/KiCadToken.h>
#include <velk/model/EDAProvider.h>
#include <velk/model/ElementOwner.h>

#include <QList>
#include <QMap>
#include <QSharedPointer>
#include <QString>
#include <QStringList>

namespace Velk {

/// One KiCad netlist as a provider. These elements are read; all others are ignored:
///
///     (export
///       (components (comp (ref "K1") (value "10k")
///         (libsource (lib "Device") (part "Relay"))
///         (property (name "CompType") (value "Relay"))
///         (sheetpath (names "/Bench=1.Slot=3-Relays/"))))
///       (libparts (libpart (lib "Device") (part "Relay")
///         (pins (pin (num "1") (name "A") (type "passive")))))
///       (nets (net (name "GND") (node (ref "K1") (pin "1")))))
///
/// The names of the hierarchical sheets carry properties too: in each name, what stands before the last "-"
/// is searched for key=value pairs, a value reaching to the next full stop. They override the component's own
/// properties. Where a part name, reference or net name occurs twice, the later one replaces the earlier; of two lists
/// of one name the first one is read. warnings() and repetitions() tell.
///
/// Tolerant reading also takes what KiCad writes besides, with a warning where it had to complete or drop something: a
/// part without pins, a pin without a number (it is empty; two such pins of a part are taken for one, by nets and joins
/// too), parts of one name from several libraries (those with other pins than the last one are named "LIBRARY:NAME",
/// and each component gets that of its own library), a component of an unlisted part (it gets the part with that alias,
/// or else one with the pins that the nets name), a node on an unlisted component (dropped) or pin (added to the part),
/// a missing value, pin name or pin type (empty), a net without a name (it gets one after its first node); what lacks
/// the name to be known by is dropped. Without a list of parts each component gets one with the pins that the nets
/// name. KiCad 4 and 5 write fields instead of properties and "~" for no pin name, and are taken so.
///
/// Nets of one name are one net for KiCad. So tolerant reading makes one of them, with each node once and in the order
/// of the file, and likewise of lists of one name. Components of one reference become one with the value and the part
/// of the last one and the properties of all; a property that several of them have is that of the last one. All else is
/// as it would be by default.
///
/// The lists are ordered by part name, reference and net name, ascending by UTF-16 code units. All look-ups
/// hand out copies, made anew at each call, except getComponentByProperties(), which hands out the stored
/// object. Since getNets() makes new nets, a Routing directly on a parser does not recognise a net that it
/// has visited; give it a MultipleEDAProvider over the parser instead.
class VELK_EXPORT KiCadNetParser : public EDAProvider, public ElementOwner
{
public:
    /// Over the tree that KiCadReader::getRoot() returned; empty until parse(). A null \a tree is a netlist
    /// in which everything is missing.
    explicit KiCadNetParser(const QSharedPointer<KiCadToken> &tree,
                            KiCadReadingMode readingMode = KiCadReadingMode::Default);
    ~KiCadNetParser() override;
    /// Copies share the model objects.
    KiCadNetParser(const KiCadNetParser &other);
    KiCadNetParser &operator=(const KiCadNetParser &other);
    /// What was moved from is as before parse(), over a null tree.
    KiCadNetParser(KiCadNetParser &&other) noexcept;
    KiCadNetParser &operator=(KiCadNetParser &&other) noexcept;

    /// Builds the model; call it once. Throws, for the first element that is missing:
    /// KiCadTokenNotFoundException where the tree lacks an element (or has an empty reference, pin number,
    /// part, net or property name), EDAPartNotFoundException for a component of an unlisted part,
    /// EDAComponentNotFoundException and EDAPinNotFoundException for a net's node on an unlisted component or
    /// pin. What was built before stays. Tolerant reading throws for missing lists only ("/export/components",
    /// "/export/nets"; "/export/libparts" for a tree that is no netlist). It completes the tree that it was given,
    /// which a second parser then finds complete.
    void parse();

    /// What tolerant reading has completed or dropped, in the order of parts, components and nets, each as in
    /// "/export/nets/net[GND]/node/ref: component 'K1' is not listed, so the node is dropped". Then, in both modes, a
    /// text for each of the repetitions(), as in "/export/nets/net[GND]: listed 2 times, and the last one holds".
    QStringList warnings() const;

    /// What is listed more than once: lists, then parts, components and nets, each in the order in which the name came
    /// up again. Parts of one name count where their pins differ.
    QList<KiCadRepetition> repetitions() const;

    /// Lets go of the tree, which is most of the memory and needed by parse() alone.
    void releaseTree();

    QList<QSharedPointer<EDANet>> getNets() const override;
    QList<QSharedPointer<EDAComponent>> getComponents() const override;
    QSharedPointer<EDAComponent> getComponentByRef(const QString &ref) const override;
    QSharedPointer<EDAComponent> getComponentByProperties(const QMap<QString, QString> &properties) const override;
    QList<QSharedPointer<EDAPart>> getParts() const override;
    QSharedPointer<EDAPart> getPartByName(const QString &name) const override;

    QList<QSharedPointer<EDANet>> ownNets() const override;
    QList<QSharedPointer<EDAComponent>> ownComponents() const override;
    QList<QSharedPointer<EDAPart>> ownParts() const override;

private:
    friend class KiCadNetlistFilePrivate;
    class NodeFactory;

    VELK_NO_EXPORT bool isDerived() const;
    VELK_NO_EXPORT bool isTolerant() const;

    // Of a KiCadTree or of KiCadTokens, which were never made into a tree.
    template <typename Tokens>
    VELK_NO_EXPORT void parseFrom(Tokens &tokens);
    template <typename Tokens>
    VELK_NO_EXPORT void noteRepeatedLists(const Tokens &tokens);
    template <typename Tokens>
    VELK_NO_EXPORT void parseParts(const Tokens &tokens);
    template <typename Tokens>
    VELK_NO_EXPORT void parsePinsOfPart(const Tokens &tokens, typename Tokens::Token libpart, EDAPart &part) const;
    template <typename Tokens>
    VELK_NO_EXPORT void parseComponents(const Tokens &tokens);
    template <typename Tokens>
    VELK_NO_EXPORT static void parsePropertiesOfComponent(const Tokens &tokens, typename Tokens::Token comp,
                                                          EDAComponent &component);
    VELK_NO_EXPORT static QMap<QString, QString> parsePropertiesFromComponentSheetpath(const QString &names);
    template <typename Tokens>
    VELK_NO_EXPORT void parseNets(const Tokens &tokens);
    template <typename Tokens>
    VELK_NO_EXPORT void parseNodesOfNet(const Tokens &tokens, typename Tokens::Token netToken, EDANet &net,
                                        const NodeFactory &nodeFactory) const;

    QSharedPointer<KiCadToken> root;
    KiCadReadingMode mode;
    QStringList repairs;
    QList<KiCadRepetition> repeated;
    QMap<QString, QSharedPointer<EDAPart>> parts;
    QMap<QString, QSharedPointer<EDAComponent>> components;
    QMap<QString, QSharedPointer<EDANet>> nets;
};
}

#endif
