#ifndef VELK_CLI_COMMANDS_JOBS_H
#define VELK_CLI_COMMANDS_JOBS_H

#include <functional>

#include <QtGlobal>

namespace VelkCli {

/// Calls \a work with each number below \a count, from as many threads at once, or as many as there are processors if
/// that is 0, and tells Progress of each. An exception ends it and is thrown again.
void workInThreads(int threads, qsizetype count, const std::function<void(qsizetype)> &work);
}

#endif
