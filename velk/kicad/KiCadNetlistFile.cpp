#include <velk/kicad/KiCadNetlistFile.h>

#include <velk/kicad/KiCadReader.h>
#include <velk/kicad/KiCadTokens.h>
#include <velk/model/EDAException.h>

#include <QFile>

using namespace Qt::StringLiterals;

namespace Velk {

namespace {

using Error = KiCadNetlistFile::Error;

QString syntaxErrorText(KiCadReadingMode mode)
{
    return mode == KiCadReadingMode::Default ? u"a closing parenthesis without an opening one"_s
                                             : u"a parenthesis that closes nothing, or a list without a name"_s;
}
}

class KiCadNetlistFilePrivate
{
public:
    KiCadNetlistFilePrivate(QIODevice &device, const QString &name, KiCadReadingMode readingMode)
        : fileName(name)
        , mode(readingMode)
    {
        KiCadReader reader(&device, mode);
        const KiCadError result = reader.read();
        isComplete = reader.isComplete();
        encodingErrorLine = reader.getEncodingErrorLine();
        encodingErrorColumn = reader.getEncodingErrorColumn();
        if (result == KiCadOpenError)
            fail(Error::Unreadable, u"cannot be read: %1"_s.arg(device.errorString()));
        else if (result == KiCadSyntaxError)
            failAt(reader.getErrorLine(), reader.getErrorColumn());
        else
            parse(reader.takeTokens());
    }

    /// Where in the file it is not UTF-8, or nothing.
    QString encodingText() const
    {
        if (encodingErrorLine < 0)
            return {};
        return u"is not UTF-8 at line %1, column %2"_s.arg(QString::number(encodingErrorLine),
                                                           QString::number(encodingErrorColumn));
    }

    QString fileName;
    KiCadReadingMode mode;
    std::shared_ptr<KiCadNetParser> netlist;
    Error error = Error::None;
    QString errorText;
    int errorLine = -1;
    int errorColumn = -1;
    bool isComplete = false;
    int encodingErrorLine = -1;
    int encodingErrorColumn = -1;

private:
    void fail(Error kind, const QString &text)
    {
        error = kind;
        errorText = text;
    }

    void failAt(int line, int column)
    {
        errorLine = line;
        errorColumn = column;
        fail(Error::Syntax,
             u"%1 at line %2, column %3: %4"_s.arg(kiCadErrorText(KiCadSyntaxError), QString::number(line),
                                                   QString::number(column), syntaxErrorText(mode)));
    }

    void parse(KiCadTokens tokens)
    {
        if (tokens.name(tokens.root()) != u"export") {
            fail(Error::NoNetlist, u"is not a KiCad netlist: it does not begin with \"(export\""_s);
            return;
        }
        const auto parser = std::make_shared<KiCadNetParser>(nullptr, mode);
        try {
            parser->parseFrom(tokens);
            netlist = parser;
        } catch (const EDAException &exception) {
            fail(Error::MissingElement, exception.message());
        }
    }
};

KiCadNetlistFile::KiCadNetlistFile(const QString &fileName, KiCadReadingMode mode)
{
    QFile file(fileName);
    d = std::make_shared<KiCadNetlistFilePrivate>(file, fileName, mode);
}

KiCadNetlistFile::KiCadNetlistFile(QIODevice *device, const QString &fileName, KiCadReadingMode mode)
    : d(std::make_shared<KiCadNetlistFilePrivate>(*device, fileName, mode))
{
}

KiCadNetlistFile::~KiCadNetlistFile() = default;
KiCadNetlistFile::KiCadNetlistFile(const KiCadNetlistFile &other) = default;
KiCadNetlistFile &KiCadNetlistFile::operator=(const KiCadNetlistFile &other) = default;
KiCadNetlistFile::KiCadNetlistFile(KiCadNetlistFile &&other) noexcept = default;
KiCadNetlistFile &KiCadNetlistFile::operator=(KiCadNetlistFile &&other) noexcept = default;

QString KiCadNetlistFile::fileName() const
{
    return d->fileName;
}

std::shared_ptr<KiCadNetParser> KiCadNetlistFile::netlist() const
{
    return d->netlist;
}

KiCadNetlistFile::Error KiCadNetlistFile::error() const
{
    return d->error;
}

QString KiCadNetlistFile::errorText() const
{
    return d->errorText;
}

int KiCadNetlistFile::errorLine() const
{
    return d->errorLine;
}

int KiCadNetlistFile::errorColumn() const
{
    return d->errorColumn;
}

bool KiCadNetlistFile::isComplete() const
{
    return d->isComplete;
}

int KiCadNetlistFile::encodingErrorLine() const
{
    return d->encodingErrorLine;
}

int KiCadNetlistFile::encodingErrorColumn() const
{
    return d->encodingErrorColumn;
}

QString KiCadNetlistFile::refusal() const
{
    const bool wasReadWhole = d->error == Error::None || d->error == Error::MissingElement;
    if (!wasReadWhole)
        return d->errorText;
    if (d->mode == KiCadReadingMode::Default && d->encodingErrorLine > 0)
        return d->encodingText();
    QStringList reasons;
    if (d->error != Error::None)
        reasons.append(d->errorText);
    if (!d->isComplete) // what may explain the error
        reasons.append(
            u"the file is not one list in parentheses as a whole; was it cut off, or is something around it?"_s);
    return reasons.join(u"; "_s);
}

QStringList KiCadNetlistFile::warnings() const
{
    if (!d->netlist)
        return {};
    QStringList texts;
    if (d->encodingErrorLine > 0)
        texts.append(u"%1, %2"_s.arg(d->encodingText(), d->mode == KiCadReadingMode::Tolerant
                                                            ? u"and taken as Latin-1 there"_s
                                                            : u"so names that differ there alone are taken for one"_s));
    if (!d->isComplete)
        texts.append(u"is not one list in parentheses as a whole"_s);
    return texts + d->netlist->warnings();
}

QList<KiCadRepetition> KiCadNetlistFile::repetitions() const
{
    return d->netlist ? d->netlist->repetitions() : QList<KiCadRepetition>();
}
}
