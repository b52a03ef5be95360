#include "fuzz/TokenPairs.h"
#include "tests/support/Pipe.h"

#include <velk/kicad/KiCadNetParser.h>
#include <velk/kicad/KiCadReader.h>
#include <velk/model/EDAException.h>
#include <velk/provider/MultipleEDAProvider.h>

#include <QBuffer>

#include <memory>
#include <stdexcept>

using namespace Qt::StringLiterals;
using namespace Velk;
using namespace VelkFuzz;

namespace {

void checkPosition(const KiCadReader &reader, bool isError)
{
    require((reader.getErrorLine() > 0) == isError && (reader.getErrorColumn() > 0) == isError, u"error position"_s);
}

// However the input comes in, and the second time too.
void checkAgreesWithPipe(KiCadReader &reader, const QByteArray &bytes)
{
    const auto root = reader.getRoot();
    const auto error = reader.read();
    require(reader.getRoot() == root, u"another tree when read again"_s);
    if (!bytes.isValidUtf8())
        return; // how many replacement characters Qt puts in depends on where the input is cut
    Pipe pipe(bytes);
    KiCadReader other(&pipe);
    require(other.read() == error && other.getRoot() == root, u"another tree from a pipe"_s);
    require(other.isComplete() == reader.isComplete(), u"completeness from a pipe"_s);
    require(other.getErrorLine() == reader.getErrorLine() && other.getErrorColumn() == reader.getErrorColumn(),
            u"error position from a pipe"_s);
}

std::unique_ptr<PlainReading::PlainNetlist> parsePlainly(const PlainToken &root)
{
    try {
        return root.isNull() ? nullptr : std::make_unique<PlainReading::PlainNetlist>(root);
    } catch (const std::runtime_error &) {
        return nullptr;
    }
}

bool parse(KiCadNetParser &parser)
{
    try {
        parser.parse();
        return true;
    } catch (const EDAException &exception) {
        require(!exception.message().isEmpty(), u"an exception without a message"_s);
        return false;
    }
}

void checkModel(const KiCadNetParser &parser, const PlainReading::PlainNetlist &plain)
{
    require(parser.getParts() == plain.parts.values(), u"parts"_s);
    require(parser.getComponents() == plain.components.values(), u"components"_s);
    require(parser.getNets() == plain.nets.values(), u"nets"_s);
    for (const auto &part : plain.parts)
        require(parser.getPartByName(part->name)->pins == part->pins, u"pins of "_s + part->name);
    for (const auto &component : plain.components) {
        const auto found = parser.getComponentByRef(component->ref);
        require(found->properties == component->properties, u"properties of "_s + component->ref);
        require(parser.getComponentByProperties(found->properties)->matchesProperties(found->properties),
                u"component by the properties of "_s + component->ref);
    }
}

qsizetype nodeCount(const EDAProvider &provider)
{
    qsizetype count = 0;
    for (const auto &net : provider.getNets())
        count += net->nodes.size();
    return count;
}

void checkJoining(KiCadNetParser &parser)
{
    const MultipleEDAProvider joined({&parser, &parser}, {u"Connector"_s});
    require(joined.getParts().size() == 2 * parser.getParts().size(), u"parts of two boards"_s);
    require(joined.getComponents().size() == 2 * parser.getComponents().size(), u"components of two boards"_s);
    require(nodeCount(joined) == 2 * nodeCount(parser), u"nodes of two boards"_s);
}
}

// What is completed can be read, searched and joined; nothing is left for the parser to complain of but missing lists.
void readTolerantly(const QByteArray &bytes)
{
    KiCadReader reader(bytes, KiCadReadingMode::Tolerant);
    checkPosition(reader, reader.read() == KiCadSyntaxError);
    KiCadNetParser parser(reader.getRoot(), KiCadReadingMode::Tolerant);
    try {
        parser.parse();
    } catch (const KiCadTokenNotFoundException &exception) {
        require(exception.path().count(u'/') == 2, u"an element not completed: "_s + exception.path());
        return;
    }
    for (const auto &component : parser.getComponents())
        require(!parser.getPartByName(component->part).isNull(), u"no part for "_s + component->ref);
    checkJoining(parser);
}

/// Any bytes as a netlist, compared with the most obvious way to read one.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray bytes = toBytes(data, size);
    readTolerantly(bytes);
    KiCadReader reader(bytes);
    const bool isError = reader.read() == KiCadSyntaxError;
    checkPosition(reader, isError);
    checkAgreesWithPipe(reader, bytes);

    QBuffer buffer;
    buffer.setData(bytes);
    PlainToken plainRoot = PlainReading::readPlainly(buffer);
    require(!isError || plainRoot.isNull(), u"refused a netlist"_s);
    if (!isError) {
        TokenPairs pairs;
        pair(reader.getRoot(), plainRoot, pairs);
    }

    KiCadNetParser parser(reader.getRoot());
    const bool isParsed = parse(parser);
    if (isError)
        return 0;
    const auto plain = parsePlainly(plainRoot);
    require(isParsed == (plain != nullptr), u"only one way of parsing succeeds"_s);
    if (isParsed) {
        checkModel(parser, *plain);
        checkJoining(parser);
    }
    return 0;
}
