#ifndef VELK_TESTS_TESTREGISTRY_H
#define VELK_TESTS_TESTREGISTRY_H

#include <QObject>

#include <functional>
#include <memory>
#include <vector>

/// What support/main.cpp runs: every class of the program that has a VELK_TEST line.
inline std::vector<std::function<std::unique_ptr<QObject>()>> &testRegistry()
{
    static std::vector<std::function<std::unique_ptr<QObject>()>> registry;
    return registry;
}

template <typename Test>
bool registerTest()
{
    testRegistry().push_back([] { return std::make_unique<Test>(); });
    return true;
}

#define VELK_TEST(Test) static const bool registered##Test = registerTest<Test>();

#endif
