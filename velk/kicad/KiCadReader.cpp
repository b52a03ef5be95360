#include <velk/kicad/KiCadReader.h>

#include <velk/kicad/KiCadTolerantTreeBuilder.h>
#include <velk/kicad/KiCadTreeBuilder.h>

#include <QTextStream>

using namespace Qt::StringLiterals;

namespace Velk {

namespace {

constexpr qint64 textUnitsAtOnce = 16384;
}

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
    if (!device->open(QIODevice::ReadOnly | QIODevice::Text))
        return KiCadOpenError;

    return mode == KiCadReadingMode::Default ? buildTree(KiCadTreeBuilder()) : buildTree(KiCadTolerantTreeBuilder());
}

template <typename Builder>
KiCadError KiCadReader::buildTree(Builder builder)
{
    QTextStream stream(device);
    bool isGood = true;
    QString piece;
    do { // until nothing comes: a pipe does not tell its end, and a device that fails never comes to it
        piece = stream.read(textUnitsAtOnce);
        isGood = builder.read(piece);
    } while (isGood && !piece.isEmpty());
    device->close();
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
}
