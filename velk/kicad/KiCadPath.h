#ifndef VELK_KICAD_KICADPATH_H
#define VELK_KICAD_KICADPATH_H

#include <velk/kicad/KiCadToken.h>

#include <QList>
#include <QSharedPointer>
#include <QString>

namespace Velk {

/// A path query of KiCadToken::find(), taken apart once to be asked many times.
class KiCadPath
{
public:
    explicit KiCadPath(const QString &path);

    /// What token.find() finds; null if nothing.
    KiCadToken *findFrom(KiCadToken &token) const;
    /// The value of what token.find() finds; a null text if nothing.
    QString textFrom(KiCadToken &token) const;

private:
    struct Step
    {
        QString name;
        QString subname; ///< empty without a filter
        QString subvalue;

        bool matches(const KiCadToken &token) const;
        KiCadToken *findIn(const QList<QSharedPointer<KiCadToken>> &children) const;
    };

    QList<Step> steps;
};
}

#endif
