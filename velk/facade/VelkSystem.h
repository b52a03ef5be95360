#ifndef VELK_FACADE_VELKSYSTEM_H
#define VELK_FACADE_VELKSYSTEM_H

#include <velk/VelkExport.h>
#include <velk/facade/VelkRouting.h>

#include <cstddef>
#include <exception>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace Velk {

class VelkSystemPrivate;
struct VelkSystemFile;

/// A library part with its pins.
struct VelkPartInfo
{
    std::string name;              ///< with the number of its file: "Relay_SPST#1"
    std::string library;           ///< may be empty
    std::vector<VelkPinInfo> pins; ///< in the order of the netlist
};

/// A pin of a component on a net.
struct VelkNodeInfo
{
    std::string component; ///< its reference: "K3#1"
    VelkPinInfo pin;       ///< with its number alone where the component's part does not list it
};

/// What is connected without any switch.
struct VelkNetInfo
{
    std::string name; ///< with the number of its file: "GND#1"; of nets that are plugged together "OUT#1+IN#2"
    std::vector<VelkNodeInfo> pins; ///< in the order of the files and of their joining
};

/// A pin of a component and where it lies.
struct VelkPlacedPin
{
    VelkPinInfo pin; ///< as its part lists it
    std::string net; ///< the name of the first net that holds it; empty where there is none
};

/// A component that a route crosses, and by which pins the route passes it.
struct VelkRouteStep
{
    std::string net;       ///< the name of the net from which the component is entered
    VelkPinInfo pinIn;     ///< by which it is entered
    std::string component; ///< its reference
    VelkPinInfo pinOut;    ///< by which it is left
    /// That a relay has to take, 0 being rest. None where the component is passive or unknown, and in ways as drawn.
    std::optional<int> position = {};
    std::string positionName = {}; ///< as it is drawn; may be empty
    /// Nothing tells the positions of the relay, so that it is crossed as drawn. False in ways as drawn.
    bool isUnknown = false;
};

/// A pin that a route connects besides the two that were asked for.
struct VelkSideConnection
{
    std::string net;       ///< where the route meets it
    std::string component; ///< its reference
    VelkPinInfo pin;       ///< of this component
};

/// One way from the source pin to the DUT's.
struct VELK_EXPORT VelkRoute
{
    std::vector<VelkRouteStep> steps; ///< from source to DUT; none where the two pins lie on one net
    std::string lastNet;              ///< the name of the net that holds the DUT's pin
    /// Pins of interface components on the nets in between, in the order in which they were met.
    std::vector<VelkSideConnection> sideConnections;

    /// The references of the components that the route crosses but for relays that have to stay at rest, from source to
    /// DUT. A relay of more than two positions is to be set to that of its step.
    std::vector<std::string> switches() const;
    /// The references of the relays that must not be set, since the route crosses contacts that are closed at rest.
    std::vector<std::string> resting() const;
    /// The position of each relay with one: what VelkSystem::connected() takes.
    std::map<std::string, int> state() const;
};

/// Why no state of the relays makes a way as drawn.
struct VelkPositionConflict
{
    VelkRoute route; ///< all of the way, as drawn
    /// Those of its steps that stand against it. One, without a position, if no position of its relay connects the two
    /// pins. Otherwise two or more over a relay, or over relays that move together, each with the position that it
    /// alone would need.
    std::vector<VelkRouteStep> steps;
};

/// Limits with which there is a route, and how much the first such route has.
struct VelkSufficientLimits
{
    int maxSwitches;             ///< for VelkSearchOptions
    int maxConnections;          ///< for VelkSearchOptions
    std::size_t switches;        ///< of that route
    std::size_t sideConnections; ///< of that route
};

/// How far one gets from a pin over switchable components.
struct VelkReach
{
    std::vector<std::string>
        nets; ///< their names, the nearest first; none where the pin lies on none that may be entered
    /// Of the connectors on these nets those without the same pin of another component with their Identifier there.
    std::vector<VelkNodeInfo> unpluggedPins;
    bool isAlone;    ///< nothing else lies on the net of the pin
    bool isExcluded; ///< the net of the pin is excluded
};

