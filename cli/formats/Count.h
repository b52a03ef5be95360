#ifndef VELK_CLI_FORMATS_COUNT_H
#define VELK_CLI_FORMATS_COUNT_H

#include <QString>

namespace VelkCli {

/// "1 short", "2 shorts".
inline QString countOf(qsizetype count, const QString &noun)
{
    return QStringLiteral("%1 %2%3").arg(QString::number(count), noun, count == 1 ? QString() : QStringLiteral("s"));
}
}

#endif
