#ifndef VELK_ROUTING_ROUTING_H
#define VELK_ROUTING_ROUTING_H

#include <velk/VelkExport.h>
#include <velk/model/EDAProvider.h>
#include <velk/model/RelayContacts.h>
#include <velk/routing/NoPathReason.h>
#include <velk/routing/RoutingPath.h>
#include <velk/routing/TracedPath.h>

#include <QList>
#include <QMap>
#include <QSharedDataPointer>
#include <QSharedPointer>
#include <QString>

#include <functional>

namespace Velk {

class CoverageMatrixPrivate;
class RoutingPrivate;

/// Finds the chains of switchable components (relays and resistors by default) that lead from a pin of one
/// component to a pin of another, on any provider.
///
/// From a net the search crosses every switchable component to the nets of its other pins. It never visits a
/// net twice on one path; a provider that makes new nets at every call, as KiCadNetParser does, defeats that,
/// and only the limits end its loops. Pins of interface components (sources and DUTs by default) that lie on
/// the nets passed are collected as additional nodes, since switching the path connects them too. Those on
/// the net of the source pin and on the last net are not.
///
/// Two limits bound the search, whose effort grows exponentially with them where a system has many loops; so does the
/// number of paths, unless setMaxPaths() bounds that.
///
/// Switching components: a net is searched further while it was reached over at most this many. The
/// destination is looked for before that is tested, so paths of up to *one more* are found, 6 by default. A
/// negative limit, and 2147483647, whose successor is negative, leave direct connections only.
///
/// Additional nodes: a branch ends where it has collected more than this many. A negative limit leaves direct
/// connections only.
///
/// A Routing keeps no state between calls but this configuration, so concurrent findPaths() calls on one
/// object are as safe as the provider's queries are; the setters must not run meanwhile.
///
/// Every net visited is logged in the category "routing" at debug level, which is on unless Qt's logging rules say
/// otherwise. Switch it off where time counts, with QLoggingCategory::setFilterRules("routing.debug=false"): a search
/// on a MultipleEDAProvider then enters no branch that cannot reach the destination, which on large systems is
/// thousands of times faster, with the same result. Each thread that searches keeps 12 bytes of working memory for
/// every net and some 50 for those that its largest query came near, with setRelayContacts() also 4 for every gang. Any
/// other provider is searched exhaustively, looking through all its nets at every step.
class VELK_EXPORT Routing
{
public:
    /// Read when a Routing is constructed; changing them changes those constructed later.
    static int DEFAULT_MAX_SWITCHING_COMPONENTS_PER_PATH; ///< 5
    static int DEFAULT_MAX_ADDITIONAL_NODES_PER_PATH;     ///< 3

    static const QString DEFAULT_SWITCHABLE_COMPONENT_TYPE_RELAY;    ///< "Relay"
    static const QString DEFAULT_SWITCHABLE_COMPONENT_TYPE_RESISTOR; ///< "Resistor"
    static const QString DEFAULT_INTERFACE_COMPONENT_TYPE_SOURCE;    ///< "Source"
    static const QString DEFAULT_INTERFACE_COMPONENT_TYPE_DUT;       ///< "DUT"
    static const QString DEFAULT_CONNECTOR_COMPONENT_TYPE;           ///< "Connector"

    /// \a netlist stays the caller's, must outlive all queries and is asked nothing before the first.
    explicit Routing(EDAProvider *netlist);
    ~Routing();
    Routing(const Routing &other);
    Routing &operator=(const Routing &other);
    /// One that was moved from may be assigned to or destroyed, nothing else.
    Routing(Routing &&other) noexcept;
    Routing &operator=(Routing &&other) noexcept;

    /// Replaces the types that a path may pass through. Types are compared without regard to case; with an empty list
    /// no component has that role.
    void setComponentTypesThatAreSwitchable(const QList<QString> &types);
    QList<QString> componentTypesThatAreSwitchable() const; ///< as set; "Relay" and "Resistor" at first
    /// Replaces the types whose pins are additional nodes, in the same way.
    void setComponentTypesThatAreInterfaces(const QList<QString> &types);
    QList<QString> componentTypesThatAreInterfaces() const; ///< as set; "Source" and "DUT" at first

