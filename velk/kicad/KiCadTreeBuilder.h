#ifndef VELK_KICAD_KICADTREEBUILDER_H
#define VELK_KICAD_KICADTREEBUILDER_H

#include <velk/kicad/KiCadToken.h>
#include <velk/kicad/TextPool.h>

#include <QSharedPointer>
#include <QStringView>

#include <string>
#include <vector>

namespace Velk {

/// Builds a tree of tokens from the text of a netlist, given piece by piece, wherever it may be cut.
class KiCadTreeBuilder
{
public:
    /// Reads on. False at a ")" that closes nothing; line() and column() then tell where it is, and no more is read.
    bool read(QStringView piece);

    /// Whether every parenthesis and quote has been closed and no text is left.
    bool isComplete() const;
    /// The first token, as far as it has been read; null if there is none. Ends the building.
    QSharedPointer<KiCadToken> finish();

    int line() const { return currentLine; }
    int column() const { return currentColumn; }

private:
    struct OpenToken
    {
        QSharedPointer<KiCadToken> token;
        std::size_t firstChild; ///< among the finished children
    };

    void startLine(const char16_t *start);
    bool readParenthesis(const char16_t *parenthesis, QStringView textBefore);
    void addToken(QStringView lastText);
    void closeToken();

    TextPool texts;
    std::u16string text;   ///< of the next token, outside quotes, as far as a quote or a line end has followed
    std::u16string quoted; ///< of the next token, inside quotes
    bool outsideQuotes = true;
    QSharedPointer<KiCadToken> root;
    std::vector<OpenToken> stack;
    /// Of all open tokens, those of the outermost first. A token gets its children when it is closed, in a list of the
    /// right size.
    std::vector<QSharedPointer<KiCadToken>> finishedChildren;
    int currentLine = 1;
    int currentColumn = 1;
    const char16_t *lineStart = nullptr; ///< in the piece being read, or that piece's start
    qsizetype unitsBefore = 0;           ///< of the current line in earlier pieces
};
}

#endif
