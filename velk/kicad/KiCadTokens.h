#ifndef VELK_KICAD_KICADTOKENS_H
#define VELK_KICAD_KICADTOKENS_H

#include <velk/kicad/KiCadToken.h>
#include <velk/kicad/TextPool.h>

#include <QSharedPointer>
#include <QString>
#include <QStringView>

#include <string>
#include <vector>

namespace Velk {

/// The tokens of a netlist as a flat list: what reading fills and parsing goes through, in a fraction of the memory of
/// a tree. KiCadTree can be gone through and changed in the same way.
class KiCadTokens
{
public:
    /// One of them by its number; 0 for none.
    enum Token : quint32
    {
    };

    /// The children of a token, for a range-based for; they may be given children meanwhile.
    class Children
    {
    public:
        Children begin() const { return *this; }
        Children end() const { return {tokens, {}}; }
        Token operator*() const { return child; }
        bool operator!=(const Children &other) const { return child != other.child; }
        Children &operator++()
        {
            child = tokens.entries[child].next;
            return *this;
        }

    private:
        friend class KiCadTokens;
        Children(const KiCadTokens &list, Token first)
            : tokens(list)
            , child(first)
        {
        }
        const KiCadTokens &tokens;
        Token child;
    };

    KiCadTokens();

    /// The first token outside all others.
    Token root() const { return entries.front().firstChild; }
    bool hasSeveralRoots() const { return entries.front().firstChild != entries.front().lastChild; }
    const QString &name(Token token) const { return names[entries[token].name]; } ///< empty for none
    QStringView value(Token token) const
    {
        return {values.data() + entries[token].valueStart, static_cast<qsizetype>(entries[token].valueLength)};
    }
    /// The value, which may share its memory with equal ones; a null text for an empty one.
    QString text(Token token) const { return texts.textOf(value(token)); }
    Children children(Token token) const { return {*this, entries[token].firstChild}; }

    /// Adds to the value of the token that is appended next.
    void addToNextValue(QStringView text) { values.append(text.utf16(), static_cast<std::size_t>(text.size())); }
    /// Adds a last child; to no token a further root. Throws std::bad_alloc above four thousand million tokens or
    /// UTF-16 units of values.
    Token append(Token parent, QStringView name);
    Token append(Token parent, QStringView name, QStringView value);
    /// Nothing may wait for the next token.
    void setValue(Token token, QStringView value);
    /// Moves the children of another token behind those of this one.
    void appendChildren(Token token, Token other);
    /// Asks for each child, in order, whether it is to be removed. No children may be added meanwhile.
    template <typename Predicate>
    void removeChildren(Token token, Predicate isUnwanted);

    /// A new tree of the same tokens, from the first root; null if there is none.
    QSharedPointer<KiCadToken> toTree() const;

private:
    struct Entry
    {
        Entry() = default;
        // Made where it stands: to write it elsewhere and copy it slows all of loading by a tenth.
        Entry(quint32 nameOfToken, quint32 start, quint32 length)
            : name(nameOfToken)
            , valueStart(start)
            , valueLength(length)
        {
        }

        quint32 name = 0; ///< among the names
        quint32 valueStart = 0;
        quint32 valueLength = 0;
        Token firstChild = {};
        Token lastChild = {};
        Token next = {}; ///< child of the same parent
    };

    quint32 numberOfName(QStringView name);
    void link(Token parent, Token child);
    QSharedPointer<KiCadToken> toTreeToken(Token token) const;

    std::vector<Entry> entries; ///< the first one, which is none, has the roots as its children
    std::vector<QString> names; ///< each once as far as it comes up again soon; the first one is empty
    std::vector<quint32> recentNames;
    std::u16string values;
    std::size_t valuesTaken = 0; ///< by tokens; what follows is for the next one
    mutable TextPool texts;
};

template <typename Predicate>
void KiCadTokens::removeChildren(Token token, Predicate isUnwanted)
{
    Token child = entries[token].firstChild;
    entries[token].firstChild = {};
    entries[token].lastChild = {};
    while (child) {
        const Token following = entries[child].next;
        if (!isUnwanted(child))
            link(token, child);
        child = following;
    }
}
}

#endif
