#include "velk/check/Finding.h"

using namespace Qt::StringLiterals;

namespace VelkCli {

const std::vector<FindingKind> &findingKinds()
{
    static const std::vector<FindingKind> kinds{
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
        {FindingCode::PolesOrCoil, "poles-or-coil",
         "Draw each pole as a component of its own, and the coil as one with another CompType or none; routes cross a "
         "component from any pin to any other."},
        {FindingCode::IdentifierOnce, "identifier-once",
         "Give all boards of the system, and both connectors the same Identifier; nothing is plugged in here."},
        {FindingCode::ConnectorPinsDiffer, "connector-pins-differ",
         "Give both connectors the same pin numbers, as text ('01' is not '1'); the nets of these pins end here."},
        {FindingCode::NoType, "no-type",
         "Give the component a CompType; no route passes through it, and it is no source, DUT or connector."},
        {FindingCode::NotPopulated, "not-populated",
         "Give what is not there another CompType; the mark of the schematic takes nothing out of the system."},
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
        {FindingCode::PinAloneOnNet, "pin-alone-on-net",
         "Draw the pin's wire, or give its label to what it should meet."},
        {FindingCode::PinNotWired, "pin-not-wired", "Draw the pin's wire; ignore the code where pins stay free."},
    };
    return kinds;
}

std::vector<std::string> findingNames()
{
    std::vector<std::string> names;
    for (const auto &kind : findingKinds())
        names.emplace_back(kind.name);
    return names;
}

const FindingKind &kindOf(FindingCode code)
{
    return findingKinds().at(static_cast<std::size_t>(code));
}

QList<Finding> findingsOfEach(FindingCode code, const QStringList &refs, const QString &text, int group)
{
    QList<Finding> findings;
    for (const QString &ref : refs)
        findings.append({code, {ref}, text, {ref}, {}, {}, group});
    return findings;
}

QString messageOf(const Finding &finding)
{
    return u"%1: %2"_s.arg(listed(finding.places), finding.text);
}

QList<Finding> gathered(const QList<Finding> &findings)
{
    QList<Finding> result;
    for (const Finding &finding : findings) {
        const bool isOfGroup = finding.group != 0 && !result.isEmpty() && result.last().group == finding.group &&
                               result.last().code == finding.code;
        if (!isOfGroup) {
            result.append(finding);
            continue;
        }
        result.last().places += finding.places;
        result.last().refs += finding.refs;
        result.last().nets += finding.nets;
    }
    return result;
}

QString listed(const QStringList &names)
{
    constexpr qsizetype most = 5;
    if (names.size() <= most + 1) // the line is not shorter with "and 1 more"
        return names.join(u", "_s);
    return u"%1 and %2 more"_s.arg(names.first(most).join(u", "_s), QString::number(names.size() - most));
}

QString listedPins(const QStringList &numbers)
{
    QStringList quoted;
    for (const QString &number : numbers)
        quoted.append(u"'%1'"_s.arg(number));
    return (numbers.size() == 1 ? u"pin "_s : u"pins "_s) + listed(quoted);
}
}