/// Why there is no route, as far as it is known.
struct VelkNoRouteReason
{
    bool isComplete; ///< false where the search was called off before all was known
    /// Whether there is a chain of switchable components, however long; empty where that is not known.
    std::optional<bool> isConnected;

    std::optional<std::size_t> shortest; ///< the number of components of the shortest chain; empty without one
    /// Where there is a chain: more switches, if that alone is enough; more side connections, if that alone is enough;
    /// else both, with as few switches as a route can have.
    std::vector<VelkSufficientLimits> sufficientLimits;

    VelkReach fromSource; ///< where there is no chain
    VelkReach fromDut;    ///< the same backwards
    /// References of components of other types, neither connectors nor interfaces, that lie on a way from end to end
    /// which crosses as few of them as possible. The nearest to the source come first.
    std::vector<std::string> between;
    bool isConnectedInOtherDirection; ///< there is no chain, but one from the DUT to the source

    // Where there is a chain, but of ways as drawn alone, and VelkSearchOptions::asDrawn was not asked for; the limits
    // are those of ways that relays can take then.
    /// Whether some state of the relays makes a chain, however long; empty where that is not known.
    std::optional<bool> isRealizable = {};
    /// What stands against the first way as drawn; empty where nothing does.
    std::optional<VelkPositionConflict> conflict = {};

    // Where something is excluded; all else is about the search that keeps out of it:
    /// References of the excluded components that the first route would cross if nothing were excluded; none where
    /// there would be no route within the limits either.
    std::vector<std::string> excludedComponents = {};
    std::vector<std::string> excludedNets = {}; ///< names of the excluded nets that it would enter
    /// There is a chain, but none over all of VelkSearchOptions::requiredComponents, to which all else refers.
    bool isConnectedOverOthers = false;
};

/// What tells the positions of a relay: the first of these that does.
enum class VelkPositionsRule
{
    Field,          ///< its field "Positions"
    Table,          ///< a row of a table of relays
    ContactNumbers, ///< pin numbers as in EN 50005: 11 12 14
    PinNames,       ///< pins named COM, NO and NC
    TwoPins,        ///< no pins but two, and maybe a coil: a contact that closes
    NoContacts,     ///< nothing but a coil; also what is no relay, or not populated
    Unknown,        ///< none of these
};

/// A position that a relay can take.
struct VelkRelayPosition
{
    std::string name;                                        ///< as it is drawn; may be empty
    std::vector<std::pair<std::string, std::string>> closed; ///< numbers of pins that it connects, in pairs
};

/// What a relay can do.
struct VelkRelayPositions
{
    VelkPositionsRule rule;                   ///< what tells the positions
    std::vector<VelkRelayPosition> positions; ///< the first one is rest; none for NoContacts and Unknown
    /// The references of the relays that take the same position as this one, itself among them; sorted. None for
    /// NoContacts.
    std::vector<std::string> gang;
    bool isUnknown; ///< the positions of a relay of the gang are not known, so that all of it stays at rest
};

/// Sets of connected pins that passive components couple with one another.
struct VelkCoupling
{
    std::vector<std::vector<VelkNodeInfo>> sets; ///< a pin that is connected with no other one is a set by itself
    std::vector<std::string> passives;           ///< references of all that lie on a net of what is coupled; sorted
};

/// What is connected while relays are set. Pins are sorted by reference, then by number; sets by their pins.
struct VelkConnections
{
    std::vector<std::vector<VelkNodeInfo>> connected; ///< sets of pins of interface components, on two nets at least
    std::vector<VelkCoupling> couplings;              ///< none of a set that nothing couples with another one
};

/// A component without which pairs of pins that have a route have none.
struct VelkCriticalComponent
{
    std::string component; ///< its reference
    /// These pairs, each by the numbers of its source and of its DUT pin in VelkCoverage, from 0; ascending.
    std::vector<std::pair<std::size_t, std::size_t>> lost;
};

