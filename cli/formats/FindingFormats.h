#ifndef VELK_CLI_FORMATS_FINDINGFORMATS_H
#define VELK_CLI_FORMATS_FINDINGFORMATS_H

#include "cli/formats/Format.h"

#include <velk/check/Finding.h>

namespace VelkCli {

struct CheckReport
{
    QList<Velk::Finding> findings; ///< by code
    QStringList files;             ///< in the order of their numbers
    qsizetype componentCount;
    bool showsAll; ///< as text; the other formats always do
};

/// text: a paragraph for each code with its first findings, or with all of them. json: {"findings": [finding]}, each
/// with the files that it is in.
const Formats<CheckReport> &findingFormats();
}

#endif
