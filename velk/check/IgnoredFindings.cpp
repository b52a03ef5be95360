#include <velk/check/IgnoredFindings.h>

#include <velk/naming/References.h>
#include <velk/naming/Suggestions.h>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace Velk {

namespace {

/// In time of the product of the lengths at most: after a star only the last one is tried again.
bool matchesWildCards(const QString &text, const QString &pattern)
{
    qsizetype at = 0;
    qsizetype inPattern = 0;
    qsizetype behindStar = -1;
    qsizetype retriedAt = 0;
    while (at < text.size()) {
        const QChar wanted = inPattern < pattern.size() ? pattern.at(inPattern) : QChar();
        if (wanted == u'*') {
            behindStar = ++inPattern;
            retriedAt = at;
        } else if (inPattern < pattern.size() && (wanted == u'?' || wanted == text.at(at))) {
            ++inPattern;
            ++at;
        } else if (behindStar >= 0) {
            inPattern = behindStar;
            at = ++retriedAt;
        } else {
            return false;
        }
    }
    return std::all_of(pattern.cbegin() + inPattern, pattern.cend(), [](QChar c) { return c == u'*'; });
}

/// As it is drawn, or with the number of its netlist.
bool isNamedBy(const QString &name, const QString &pattern)
{
    return matchesWildCards(name, pattern) || matchesWildCards(drawnName(name), pattern);
}

bool isAnyNamedBy(const QStringList &names, const QString &pattern)
{
    return std::any_of(names.cbegin(), names.cend(), [&](const QString &name) { return isNamedBy(name, pattern); });
}

}

IgnoredFindings::IgnoredFindings(const QStringList &texts)
{
    for (const QString &text : texts) {
        const QString code = text.section(u':', 0, 0);
        rules.push_back({text, code, text == code ? u"*"_s : text.mid(code.size() + 1)});
    }
}

void IgnoredFindings::removeFrom(QList<SingleFinding> &findings)
{
    findings.removeIf([this](const SingleFinding &finding) { return accepts(finding); });
}

bool IgnoredFindings::accepts(const SingleFinding &finding)
{
    const QString code = finding.name();
    if (!acceptsAll(code, finding.places) && !acceptsAll(code, finding.nets))
        return false;
    for (Rule &rule : rules) {
        if (rule.code == code && isAnyNamedBy(finding.places + finding.nets, rule.pattern))
            rule.isUsed = true;
    }
    return true;
}

bool IgnoredFindings::acceptsAll(const QString &code, const QStringList &names) const
{
    const auto isAccepted = [&](const QString &name) {
        return std::any_of(rules.cbegin(), rules.cend(),
                           [&](const Rule &rule) { return rule.code == code && isNamedBy(name, rule.pattern); });
    };
    return !names.isEmpty() && std::all_of(names.cbegin(), names.cend(), isAccepted);
}

QStringList IgnoredFindings::notes(const QList<SingleFinding> &remaining) const
{
    QStringList notes;
    for (const Rule &rule : rules) {
        if (!rule.isUsed)
            notes.append(u"%1: leaves out nothing"_s.arg(rule.text) + reasonFor(rule, remaining));
    }
    return notes;
}

QString IgnoredFindings::reasonFor(const Rule &rule, const QList<SingleFinding> &remaining) const
{
    QStringList places;
    for (const SingleFinding &finding : remaining) {
        if (finding.name() != rule.code)
            continue;
        for (const QStringList &names : {finding.places, finding.nets}) {
            if (isAnyNamedBy(names, rule.pattern))
                return u", unless all of these are left out: "_s + listed(names);
        }
        places += finding.places;
    }
    return places.isEmpty() ? QString() : u"; there are "_s + enumeration(nearestFirst(rule.pattern, places));
}
}
