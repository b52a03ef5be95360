#include "tests/support/TestRegistry.h"

#include <QCoreApplication>
#include <QLoggingCategory>
#include <QRegularExpression>
#include <QTest>

#include <cstdio>
#include <exception>
#include <optional>

namespace {

void setDefault(const char *variable, const char *value)
{
    if (!qEnvironmentVariableIsSet(variable))
        qputenv(variable, value);
}

/// What Qt Test is given for a class, or nothing if the arguments name functions of other classes only. Qt 6.4 does not
/// know "Class::function" and takes a function for one of every class in the program.
std::optional<QStringList> argumentsFor(const QString &className, const QStringList &arguments)
{
    static const QRegularExpression withClass(QStringLiteral("^(\\w+)::(.+)$"));
    QStringList own;
    bool namesAFunction = false;
    bool isNamed = false;
    for (const QString &argument : arguments) {
        const auto match = withClass.match(argument);
        namesAFunction |= match.hasMatch();
        isNamed |= match.hasMatch() && match.captured(1) == className;
        if (!match.hasMatch())
            own.append(argument);
        else if (match.captured(1) == className)
            own.append(match.captured(2));
    }
    return namesAFunction && !isNamed ? std::nullopt : std::optional(own);
}

/// The number of failures. Qt Test reports an exception and throws it again.
int run(QObject &test, const QStringList &arguments)
{
    try {
        return QTest::qExec(&test, arguments);
    } catch (const std::exception &exception) {
        std::fprintf(stderr, "unexpected exception: %s\n", exception.what());
        return 1;
    }
}
}

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    // A debugger for the stack trace may wait for good, and for every signal anew.
    setDefault("QTEST_DISABLE_STACK_DUMP", "1");
    setDefault("QTEST_FUNCTION_TIMEOUT", "240000");
    // Tests that look at the trace switch it on for themselves.
    QLoggingCategory::setFilterRules(QStringLiteral("routing.debug=false"));
    bool hasRun = false;
    int failures = 0;
    for (const auto &create : testRegistry()) {
        const auto test = create();
        if (const auto arguments =
                argumentsFor(QString::fromLatin1(test->metaObject()->className()), QCoreApplication::arguments())) {
            failures += run(*test, *arguments);
            hasRun = true;
        }
    }
    if (!hasRun)
        std::fprintf(stderr, "no such test class in this program\n");
    return hasRun && failures == 0 ? 0 : 1;
}
