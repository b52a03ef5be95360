#include <velk/model/EDANet.h>

#include <QScopedArrayPointer>
#include <QStringList>

using namespace Qt::StringLiterals;

template class QEnableSharedFromThis<Velk::EDANet>;

namespace Velk {

EDANet::EDANet() = default;
EDANet::~EDANet() = default;
EDANet::EDANet(const EDANet &other) = default;
EDANet &EDANet::operator=(const EDANet &other) = default;
EDANet::EDANet(EDANet &&other) noexcept = default;
EDANet &EDANet::operator=(EDANet &&other) noexcept = default;

QSharedPointer<EDANet> EDANet::create(const QString &name)
{
    auto net = QSharedPointer<EDANet>::create();
    net->name = name;
    return net;
}

QSharedPointer<EDANet> EDANet::addNode(const QString &ref, const QString &pin)
{
    nodes.append(EDANetNode::create(ref, pin));
    return sharedFromThis();
}

QSharedPointer<EDANetNode> EDANet::findNode(const QString &ref, const QString &pin) const
{
    for (const auto &node : nodes) {
        if (node && node->matches(ref, pin))
            return node;
    }
    return {};
}

bool EDANet::containsNode(const QSharedPointer<EDANetNode> &node) const
{
    return !findNode(node->ref, node->pin).isNull();
}

QList<QSharedPointer<EDANetNode>> EDANet::otherNodes(const QSharedPointer<EDANetNode> &node) const
{
    QList<QSharedPointer<EDANetNode>> others;
    others.reserve(nodes.size());
    for (const auto &other : nodes) {
        if (other && other != node)
            others.append(other);
    }
    return others;
}

QSharedPointer<EDANet> EDANet::clone() const
{
    auto copy = create(name);
    copy->nodes.reserve(nodes.size());
    for (const auto &node : nodes) {
        if (node)
            copy->nodes.append(node->clone());
    }
    return copy;
}
}

bool operator==(const QSharedPointer<Velk::EDANet> &a, const QSharedPointer<Velk::EDANet> &b)
{
    if (a.isNull() || b.isNull())
        return a.isNull() && b.isNull();
    return a->name == b->name && a->nodes == b->nodes;
}

bool operator!=(const QSharedPointer<Velk::EDANet> &a, const QSharedPointer<Velk::EDANet> &b)
{
    return !(a == b);
}

char *toString(const QSharedPointer<Velk::EDANet> &net)
{
    if (net.isNull())
        return qstrdup("EDANet(nullptr)");
    QStringList nodeTexts;
    nodeTexts.reserve(net->nodes.size());
    for (const auto &node : std::as_const(net->nodes))
        nodeTexts.append(QString::fromLatin1(QScopedArrayPointer<char>(toString(node)).data()));
    const QString text = u"EDANet('%1', [%2])"_s.arg(net->name, nodeTexts.join(u", "_s));
    return qstrdup(text.toLatin1().constData());
}
