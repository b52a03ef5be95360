#ifndef VELK_CHECK_IGNOREDFINDINGS_H
#define VELK_CHECK_IGNOREDFINDINGS_H

#include <velk/check/SingleFinding.h>

#include <QString>
#include <QStringList>

#include <vector>

namespace Velk {

/// What the user has accepted, as SystemCheck::setIgnored() takes it.
class IgnoredFindings
{
public:
    explicit IgnoredFindings(const QStringList &texts);

    /// Those whose places or whose nets are all accepted: that two nets are joined goes with both names only.
    void removeFrom(QList<SingleFinding> &findings);

    /// A line for each text that has removed nothing, with what it might mean of the findings that are left.
    QStringList notes(const QList<SingleFinding> &remaining) const;

private:
    struct Rule
    {
        QString text;
        QString code;
        QString pattern;
        bool isUsed = false;
    };

    bool accepts(const SingleFinding &finding);
    bool acceptsAll(const QString &code, const QStringList &names) const;
    QString reasonFor(const Rule &rule, const QList<SingleFinding> &remaining) const;

    std::vector<Rule> rules;
};
}

#endif
