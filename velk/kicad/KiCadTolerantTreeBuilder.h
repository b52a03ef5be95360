#ifndef VELK_KICAD_KICADTOLERANTTREEBUILDER_H
#define VELK_KICAD_KICADTOLERANTTREEBUILDER_H

#include <velk/kicad/KiCadTokenStack.h>

#include <QByteArray>

#include <string>
#include <vector>

namespace Velk {

/// Makes the tokens as KiCad itself takes the text: words stand bare or in quotes, where a backslash escapes.
/// The first word of a list is the name of its token, the second one the value, wherever in the list it stands.
class KiCadTolerantTreeBuilder
{
public:
    /// Reads on. False at a ")" that closes nothing and at a parenthesis where the name of a list is due; line() and
    /// column() then tell where it is, and no more is read.
    bool read(QStringView piece);

    /// Whether every parenthesis and quote has been closed and no text stands outside.
    bool isComplete() const;
    /// All tokens, as far as they have been read. Ends the building.
    KiCadTokens finish() { return tokens.finish(); }

    int line() const { return currentLine; }
    int column() const { return currentColumn; }
    /// Where the next piece begins.
    int nextColumn() const { return currentColumn + 1; }

private:
    enum class State
    {
        BetweenWords,
        InWord,
        InQuotes,
        InEscape,
        InComment,
    };

    bool readCharacter(char16_t character);
    bool readOutsideQuotes(char16_t character);
    bool readParenthesis(char16_t parenthesis);
    void readInQuotes(char16_t character);
    void readEscaped(char16_t character);
    bool isDigitOfEscape(char16_t character) const;
    void endNumber();
    void endWord();

    KiCadTokenStack tokens;
    std::vector<int> wordCounts; ///< of each open list
    bool isNameDue = false;      ///< after an opening parenthesis
    bool isTextOutside = false;
    State state = State::BetweenWords;
    std::u16string word;
    QByteArray escape;       ///< "x" or nothing, and the digits of a number that has begun
    QByteArray escapedBytes; ///< given as numbers, to be decoded together
    bool isLineBlank = true; ///< up to here: a "#" would begin a comment
    int currentLine = 1;
    int currentColumn = 0;
};
}

#endif
