#ifndef VELK_KICAD_KICADTREEBUILDER_H
#define VELK_KICAD_KICADTREEBUILDER_H

#include <velk/kicad/KiCadTokenStack.h>

#include <string>

namespace Velk {

/// Builds a tree of tokens from the text of a netlist, given piece by piece, wherever it may be cut, in the default
/// reading mode.
class KiCadTreeBuilder
{
public:
    /// Reads on. False at a ")" that closes nothing; line() and column() then tell where it is, and no more is read.
    bool read(QStringView piece);

    /// Whether every parenthesis and quote has been closed and no text is left.
    bool isComplete() const;
    /// The first token, as far as it has been read; null if there is none. Ends the building.
    QSharedPointer<KiCadToken> finish() { return tokens.finish(); }

    int line() const { return currentLine; }
    int column() const { return currentColumn; }

private:
    void startLine(const char16_t *start);
    bool readParenthesis(const char16_t *parenthesis, QStringView textBefore);
    void addToken(QStringView lastText);

    KiCadTokenStack tokens;
    std::u16string text;   ///< of the next token, outside quotes, as far as a quote or a line end has followed
    std::u16string quoted; ///< of the next token, inside quotes
    bool outsideQuotes = true;
    int currentLine = 1;
    int currentColumn = 1;
    const char16_t *lineStart = nullptr; ///< in the piece being read, or that piece's start
    qsizetype unitsBefore = 0;           ///< of the current line in earlier pieces
};
}

#endif
