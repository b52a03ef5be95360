#ifndef VELK_FUZZ_FUZZ_H
#define VELK_FUZZ_FUZZ_H

#include <QByteArray>
#include <QString>
#include <QStringDecoder>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

/// What libFuzzer and ReplayMain.cpp call with every input; each target defines it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);

namespace VelkFuzz {

/// Ends the program with a message unless \a holds: a finding.
inline void require(bool holds, const QString &message)
{
    if (holds)
        return;
    std::fprintf(stderr, "finding: %s\n", qUtf8Printable(message));
    std::abort();
}

inline QByteArray toBytes(const std::uint8_t *data, std::size_t size)
{
    return QByteArray(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
}

/// A byte-order mark stays, as any other character.
inline QString decoded(const QByteArray &bytes)
{
    return QStringDecoder(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom).decode(bytes);
}

/// An input that steers a generator: decisions taken byte by byte, all the first when no byte is left.
class Decisions
{
public:
    explicit Decisions(const QByteArray &input)
        : bytes(input)
    {
    }

    bool isAtEnd() const { return position >= bytes.size(); }

    /// From 0 to \a bound - 1.
    int number(int bound) { return isAtEnd() ? 0 : static_cast<std::uint8_t>(bytes.at(position++)) % bound; }

    /// A text, of any characters, with its length before it.
    QString text()
    {
        const int length = number(32);
        QString result = decoded(bytes.mid(position, length));
        position += length;
        return result;
    }

private:
    const QByteArray bytes;
    qsizetype position = 0;
};
}

#endif
