#ifndef VELK_TESTS_COMMAND_H
#define VELK_TESTS_COMMAND_H

#include "tests/support/Process.h"

inline Result velk(const QStringList &arguments)
{
    return run(QStringLiteral(VELK_COMMAND), arguments);
}

/// The example system.
inline const QStringList demo{QStringLiteral("examples/demo/instruments.net"),
                              QStringLiteral("examples/demo/matrix.net"), QStringLiteral("examples/demo/adapter.net")};

#endif
