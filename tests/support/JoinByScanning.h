#ifndef VELK_TESTS_JOINBYSCANNING_H
#define VELK_TESTS_JOINBYSCANNING_H

#include <velk/model/EDAProvider.h>

#include <QStringList>

#include <algorithm>

inline QString suffixed(const QString &text, qsizetype position)
{
    return text + QLatin1Char('#') + QString::number(position + 1);
}

/// The joining as it is described: scan all pending nets for each connector node, again and again.
inline QList<QSharedPointer<Velk::EDANet>> joinByScanning(const QList<Velk::EDAProvider *> &boards,
                                                          const QStringList &connectorTypes)
{
    QMap<QString, QSharedPointer<Velk::EDAComponent>> components;
    QList<QSharedPointer<Velk::EDANet>> pending, joined;
    for (qsizetype i = 0; i < boards.size(); ++i) {
        for (const auto &component : boards.at(i)->getComponents())
            components.insert(suffixed(component->ref, i), component);
        for (const auto &net : boards.at(i)->getNets()) {
            pending.append(Velk::EDANet::create(suffixed(net->name, i)));
            for (const auto &node : std::as_const(net->nodes))
                pending.last()->addNode(suffixed(node->ref, i), node->pin);
        }
    }
    const auto meets = [&](const QSharedPointer<Velk::EDANetNode> &a, const QSharedPointer<Velk::EDANet> &net) {
        const auto first = components.value(a->ref);
        return std::any_of(net->nodes.cbegin(), net->nodes.cend(), [&](const auto &b) {
            const auto second = components.value(b->ref);
            return first && second && connectorTypes.contains(first->type(), Qt::CaseInsensitive) &&
                   first->identifier() == second->identifier() && a->pin == b->pin;
        });
    };
    while (!pending.isEmpty()) {
        auto group = QList{pending.takeFirst()};
        for (const auto &node : std::as_const(group.first()->nodes)) {
            for (qsizetype i = 0; i < pending.size();)
                meets(node, pending.at(i)) ? group.append(pending.takeAt(i)) : static_cast<void>(++i);
            if (group.size() > 1)
                break;
        }
        if (group.size() == 1) {
            joined.append(group.first());
            continue;
        }
        QStringList names;
        const auto net = Velk::EDANet::create({});
        for (const auto &member : std::as_const(group)) {
            names.append(member->name);
            net->nodes += member->nodes;
        }
        net->name = names.join(QLatin1Char('+'));
        pending.append(net);
    }
    return joined;
}

#endif
