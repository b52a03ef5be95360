#include <velk/kicad/KiCadTreeBuilder.h>

#include <algorithm>
#include <iterator>
#include <utility>

namespace Velk {

bool KiCadTreeBuilder::read(QStringView piece)
{
    // The first test is for speed: nearly all text comes after the marks.
    const auto isMark = [](char16_t c) { return c <= u')' && (c == u'(' || c == u')' || c == u'"' || c == u'\n'); };
    const auto isMarkInQuotes = [](char16_t c) { return c <= u'"' && (c == u'"' || c == u'\n'); };

    const char16_t *start = piece.utf16();
    const char16_t *const end = start + piece.size();
    while (start != end) {
        const char16_t *const mark =
            outsideQuotes ? std::find_if(start, end, isMark) : std::find_if(start, end, isMarkInQuotes);
        (outsideQuotes ? text : quoted).append(start, mark);
        currentColumn += static_cast<int>(mark - start);
        if (mark == end)
            return true;
        if (!readMark(*mark))
            return false;
        start = mark + 1;
    }
    return true;
}

bool KiCadTreeBuilder::readMark(char16_t mark)
{
    if (mark == u'\n') {
        ++currentLine;
        currentColumn = 1;
        return true;
    }
    if (mark == u'"') {
        outsideQuotes = !outsideQuotes;
    } else {
        addToken();
        if (mark == u')') {
            if (stack.empty())
                return false;
            closeToken();
        }
    }
    ++currentColumn;
    return true;
}

void KiCadTreeBuilder::addToken()
{
    const QStringView name = QStringView(text).trimmed();
    if (name.isEmpty())
        return; // quoted stays: what follows a closed sub-list goes to the next token
    stack.push_back(
        {QSharedPointer<KiCadToken>::create(texts.textOf(name), texts.textOf(quoted)), finishedChildren.size()});
    text.clear();
    quoted.clear();
    if (root.isNull())
        root = stack.back().token;
}

void KiCadTreeBuilder::closeToken()
{
    const auto [token, firstChild] = std::move(stack.back());
    stack.pop_back();
    const auto first = finishedChildren.begin() + static_cast<std::ptrdiff_t>(firstChild);
    token->children.reserve(finishedChildren.end() - first);
    std::move(first, finishedChildren.end(), std::back_inserter(token->children));
    finishedChildren.erase(first, finishedChildren.end());
    if (!stack.empty())
        finishedChildren.push_back(token);
}

bool KiCadTreeBuilder::isComplete() const
{
    return stack.empty() && outsideQuotes && QStringView(text).trimmed().isEmpty();
}

QSharedPointer<KiCadToken> KiCadTreeBuilder::finish()
{
    while (!stack.empty())
        closeToken();
    return root;
}
}
