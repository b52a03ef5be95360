#ifndef VELK_CLI_COMMANDS_TRACE_H
#define VELK_CLI_COMMANDS_TRACE_H

namespace VelkCli {

/// Sends what Velk and Qt log to standard error, one line each, and silences the trace of the search, whatever
/// the environment's logging rules say. Call it first of all.
void setUpLogging();
}

#endif
