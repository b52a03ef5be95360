#include <velk/kicad/KiCadReader.h>

#include <QTextStream>

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

KiCadReader::KiCadReader(const QByteArray &bytes)
    : data(bytes)
    , device(&buffer)
{
    buffer.setData(data);
}

KiCadReader::KiCadReader(QIODevice *input)
    : device(input)
{
}

KiCadReader::~KiCadReader() = default;

KiCadError KiCadReader::read()
{
    root.reset();
    stack.clear();
    complete = false;
    if (!device->open(QIODevice::ReadOnly | QIODevice::Text))
        return KiCadOpenError;

    QTextStream stream(device);
    QString line;
    Pending pending;
    KiCadError error = KiCadNoError;
    for (int lineNumber = 1; error == KiCadNoError && stream.readLineInto(&line); ++lineNumber) {
        const qsizetype errorIndex = readLine(line, pending);
        if (errorIndex >= 0) {
            errorLine = lineNumber;
            errorColumn = static_cast<int>(errorIndex + 1);
            error = KiCadSyntaxError;
        }
    }
    device->close();
    complete = error == KiCadNoError && stack.isEmpty() && pending.outsideQuotes && pending.text.trimmed().isEmpty();
    return error;
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

// Returns the index of a ")" that closes nothing, or -1.
qsizetype KiCadReader::readLine(const QString &line, Pending &pending)
{
    qsizetype start = 0;
    const auto takeUpTo = [&](qsizetype end) {
        (pending.outsideQuotes ? pending.text : pending.quoted).append(QStringView(line).mid(start, end - start));
        start = end + 1;
    };
    for (qsizetype i = 0; i < line.size(); ++i) {
        const QChar c = line.at(i);
        const bool isParenthesis = pending.outsideQuotes && (c == u'(' || c == u')');
        if (!isParenthesis && c != u'"')
            continue;
        takeUpTo(i);
        if (c == u'"') {
            pending.outsideQuotes = !pending.outsideQuotes;
            continue;
        }
        addToken(pending.text, pending.quoted);
        if (c == u'(')
            continue;
        if (stack.isEmpty())
            return i;
        stack.removeLast();
    }
    takeUpTo(line.size());
    return -1;
}

void KiCadReader::addToken(QString &text, QString &quoted)
{
    text = text.trimmed();
    if (text.isEmpty())
        return; // quoted stays: what follows a closed sub-list goes to the next token
    const auto token = QSharedPointer<KiCadToken>::create(text, quoted);
    text.clear();
    quoted.clear();
    if (!stack.isEmpty())
        stack.last()->append(token);
    stack.append(token);
    if (root.isNull())
        root = token;
}
}
