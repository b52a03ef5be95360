#include "tests/support/RandomSystems.h"

#include <velk/provider/MultipleEDAProvider.h>
#include <velk/routing/Routing.h>

#include <QLoggingCategory>

#include <cstdlib>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace {

/// On a board with two relays in parallel and so many nets more.
bool findsBothPaths(int moreNets)
{
    const auto board = systemOf(u"U1 Source 1\nD1 DUT 1\nK1 Relay 1,2\nK2 Relay 1,2\n"
                                "A: U1/1 K1/1 K2/1\nB: K1/2 K2/2 D1/1"_s);
    for (int i = 0; i < moreNets; ++i)
        board->connect(u"N"_s, {});
    MultipleEDAProvider joined({board.get()}, {});
    return Routing(&joined).findPaths({{u"Id"_s, u"U1"_s}}, u"1"_s, {{u"Id"_s, u"D1"_s}}, u"1"_s).size() == 2;
}

/// Destroyed when the objects of the main thread are gone.
class SearchesAtExit
{
public:
    SearchesAtExit() = default;
    SearchesAtExit(const SearchesAtExit &other) = delete;
    SearchesAtExit &operator=(const SearchesAtExit &other) = delete;
    ~SearchesAtExit()
    {
        for (int i = 0; i < 2; ++i) { // a larger board needs more memory than the thread had
            if (!findsBothPaths(100'000))
                std::_Exit(1);
        }
    }
};

const SearchesAtExit searchesAtExit;
}

int main()
{
    QLoggingCategory::setFilterRules(u"routing.debug=false"_s);
    return findsBothPaths(100) ? 0 : 1;
}
