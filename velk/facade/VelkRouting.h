#ifndef VELK_FACADE_VELKROUTING_H
#define VELK_FACADE_VELKROUTING_H

#include <velk/VelkExport.h>

#include <cstddef>
#include <map>
#include <string>
#include <vector>

namespace Velk {

class VelkRoutingPrivate;

/// A component of the netlist. All texts of these records are UTF-8.
struct VelkComponentInfo
{
    std::string ref;   ///< reference designator with the number of its netlist file: "K3#1"
    std::string value; ///< as drawn: "10k"
    std::string part;  ///< name of its library part with the number of the file: "Relay_SPST#1"
    std::map<std::string, std::string> properties; ///< property name to value; "CompType" is the type
};

/// A pin of a component.
struct VelkPinInfo
{
    std::string number; ///< as text: "1", "A1"
    std::string name;   ///< may be empty
    std::string type;   ///< electrical type as KiCad writes it: "passive"
};

/// True if all members are equal.
VELK_EXPORT bool operator==(const VelkComponentInfo &a, const VelkComponentInfo &b);
/// True if all members are equal.
VELK_EXPORT bool operator==(const VelkPinInfo &a, const VelkPinInfo &b);

/// A pin that a route connects besides the two that were asked for.
struct VelkConnectionInfo
{
    VelkComponentInfo component; ///< the component that has the pin
    VelkPinInfo pin;             ///< all empty where the component's part does not list the pin
};

/// One way from the source pin to the destination pin.
struct VelkRoutingPath
{
    /// The components to switch on, from source to destination; empty where the two pins lie on one net. A
    /// component of many pins may be crossed more than once; routes that differ in the pins used alone look
    /// the same.
    std::vector<VelkComponentInfo> switchingComponents;
    /// Pins of interface components on the nets in between, in the order in which they were met; other pins
    /// of the source and of the DUT among them.
    std::vector<VelkConnectionInfo> additionalConnections;
};

/// The one type that VelkRouting throws. Not a std::exception: catch it by this type.
class VELK_EXPORT VelkRoutingException
{
public:
    /// \a message is what message() returns.
    explicit VelkRoutingException(const std::string &message);
    ~VelkRoutingException();
    VelkRoutingException(const VelkRoutingException &other);
    VelkRoutingException &operator=(const VelkRoutingException &other);
    VelkRoutingException(VelkRoutingException &&other) noexcept;
    VelkRoutingException &operator=(VelkRoutingException &&other) noexcept;

    /// What is wrong, in one line of English (UTF-8).
    std::string message() const;

private:
    std::string m_message;
};

/// How netlists are read.
enum class VelkReadingMode
{
    Default,  ///< values are quoted, without escapes, and a missing element is an error
    Tolerant, ///< whatever KiCad 4 to 10 write; what had to be completed or dropped is a warning
};

/// Loads KiCad netlists and answers which routes lead from one pin to another, for callers without Qt.
///
///     Velk::VelkRouting routing({"instruments.net", "matrix.net", "adapter.net"});
///     const auto routes = routing.getRoutes({{"Dev", "SMU"}, {"DevNo", "1"}}, "FORCE_HI",
///                                           {{"CompType", "DUT"}, {"Bench", "1"}}, "IN_P");
///
/// The files are joined where their nets meet at the same pin number of connectors with the same "Identifier"
/// property; one file alone is treated alike. References, part names and net names carry the suffix "#n", n
/// being the position of the file counted from 1.
///
/// By default components whose "CompType" is "Relay" or "Resistor" can be switched through, and "Source" and
/// "DUT" are interfaces. Types are compared without regard to case.
///
/// Use one object in one thread at a time, and likewise two objects of which one was assigned to the other: queries
/// keep the records of components for later ones.
///
/// By default every net that a query visits is logged, which costs far more than the search: with the trace on, each
/// query looks through all nets at every step and prints a line for each net that it visits. Switch it off with
/// setTraceEnabled(false) unless you need it.
class VELK_EXPORT VelkRouting
{
public:
    /// Loads the files in order, with "Connector" as the connector type. Throws VelkRoutingException for the
    /// first file that cannot be read, is malformed or lacks an element.
    explicit VelkRouting(const std::vector<std::string> &netlistFileNames);
    /// The same with these connector types; an empty list stands for "Connector".
    VelkRouting(const std::vector<std::string> &netlistFileNames,
                const std::vector<std::string> &connectorComponentTypes);
    /// The same in this mode.
    VelkRouting(const std::vector<std::string> &netlistFileNames,
                const std::vector<std::string> &connectorComponentTypes, VelkReadingMode mode);
    ~VelkRouting();
    VelkRouting(const VelkRouting &other) = delete;
    /// Copies a pointer only: both objects then share what \a other owns, and what this one owned is not
    /// released. See to it that just one of the two is ever destroyed.
    VelkRouting &operator=(const VelkRouting &other);

