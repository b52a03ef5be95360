#ifndef VELK_CLI_COMMANDS_SAVEDMATRIX_H
#define VELK_CLI_COMMANDS_SAVEDMATRIX_H

#include "cli/formats/CoverageReport.h"

#include <QStringList>

namespace VelkCli {

/// A matrix that velk coverage --format json has written.
class SavedMatrix
{
public:
    /// Reads the file, "-" being standard input. Throws a CommandError where it cannot be read or is no such matrix.
    explicit SavedMatrix(const QString &fileName);

    /// How the report differs from it: what was there before in its order, what is gained in that of the report. A pair
    /// is lost also where one of its pins is gone.
    CoverageComparison comparedWith(const CoverageReport &report) const;

private:
    QString name;
    QStringList sources;
    QStringList duts;
    QList<QList<int>> rows; ///< as CoverageReport has them
};
}

#endif
