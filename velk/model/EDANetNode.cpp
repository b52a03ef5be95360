#include <velk/model/EDANetNode.h>

using namespace Qt::StringLiterals;

namespace Velk {

EDANetNode::EDANetNode() = default;
EDANetNode::~EDANetNode() = default;
EDANetNode::EDANetNode(const EDANetNode &other) = default;
EDANetNode &EDANetNode::operator=(const EDANetNode &other) = default;
EDANetNode::EDANetNode(EDANetNode &&other) noexcept = default;
EDANetNode &EDANetNode::operator=(EDANetNode &&other) noexcept = default;

QSharedPointer<EDANetNode> EDANetNode::create(const QString &ref, const QString &pin)
{
    auto node = QSharedPointer<EDANetNode>::create();
    node->ref = ref;
    node->pin = pin;
    return node;
}

QSharedPointer<EDANetNode> EDANetNode::clone() const
{
    return QSharedPointer<EDANetNode>::create(*this);
}

bool EDANetNode::matches(const QString &wantedRef, const QString &wantedPin) const
{
    return ref == wantedRef && pin == wantedPin;
}
}

bool operator==(const QSharedPointer<Velk::EDANetNode> &a, const QSharedPointer<Velk::EDANetNode> &b)
{
    if (a.isNull() || b.isNull())
        return a.isNull() && b.isNull();
    return a->matches(b->ref, b->pin);
}

bool operator!=(const QSharedPointer<Velk::EDANetNode> &a, const QSharedPointer<Velk::EDANetNode> &b)
{
    return !(a == b);
}

char *toString(const QSharedPointer<Velk::EDANetNode> &node)
{
    if (node.isNull())
        return qstrdup("EDANetNode(nullptr)");
    return qstrdup(u"EDANetNode(%1, %2)"_s.arg(node->ref, node->pin).toLatin1().constData());
}
