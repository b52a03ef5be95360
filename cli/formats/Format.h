#ifndef VELK_CLI_FORMATS_FORMAT_H
#define VELK_CLI_FORMATS_FORMAT_H

#include "cli/formats/CsvWriter.h"

#include <QString>

#include <algorithm>
#include <string>
#include <vector>

namespace VelkCli {

/// Where the output goes, and for whom.
struct OutputTarget
{
    QString fileName; ///< empty for standard output
    CsvReader csvReader = CsvReader::Program;
};

/// A form in which a report can be written.
template <typename Report>
struct Format
{
    const char *name; ///< as users write it
    void (*write)(const Report &report, const OutputTarget &target);
};

template <typename Report>
using Formats = std::vector<Format<Report>>;

template <typename Report>
std::vector<std::string> formatNames(const Formats<Report> &formats)
{
    std::vector<std::string> names;
    for (const auto &format : formats)
        names.emplace_back(format.name);
    return names;
}

/// The name has to be one of the formats'.
template <typename Report>
void writeAs(const std::string &name, const Formats<Report> &formats, const Report &report, const OutputTarget &target)
{
    const auto format =
        std::find_if(formats.cbegin(), formats.cend(), [&](const auto &known) { return name == known.name; });
    format->write(report, target);
}
}

#endif
