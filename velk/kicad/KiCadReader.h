#ifndef VELK_KICAD_KICADREADER_H
#define VELK_KICAD_KICADREADER_H

#include <velk/VelkExport.h>
#include <velk/kicad/KiCadToken.h>

#include <QBuffer>
#include <QByteArray>
#include <QSharedPointer>
#include <QString>

class QIODevice;

namespace Velk {

/// How reading ended.
enum KiCadError : int
{
    KiCadNoError = 0,
    KiCadOpenError = -1,   ///< the device could not be opened
    KiCadSyntaxError = -2, ///< a closing parenthesis without an opening one
};

/// "No error", "Could not open KiCad", "Syntax error in KiCad"; "Unknown error" for any other value.
VELK_EXPORT QString kiCadErrorText(KiCadError error);

/// Reads a KiCad netlist (an S-expression in UTF-8) into a tree of KiCadToken. It knows the lexical form
/// only; KiCadNetParser knows the elements.
///
/// Values are the quoted texts: (num "1") is a token "num" with the value "1", whereas (num 1) is one named
/// "num 1" without a value. There is no escape character: every double quote opens or closes a text, and a
/// backslash is a character like others. A line break is dropped without a separator, inside quotes too. A
/// quoted text that follows a sub-list, as "y" in (a (b "x") "y"), goes to the value of the next token made.
/// Parentheses or quotes that are still open at the end of the input are not an error.
///
/// Time and memory grow in proportion to the input.
class VELK_EXPORT KiCadReader
{
public:
    /// Reads from a copy of \a bytes.
    explicit KiCadReader(const QByteArray &bytes);
    /// Reads from \a input, which the caller owns and keeps alive and has not opened.
    explicit KiCadReader(QIODevice *input);
    ~KiCadReader();
    KiCadReader(const KiCadReader &) = delete;
    KiCadReader &operator=(const KiCadReader &) = delete;

    /// Opens the device, reads all of it into a new tree and closes it. May be called again; earlier trees
    /// stay valid for those who hold them.
    KiCadError read();

    /// The first token of the last read(); null before it or when the input held none. After a syntax error,
    /// what was read up to there.
    QSharedPointer<KiCadToken> getRoot() const;

    /// True if the last read() came to the end of the input with every parenthesis and quote closed and no
    /// text left. A netlist for which this is false was probably cut off.
    bool isComplete() const;

    /// Line of the last syntax error, counted from 1; -1 when there was none.
    int getErrorLine() const;
    /// Column of the last syntax error in UTF-16 units, counted from 1; -1 when there was none.
    int getErrorColumn() const;

private:
    QByteArray data;
    QBuffer buffer;
    QIODevice *device;
    QSharedPointer<KiCadToken> root;
    bool complete = false;
    int errorLine = -1;
    int errorColumn = -1;
};
}

#endif