/// Which pins of sources reach which pins of DUTs.
struct VelkCoverage
{
    std::vector<VelkNodeInfo> sources; ///< by reference, those of a component in the order of its part
    std::vector<VelkNodeInfo> duts;    ///< in the same order
    /// For each source pin, and there for each DUT pin, the number of components that the first route crosses; empty
    /// where there is no route.
    std::vector<std::vector<std::optional<int>>> switches;
    std::vector<VelkCriticalComponent> critical; ///< where asked for; most lost pairs first, then by reference
};

/// One thing that is probably not as it is meant.
struct VelkFinding
{
    std::string code;                    ///< as "identifier-missing"; docs/check.md explains each; it never changes
    std::vector<std::string> places;     ///< what it is found at: components, nets, files, or groups of sources
    std::string text;                    ///< what is wrong there: "a connector without Identifier"
    std::string advice;                  ///< what to do about it, the same for all of a code
    std::vector<std::string> components; ///< the references of those that it is about
    std::vector<std::string> nets;       ///< the names, as on the single boards, of those that it is about
    std::vector<std::string> pins;       ///< numbers of pins of these components
    std::vector<int> files;              ///< the positions, from 1 on, of those whose elements it is about; ascending

    /// "K1#1, K2#1: no CompType (part 'Relay')": its places, of many the first ones, and its text.
    std::string message;
};

/// True if all members are equal.
VELK_EXPORT bool operator==(const VelkPartInfo &a, const VelkPartInfo &b);
/// True if all members are equal.
VELK_EXPORT bool operator==(const VelkNodeInfo &a, const VelkNodeInfo &b);
/// True if all members are equal.
VELK_EXPORT bool operator==(const VelkNetInfo &a, const VelkNetInfo &b);
/// True if all members are equal.
VELK_EXPORT bool operator==(const VelkPlacedPin &a, const VelkPlacedPin &b);
/// True if all members are equal.
VELK_EXPORT bool operator==(const VelkRouteStep &a, const VelkRouteStep &b);
/// True if all members are equal.
VELK_EXPORT bool operator==(const VelkSideConnection &a, const VelkSideConnection &b);
/// True if all members are equal.
VELK_EXPORT bool operator==(const VelkRoute &a, const VelkRoute &b);
/// True if all members are equal.
VELK_EXPORT bool operator==(const VelkSufficientLimits &a, const VelkSufficientLimits &b);
/// True if all members are equal.
VELK_EXPORT bool operator==(const VelkReach &a, const VelkReach &b);
/// True if all members are equal.
VELK_EXPORT bool operator==(const VelkNoRouteReason &a, const VelkNoRouteReason &b);
/// True if all members are equal.
VELK_EXPORT bool operator==(const VelkFinding &a, const VelkFinding &b);
/// True if all members are equal.
VELK_EXPORT bool operator==(const VelkPositionConflict &a, const VelkPositionConflict &b);
/// True if all members are equal.
VELK_EXPORT bool operator==(const VelkRelayPosition &a, const VelkRelayPosition &b);
/// True if all members are equal.
VELK_EXPORT bool operator==(const VelkRelayPositions &a, const VelkRelayPositions &b);
/// True if all members are equal.
VELK_EXPORT bool operator==(const VelkCoupling &a, const VelkCoupling &b);
/// True if all members are equal.
VELK_EXPORT bool operator==(const VelkConnections &a, const VelkConnections &b);
/// True if all members are equal.
VELK_EXPORT bool operator==(const VelkCriticalComponent &a, const VelkCriticalComponent &b);
/// True if all members are equal.
VELK_EXPORT bool operator==(const VelkCoverage &a, const VelkCoverage &b);

/// One end of a route: a pin of a component, as people write it.
struct VelkRouteEnd
{
    /// Of the component, as in {{"Dev", "DMM"}}; all have to match, an empty value also where there is no such
    /// property. Of several components it is the first one, by reference, that has the pin.
    std::map<std::string, std::string> properties;
    std::string pin;      ///< its number, or else its name
    std::string ref = {}; ///< instead of the properties, if not empty: "K3#2", or "K3" where one file only has a K3
};

