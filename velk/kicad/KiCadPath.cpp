#include <velk/kicad/KiCadPath.h>

#include <QRegularExpression>

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
}
