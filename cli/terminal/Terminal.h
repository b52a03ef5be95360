#ifndef VELK_CLI_TERMINAL_TERMINAL_H
#define VELK_CLI_TERMINAL_TERMINAL_H

#include <QString>

#include <cstdio>

namespace VelkCli {

/// Whether what is written to the file of this descriptor appears on a terminal.
bool isTerminal(int descriptor);

/// Whether the stream goes to a terminal that understands control sequences.
bool takesControlSequences(std::FILE *stream);

/// The text with its control characters but tabs as \xNN and those that turn the direction of text as \uNNNN, so that
/// no name in a netlist can steer a terminal, make lines of its own or turn the rest of a line around. For all that
/// people read.
QString printable(const QString &text);
}

#endif