/// What bounds a search, as the command `velk routes` has it by default.
struct VelkSearchOptions
{
    /// A net is searched further while it was reached over at most this many switches, so routes of up to one more are
    /// found. Negative: direct connections only, as with 2147483647.
    int maxSwitches = 5;
    /// A route with more side connections is left out. Negative: direct connections only.
    int maxConnections = 3;
    /// The first so many routes only, exactly those that would come first without the bound; 0 is no bound.
    std::size_t maxRoutes = 0;
    /// Asked now and then, in the thread that searches; the search ends when it returns true. None lets it run.
    std::function<bool()> isCalledOff = {};
    /// Cross relays from any pin to any other, as they are drawn, whether or not they have a position that connects
    /// the two.
    bool asDrawn = false;
    /// References of components that each route is to cross; maxRoutes counts such routes.
    std::vector<std::string> requiredComponents = {};
};

/// Of which pins to tell who reaches whom, and how much of it.
struct VelkCoverageOptions
{
    /// Of the sources, as in {{"Dev", "DMM"}}; all have to match. Sources are the components with the "CompType"
    /// Source, in any case, or, where there is a "CompType" among these, with that one.
    std::map<std::string, std::string> sourceProperties = {};
    std::map<std::string, std::string> dutProperties = {}; ///< of the DUTs in the same way, with the "CompType" DUT
    VelkSearchOptions search = {};                         ///< which routes there are; maxRoutes plays no part
    bool withCritical = false; ///< also tell without which components pairs of pins have no route
    /// Called after each source pin with the number of those that are done and of all, in the thread that asks.
    std::function<void(std::size_t done, std::size_t all)> onProgress = {};
};

/// How a system is read.
struct VelkSystemOptions
{
    /// The component types, that is "CompType", at which the files are plugged together; none joins nothing. Types are
    /// compared without regard to case.
    std::vector<std::string> connectorTypes = {"Connector"};
    std::vector<std::string> switchableTypes = {"Relay", "Resistor"}; ///< that a route may pass through
    std::vector<std::string> interfaceTypes = {"Source", "DUT"};      ///< whose pins a route lists as side connections
    std::vector<std::string> dutTypes = {"Dut"};                      ///< that are DUTs in the application INI file
    std::vector<std::string> deviceTypes = {"Source"};                ///< that are devices in the physical INI file
    VelkReadingMode readingMode = VelkReadingMode::Default;           ///< of all files
    std::vector<std::string> passiveTypes = {
        "Resistor"}; ///< that conduct at all times; other switchable ones are relays
    /// Names of CSV files with the columns "part" and "positions": what relays can do, by their parts. The first row
    /// that fits holds.
    std::vector<std::string> relayTables = {};
};

/// The one type that VelkSystem throws itself; where memory runs out, that is std::bad_alloc.
class VELK_EXPORT VelkSystemException : public std::exception
{
public:
    /// What it was that failed.
    enum class Kind
    {
        Reading,   ///< a netlist cannot be read or is not as it should be
        NotFound,  ///< there is no such component, part, pin or net
        CalledOff, ///< the search was called off
        Writing,   ///< a file cannot be written
        TooLarge,  ///< an INI file would not end, as by a mistyped bench number
        Positions, ///< those of relays are drawn wrongly, or are not there, or a gang would have to be in two
        Plan,      ///< a plan that was found is none, which is an error of Velk
    };

    /// \a message is what message() returns.
    VelkSystemException(Kind kind, const std::string &message);
    ~VelkSystemException() override;
    VelkSystemException(const VelkSystemException &other);
    VelkSystemException &operator=(const VelkSystemException &other);
    VelkSystemException(VelkSystemException &&other) noexcept;
    VelkSystemException &operator=(VelkSystemException &&other) noexcept;

    Kind kind() const; ///< as given
    /// What is wrong, in one line of English (UTF-8). Where something is not found, with what comes nearest.
    std::string message() const;
    const char *what() const noexcept override; ///< the same text

private:
    Kind m_kind;
    std::string m_message;
};

