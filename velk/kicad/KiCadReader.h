#ifndef VELK_KICAD_KICADREADER_H
#define VELK_KICAD_KICADREADER_H

#include <velk/VelkExport.h>
#include <velk/kicad/KiCadReadingMode.h>
#include <velk/kicad/KiCadToken.h>

#include <QByteArray>
#include <QSharedPointer>
#include <QString>

#include <memory>

class QIODevice;

namespace Velk {

/// How reading ended.
enum KiCadError : int
{
    KiCadNoError = 0,
    KiCadOpenError = -1,   ///< the device could not be opened
    KiCadSyntaxError = -2, ///< a parenthesis out of place
};

/// "No error", "Could not open KiCad", "Syntax error in KiCad"; "Unknown error" for any other value.
VELK_EXPORT QString kiCadErrorText(KiCadError error);

class KiCadReaderPrivate;
class KiCadTokens;

/// Reads a KiCad netlist (an S-expression in UTF-8) into a tree of KiCadToken. It knows the lexical form
/// only; KiCadNetParser knows the elements.
///
/// By default values are the quoted texts: (num "1") is a token "num" with the value "1", whereas (num 1) is one named
/// "num 1" without a value. There is no escape character: every double quote opens or closes a text, and a
/// backslash is a character like others. A line break is dropped without a separator, inside quotes too. A
/// quoted text that follows a sub-list, as "y" in (a (b "x") "y"), goes to the value of the next token made. The one
/// syntax error is a closing parenthesis without an opening one.
///
/// Tolerant reading takes words as KiCad does. They are separated by white space and stand bare or in quotes; the first
/// one in a list is the token's name, the second one its value, also after a sub-list, and others are dropped. In
/// quotes a backslash escapes as in C: a quote, a backslash, one of the letters a b f n r t v, x with up to two
/// hexadecimal digits, up to three octal digits; numbers are bytes of UTF-8. A line break in quotes stays. A line that
/// begins with # is a comment. A list that does not begin with a word is a syntax error too.
///
/// In both modes parentheses or quotes that are still open at the end of the input are not an error.
///
/// Time and memory grow in proportion to the input.
class VELK_EXPORT KiCadReader
{
public:
    /// Reads from a copy of \a bytes.
    explicit KiCadReader(const QByteArray &bytes, KiCadReadingMode readingMode = KiCadReadingMode::Default);
    /// Reads from \a input, which the caller owns and keeps alive and has not opened.
    explicit KiCadReader(QIODevice *input, KiCadReadingMode readingMode = KiCadReadingMode::Default);
    ~KiCadReader();
    KiCadReader(const KiCadReader &) = delete;
    KiCadReader &operator=(const KiCadReader &) = delete;

    /// Opens the device, reads all of it into a new tree and closes it. May be called again; earlier trees
    /// stay valid for those who hold them.
    KiCadError read();

    /// The first token of the last read(); null before it or when the input held none. After a syntax error,
    /// what was read up to there. The tree is made by the first call, which others give back.
    QSharedPointer<KiCadToken> getRoot() const;

    /// True if the last read() came to the end of the input with every parenthesis and quote closed, and
    /// found neither unquoted text nor a list with a name behind the first list. A netlist for which this is false was
    /// probably cut off, or another one follows.
    bool isComplete() const;

    /// Line of the last syntax error, counted from 1; -1 when there was none.
    int getErrorLine() const;
    /// Column of the last syntax error in UTF-16 units, counted from 1; -1 when there was none.
    int getErrorColumn() const;

    /// Line of the first byte that is not UTF-8 in what the last read() has read, counted from 1; -1 when there was
    /// none. It is no error: U+FFFD is read, so that two names may become one, and in tolerant reading the character
    /// that the byte is in Latin-1. UTF-16 and UTF-32 are read where the input begins with their mark.
    int getEncodingErrorLine() const;
    /// Its column in UTF-16 units, counted from 1; -1 when there was none.
    int getEncodingErrorColumn() const;

private:
    friend class KiCadNetlistFilePrivate;

    /// What getRoot() makes its tree of, which is null then; only after a read() that could open the device.
    VELK_NO_EXPORT KiCadTokens takeTokens();

    std::unique_ptr<KiCadReaderPrivate> d;
};
}

#endif
