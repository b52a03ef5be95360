#include <velk/kicad/KiCadToken.h>

#include <velk/kicad/KiCadPath.h>
#include <velk/kicad/KiCadTree.h>

#include <utility>

using namespace Qt::StringLiterals;

namespace Velk {

KiCadToken::KiCadToken() = default;

KiCadToken::KiCadToken(const QString &tokenName)
    : name(tokenName)
{
}

KiCadToken::KiCadToken(const QString &tokenName, const QString &tokenValue)
    : name(tokenName)
    , value(tokenValue)
{
}

KiCadToken::~KiCadToken()
{
    // A tree falls level by level: while an outer destructor on this thread is at work, the inner ones hand
    // their children to its list instead of descending, so the stack stays flat however deep the tree is.
    thread_local QList<QSharedPointer<KiCadToken>> *pending = nullptr;

    if (children.isEmpty())
        return;
    if (pending) {
        pending->append(std::move(children));
        return;
    }
    auto mine = std::move(children);
    pending = &mine;
    while (!mine.isEmpty())
        mine.takeLast();
    pending = nullptr;
}

KiCadToken::KiCadToken(const KiCadToken &other) = default;
KiCadToken &KiCadToken::operator=(const KiCadToken &other) = default;
KiCadToken::KiCadToken(KiCadToken &&other) noexcept = default;
KiCadToken &KiCadToken::operator=(KiCadToken &&other) noexcept = default;

QSharedPointer<KiCadToken> KiCadToken::append(const QSharedPointer<KiCadToken> &token)
{
    children.append(token);
    return token;
}

QSharedPointer<KiCadToken> KiCadToken::append(const QString &childName, const QString &childValue)
{
    return append(QSharedPointer<KiCadToken>::create(childName, childValue));
}

QSharedPointer<KiCadToken> KiCadToken::append(const QString &childName)
{
    return append(childName, QString());
}

QSharedPointer<KiCadToken> KiCadToken::find(const QString &path)
{
    const KiCadTree::Token found = KiCadPath(path).findFrom(KiCadTree(this), this);
    return found ? found->sharedFromThis() : QSharedPointer<KiCadToken>();
}

namespace {

using Token = QSharedPointer<KiCadToken>;

bool sameApartFromChildren(const Token &a, const Token &b)
{
    if (a.isNull() || b.isNull())
        return a.isNull() && b.isNull();
    return a->name == b->name && a->value == b->value && a->children.size() == b->children.size();
}

bool shareChildren(const Token &a, const Token &b)
{
    return a.isNull() || a->children.constData() == b->children.constData();
}

bool holdsNull(const Token &token)
{
    return token->name.contains(QChar::Null) || token->value.contains(QChar::Null);
}

// What is printed ends at a NUL, which for a child means that its own text does and the parent's goes on.
QString opening(const Token &token)
{
    if (token.isNull())
        return u"KiCadToken(nullptr)"_s;
    const QString text = u"KiCadToken('%1', '%2'"_s.arg(token->name, token->value);
    if (holdsNull(token))
        return text.left(text.indexOf(QChar::Null));
    return text + (token->children.isEmpty() ? u")"_s : u", ["_s);
}

bool hasMoreToPrint(const Token &token)
{
    return token && !token->children.isEmpty() && !holdsNull(token);
}

struct OpenToken
{
    const KiCadToken *token;
    qsizetype nextChild;
};
}
}

bool operator==(const QSharedPointer<Velk::KiCadToken> &a, const QSharedPointer<Velk::KiCadToken> &b)
{
    QList<std::pair<Velk::Token, Velk::Token>> pending{{a, b}};
    while (!pending.isEmpty()) {
        const auto [left, right] = pending.takeLast();
        if (!Velk::sameApartFromChildren(left, right))
            return false;
        if (Velk::shareChildren(left, right))
            continue;
        for (qsizetype i = 0; i < left->children.size(); ++i)
            pending.append({left->children.at(i), right->children.at(i)});
    }
    return true;
}

bool operator!=(const QSharedPointer<Velk::KiCadToken> &a, const QSharedPointer<Velk::KiCadToken> &b)
{
    return !(a == b);
}

char *toString(const QSharedPointer<Velk::KiCadToken> &token)
{
    QString text = Velk::opening(token);
    QList<Velk::OpenToken> open;
    if (Velk::hasMoreToPrint(token))
        open.append({token.data(), 0});
    while (!open.isEmpty()) {
        auto &[parent, next] = open.last();
        if (next == parent->children.size()) {
            text += u"])"_s;
            open.removeLast();
            continue;
        }
        if (next > 0)
            text += u", "_s;
        const auto &child = parent->children.at(next++);
        text += Velk::opening(child);
        if (Velk::hasMoreToPrint(child))
            open.append({child.data(), 0});
    }
    return qstrdup(text.toLatin1().constData());
}
