#ifndef VELK_CLI_COMMANDS_COVERAGESEARCH_H
#define VELK_CLI_COMMANDS_COVERAGESEARCH_H

#include "cli/formats/CoverageReport.h"

namespace VelkCli {

/// What is to be found besides the matrix.
struct CoverageExtras
{
    bool firstRoutes;
    bool critical;
    bool unused;
};

/// Fills in what the routing of the report finds between its pins, in so many threads as workInThreads() takes. It is
/// the same with any number of threads.
void findCoverage(const CoverageExtras &extras, int threads, CoverageReport &report);
}

#endif