    /// The version of the library that the program runs with: "1.0.0". VELK_VERSION_STRING of velk/VelkVersion.h is
    /// that of the headers it was built with.
    static std::string version();

    /// All routes, or the first ones where setMaxRoutes() bounds them, from a pin of the first component (by reference)
    /// that has all of \a sourceProperties to one of the first that has all of \a destinationProperties. A pin is given
    /// by number or else by name. An empty property value also matches a component without that property.
    ///
    /// Routes with the fewest switching components come first, among them those with the fewest additional
    /// connections. No route is an empty vector. Throws VelkRoutingException where component, part or pin is
    /// unknown.
    std::vector<VelkRoutingPath> getRoutes(const std::map<std::string, std::string> &sourceProperties,
                                           const std::string &sourcePin,
                                           const std::map<std::string, std::string> &destinationProperties,
                                           const std::string &destinationPin) const;

    /// What tolerant reading has completed or dropped, and in both modes what is listed more than once or is not UTF-8,
    /// in the order of the files, each as in "boards/matrix.net: /export/nets/net[GND]/node/ref: component 'K1' is not
    /// listed, so the node is dropped" or "boards/matrix.net: /export/nets/net[GND]: listed 2 times, and the last one
    /// holds".
    std::vector<std::string> warnings() const;

    /// Switches the trace on or off, for all objects of the process: the debug messages of Qt's logging category
    /// "routing". It is on unless Qt's logging rules say otherwise, for instance the environment variable
    /// QT_LOGGING_RULES="routing.debug=false". Where a program changes those rules later, or makes its
    /// QCoreApplication later, they decide again. The routes are the same with and without it. Not to be called while
    /// another thread is searching.
    static void setTraceEnabled(bool enabled);
    /// Whether it is on now.
    static bool isTraceEnabled();

    /// Replaces the types whose pins are additional connections; with an empty list there are none.
    void setInterfaceTypes(const std::vector<std::string> &types);
    std::vector<std::string> interfaceTypes() const; ///< as set; "Source" and "DUT" at first
    /// Replaces the types that a route may pass through; with an empty list there are direct connections only.
    void setSwitchableTypes(const std::vector<std::string> &types);
    std::vector<std::string> switchableTypes() const; ///< as set; "Relay" and "Resistor" at first

    /// 3 by default: a route that would connect more additional pins is not followed. Above 2147483647 only
    /// direct connections are found.
    void setMaxAdditionalConnectionsPerPath(unsigned int limit);
    unsigned int maxAdditionalConnectionsPerPath() const; ///< as set
    /// 5 by default. The destination is looked for before the limit is tested, so a limit of 5 finds routes
    /// of up to 6 switching components. From 2147483647 on only direct connections are found.
    void setMaxSwitchingComponentsPerPath(unsigned int limit);
    unsigned int maxSwitchingComponentsPerPath() const; ///< as set
    /// Has getRoutes() return the first so many of its routes only, exactly those that would come first without the
    /// bound. 0, the default, is no bound, as is a number above the largest std::ptrdiff_t. With the trace off it then
    /// takes time and memory for these routes, be there thousands of millions of others. With the trace on every pass
    /// of the search is logged, each going deeper than the one before, and the search looks everywhere. A bound that is
    /// not reached saves nothing: it costs as much as some queries without it.
    void setMaxRoutes(std::size_t bound);
    std::size_t maxRoutes() const; ///< as set

    /// Keeps components, by their references as "K3#1", out of all routes; the others stay as they are and in their
    /// order. What the files lack excludes nothing; unknownExclusions() tells it.
    void setExcludedComponents(const std::vector<std::string> &refs);
    std::vector<std::string> excludedComponents() const; ///< as set; none at first
    /// Keeps nets, by their names, out of all routes in the same way, as first and last ones too. Of a net that was
    /// plugged together, as "OUT#1+IN#2", each name that it is made of will do.
    void setExcludedNets(const std::vector<std::string> &names);
    std::vector<std::string> excludedNets() const; ///< as set; none at first
    /// Those of the two lists that are not there, components first.
    std::vector<std::string> unknownExclusions() const;

private:
    VelkRoutingPrivate *d;
};
}

#endif
