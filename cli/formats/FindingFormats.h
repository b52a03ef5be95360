#ifndef VELK_CLI_FORMATS_FINDINGFORMATS_H
#define VELK_CLI_FORMATS_FINDINGFORMATS_H

#include "cli/terminal/Colour.h"

#include <velk/check/Finding.h>

#include <QByteArray>

namespace VelkCli {

struct CheckReport
{
    QList<Velk::Finding> findings; ///< by code
    QStringList files;             ///< in the order of their numbers
    qsizetype componentCount;
};

/// A paragraph for each code with its first findings, or with all of them.
QByteArray findingsToText(const CheckReport &report, bool showsAll, const Colour &colour);
/// All findings, with the files that they are in.
QByteArray findingsToJson(const CheckReport &report);
}

#endif
