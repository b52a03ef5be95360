#ifndef VELK_CLI_COMMANDS_IGNOREDFINDINGS_H
#define VELK_CLI_COMMANDS_IGNOREDFINDINGS_H

#include "velk/check/Finding.h"

#include <vector>

namespace VelkCli {

/// What the user has accepted: "CODE" is all that is found under a code, "CODE:NAME" what is found at a component, a
/// net or what else a message begins with. NAME is compared exactly, with "#n" or without, and may hold the wild cards
/// "*" and "?".
class IgnoredFindings
{
public:
    /// The codes are known ones.
    explicit IgnoredFindings(const QStringList &texts);

    /// Those whose places or whose nets are all accepted: that two nets are joined goes with both names only.
    void removeFrom(QList<Finding> &findings);

    /// A line for each text that has removed nothing, with what it might mean of the findings that are left.
    QStringList notes(const QList<Finding> &remaining) const;

private:
    struct Rule
    {
        QString text;
        QString code;
        QString pattern;
        bool isUsed = false;
    };

    bool accepts(const Finding &finding);
    bool acceptsAll(const QString &code, const QStringList &names) const;
    QString reasonFor(const Rule &rule, const QList<Finding> &remaining) const;

    std::vector<Rule> rules;
};
}

#endif
