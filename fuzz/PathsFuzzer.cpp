#include "fuzz/TokenPairs.h"

#include <velk/kicad/KiCadReader.h>

#include <QBuffer>
#include <QScopedArrayPointer>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace Velk;
using namespace VelkFuzz;

namespace {

void checkFinds(const TokenPairs &pairs, const QString &path)
{
    for (auto it = pairs.cbegin(); it != pairs.cend(); ++it) {
        auto *token = const_cast<KiCadToken *>(it.key());
        auto *plain = const_cast<PlainReading::PlainToken *>(it.value());
        const auto found = token->find(path);
        require((found ? pairs.value(found.data()) : nullptr) == plain->find(path).data(), u"found by "_s + path);
    }
}

bool equalPlainly(const Token &a, const Token &b)
{
    return a->name == b->name && a->value == b->value &&
           std::equal(a->children.cbegin(), a->children.cend(), b->children.cbegin(), b->children.cend(), equalPlainly);
}

// Each token's text ends at a NUL in it.
QString printPlainly(const Token &token)
{
    QStringList children;
    for (const auto &child : std::as_const(token->children))
        children.append(printPlainly(child));
    const QString own = u"KiCadToken('%1', '%2'"_s.arg(token->name, token->value);
    const QString text = children.isEmpty() ? own + u')' : u"%1, [%2])"_s.arg(own, children.join(u", "_s));
    return text.left(text.indexOf(QChar::Null));
}

void checkComparison(const Token &token)
{
    constexpr qsizetype most = 8; // each with each
    const auto some = QList<Token>{token} + token->children.mid(0, most);
    for (const auto &a : some) {
        for (const auto &b : some) {
            require((a == b) == equalPlainly(a, b), u"comparison"_s);
            require((a != b) != (a == b), u"unequal and equal"_s);
        }
    }
}

void checkCopies(const Token &token)
{
    const auto copy = Token::create(*token);
    require(copy == token, u"a copy is not equal"_s);
    copy->append(u"further"_s);
    require(copy != token && token->children.size() + 1 == copy->children.size(), u"a copy is not independent"_s);
    auto moved = Token::create(std::move(*copy));
    require(moved->children.size() == token->children.size() + 1, u"moved"_s);
    moved->children.removeLast();
    require(moved == token && moved->sharedFromThis().data() == moved.data(), u"moved and cut"_s);
}
}

/// The first line is a path, the rest is a netlist, every token of which is asked for it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray bytes = toBytes(data, size);
    const qsizetype firstLineEnd = std::max(bytes.indexOf('\n'), qsizetype(0));
    QBuffer netlist;
    netlist.setData(bytes.mid(firstLineEnd));
    KiCadReader reader(netlist.data());
    if (reader.read() != KiCadNoError || reader.getRoot().isNull())
        return 0;
    const auto root = reader.getRoot();
    const auto plainRoot = PlainReading::readPlainly(netlist);

    TokenPairs pairs;
    pair(root, plainRoot, pairs);
    checkFinds(pairs, QString::fromUtf8(bytes.left(firstLineEnd)));
    checkComparison(root);
    checkCopies(root);
    const QScopedArrayPointer<char> text(toString(root));
    require(QByteArray(text.data()) == printPlainly(root).toLatin1(), u"printed"_s);
    return 0;
}