/// A test system, loaded once and asked whatever one wants to know of it, for callers without Qt.
///
///     const Velk::VelkSystem system({"instruments.net", "matrix.net", "adapter.net"});
///     for (const auto &route : system.routes({{{"Dev", "DMM"}}, "HI"}, {{{"CompType", "DUT"}, {"Bench", "2"}},
///     "OUT"}))
///         for (const std::string &relay : route.switches())
///             std::cout << relay << '\n';
///
/// The files are plugged together where their nets meet at the same pin number of connectors with the same "Identifier"
/// property. References, part names and net names carry the suffix "#n", n being the position of the file counted from
/// 1; one file alone is treated alike. Where a name is asked for, the suffix may be left out if it is clear without.
///
/// All texts are UTF-8, names of files too, on Windows as elsewhere: there give it what
/// std::filesystem::path::u8string() returns.
///
/// What was read never changes. Copies share it and cost nothing, several threads may ask one and the same, and nothing
/// is logged, whatever Qt's logging rules are.
class VELK_EXPORT VelkSystem
{
public:
    /// Reads the files in this order. Throws a VelkSystemException for the first one that cannot be read, is no netlist
    /// or lacks an element, and for one that was probably cut off or, by default, is not UTF-8.
    explicit VelkSystem(const std::vector<std::string> &fileNames,
                        const VelkSystemOptions &options = VelkSystemOptions());
    /// The system that a system file describes, as VelkSystemFile tells: read with its options, and asked with its
    /// limits, exclusions and accepted findings. Throws as VelkSystemFile::read() and the constructor do,
    /// and for an exclusion that is not there.
    static VelkSystem open(const std::string &fileName);
    ~VelkSystem();
    VelkSystem(const VelkSystem &other);
    VelkSystem &operator=(const VelkSystem &other);
    /// One that was moved from may be assigned to or destroyed, nothing else.
    VelkSystem(VelkSystem &&other) noexcept;
    VelkSystem &operator=(VelkSystem &&other) noexcept;

    std::vector<std::string> fileNames() const; ///< as given
    VelkSystemOptions options() const;          ///< as given
    VelkSearchOptions searchOptions() const;    ///< with the limits of the system file, if it was opened from one
    /// What was completed, dropped or is listed more than once, in the order of the files, each as
    /// VelkRouting::warnings() has it.
    std::vector<std::string> warnings() const;

    /// The components with all these properties, by reference; all of them without properties. The reference, the value
    /// and the part are asked for as the properties "ref", "value" and "part".
    std::vector<VelkComponentInfo> components(const std::map<std::string, std::string> &properties = {}) const;
    /// The parts of these components, by name.
    std::vector<VelkPartInfo> parts(const std::map<std::string, std::string> &properties = {}) const;
    /// The nets on which one of these components lies, in the order in which the files and their joining give them.
    std::vector<VelkNetInfo> nets(const std::map<std::string, std::string> &properties = {}) const;

    /// The component of this reference. This and the next two throw a VelkSystemException where there is none or,
    /// without its suffix, more than one.
    VelkComponentInfo component(const std::string &ref) const;
    VelkPartInfo part(const std::string &name) const; ///< the part of this name
    /// The net of this name or, of nets that are plugged together, of one that it is made of: "OUT#1+IN#2", "IN#2".
    VelkNetInfo net(const std::string &name) const;
    /// The pins of the component \a ref, in the order of its part. Throws as component() does.
    std::vector<VelkPlacedPin> pins(const std::string &ref) const;
    /// The pin that routes() takes this end for. Throws as routes() does.
    VelkNodeInfo pin(const VelkRouteEnd &end) const;

    /// Keeps components out of all that this object is asked from now on about routes: each a reference or, as
    /// "KEY=VALUE", all components with the property. What is left are the other routes, in their order. Copies get it,
    /// and are then set on their own; the files are not read again. Not to be called while another thread asks this
    /// object. Throws a VelkSystemException for what is not there, changing nothing.
    void setExcludedComponents(const std::vector<std::string> &components);
    std::vector<std::string> excludedComponents() const; ///< their references; at first those of the system file
    /// Keeps nets out in the same way, as first and last ones of a route too. Each is a name that net() takes; where
    /// several nets have it, all are meant.
    void setExcludedNets(const std::vector<std::string> &names);
    std::vector<std::string> excludedNets() const; ///< their whole names; at first those of the system file