    /// Replaces the types of the components at which netlists are joined, in the same way. Only explainNoPath() asks.
    void setComponentTypesThatAreConnectors(const QList<QString> &types);
    QList<QString> componentTypesThatAreConnectors() const; ///< as set; "Connector" at first

    /// Sets the first of the two limits above. Any value is taken as it is.
    void setMaxSwitchingComponentsPerPath(int limit);
    int maxSwitchingComponentsPerPath() const; ///< as set, or the default when this was constructed
    /// Sets the second one. Any value is taken as it is.
    void setMaxAdditionalNodesPerPath(int limit);
    int maxAdditionalNodesPerPath() const; ///< as set, or the default when this was constructed
    /// Has findPaths() return the first so many of its paths only, exactly those that would come first without the
    /// bound. 0, the default, or a negative number is no bound.
    ///
    /// The search goes over the system in passes, each going just as deep as the next paths in order, and ends when it
    /// has them. On a MultipleEDAProvider with the trace off it takes time and memory for these paths, be there
    /// thousands of millions of others. Otherwise a pass looks everywhere down to its depth, and the trace shows each
    /// pass. A bound that is not reached saves nothing: the search then takes as long as some searches without it.
    void setMaxPaths(qsizetype bound);
    qsizetype maxPaths() const; ///< as set; 0 at first

    /// Keeps components out of all searches: no path crosses one of these. What is found is exactly the rest of the
    /// paths, in the order that they have among all; setMaxPaths() counts these. Pins of such components may still be
    /// ends of a query and additional nodes.
    ///
    /// References are compared exactly: "K3#2". Those that the netlist lacks exclude nothing, so ask
    /// unknownExclusions() where they come from a user.
    void setExcludedComponents(const QList<QString> &refs);
    QList<QString> excludedComponents() const; ///< as set; none at first
    /// Keeps nets out of all searches in the same way: no path enters one of these, not even as its first or last net,
    /// so that there is none between pins on it. Names are compared exactly, and all nets of a name are meant. A net
    /// that a MultipleEDAProvider has joined also has the names of those that it was joined from: "GND#1+GND#2" is
    /// excluded by "GND#2" as well.
    void setExcludedNets(const QList<QString> &names);
    QList<QString> excludedNets() const; ///< as set; none at first
    /// Those of the two lists that name nothing in the netlist, components first, in the order given.
    QList<QString> unknownExclusions() const;

    /// Has every search find those paths alone that cross each of these components, in the order that they have among
    /// all; setMaxPaths() counts these. On a MultipleEDAProvider with the trace off no others are looked for, be there
    /// thousands of millions of them. References are compared exactly; no path crosses a component that is not there.
    void setRequiredComponents(const QList<QString> &refs);
    QList<QString> requiredComponents() const; ///< as set; none at first

    /// Has findTracedPaths() return those paths alone that some state of the relays makes, in the order that they have
    /// among all; setMaxPaths() counts these. Each step over a listed relay is then over two pins that one of its
    /// positions connects, in whichever direction, and relays of one gang are in one position on all of a path. Listed
    /// relays without positions are not crossed, and contacts with pins that the part lacks connect nothing. Components
    /// that are not listed, such as resistors and relays of which nothing is known, are crossed as drawn, which is from
    /// any pin to any other. explainNoPath() tells of these paths too; findPaths() and countPathsBetween() are about
    /// all ways as drawn as before.
    ///
    /// Searches keep what they make of the contacts for those that follow, by the address of \a contacts, so it is to
    /// be made once for many. Null, the default, has all relays crossed as drawn.
    void setRelayContacts(const QSharedPointer<const RelayContactMap> &contacts);
    QSharedPointer<const RelayContactMap> relayContacts() const; ///< as set; null at first

