#include <velk/kicad/KiCadTokenStack.h>

#include <algorithm>
#include <iterator>
#include <utility>

namespace Velk {

void KiCadTokenStack::open(QStringView name, QStringView value)
{
    severalRoots = severalRoots || (stack.empty() && !root.isNull());
    auto token = QSharedPointer<KiCadToken>::create(texts.textOf(name), texts.textOf(value));
    stack.push_back({std::move(token), finishedChildren.size()});
    if (root.isNull())
        root = stack.back().token;
}

void KiCadTokenStack::setValue(QStringView value)
{
    stack.back().token->value = texts.textOf(value);
}

void KiCadTokenStack::close()
{
    OpenToken closed = std::move(stack.back());
    stack.pop_back();
    const auto first = finishedChildren.begin() + static_cast<std::ptrdiff_t>(closed.firstChild);
    if (first != finishedChildren.end()) {
        auto &children = closed.token->children;
        children.reserve(finishedChildren.end() - first);
        std::move(first, finishedChildren.end(), std::back_inserter(children));
        finishedChildren.erase(first, finishedChildren.end());
    }
    if (!stack.empty())
        finishedChildren.push_back(std::move(closed.token));
}

QSharedPointer<KiCadToken> KiCadTokenStack::finish()
{
    while (!stack.empty())
        close();
    return root;
}
}
