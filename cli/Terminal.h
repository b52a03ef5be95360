#ifndef VELK_CLI_TERMINAL_H
#define VELK_CLI_TERMINAL_H

#include <cstdio>

namespace VelkCli {

/// Whether the stream goes to a terminal that understands control sequences.
bool isTerminal(std::FILE *stream);
}

#endif
