#ifndef VELK_CLI_TERMINAL_TERMINAL_H
#define VELK_CLI_TERMINAL_TERMINAL_H

#include <cstdio>

namespace VelkCli {

/// Whether what is written to the file of this descriptor appears on a terminal.
bool isTerminal(int descriptor);

/// Whether the stream goes to a terminal that understands control sequences.
bool takesControlSequences(std::FILE *stream);
}

#endif
