#ifndef VELK_TESTS_RELAYTEXT_H
#define VELK_TESTS_RELAYTEXT_H

#include "tests/support/StubProvider.h"

/// Adds a component, "REF TYPE PIN,PIN [KEY=VALUE ...]" with "_" for blanks in values, where "as=REF" gives it the part
/// of another one; or a net, "NET: REF/PIN REF/PIN".
inline void addLine(const QString &line, StubProvider &netlist)
{
    using namespace Qt::StringLiterals;
    const QStringList words = line.split(u' ');
    if (words.at(0).endsWith(u':')) {
        netlist.connect(words.at(0).chopped(1), words.mid(1));
        return;
    }
    const auto component = netlist.add(words.at(0), words.at(1), words.at(2).split(u','));
    for (const QString &property : words.mid(3))
        component->properties.insert(property.section(u'=', 0, 0), property.section(u'=', 1).replace(u'_', u' '));
    if (component->properties.contains(u"as"_s))
        component->part = u'P' + component->property(u"as"_s);
}

#endif
