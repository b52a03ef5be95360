#include <velk/kicad/KiCadTokens.h>

#include <algorithm>
#include <limits>
#include <new>

namespace Velk {

namespace {

quint32 toNumber(std::size_t size)
{
    if (size > std::numeric_limits<quint32>::max())
        throw std::bad_alloc();
    return static_cast<quint32>(size);
}

// All names that KiCad writes differ in it.
constexpr std::size_t mostRecentNames = 4096;

std::size_t placeOf(QStringView name)
{
    if (name.isEmpty())
        return 0;
    const auto unit = [name](qsizetype i) { return static_cast<std::size_t>(name.at(i).unicode()); };
    const auto last = name.size() - 1;
    const auto hash = static_cast<std::size_t>(last) + 31 * unit(0) + 961 * unit((last + 1) / 2) + 29791 * unit(last);
    return hash % mostRecentNames;
}

bool isEqual(QStringView a, QStringView b)
{
    return std::equal(a.cbegin(), a.cend(), b.cbegin(), b.cend());
}
}

KiCadTokens::KiCadTokens()
    : entries(1)
    , names(1)
    , recentNames(mostRecentNames)
{
}

KiCadTokens::Token KiCadTokens::append(Token parent, QStringView name)
{
    const auto token = static_cast<Token>(toNumber(entries.size()));
    entries.emplace_back(numberOfName(name), toNumber(valuesTaken), toNumber(values.size() - valuesTaken));
    valuesTaken = values.size();
    link(parent, token);
    return token;
}

KiCadTokens::Token KiCadTokens::append(Token parent, QStringView name, QStringView value)
{
    addToNextValue(value);
    return append(parent, name);
}

quint32 KiCadTokens::numberOfName(QStringView name)
{
    quint32 &recent = recentNames[placeOf(name)];
    if (!isEqual(names[recent], name)) {
        recent = toNumber(names.size());
        names.push_back(name.toString());
    }
    return recent;
}

void KiCadTokens::setValue(Token token, QStringView value)
{
    addToNextValue(value);
    entries[token].valueStart = toNumber(valuesTaken);
    entries[token].valueLength = toNumber(values.size() - valuesTaken);
    valuesTaken = values.size();
}

void KiCadTokens::link(Token parent, Token child)
{
    Entry &entry = entries[parent];
    (entry.firstChild ? entries[entry.lastChild].next : entry.firstChild) = child;
    entry.lastChild = child;
    entries[child].next = {};
}

void KiCadTokens::appendChildren(Token token, Token other)
{
    removeChildren(other, [this, token](Token child) {
        link(token, child);
        return true;
    });
}

QSharedPointer<KiCadToken> KiCadTokens::toTreeToken(Token token) const
{
    auto made = QSharedPointer<KiCadToken>::create(name(token));
    made->value = text(token);
    qsizetype count = 0;
    for (Token child = entries[token].firstChild; child; child = entries[child].next)
        ++count;
    if (count > 0)
        made->children.reserve(count);
    return made;
}

QSharedPointer<KiCadToken> KiCadTokens::toTree() const
{
    struct OpenToken
    {
        KiCadToken *made;
        Token nextChild;
    };
    if (!root())
        return {};
    auto tree = toTreeToken(root());
    std::vector<OpenToken> open{{tree.data(), entries[root()].firstChild}};
    while (!open.empty()) {
        const auto [parent, child] = open.back();
        if (!child) {
            open.pop_back();
            continue;
        }
        open.back().nextChild = entries[child].next;
        parent->children.append(toTreeToken(child));
        if (const Token first = entries[child].firstChild)
            open.push_back({parent->children.constLast().data(), first});
    }
    return tree;
}
}
