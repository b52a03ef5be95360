#include "cli/formats/html/Page.h"

#include <QCryptographicHash>
#include <QFile>
#include <QJsonDocument>
#include <QMap>

using namespace Qt::StringLiterals;

namespace VelkCli {

namespace {

QByteArray pageFile(const QString &name)
{
    QFile file(u":/page/"_s + name);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("the page lacks %s", qPrintable(name));
    return file.readAll();
}

QByteArray pageFiles(const QStringList &names)
{
    QByteArray text;
    for (const QString &name : names)
        text += pageFile(name);
    return text;
}

QByteArray sourceHash(const QByteArray &text)
{
    return "'sha256-" + QCryptographicHash::hash(text, QCryptographicHash::Sha256).toBase64() + "'";
}
}

// A data element ends at "</script" and knows no escapes but those of JSON.
QByteArray toPageData(const QJsonObject &members)
{
    return QJsonDocument(members)
        .toJson(QJsonDocument::Compact)
        .replace('<', "\\u003c")
        .replace("\u2028", "\\u2028")
        .replace("\u2029", "\\u2029");
}

QByteArray pageOf(const PageFiles &files, const QByteArray &data)
{
    const QByteArray style = pageFiles(files.styles);
    const QByteArray script = pageFiles(files.scripts);
    const QMap<QByteArray, QByteArray> parts{{"style", style},
                                             {"style-hash", sourceHash(style)},
                                             {"script", script},
                                             {"script-hash", sourceHash(script)},
                                             {"data", data}};
    QByteArray page;
    const auto pieces = pageFile(files.frame).split('@'); // every other one is the name of a part
    for (qsizetype i = 0; i < pieces.size(); ++i)
        page += i % 2 == 0 ? pieces.at(i) : parts.value(pieces.at(i));
    return page;
}
}
