#include <velk/kicad/KiCadPath.h>

#include <QRegularExpression>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace Velk {

KiCadPath::KiCadPath(const QString &path)
{
    static const QRegularExpression stepExpression(
        uR"(\/(?<name>[^\[\/]+)(?:\[(?<subname>[^=]+)='(?<subvalue>[^']+)'\])?)"_s);

    auto matches = stepExpression.globalMatch(path);
    while (matches.hasNext()) {
        const auto match = matches.next();
        steps.append({match.captured(u"name"_s), match.captured(u"subname"_s), match.captured(u"subvalue"_s)});
    }
}

KiCadToken *KiCadPath::findFrom(KiCadToken &token) const
{
    if (steps.isEmpty() || !steps.first().matches(token))
        return nullptr;
    KiCadToken *current = &token;
    for (qsizetype i = 1; current && i < steps.size(); ++i)
        current = steps.at(i).findIn(current->children);
    return current;
}

QString KiCadPath::textFrom(KiCadToken &token) const
{
    const KiCadToken *found = findFrom(token);
    return found ? found->value : QString();
}

bool KiCadPath::Step::matches(const KiCadToken &token) const
{
    if (token.name != name)
        return false;
    return subname.isEmpty() || std::any_of(token.children.cbegin(), token.children.cend(), [&](const auto &child) {
               return child->name == subname && child->value == subvalue;
           });
}

// With a filter the last child that matches is taken, without one the first.
KiCadToken *KiCadPath::Step::findIn(const QList<QSharedPointer<KiCadToken>> &children) const
{
    const auto isMatch = [this](const auto &child) { return matches(*child); };
    if (subname.isEmpty()) {
        const auto first = std::find_if(children.cbegin(), children.cend(), isMatch);
        return first == children.cend() ? nullptr : first->data();
    }
    const auto last = std::find_if(children.crbegin(), children.crend(), isMatch);
    return last == children.crend() ? nullptr : last->data();
}
}
