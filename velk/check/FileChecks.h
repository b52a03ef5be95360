#ifndef VELK_CHECK_FILECHECKS_H
#define VELK_CHECK_FILECHECKS_H

#include <velk/check/SingleFinding.h>
#include <velk/kicad/KiCadRepetition.h>

namespace Velk {

/// The file of a netlist, with what it lists more than once.
struct CheckedFile
{
    QString name;
    QList<KiCadRepetition> repetitions;
};

/// Netlists that are given twice, by the same file or by a copy of it, and what the netlists list more than once, so
/// that not all of it holds. The files are in the order of the netlists.
QList<SingleFinding> fileFindings(const QList<CheckedFile> &files);
}

#endif
