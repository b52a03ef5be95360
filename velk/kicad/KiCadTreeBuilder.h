#ifndef VELK_KICAD_KICADTREEBUILDER_H
#define VELK_KICAD_KICADTREEBUILDER_H

#include <velk/kicad/KiCadTokenStack.h>

#include <string>

namespace Velk {

/// Makes the tokens of the text of a netlist, given piece by piece, wherever it may be cut, in the default
/// reading mode.
class KiCadTreeBuilder
{
public:
    /// Reads on. False at a ")" that closes nothing; line() and column() then tell where it is, and no more is read.
    bool read(QStringView piece);

    /// Whether every parenthesis and quote has been closed and no text is left.
    bool isComplete() const;
    /// All tokens, as far as they have been read. Ends the building.
    KiCadTokens finish() { return tokens.finish(); }

    int line() const { return currentLine; }
    int column() const { return currentColumn; }
    /// Where the next piece begins.
    qsizetype nextColumn() const { return unitsBefore + 1; }

private:
    void startLine(const char16_t *start);
    bool readParenthesis(const char16_t *parenthesis);
    void addToName(QStringView run);
    void keepName();
    void addToken();

    KiCadTokenStack tokens;
    // The next token's text outside quotes: what was kept, then what stands in the piece.
    std::u16string keptName;
    QStringView nameInPiece;
    bool outsideQuotes = true;
    int currentLine = 1;
    int currentColumn = 1;
    const char16_t *lineStart = nullptr; ///< in the piece being read, or that piece's start
    qsizetype unitsBefore = 0;           ///< of the current line in earlier pieces
};
}

#endif
