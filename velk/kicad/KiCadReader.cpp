#include <velk/kicad/KiCadReader.h>

#include <velk/kicad/KiCadText.h>
#include <velk/kicad/KiCadTolerantTreeBuilder.h>
#include <velk/kicad/KiCadTreeBuilder.h>

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

KiCadReader::KiCadReader(const QByteArray &bytes, KiCadReadingMode readingMode)
    : data(bytes)
    , device(&buffer)
    , mode(readingMode)
{
    buffer.setData(data);
}

KiCadReader::KiCadReader(QIODevice *input, KiCadReadingMode readingMode)
    : device(input)
    , mode(readingMode)
{
}

KiCadReader::~KiCadReader() = default;

KiCadError KiCadReader::read()
{
    root.reset();
    complete = false;
    encodingErrorLine = -1;
    encodingErrorColumn = -1;
    if (!device->open(QIODevice::ReadOnly | QIODevice::Text))
        return KiCadOpenError;

    return mode == KiCadReadingMode::Default ? buildTree(KiCadTreeBuilder()) : buildTree(KiCadTolerantTreeBuilder());
}

template <typename Builder>
KiCadError KiCadReader::buildTree(Builder builder)
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
    return root;
}

bool KiCadReader::isComplete() const
{
    return complete;
}

int KiCadReader::getErrorLine() const
{
    return errorLine;
}

int KiCadReader::getErrorColumn() const
{
    return errorColumn;
}

int KiCadReader::getEncodingErrorLine() const
{
    return encodingErrorLine;
}

int KiCadReader::getEncodingErrorColumn() const
{
    return encodingErrorColumn;
}
}
