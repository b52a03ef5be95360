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
    /// One of them, or none.
    class Token
    {
    public:
        Token() = default;
        explicit operator bool() const { return index != 0; }
        bool operator==(Token other) const { return index == other.index; }
        bool operator!=(Token other) const { return index != other.index; }

    private:
        friend class KiCadTokens;
        explicit Token(quint32 indexOfEntry)
            : index(indexOfEntry)
        {
        }
        quint32 index = 0;
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
            child = tokens.next(child);
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
    Token root() const { return firstChild({}); }
    bool hasSeveralRoots() const { return at({}).firstChild != at({}).lastChild; }
    const QString &name(Token token) const { return names[at(token).name]; } ///< empty for none
    QStringView value(Token token) const
    {
        return {values.data() + at(token).valueStart, static_cast<qsizetype>(at(token).valueLength)};
    }
    /// The value, which may share its memory with equal ones; a null text for an empty one.
    QString text(Token token) const { return texts.textOf(value(token)); }
    Children children(Token token) const { return {*this, firstChild(token)}; }

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
        Entry(quint32 nameOfToken, quint32 start, quint32 length)
            : name(nameOfToken)
            , valueStart(start)
            , valueLength(length)
        {
        }
        quint32 name = 0; ///< among the names
        quint32 valueStart = 0;
        quint32 valueLength = 0;
        quint32 firstChild = 0; ///< 0 for none, likewise the next two
        quint32 lastChild = 0;
        quint32 next = 0; ///< child of the same parent
    };

    const Entry &at(Token token) const { return entries[token.index]; }
    Token firstChild(Token token) const { return Token(at(token).firstChild); }
    Token next(Token token) const { return Token(at(token).next); }
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
    Token child = firstChild(token);
    entries[token.index].firstChild = 0;
    entries[token.index].lastChild = 0;
    while (child) {
        const Token following = next(child);
        if (!isUnwanted(child))
            link(token, child);
        child = following;
    }
}
}

#endif
