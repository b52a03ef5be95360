#ifndef VELK_KICAD_KICADTEXT_H
#define VELK_KICAD_KICADTEXT_H

#include <velk/kicad/KiCadReadingMode.h>

#include <QByteArray>
#include <QString>
#include <QStringDecoder>

#include <optional>

class QIODevice;

namespace Velk {

/// What an open device holds as text, piece by piece: UTF-8, or UTF-16 or UTF-32 if it begins with their mark. Lines
/// end with a line feed alone.
class KiCadText
{
public:
    KiCadText(QIODevice &input, KiCadReadingMode readingMode);

    /// The next piece, which stands there, counted from 1; empty at the end, or where the device fails.
    QString read(int line, qsizetype column);

    /// Of the first byte that is not UTF-8, counted from 1; -1 as long as there was none. By default U+FFFD is read
    /// there, in tolerant reading the character that the byte is in Latin-1, so that names which differ there stay
    /// apart.
    int invalidLine() const { return lineOfInvalid; }
    int invalidColumn() const { return columnOfInvalid; }

private:
    QString decode(QByteArrayView bytes);
    QString decodeUtf8(QByteArray bytes);
    void noteInvalid(const QByteArray &bytes);
    QString withoutReturns(QString piece);

    QIODevice &device;
    KiCadReadingMode mode;
    bool dropsAllReturns;
    bool isReturnPending = false; ///< the last character read, which may belong to a line end
    std::optional<QStringDecoder> decoder;
    bool isUtf8 = true;
    QByteArray cutOff;   ///< the beginning of a character
    int lineOfPiece = 1; ///< being read
    qsizetype columnOfPiece = 1;
    int lineOfInvalid = -1;
    int columnOfInvalid = -1;
};

/// The bytes with each one that is not UTF-8 as the character that it is in Latin-1.
QByteArray completedByLatin1(const QByteArray &bytes);
}

#endif