    /// Has every search ask \a isCalledOff, from the thread that searches, and end when it returns true: findPaths()
    /// and findTracedPaths() by an EDASearchCalledOffException, explainNoPath() with what is known by then. It is asked
    /// every millisecond or so; while the trace is on, and on other than joined netlists, before each pin that is
    /// tried. An empty function, the default, lets searches run to their end. Where threads share the Routing, each
    /// calls it.
    void setInterruption(const std::function<bool()> &isCalledOff);
    std::function<bool()> interruption() const; ///< as set

    /// All paths, or the first ones where setMaxPaths() bounds them, from a pin of the first component that matches
    /// \a sourceProperties to a pin of the first one that matches \a destinationProperties. A pin is given by its
    /// number or else by its name.
    ///
    /// The paths with the fewest switching components come first, among them those with the fewest additional
    /// nodes, among equals those found first: by the order of a net's nodes, then of a part's pins. No path
    /// is an empty list. Two pins on one net have the one path without switching components.
    ///
    /// Throws EDAComponentNotFoundException, EDAPartNotFoundException or EDAPinNotFoundException for what the
    /// netlist lacks, the source being looked up first. What is unknown further on is logged and passed over.
    QList<RoutingPath> findPaths(const QMap<QString, QString> &sourceProperties, const QString &sourcePin,
                                 const QMap<QString, QString> &destinationProperties,
                                 const QString &destinationPin) const;

    /// The same from a pin of \a source to a pin of \a destination, for callers that know the two components. Both are
    /// to be the provider's; a null one throws EDAComponentNotFoundException with no properties.
    QList<RoutingPath> findPathsBetween(const QSharedPointer<EDAComponent> &source, const QString &sourcePin,
                                        const QSharedPointer<EDAComponent> &destination,
                                        const QString &destinationPin) const;

    /// The same paths in the same order, each with the pins and nets that it passes, and so none like another unless a
    /// net holds a node twice or a part a pin. They take about five times the memory.
    QList<TracedPath> findTracedPaths(const QMap<QString, QString> &sourceProperties, const QString &sourcePin,
                                      const QMap<QString, QString> &destinationProperties,
                                      const QString &destinationPin) const;
    /// The same between pins of components, as in findPathsBetween().
    QList<TracedPath> findTracedPathsBetween(const QSharedPointer<EDAComponent> &source, const QString &sourcePin,
                                             const QSharedPointer<EDAComponent> &destination,
                                             const QString &destinationPin) const;

    /// How many paths findPathsBetween() would return if setMaxPaths() did not bound them. It takes as long, but no
    /// memory for them.
    qsizetype countPathsBetween(const QSharedPointer<EDAComponent> &source, const QString &sourcePin,
                                const QSharedPointer<EDAComponent> &destination, const QString &destinationPin) const;

    /// Why findPaths(), or with setRelayContacts() findTracedPaths(), finds nothing between these pins; of pins with
    /// paths only NoPathReason::shortest is of use. It searches some times over, with any limits but for one path each.
    /// A provider other than MultipleEDAProvider is asked for all that it holds and put into numbers first, so that no
    /// search is exhaustive. With more than 100 million pins, or at a pin that was added to a part later, it is, and
    /// may take as long as the netlist has ways. Throws as findPaths() does where an end is unknown.
    NoPathReason explainNoPath(const QMap<QString, QString> &sourceProperties, const QString &sourcePin,
                               const QMap<QString, QString> &destinationProperties,
                               const QString &destinationPin) const;
    /// The same between pins of components, as in findPathsBetween().
    NoPathReason explainNoPathBetween(const QSharedPointer<EDAComponent> &source, const QString &sourcePin,
                                      const QSharedPointer<EDAComponent> &destination,
                                      const QString &destinationPin) const;

private:
    friend class CoverageMatrixPrivate; // it asks the same provider by the same rules

    QSharedDataPointer<RoutingPrivate> d;
};
}

#endif
