#include <velk/check/Wording.h>

using namespace Qt::StringLiterals;

namespace Velk {

QString listed(const QStringList &names)
{
    constexpr qsizetype most = 5;
    if (names.size() <= most + 1) // the line is not shorter with "and 1 more"
        return names.join(u", "_s);
    return u"%1 and %2 more"_s.arg(names.first(most).join(u", "_s), QString::number(names.size() - most));
}

QString listedPins(const QStringList &numbers)
{
    return (numbers.size() == 1 ? u"pin "_s : u"pins "_s) + listedInQuotes(numbers);
}

QString listedInQuotes(const QStringList &names)
{
    QStringList quoted;
    for (const QString &name : names)
        quoted.append(u"'%1'"_s.arg(name));
    return listed(quoted);
}
}
