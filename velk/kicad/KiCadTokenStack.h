#ifndef VELK_KICAD_KICADTOKENSTACK_H
#define VELK_KICAD_KICADTOKENSTACK_H

#include <velk/kicad/KiCadToken.h>
#include <velk/kicad/TextPool.h>

#include <QSharedPointer>
#include <QStringView>

#include <vector>

namespace Velk {

/// A tree of tokens in the making: the tokens that are still open, innermost last.
class KiCadTokenStack
{
public:
    bool isEmpty() const { return stack.empty(); }
    /// Whether a token was opened behind the end of the first one.
    bool hasSeveralRoots() const { return severalRoots; }
    /// Begins a token inside the innermost open one.
    void open(QStringView name, QStringView value);
    /// Gives the innermost open token a value.
    void setValue(QStringView value);
    /// Ends the innermost open token; there must be one.
    void close();
    /// Ends all open tokens and returns the first token that was ever opened, or null.
    QSharedPointer<KiCadToken> finish();

private:
    struct OpenToken
    {
        QSharedPointer<KiCadToken> token;
        std::size_t firstChild; ///< among the finished children
    };

    TextPool texts;
    QSharedPointer<KiCadToken> root;
    bool severalRoots = false;
    std::vector<OpenToken> stack;
    /// Of all open tokens, those of the outermost first. A token gets its children when it is closed, in a list of the
    /// right size.
    std::vector<QSharedPointer<KiCadToken>> finishedChildren;
};
}

#endif
