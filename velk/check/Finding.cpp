#include <velk/check/Finding.h>

#include <velk/check/Wording.h>

using namespace Qt::StringLiterals;

namespace Velk {

namespace {

struct Kind
{
    FindingCode code;
    const char *name;
    const char *advice;
};

/// In the order of their codes.
constexpr Kind kinds[] = {
    {FindingCode::SameNetlistTwice, "same-netlist-twice",
     "Give each netlist once; its connectors are plugged into those of its copy, which hides other findings."},
    {FindingCode::ListedTwice, "listed-twice",
     "Give every component a reference and every part a name of its own; --tolerant takes nets of one name for "
     "one."},
    {FindingCode::JoinedByEmptyIdentifier, "joined-by-empty-identifier",
     "Give every connector an Identifier; components without one count as the same connector."},
    {FindingCode::IdentifierMissing, "identifier-missing",
     "Give the connector the Identifier of the one that it is plugged into."},
    {FindingCode::IdentifierTwice, "identifier-twice",
     "Give each connector of a board an Identifier of its own; these are joined pin by pin."},
    {FindingCode::IdentifierOnOtherType, "identifier-on-other-type",
     "Make it a connector (CompType, --connector), or take the Identifier away."},
    {FindingCode::NodeOnTwoNets, "node-on-two-nets",
     "Give every component a reference and every pin a number of its own; a connector joins such nets, and a route "
     "that arrives at another pin goes on from the first net only."},
    {FindingCode::ConnectorPinsSwapped, "connector-pins-swapped",
     "Look at the pins of both connectors; nets of one name meet at most others, but at these each meets "
     "another's."},
    {FindingCode::PositionsWrong, "positions-wrong",
     "Write the positions as PIN-PIN pairs, with '/' between the positions and the one at rest first; routes and "
     "states "
     "are refused until then."},
    {FindingCode::GangDiffers, "gang-differs",
     "Give the relays of a Gang the same number of positions; routes and states are refused until then."},
    {FindingCode::CoilCrossed, "coil-crossed",
     "Number the coil's pins A1 and A2 and those of the contacts as in 11 12 14, or list the positions in a field "
     "Positions."},
    {FindingCode::PositionsUnknown, "positions-unknown",
     "List the positions in a field Positions or a table of relays, or number the pins as in 11 12 14."},
    {FindingCode::GangOnce, "gang-once",
     "Give all relays that are one the same Gang, on one sheet; a relay by itself needs none."},
    {FindingCode::IdentifierOnce, "identifier-once",
     "Give all boards of the system, and both connectors the same Identifier; nothing is plugged in here."},
    {FindingCode::ConnectorPinsDiffer, "connector-pins-differ",
     "Give both connectors the same pin numbers, as text ('01' is not '1'); the nets of these pins end here."},
    {FindingCode::NoType, "no-type",
     "Give the component a CompType; no route passes through it, and it is no source, DUT or connector."},
    {FindingCode::NotPopulated, "not-populated",
     "Give what is not there another CompType; the mark parts no connectors, and ways as drawn lead through it."},
    {FindingCode::SimilarNames, "similar-names",
     "Write the name as it is written elsewhere; names are compared letter by letter."},
    {FindingCode::PinOnNoNet, "pin-on-no-net",
     "Draw the pin's wire or place the symbol's missing unit; no route leads through the pin."},
    {FindingCode::SourceWithoutDevice, "source-without-device",
     "Give the source Dev and DevNo; they name its signals in the application INI."},
    {FindingCode::DutWithoutBench, "dut-without-bench",
     "Give the DUT a Bench from 1 on, by a field or by its sheet's name; it is on no channel table."},
    {FindingCode::DutWithoutName, "dut-without-name",
     "Give the DUT Group and Identifier; they name its signals in the application INI."},
    {FindingCode::DuplicateIniKey, "duplicate-ini-key",
     "Tell the components apart by Dev, DevNo, Channel or Group, and their pins by name."},
    {FindingCode::BenchWithoutDut, "bench-without-dut",
     "Number the benches without gaps from 1 on; each number left out makes an empty bench, and too many no file."},
    {FindingCode::PinAloneOnNet, "pin-alone-on-net", "Draw the pin's wire, or give its label to what it should meet."},
    {FindingCode::PinNotWired, "pin-not-wired", "Draw the pin's wire; ignore the code where pins stay free."},
};

const Kind &kindOf(FindingCode code)
{
    return kinds[static_cast<int>(code)];
}
}

Finding::Finding(FindingCode findingCode, const QStringList &foundAt, const QString &what)
    : code(findingCode)
    , places(foundAt)
    , text(what)
{
}

Finding::~Finding() = default;
Finding::Finding(const Finding &other) = default;
Finding &Finding::operator=(const Finding &other) = default;
Finding::Finding(Finding &&other) noexcept = default;
Finding &Finding::operator=(Finding &&other) noexcept = default;

QString Finding::name() const
{
    return QString::fromLatin1(kindOf(code).name);
}

QString Finding::advice() const
{
    return QString::fromLatin1(kindOf(code).advice);
}

QString Finding::placesText() const
{
    return listed(places);
}

QString Finding::message() const
{
    return u"%1: %2"_s.arg(placesText(), text);
}

QStringList Finding::names()
{
    QStringList names;
    for (const Kind &kind : kinds)
        names.append(QString::fromLatin1(kind.name));
    return names;
}
}
