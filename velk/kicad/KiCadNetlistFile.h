#ifndef VELK_KICAD_KICADNETLISTFILE_H
#define VELK_KICAD_KICADNETLISTFILE_H

#include <velk/VelkExport.h>
#include <velk/kicad/KiCadNetParser.h>
#include <velk/kicad/KiCadReadingMode.h>
#include <velk/kicad/KiCadRepetition.h>

#include <QList>
#include <QString>
#include <QStringList>

#include <memory>

class QIODevice;

namespace Velk {

class KiCadNetlistFilePrivate;

/// A KiCad netlist as it was loaded: what it holds, what is wrong with it, what was completed. No fault of a file
/// throws. A plain value; copies share everything.
///
///     const Velk::KiCadNetlistFile file("matrix.net");
///     if (!file.refusal().isEmpty())
///         qFatal("%s: %s", qPrintable(file.fileName()), qPrintable(file.refusal()));
///     const Velk::MultipleEDAProvider netlist({file.netlist().get()}, {});
///
/// What was read up to an error is dropped. Time and memory grow in proportion to the file, which is not copied; the
/// memory that reading takes is free again afterwards.
class VELK_EXPORT KiCadNetlistFile
{
public:
    /// What keeps a file from being a netlist.
    enum class Error
    {
        None,
        Unreadable,     ///< it could not be opened
        Syntax,         ///< a parenthesis out of place, in tolerant reading also a list without a name
        NoNetlist,      ///< it does not begin with "(export"
        MissingElement, ///< it lacks an element, as KiCadNetParser::parse() throws it
    };

    /// Reads the file of this name.
    explicit KiCadNetlistFile(const QString &fileName, KiCadReadingMode mode = KiCadReadingMode::Default);
    /// Reads from \a device, which the caller has not opened and is done with afterwards, as standard input, bytes in
    /// memory, or a file that counts what is read of it. \a fileName is what fileName() returns.
    KiCadNetlistFile(QIODevice *device, const QString &fileName, KiCadReadingMode mode = KiCadReadingMode::Default);
    ~KiCadNetlistFile();
    KiCadNetlistFile(const KiCadNetlistFile &other);
    KiCadNetlistFile &operator=(const KiCadNetlistFile &other);
    /// One that was moved from may be assigned to or destroyed, nothing else.
    KiCadNetlistFile(KiCadNetlistFile &&other) noexcept;
    KiCadNetlistFile &operator=(KiCadNetlistFile &&other) noexcept;

    /// As it was given.
    QString fileName() const;

    /// The netlist, which lives as long as this pointer or a copy of the file; null where there is an error.
    std::shared_ptr<KiCadNetParser> netlist() const;

    Error error() const; ///< what is wrong, or Error::None
    /// The error in one line of English without the name of the file, with line and column where there are any; empty
    /// if there is none. As "Syntax error in KiCad at line 2, column 3: a closing parenthesis without an opening one".
    QString errorText() const;
    /// Line of the syntax error, counted from 1; -1 when there is none.
    int errorLine() const;
    /// Its column in UTF-16 units, counted from 1; -1 when there is none.
    int errorColumn() const;

    /// Whether the file is one list in parentheses as a whole. If not, it was probably cut off, or another netlist
    /// follows: the netlist silently lacks the rest. False where it was not read to its end.
    bool isComplete() const;
    /// Line of the first byte that is not UTF-8, counted from 1; -1 when there is none. By default names that differ
    /// there alone are taken for one, in tolerant reading the byte is taken as Latin-1.
    int encodingErrorLine() const;
    /// Its column in UTF-16 units, counted from 1; -1 when there is none.
    int encodingErrorColumn() const;

    /// Why one should not rely on the file, in one line without its name: the error, that it is incomplete, or, by
    /// default, that it is not UTF-8. Empty for a good file.
    QString refusal() const;

    /// What one should know about a file without an error, each in one line without its name: that it is not UTF-8,
    /// that it is incomplete, then KiCadNetParser::warnings().
    QStringList warnings() const;
    /// KiCadNetParser::repetitions(); empty where there is an error.
    QList<KiCadRepetition> repetitions() const;

private:
    std::shared_ptr<const KiCadNetlistFilePrivate> d;
};
}

#endif
