#include "cli/Warnings.h"

#include <cstdio>

namespace VelkCli {

void printWarnings(const QStringList &warnings)
{
    constexpr qsizetype most = 20;
    for (const QString &warning : warnings.mid(0, most))
        std::fprintf(stderr, "velk: warning: %s\n", qUtf8Printable(warning));
    if (warnings.size() > most)
        std::fprintf(stderr, "velk: warning: %lld more of this kind\n", static_cast<long long>(warnings.size() - most));
}
}
