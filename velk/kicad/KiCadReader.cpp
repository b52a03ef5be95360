#include <velk/kicad/KiCadReader.h>

#include <velk/kicad/KiCadText.h>
#include <velk/kicad/KiCadTolerantTreeBuilder.h>
#include <velk/kicad/KiCadTreeBuilder.h>

#include <QBuffer>
#include <QScopeGuard>

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
    KiCadError buildTree(Builder builder);

    QByteArray data;
    QBuffer buffer;
    QIODevice *device;
    KiCadReadingMode mode;
    QSharedPointer<KiCadToken> root;
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
    d->root.reset();
    d->complete = false;
    d->encodingErrorLine = -1;
    d->encodingErrorColumn = -1;
    if (!d->device->open(QIODevice::ReadOnly | QIODevice::Text))
        return KiCadOpenError;

    return d->mode == KiCadReadingMode::Default ? d->buildTree(KiCadTreeBuilder())
                                                : d->buildTree(KiCadTolerantTreeBuilder());
}

template <typename Builder>
KiCadError KiCadReaderPrivate::buildTree(Builder builder)
{
    const auto closing = qScopeGuard([this] { device->close(); }); // also where memory runs out
    KiCadText text(*device, mode);
    bool isGood = true;
    QString piece;
    do { // until nothing comes: a pipe does not tell its end, and a device that fails never comes to it
        piece = text.read();
        isGood = builder.read(piece);
    } while (isGood && !piece.isEmpty());
    encodingErrorLine = text.invalidLine();
    encodingErrorColumn = text.invalidColumn();
    complete = isGood && builder.isComplete();
    root = builder.finish();
    if (isGood)
        return KiCadNoError;
    errorLine = builder.line();
    errorColumn = builder.column();
    return KiCadSyntaxError;
}

QSharedPointer<KiCadToken> KiCadReader::getRoot() const
{
    return d->root;
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
