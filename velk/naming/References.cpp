#include <velk/naming/References.h>

namespace Velk {

QStringList refsOf(const QList<QSharedPointer<EDAComponent>> &components)
{
    QStringList refs;
    for (const auto &component : components)
        refs.append(component->ref);
    return refs;
}
}
