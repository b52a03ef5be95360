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

/// A list of the commands, of which there is no velk plan without the library for it.
inline QString commandsBuilt(QString text)
{
#ifndef VELK_HAS_PLANNING
    text.remove(QLatin1String("plan, ")).remove(QLatin1String("plan "));
#endif
    return text;
}

/// The example system.
inline const QStringList demo{QStringLiteral("examples/demo/instruments.net"),
                              QStringLiteral("examples/demo/matrix.net"), QStringLiteral("examples/demo/adapter.net")};

#endif
