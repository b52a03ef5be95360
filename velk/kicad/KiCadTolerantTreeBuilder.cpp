#include <velk/kicad/KiCadTolerantTreeBuilder.h>

#include <velk/kicad/KiCadText.h>

#include <QString>

#include <cctype>
#include <string_view>

namespace Velk {

namespace {

bool isSpace(char16_t character)
{
    return character == u' ' || character == u'\n' || character == u'\r' || character == u'\t' || character == u'\0';
}

bool isOctalDigit(char16_t character)
{
    return character >= u'0' && character <= u'7';
}

bool isHexDigit(char16_t character)
{
    return character < 0x80 && std::isxdigit(static_cast<unsigned char>(character));
}
}

bool KiCadTolerantTreeBuilder::read(QStringView piece)
{
    for (const QChar character : piece) {
        ++currentColumn;
        if (!readCharacter(character.unicode()))
            return false;
        if (character == u'\n') {
            ++currentLine;
            currentColumn = 0;
            isLineBlank = true;
        } else if (isLineBlank && !isSpace(character.unicode())) {
            isLineBlank = false;
        }
    }
    return true;
}

bool KiCadTolerantTreeBuilder::readCharacter(char16_t character)
{
    switch (state) {
    case State::BetweenWords:
    case State::InWord:
        return readOutsideQuotes(character);
    case State::InQuotes:
        readInQuotes(character);
        return true;
    case State::InEscape:
        readEscaped(character);
        return true;
    case State::InComment:
        if (character == u'\n')
            state = State::BetweenWords;
        return true;
    }
    return true;
}

bool KiCadTolerantTreeBuilder::readOutsideQuotes(char16_t character)
{
    // A quote inside a word belongs to it, as in 19"-rack. After a name it may stand without a blank.
    const bool isQuote = character == u'"' && (state == State::BetweenWords || isNameDue);
    const bool isMark = character == u'(' || character == u')' || isQuote;
    if (!isMark && !isSpace(character) && !(character == u'#' && isLineBlank)) {
        state = State::InWord;
        word += character;
        return true;
    }
    if (state == State::InWord)
        endWord();
    if (character == u'"')
        state = State::InQuotes;
    else if (character == u'#')
        state = State::InComment;
    return character == u'(' || character == u')' ? readParenthesis(character) : true;
}

bool KiCadTolerantTreeBuilder::readParenthesis(char16_t parenthesis)
{
    if (isNameDue)
        return false;
    if (parenthesis == u'(') {
        isNameDue = true;
        return true;
    }
    if (tokens.isEmpty())
        return false;
    tokens.close();
    wordCounts.pop_back();
    return true;
}

void KiCadTolerantTreeBuilder::readInQuotes(char16_t character)
{
    if (character == u'\\') {
        state = State::InEscape;
        return;
    }
    if (!escapedBytes.isEmpty()) {
        word += QString::fromUtf8(completedByLatin1(escapedBytes)).toStdU16String();
        escapedBytes.clear();
    }
    if (character == u'"')
        endWord();
    else
        word += character;
}

void KiCadTolerantTreeBuilder::readEscaped(char16_t character)
{
    constexpr std::u16string_view letters = u"abfnrtv\"\\";
    constexpr std::string_view meanings = "\a\b\f\n\r\t\v\"\\";

    const auto letter = letters.find(character);
    if (isDigitOfEscape(character) || (escape.isEmpty() && character == u'x')) {
        escape += static_cast<char>(character);
    } else if (!escape.isEmpty()) {
        endNumber();
        readInQuotes(character);
    } else if (letter != std::u16string_view::npos) {
        state = State::InQuotes;
        escapedBytes += meanings[letter];
    } else { // a backslash that escapes nothing
        state = State::InQuotes;
        escapedBytes += '\\';
        readInQuotes(character);
    }
}

// Numbers have up to two hexadecimal or three octal digits.
bool KiCadTolerantTreeBuilder::isDigitOfEscape(char16_t character) const
{
    return escape.size() < 3 && (escape.startsWith('x') ? isHexDigit(character) : isOctalDigit(character));
}

// An "x" without digits is an x.
void KiCadTolerantTreeBuilder::endNumber()
{
    const int number = escape.startsWith('x') ? escape.mid(1).toInt(nullptr, 16) : escape.toInt(nullptr, 8);
    escapedBytes += escape == "x" ? 'x' : static_cast<char>(number);
    escape.clear();
    state = State::InQuotes;
}

void KiCadTolerantTreeBuilder::endWord()
{
    state = State::BetweenWords;
    if (isNameDue && word.empty())
        return;
    if (isNameDue) {
        tokens.open(word);
        wordCounts.push_back(1);
        isNameDue = false;
    } else if (tokens.isEmpty()) {
        isTextOutside = true;
    } else if (++wordCounts.back() == 2) {
        tokens.setValue(word);
    }
    word.clear();
}

bool KiCadTolerantTreeBuilder::isComplete() const
{
    return tokens.isEmpty() && !tokens.hasSeveralRoots() && !isNameDue && state == State::BetweenWords &&
           !isTextOutside;
}
}
