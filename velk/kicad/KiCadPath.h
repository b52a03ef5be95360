#ifndef VELK_KICAD_KICADPATH_H
#define VELK_KICAD_KICADPATH_H

#include <QList>
#include <QString>

namespace Velk {

/// A path query of KiCadToken::find(), taken apart once to be asked many times, of KiCadTokens or a KiCadTree.
class KiCadPath
{
public:
    explicit KiCadPath(const QString &path);

    /// What token.find() finds; none if nothing.
    template <typename Tokens>
    typename Tokens::Token findFrom(const Tokens &tokens, typename Tokens::Token token) const
    {
        if (steps.isEmpty() || !steps.first().matches(tokens, token))
            return {};
        for (qsizetype i = 1; token && i < steps.size(); ++i)
            token = steps.at(i).findIn(tokens, token);
        return token;
    }

    /// The value of what token.find() finds; a null text if nothing.
    template <typename Tokens>
    QString textFrom(const Tokens &tokens, typename Tokens::Token token) const
    {
        const auto found = findFrom(tokens, token);
        return found ? tokens.text(found) : QString();
    }

private:
    struct Step
    {
        QString name;
        QString subname; ///< empty without a filter
        QString subvalue;

        template <typename Tokens>
        bool matches(const Tokens &tokens, typename Tokens::Token token) const
        {
            return tokens.name(token) == name && (subname.isEmpty() || hasChildOfFilter(tokens, token));
        }

        template <typename Tokens>
        bool hasChildOfFilter(const Tokens &tokens, typename Tokens::Token token) const
        {
            for (const typename Tokens::Token child : tokens.children(token)) {
                if (tokens.name(child) == subname && tokens.value(child) == subvalue)
                    return true;
            }
            return false;
        }

        /// With a filter the last child that matches is taken, without one the first.
        template <typename Tokens>
        typename Tokens::Token findIn(const Tokens &tokens, typename Tokens::Token parent) const
        {
            typename Tokens::Token found = {};
            for (const typename Tokens::Token child : tokens.children(parent)) {
                if (!matches(tokens, child))
                    continue;
                found = child;
                if (subname.isEmpty())
                    break;
            }
            return found;
        }
    };

    QList<Step> steps;
};
}

#endif
