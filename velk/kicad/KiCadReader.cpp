#include <velk/kicad/KiCadReader.h>

#include <velk/kicad/KiCadText.h>
#include <velk/kicad/KiCadTokens.h>
#include <velk/kicad/KiCadTolerantTreeBuilder.h>
#include <velk/kicad/KiCadTreeBuilder.h>

#include <QBuffer>
#include <QScopeGuard>

#include <mutex>
#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace Velk {

QString kiCadErrorText(KiCadError error)
{
    switch (error) {
    case KiCadNoError:
        return u"No error"_s;
    case KiCadOpenError:
        return u"Could not open KiCad"_s;
    case KiCadSyntaxError:
        return u"Syntax error in KiCad"_s;
    }
    return u"Unknown error"_s;
}

class KiCadReaderPrivate
{
public:
    KiCadReaderPrivate(const QByteArray &bytes, KiCadReadingMode readingMode)
        : data(bytes)
        , device(&buffer)
        , mode(readingMode)
    {
        buffer.setData(data);
    }

    KiCadReaderPrivate(QIODevice *input, KiCadReadingMode readingMode)
        : device(input)
        , mode(readingMode)
    {
    }

    template <typename Builder>
    KiCadError readTokens(Builder builder);

    QByteArray data;
    QBuffer buffer;
    QIODevice *device;
    KiCadReadingMode mode;
    std::optional<KiCadTokens> tokens; ///< of the last read, until the tree is made of them
    QSharedPointer<KiCadToken> root;
    std::mutex rootMutex; ///< several threads may ask for it
    bool complete = false;
    int errorLine = -1;
    int errorColumn = -1;
    int encodingErrorLine = -1;
    int encodingErrorColumn = -1;
};

KiCadReader::KiCadReader(const QByteArray &bytes, KiCadReadingMode readingMode)
    : d(std::make_unique<KiCadReaderPrivate>(bytes, readingMode))
{
}

KiCadReader::KiCadReader(QIODevice *input, KiCadReadingMode readingMode)
    : d(std::make_unique<KiCadReaderPrivate>(input, readingMode))
{
}

KiCadReader::~KiCadReader() = default;

KiCadError KiCadReader::read()
{
    d->tokens.reset();
    d->root.reset();
    d->complete = false;
    d->encodingErrorLine = -1;
    d->encodingErrorColumn = -1;
    if (!d->device->open(QIODevice::ReadOnly | QIODevice::Text))
        return KiCadOpenError;

    return d->mode == KiCadReadingMode::Default ? d->readTokens(KiCadTreeBuilder())
                                                : d->readTokens(KiCadTolerantTreeBuilder());
}

template <typename Builder>
KiCadError KiCadReaderPrivate::readTokens(Builder builder)
{
    const auto closing = qScopeGuard([this] { device->close(); }); // also where memory runs out
    KiCadText text(*device, mode);
    bool isGood = true;
    QString piece;
    do { // until nothing comes: a pipe does not tell its end, and a device that fails never comes to it
        piece = text.read(builder.line(), builder.nextColumn());
        isGood = builder.read(piece);
    } while (isGood && !piece.isEmpty());
    encodingErrorLine = text.invalidLine();
    encodingErrorColumn = text.invalidColumn();
    complete = isGood && builder.isComplete();
    tokens = builder.finish();
    if (isGood)
        return KiCadNoError;
    errorLine = builder.line();
    errorColumn = builder.column();
    return KiCadSyntaxError;
}

QSharedPointer<KiCadToken> KiCadReader::getRoot() const
{
    const std::lock_guard lock(d->rootMutex);
    if (d->tokens) {
        d->root = d->tokens->toTree();
        d->tokens.reset();
    }
    return d->root;
}

KiCadTokens KiCadReader::takeTokens()
{
    return *std::exchange(d->tokens, std::nullopt);
}

bool KiCadReader::isComplete() const
{
    return d->complete;
}

int KiCadReader::getErrorLine() const
{
    return d->errorLine;
}

int KiCadReader::getErrorColumn() const
{
    return d->errorColumn;
}

int KiCadReader::getEncodingErrorLine() const
{
    return d->encodingErrorLine;
}

int KiCadReader::getEncodingErrorColumn() const
{
    return d->encodingErrorColumn;
}
}
