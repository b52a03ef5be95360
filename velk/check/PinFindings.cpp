#include <velk/check/PinFindings.h>

#include <QMap>
#include <QSet>

#include <utility>

using namespace Qt::StringLiterals;

namespace Velk {

namespace {

QStringList netsAt(const CheckedSystem &system, int component, const QSet<QString> &pins)
{
    QStringList nets;
    for (const auto &node : system.nodesOf(component)) {
        if (pins.contains(node.pin))
            nets.append(system.net(node.net).name);
    }
    return nets;
}
}

QList<SingleFinding> pinFindings(const CheckedSystem &system, FindingCode code, const QString &text,
                                 const std::function<QStringList(int component)> &pinsOf)
{
    QMap<std::pair<QString, QStringList>, QList<int>> components;
    for (int i = 0; i < system.componentCount(); ++i) {
        const auto &component = system.component(i);
        if (!system.types().isSwitchable(component))
            continue;
        const QStringList pins = pinsOf(i);
        if (!pins.isEmpty())
            components[{component.part, pins}].append(i);
    }
    QList<SingleFinding> findings;
    int group = 0;
    for (auto it = components.cbegin(); it != components.cend(); ++it) {
        const QStringList &pins = it.key().second;
        auto ofEach = findingsOfEach(code, system.refsOf(it.value()), text + listedPins(pins), ++group);
        const QSet<QString> pinSet(pins.cbegin(), pins.cend());
        for (qsizetype i = 0; i < ofEach.size(); ++i) {
            ofEach[i].nets = netsAt(system, it.value().at(i), pinSet);
            ofEach[i].pins = pins;
        }
        findings += ofEach;
    }
    return findings;
}

bool isOfUnwiredPin(const EDANet &net)
{
    return net.name.startsWith(u"unconnected-("_s);
}
}
