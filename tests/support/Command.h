#ifndef VELK_TESTS_COMMAND_H
#define VELK_TESTS_COMMAND_H

#include "tests/support/Process.h"

inline Result velk(const QStringList &arguments)
{
    return run(QStringLiteral(VELK_COMMAND), arguments);
}

/// Split at blanks; '' is an empty argument.
inline QStringList argumentsOf(const QString &text)
{
    return text.split(QLatin1Char(' '), Qt::SkipEmptyParts).replaceInStrings(QLatin1String("''"), QString());
}

/// The example system.
inline const QStringList demo{QStringLiteral("examples/demo/instruments.net"),
                              QStringLiteral("examples/demo/matrix.net"), QStringLiteral("examples/demo/adapter.net")};

#endif
