#include <velk/naming/EditDistance.h>

#include <algorithm>
#include <utility>
#include <vector>

namespace Velk {

int editDistance(const QString &a, const QString &b)
{
    const auto width = static_cast<std::size_t>(b.size()) + 1;
    std::vector<int> beforeLast(width);
    std::vector<int> last(width);
    std::vector<int> row(width);
    for (std::size_t j = 0; j < width; ++j)
        row[j] = static_cast<int>(j);
    for (qsizetype i = 1; i <= a.size(); ++i) {
        beforeLast = std::exchange(last, row);
        row[0] = static_cast<int>(i);
        for (qsizetype j = 1; j <= b.size(); ++j) {
            const auto at = static_cast<std::size_t>(j);
            const bool isSame = a.at(i - 1) == b.at(j - 1);
            row[at] = std::min({last[at] + 1, row[at - 1] + 1, last[at - 1] + (isSame ? 0 : 1)});
            if (i > 1 && j > 1 && a.at(i - 1) == b.at(j - 2) && a.at(i - 2) == b.at(j - 1))
                row[at] = std::min(row[at], beforeLast[at - 2] + 1);
        }
    }
    return row.back();
}
}
