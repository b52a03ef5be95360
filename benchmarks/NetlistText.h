#ifndef VELK_BENCHMARKS_NETLISTTEXT_H
#define VELK_BENCHMARKS_NETLISTTEXT_H

#include "benchmarks/Board.h"

#include <QByteArray>

namespace VelkBenchmarks {

/// The board as KiCad would export it, with all that an export holds besides what Velk reads (descriptions, fields,
/// time stamps, pin functions and so on).
QByteArray netlistText(const Board &board);
}

#endif
