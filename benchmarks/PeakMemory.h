#ifndef VELK_BENCHMARKS_PEAKMEMORY_H
#define VELK_BENCHMARKS_PEAKMEMORY_H

#include <string>

namespace VelkBenchmarks {

/// The most memory, in bytes, that loading this netlist takes: what a new process had resident at the most, less what
/// one had that loads nothing.
double peakMemoryOfLoading(const std::string &fileName);

/// What that process does: loads the netlist, if a name is given, and prints the most bytes that it had resident.
void loadAndPrintPeakMemory(const std::string &fileName);
}

#endif
