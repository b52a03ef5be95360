#include "benchmarks/NetlistText.h"
#include "benchmarks/PlainReading.h"
#include "benchmarks/Suite.h"

#include <velk/kicad/KiCadNetParser.h>
#include <velk/kicad/KiCadReader.h>

#include <QBuffer>

#include <optional>
#include <stdexcept>

namespace VelkBenchmarks {

using namespace Velk;

namespace {

/// A board with multiplexers, of about this size.
QByteArray netlistOfSize(qsizetype bytes)
{
    constexpr qsizetype sampleNodes = 20'000;
    const auto textOfSystem = [](qsizetype nodes) { return netlistText(*sparseSystem(nodes).boards.at(1)); };
    return textOfSystem(sampleNodes * bytes / textOfSystem(sampleNodes).size());
}

bool areEqual(const QSharedPointer<KiCadToken> &a, const QSharedPointer<PlainToken> &b)
{
    if (a->name != b->name || a->value != b->value || a->children.size() != b->children.size())
        return false;
    for (qsizetype i = 0; i < a->children.size(); ++i) {
        if (!areEqual(a->children.at(i), b->children.at(i)))
            return false;
    }
    return true;
}

QSharedPointer<PlainToken> plainTreeOf(const QByteArray &text)
{
    QBuffer buffer;
    buffer.setData(text);
    return readPlainly(buffer);
}

/// Throws unless both ways lead to the same tree and model.
void verify(const QByteArray &text)
{
    KiCadReader reader(text);
    const auto plainRoot = plainTreeOf(text);
    if (reader.read() != KiCadNoError || !areEqual(reader.getRoot(), plainRoot))
        throw std::logic_error("the two readers make different trees");
    KiCadNetParser parser(reader.getRoot());
    parser.parse();
    const PlainNetlist plain(plainRoot);
    if (parser.getNets() != plain.nets.values() || parser.getComponents() != plain.components.values() ||
        parser.getParts() != plain.parts.values())
        throw std::logic_error("the two parsers make different models");
}

const QByteArray &verifiedText(qsizetype bytes)
{
    static QByteArray text;
    if (text.isEmpty()) {
        const QByteArray made = netlistOfSize(bytes);
        verify(made);
        text = made;
    }
    return text;
}

double secondsToRead(const QByteArray &text)
{
    QSharedPointer<KiCadToken> root;
    return secondsOf([&] {
        KiCadReader reader(text);
        reader.read();
        root = reader.getRoot();
    });
}

double secondsToReadPlainly(const QByteArray &text)
{
    QSharedPointer<PlainToken> root;
    return secondsOf([&] { root = plainTreeOf(text); });
}

double secondsToParse(const QByteArray &text)
{
    std::optional<KiCadNetParser> parser;
    return secondsOf([&] {
        KiCadReader reader(text);
        reader.read();
        parser.emplace(reader.getRoot());
        parser->parse();
    });
}

double secondsToParsePlainly(const QByteArray &text)
{
    QSharedPointer<PlainToken> root;
    std::optional<PlainNetlist> netlist;
    return secondsOf([&] {
        root = plainTreeOf(text);
        netlist.emplace(root);
    });
}
}

void registerReading(const Suite &suite)
{
    const auto add = [&](const char *name, double (*run)(const QByteArray &)) {
        registerTimed(name, [=, bytes = suite.readingBytes](benchmark::State &state) {
            const QByteArray &text = verifiedText(bytes);
            state.counters["bytes"] = static_cast<double>(text.size());
            return run(text);
        });
    };
    add("reading/velk", secondsToRead);
    add("reading/plain", secondsToReadPlainly);
    add("parsing/velk", secondsToParse);
    add("parsing/plain", secondsToParsePlainly);
}
}
