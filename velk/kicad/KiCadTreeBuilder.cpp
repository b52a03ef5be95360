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
}

bool KiCadTreeBuilder::read(QStringView piece)
{
    Position start = piece.utf16();
    const Position end = start + piece.size();
    lineStart = start;
    while (start != end) {
        if (outsideQuotes && nameInPiece.isEmpty() && keptName.empty())
            start = skipSpaces(start, end);
        const Position mark = outsideQuotes ? findMarkInText(start, end) : findMarkInQuotes(start, end);
        const QStringView run(start, mark);
        if (outsideQuotes)
            addToName(run);
        else
            tokens.addToNextValue(run);
        if (mark == end)
            break;
        if (*mark == u'"')
            outsideQuotes = !outsideQuotes;
        else if (*mark == u'\n')
            startLine(mark + 1);
        else if (!readParenthesis(mark))
            return false;
        start = mark + 1;
    }
    keepName();
    unitsBefore += end - lineStart;
    return true;
}

void KiCadTreeBuilder::startLine(const char16_t *start)
{
    ++currentLine;
    unitsBefore = 0;
    lineStart = start;
}

void KiCadTreeBuilder::addToName(QStringView run)
{
    if (run.isEmpty())
        return;
    keepName();
    nameInPiece = run;
}

void KiCadTreeBuilder::keepName()
{
    if (!nameInPiece.isEmpty())
        keptName.append(nameInPiece.utf16(), static_cast<std::size_t>(nameInPiece.size()));
    nameInPiece = {};
}

bool KiCadTreeBuilder::readParenthesis(const char16_t *parenthesis)
{
    addToken();
    if (*parenthesis == u'(')
        return true;
    if (tokens.isEmpty()) {
        currentColumn = static_cast<int>(unitsBefore + (parenthesis - lineStart) + 1);
        return false;
    }
    tokens.close();
    return true;
}

// What stands in quotes behind a closed sub-list, without a name, goes to the next token.
void KiCadTreeBuilder::addToken()
{
    if (!keptName.empty())
        keepName();
    const QStringView name = (keptName.empty() ? nameInPiece : QStringView(keptName)).trimmed();
    if (!name.isEmpty())
        tokens.open(name);
    nameInPiece = {};
    keptName.clear();
}

bool KiCadTreeBuilder::isComplete() const
{
    return tokens.isEmpty() && !tokens.hasSeveralRoots() && outsideQuotes && QStringView(keptName).trimmed().isEmpty();
}
}
