#ifndef VELK_KICAD_KICADNETLISTPATHS_H
#define VELK_KICAD_KICADNETLISTPATHS_H

#include <velk/kicad/KiCadPath.h>

namespace Velk {

/// The queries for the elements of a netlist, each relative to the token that its first step names.
struct KiCadNetlistPaths
{
    const KiCadPath version{QStringLiteral("/export/version")};
    const KiCadPath libparts{QStringLiteral("/export/libparts")};
    const KiCadPath partName{QStringLiteral("/libpart/part")};
    const KiCadPath partLib{QStringLiteral("/libpart/lib")};
    const KiCadPath aliases{QStringLiteral("/libpart/aliases")};
    const KiCadPath pins{QStringLiteral("/libpart/pins")};
    const KiCadPath pinNumber{QStringLiteral("/pin/num")};
    const KiCadPath pinName{QStringLiteral("/pin/name")};
    const KiCadPath pinType{QStringLiteral("/pin/type")};
    const KiCadPath components{QStringLiteral("/export/components")};
    const KiCadPath ref{QStringLiteral("/comp/ref")};
    const KiCadPath value{QStringLiteral("/comp/value")};
    const KiCadPath fields{QStringLiteral("/comp/fields")};
    const KiCadPath fieldName{QStringLiteral("/field/name")};
    const KiCadPath libsource{QStringLiteral("/comp/libsource")};
    const KiCadPath libOfComponent{QStringLiteral("/comp/libsource/lib")};
    const KiCadPath partOfComponent{QStringLiteral("/comp/libsource/part")};
    const KiCadPath sheetNames{QStringLiteral("/comp/sheetpath/names")};
    const KiCadPath propertyOfComponent{QStringLiteral("/comp/property")};
    const KiCadPath property{QStringLiteral("/property")};
    const KiCadPath propertyName{QStringLiteral("/property/name")};
    const KiCadPath propertyValue{QStringLiteral("/property/value")};
    const KiCadPath nets{QStringLiteral("/export/nets")};
    const KiCadPath netName{QStringLiteral("/net/name")};
    const KiCadPath nodeOfNet{QStringLiteral("/net/node")};
    const KiCadPath node{QStringLiteral("/node")};
    const KiCadPath nodeRef{QStringLiteral("/node/ref")};
    const KiCadPath nodePin{QStringLiteral("/node/pin")};
};

inline const KiCadNetlistPaths &kiCadPaths()
{
    static const KiCadNetlistPaths paths;
    return paths;
}

/// A path for messages: "/export/nets/net[3]", counted from 0.
inline QString indexedPath(const QString &listPath, qsizetype index)
{
    return QStringLiteral("%1[%2]").arg(listPath, QString::number(index));
}

/// A name as it stands in warnings: there may be as many of them as there are elements.
inline QString shortened(const QString &name)
{
    constexpr qsizetype most = 100;
    return name.size() <= most ? name : name.left(most) + u'…';
}

/// A path for warnings: "/export/nets/net[GND]".
inline QString namedPath(const QString &listPath, const QString &name)
{
    return QStringLiteral("%1[%2]").arg(listPath, shortened(name));
}
}

#endif
