#include "tests/support/TestRegistry.h"

#include <QCoreApplication>
#include <QLoggingCategory>
#include <QTest>

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    // Tests that look at the trace switch it on for themselves.
    QLoggingCategory::setFilterRules(QStringLiteral("routing.debug=false"));
    int failures = 0;
    for (const auto &create : testRegistry())
        failures += QTest::qExec(create().get(), argc, argv);
    return failures == 0 ? 0 : 1;
}
