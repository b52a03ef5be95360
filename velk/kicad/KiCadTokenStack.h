#ifndef VELK_KICAD_KICADTOKENSTACK_H
#define VELK_KICAD_KICADTOKENSTACK_H

#include <velk/kicad/KiCadTokens.h>

#include <QStringView>

#include <utility>
#include <vector>

namespace Velk {

/// A list of tokens in the making, with those that are still open, innermost last.
class KiCadTokenStack
{
public:
    bool isEmpty() const { return stack.empty(); }
    /// Whether a token was opened behind the end of the first one.
    bool hasSeveralRoots() const { return tokens.hasSeveralRoots(); }
    /// Adds to the value of the token that is opened next.
    void addToNextValue(QStringView text) { tokens.addToNextValue(text); }
    /// Begins a token inside the innermost open one.
    void open(QStringView name)
    {
        stack.push_back(tokens.append(stack.empty() ? KiCadTokens::Token() : stack.back(), name));
    }
    /// Gives the innermost open token a value.
    void setValue(QStringView value) { tokens.setValue(stack.back(), value); }
    /// Ends the innermost open token; there must be one.
    void close() { stack.pop_back(); }
    /// All tokens that were ever opened. Ends the making.
    KiCadTokens finish() { return std::move(tokens); }

private:
    KiCadTokens tokens;
    std::vector<KiCadTokens::Token> stack;
};
}

#endif
