#include <velk/kicad/KiCadTreeBuilder.h>

#include <algorithm>

namespace Velk {

namespace {

using Position = const char16_t *;

// In both, the first comparison decides for nearly all of the text.

Position findMarkInText(Position start, Position end)
{
    return std::find_if(start, end,
                        [](char16_t c) { return c <= u')' && (c == u'(' || c == u')' || c == u'"' || c == u'\n'); });
}

Position findMarkInQuotes(Position start, Position end)
{
    return std::find_if(start, end, [](char16_t c) { return c <= u'"' && (c == u'"' || c == u'\n'); });
}

Position skipSpaces(Position start, Position end)
{
    return std::find_if(start, end, [](char16_t c) { return c != u' '; });
}

void append(std::u16string &text, QStringView run)
{
    text.append(run.utf16(), static_cast<std::size_t>(run.size()));
}
}

bool KiCadTreeBuilder::read(QStringView piece)
{
    Position start = piece.utf16();
    const Position end = start + piece.size();
    lineStart = start;
    while (start != end) {
        if (outsideQuotes && text.empty())
            start = skipSpaces(start, end);
        const Position mark = outsideQuotes ? findMarkInText(start, end) : findMarkInQuotes(start, end);
        const QStringView run(start, mark);
        if (mark == end || *mark == u'"' || *mark == u'\n')
            append(outsideQuotes ? text : quoted, run);
        else if (!readParenthesis(mark, run))
            return false;
        if (mark == end)
            break;
        if (*mark == u'"')
            outsideQuotes = !outsideQuotes;
        else if (*mark == u'\n')
            startLine(mark + 1);
        start = mark + 1;
    }
    unitsBefore += end - lineStart;
    return true;
}

void KiCadTreeBuilder::startLine(const char16_t *start)
{
    ++currentLine;
    unitsBefore = 0;
    lineStart = start;
}

bool KiCadTreeBuilder::readParenthesis(const char16_t *parenthesis, QStringView textBefore)
{
    addToken(textBefore);
    if (*parenthesis == u'(')
        return true;
    if (tokens.isEmpty()) {
        currentColumn = static_cast<int>(unitsBefore + (parenthesis - lineStart) + 1);
        return false;
    }
    tokens.close();
    return true;
}

void KiCadTreeBuilder::addToken(QStringView lastText)
{
    QStringView name = lastText;
    if (!text.empty()) {
        append(text, lastText);
        name = text;
    }
    name = name.trimmed();
    if (!name.isEmpty()) {
        tokens.open(name, quoted);
        quoted.clear(); // else it stays: what follows a closed sub-list goes to the next token
    }
    text.clear();
}

bool KiCadTreeBuilder::isComplete() const
{
    return tokens.isEmpty() && !tokens.hasSeveralRoots() && outsideQuotes && QStringView(text).trimmed().isEmpty();
}
}
