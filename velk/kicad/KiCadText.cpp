#include <velk/kicad/KiCadText.h>

#include <QIODevice>

#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace Velk {

namespace {

/// Of a character that begins with this byte; 1 if none does.
qsizetype lengthInUtf8(char first)
{
    const auto byte = static_cast<unsigned char>(first);
    if (byte < 0xc2 || byte > 0xf4)
        return 1;
    return byte < 0xe0 ? 2 : byte < 0xf0 ? 3 : 4;
}

bool continuesCharacter(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xc0) == 0x80;
}

/// How many bytes at the end begin a character that goes on behind it, so that what is
/// decoded does not depend on the pieces.
qsizetype lengthOfCutOff(const QByteArray &bytes)
{
    qsizetype length = 1;
    while (length < qMin(bytes.size(), qsizetype(3)) && continuesCharacter(bytes.at(bytes.size() - length)))
        ++length;
    return bytes.isEmpty() || lengthInUtf8(bytes.at(bytes.size() - length)) <= length ? 0 : length;
}

/// The length of the character there, or 0 if it is none.
qsizetype lengthOfValid(const QByteArray &bytes, qsizetype position)
{
    const qsizetype length = qMin(lengthInUtf8(bytes.at(position)), bytes.size() - position);
    return bytes.mid(position, length).isValidUtf8() ? length : 0;
}
}

QByteArray completedByLatin1(const QByteArray &bytes)
{
    QByteArray result;
    for (qsizetype position = 0; position < bytes.size();) {
        const qsizetype length = lengthOfValid(bytes, position);
        if (length > 0)
            result += bytes.mid(position, length);
        else
            result += QString(QLatin1Char(bytes.at(position))).toUtf8();
        position += qMax(length, qsizetype(1));
    }
    return result;
}

KiCadText::KiCadText(QIODevice &input, KiCadReadingMode readingMode)
    : device(input)
    , mode(readingMode)
    , dropsAllReturns(device.isTextModeEnabled())
{
    device.setTextModeEnabled(false); // it would drop the bytes, which may be halves of characters
}

QString KiCadText::read(int line, qsizetype column)
{
    lineOfPiece = line;
    columnOfPiece = column;
    std::array<char, 16384> buffer; // filled by the device
    QString piece;
    while (piece.isEmpty()) {
        const qint64 count = device.read(buffer.data(), buffer.size());
        if (count <= 0 && cutOff.isEmpty())
            return {};
        piece = withoutReturns(count > 0 ? decode({buffer.data(), static_cast<qsizetype>(count)})
                                         : decodeUtf8(std::exchange(cutOff, {})));
        if (count <= 0)
            break;
    }
    return piece;
}

QString KiCadText::decode(QByteArrayView bytes)
{
    if (!decoder) {
        const auto encoding = QStringConverter::encodingForData(bytes).value_or(QStringConverter::Utf8);
        isUtf8 = encoding == QStringConverter::Utf8;
        decoder.emplace(encoding, isUtf8 ? QStringConverter::Flag::Stateless : QStringConverter::Flag::Default);
    }
    if (!isUtf8)
        return decoder->decode(bytes);
    QByteArray known = cutOff + bytes.toByteArray();
    cutOff = known.last(lengthOfCutOff(known));
    known.chop(cutOff.size());
    return decodeUtf8(known);
}

QString KiCadText::decodeUtf8(QByteArray bytes)
{
    if (!bytes.isValidUtf8()) {
        noteInvalid(bytes);
        if (mode == KiCadReadingMode::Tolerant)
            bytes = completedByLatin1(bytes);
    }
    QString text = decoder->decode(bytes);
    if (!bytes.isEmpty()) // a mark further on is text
        decoder.emplace(QStringConverter::Utf8,
                        QStringConverter::Flag::Stateless | QStringConverter::Flag::ConvertInitialBom);
    return text;
}

void KiCadText::noteInvalid(const QByteArray &bytes)
{
    if (lineOfInvalid > 0)
        return;
    qsizetype position = 0;
    while (const qsizetype length = lengthOfValid(bytes, position))
        position += length;
    const QString before = QString::fromUtf8(bytes.first(position)).remove(u'\r');
    const qsizetype lineEnd = before.lastIndexOf(u'\n');
    lineOfInvalid = lineOfPiece + static_cast<int>(before.count(u'\n'));
    columnOfInvalid = static_cast<int>(lineEnd < 0 ? columnOfPiece + before.size() : before.size() - lineEnd);
}

// A device that does not heed QIODevice::Text leaves it to us to take lines as they are meant.
QString KiCadText::withoutReturns(QString piece)
{
    if (dropsAllReturns)
        return piece.remove(u'\r');
    if (isReturnPending)
        piece.prepend(u'\r');
    isReturnPending = piece.endsWith(u'\r');
    piece.chop(isReturnPending ? 1 : 0);
    return piece.replace(u"\r\n"_s, u"\n"_s);
}
}
