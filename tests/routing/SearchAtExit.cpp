#include "tests/support/RandomSystems.h"

#include <velk/provider/MultipleEDAProvider.h>
#include <velk/routing/Routing.h>

#include <QLoggingCategory>

#include <cstdlib>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace {

/// Two relays in parallel, on a board with so many nets more.
class Board
{
public:
    explicit Board(int moreNets)
        : netlist(systemOf(u"U1 Source 1\nD1 DUT 1\nK1 Relay 1,2\nK2 Relay 1,2\nA: U1/1 K1/1 K2/1\n"
                           "B: K1/2 K2/2 D1/1"_s))
    {
        for (int i = 0; i < moreNets; ++i)
            netlist->connect(u"N"_s, {});
        joined = std::make_unique<MultipleEDAProvider>(QList<EDAProvider *>{netlist.get()}, QList<QString>());
    }

    qsizetype pathCount() const
    {
        return Routing(joined.get()).findPaths({{u"Id"_s, u"U1"_s}}, u"1"_s, {{u"Id"_s, u"D1"_s}}, u"1"_s).size();
    }

private:
    std::unique_ptr<StubProvider> netlist;
    std::unique_ptr<MultipleEDAProvider> joined;
};

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
            if (Board(100'000).pathCount() != 2)
                std::_Exit(1);
        }
    }
};

const SearchesAtExit searchesAtExit;
}

int main()
{
    QLoggingCategory::setFilterRules(u"routing.debug=false"_s);
    return Board(100).pathCount() == 2 ? 0 : 1;
}
