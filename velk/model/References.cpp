#include <velk/model/References.h>

namespace Velk {

namespace {

/// Where the "#n" begins with which the name ends, or its end.
qsizetype suffixOf(const QString &name)
{
    qsizetype digits = name.size();
    while (digits > 0 && name.at(digits - 1) >= u'0' && name.at(digits - 1) <= u'9')
        --digits;
    const bool hasSuffix = digits > 0 && digits < name.size() && name.at(digits - 1) == u'#';
    return hasSuffix ? digits - 1 : name.size();
}
}

QString drawnName(const QString &name)
{
    return name.left(suffixOf(name));
}

int netlistOf(const QString &name)
{
    return name.mid(suffixOf(name) + 1).toInt();
}
}
