#ifndef VELK_FUZZ_TOKENPAIRS_H
#define VELK_FUZZ_TOKENPAIRS_H

#include "fuzz/Fuzz.h"
#include "fuzz/PlainReading.h"

#include <velk/kicad/KiCadToken.h>

#include <QHash>

namespace VelkFuzz {

using Token = QSharedPointer<Velk::KiCadToken>;
using PlainToken = QSharedPointer<PlainReading::PlainToken>;

/// Tells for each token which one it is in the same tree read plainly.
using TokenPairs = QHash<const Velk::KiCadToken *, const PlainReading::PlainToken *>;

/// Requires that the trees agree.
inline void pair(const Token &token, const PlainToken &plain, TokenPairs &pairs)
{
    require(token.isNull() == plain.isNull(), QStringLiteral("one tree is empty"));
    if (token.isNull())
        return;
    require(!token->name.isEmpty() && token->name == plain->name, QStringLiteral("name ") + token->name);
    require(token->value == plain->value, QStringLiteral("value ") + token->value);
    require(token->children.size() == plain->children.size(), QStringLiteral("children of ") + token->name);
    pairs.insert(token.data(), plain.data());
    for (qsizetype i = 0; i < token->children.size(); ++i)
        pair(token->children.at(i), plain->children.at(i), pairs);
}
}

#endif
