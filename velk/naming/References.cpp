#include <velk/naming/References.h>

namespace Velk {

QString drawnName(const QString &name)
{
    return name.left(name.lastIndexOf(u'#'));
}

int netlistOf(const QString &name)
{
    return name.mid(name.lastIndexOf(u'#') + 1).toInt();
}

QStringList refsOf(const QList<QSharedPointer<EDAComponent>> &components)
{
    QStringList refs;
    for (const auto &component : components)
        refs.append(component->ref);
    return refs;
}
}
