#include "benchmarks/PeakMemory.h"

#include <velk/kicad/KiCadNetlistFile.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace VelkBenchmarks {

namespace {

double peakMemoryOfProcess(const std::string &fileName)
{
    const std::string program = std::filesystem::read_symlink("/proc/self/exe").string();
    FILE *output = popen(("'" + program + "' --load '" + fileName + "'").c_str(), "r");
    if (!output)
        throw std::runtime_error("cannot start a process");
    double bytes = 0;
    const int count = std::fscanf(output, "%lf", &bytes);
    if (pclose(output) != 0 || count != 1)
        throw std::runtime_error("a process cannot load the netlist");
    return bytes;
}
}

double peakMemoryOfLoading(const std::string &fileName)
{
    return peakMemoryOfProcess(fileName) - peakMemoryOfProcess({});
}

// Not from getrusage(), which also counts what the parent held when it started this process.
void loadAndPrintPeakMemory(const std::string &fileName)
{
    if (!fileName.empty() && !Velk::KiCadNetlistFile(QString::fromStdString(fileName)).netlist())
        throw std::runtime_error("cannot load " + fileName);
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
        double kibibytes = 0;
        if (word == "VmHWM:" && status >> kibibytes)
            std::printf("%.0f\n", kibibytes * 1024);
    }
}
}
