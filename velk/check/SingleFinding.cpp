#include <velk/check/SingleFinding.h>

#include <velk/naming/References.h>

#include <set>

namespace Velk {

namespace {

QList<int> netlistsOf(const Finding &finding)
{
    std::set<int> numbers(finding.netlists.cbegin(), finding.netlists.cend());
    for (const QString &name : finding.components + finding.nets)
        numbers.insert(netlistOf(name));
    return {numbers.cbegin(), numbers.cend()};
}
}

SingleFinding::SingleFinding(FindingCode findingCode, const QStringList &foundAt, const QString &what,
                             const QStringList &refs, const QStringList &netNames, const QStringList &pinNumbers)
    : Finding(findingCode, foundAt, what)
{
    components = refs;
    nets = netNames;
    pins = pinNumbers;
}

QList<SingleFinding> findingsOfEach(FindingCode code, const QStringList &refs, const QString &text, int group)
{
    QList<SingleFinding> findings;
    for (const QString &ref : refs) {
        findings.append({code, {ref}, text, {ref}});
        findings.last().group = group;
    }
    return findings;
}

QList<Finding> gathered(const QList<SingleFinding> &findings)
{
    QList<Finding> result;
    int group = 0;
    for (const SingleFinding &finding : findings) {
        if (finding.group == 0 || finding.group != group || finding.code != result.last().code) {
            result.append(finding);
            group = finding.group;
            continue;
        }
        result.last().places += finding.places;
        result.last().components += finding.components;
        result.last().nets += finding.nets;
    }
    for (Finding &finding : result)
        finding.netlists = netlistsOf(finding);
    return result;
}
}
