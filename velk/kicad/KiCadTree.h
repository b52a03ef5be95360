#ifndef VELK_KICAD_KICADTREE_H
#define VELK_KICAD_KICADTREE_H

#include <velk/kicad/KiCadToken.h>

#include <QList>
#include <QSharedPointer>
#include <QString>

namespace Velk {

/// A tree of KiCadToken, to be gone through and changed as KiCadTokens are.
class KiCadTree
{
public:
    /// One of its tokens, or none.
    class Token
    {
    public:
        Token(KiCadToken *pointer = nullptr)
            : token(pointer)
        {
        }
        Token(const QSharedPointer<KiCadToken> &pointer)
            : token(pointer.data())
        {
        }
        operator KiCadToken *() const { return token; }
        KiCadToken *operator->() const { return token; }

    private:
        KiCadToken *token;
    };

    /// The caller keeps it alive; null is an empty tree.
    explicit KiCadTree(Token tree)
        : rootToken(tree)
    {
    }

    Token root() const { return rootToken; }
    static const QString &name(Token token) { return token->name; }
    static const QString &value(Token token) { return token->value; }
    static const QString &text(Token token) { return token->value; }
    static const QList<QSharedPointer<KiCadToken>> &children(Token token) { return token->children; }

    static Token append(Token parent, const QString &name, const QString &value = {})
    {
        return parent->append(name, value);
    }
    static void setValue(Token token, const QString &value) { token->value = value; }
    static void appendChildren(Token token, Token other) { token->children.append(other->children); }
    template <typename Predicate>
    static void removeChildren(Token token, Predicate isUnwanted)
    {
        token->children.removeIf([&](const QSharedPointer<KiCadToken> &child) { return isUnwanted(Token(child)); });
    }

private:
    Token rootToken;
};
}

#endif