    /// The routes from one pin to the other: those of the fewest switches first, among them those of the fewest side
    /// connections, then in the order in which they are found. No route is an empty list. Unless
    /// VelkSearchOptions::asDrawn is set, these are the ways that relays can take: each step is over a contact of one
    /// of the relay's positions, and no relay is in two; those of which nothing tells the positions are crossed as
    /// drawn.
    ///
    /// Throws a VelkSystemException where an end is not there, the search was called off or, unless as drawn, positions
    /// of relays are wrong. The first call finds out what all relays do.
    std::vector<VelkRoute> routes(const VelkRouteEnd &source, const VelkRouteEnd &dut,
                                  const VelkSearchOptions &options) const;
    /// The same with searchOptions().
    std::vector<VelkRoute> routes(const VelkRouteEnd &source, const VelkRouteEnd &dut) const;

    /// Why routes() finds none between these pins with these options; of pins that have routes it tells the shortest.
    /// Where it was called off it tells what is known by then. Throws a VelkSystemException where an end is not there.
    VelkNoRouteReason whyNoRoute(const VelkRouteEnd &source, const VelkRouteEnd &dut,
                                 const VelkSearchOptions &options) const;
    /// The same with searchOptions().
    VelkNoRouteReason whyNoRoute(const VelkRouteEnd &source, const VelkRouteEnd &dut) const;

    /// Over how few switches each pin of a source reaches each pin of a DUT, both as far as they lie on a net: those of
    /// the first route that routes() finds with these options. Without such pins its lists are empty. Throws a
    /// VelkSystemException as routes() does.
    VelkCoverage coverage(const VelkCoverageOptions &options) const;
    /// The same for all sources and DUTs, with searchOptions().
    VelkCoverage coverage() const;

    /// What the relay of this reference can do. Throws as component() does.
    VelkRelayPositions positions(const std::string &ref) const;
    /// References of all relays of which, or of another of whose gang, nothing tells the positions; sorted.
    std::vector<std::string> unknownRelays() const;
    /// What is wrong with the positions of relays, each as "K5#2: field Positions, column 3 of '/ 12': expected
    /// PIN-PIN, not '12'".
    std::vector<std::string> positionErrors() const;

    /// What is connected while these relays, by their references, take these positions, 0 being rest, and all others
    /// are at rest. Relays of one gang move together: it is enough to name one of them. Throws a VelkSystemException
    /// for a component or position that is not there, for two positions of a gang, and where positions of relays are
    /// wrong.
    VelkConnections connected(const std::map<std::string, int> &positions) const;

    /// What the system may hold and an engineer hardly means, by code, as `velk check` finds it. What \a ignored names
    /// is left out, with what the system file names: a text is "CODE", or "CODE:NAME" for what is found at NAME, with
    /// wild cards "*" and "?". The files are read once more, to find any that are given twice.
    std::vector<VelkFinding> check(const std::vector<std::string> &ignored = {}) const;

    /// The physical INI file of the resource manager: a section for each device. References have their suffix only
    /// where there are several files.
    std::string physicalIni() const;
    /// Writes it to a file, which is left as it was where that fails. Throws a VelkSystemException then, and for what
    /// is there but no file, as a folder, a pipe or a device.
    void writePhysicalIni(const std::string &fileName) const;

    /// The application INI file of the resource manager: the sources are those of this system, the DUTs those of \a
    /// application, with its dutTypes. The two are named by their files. Throws a VelkSystemException for a bench
    /// number that would make more than 10,000 benches or 5,000,000 entries.
    std::string applicationIni(const VelkSystem &application) const;
    /// Writes it to a file, as writePhysicalIni() does.
    void writeApplicationIni(const std::string &fileName, const VelkSystem &application) const;

private:
    friend class SystemModel; // which libraries on top of this one see it by
    std::shared_ptr<const VelkSystemPrivate> d;
    std::shared_ptr<const VelkSystemFile> systemFile; // null where it was not opened from one
};
}

#endif
