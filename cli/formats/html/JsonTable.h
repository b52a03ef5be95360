#ifndef VELK_CLI_FORMATS_HTML_JSONTABLE_H
#define VELK_CLI_FORMATS_HTML_JSONTABLE_H

#include <QJsonArray>
#include <QMap>

namespace VelkCli {

/// Numbers things in the order in which they are first asked for, and keeps what is to be said of each.
template <typename Key>
class JsonTable
{
public:
    template <typename Describe>
    qsizetype place(const Key &key, const Describe &describe)
    {
        const auto known = places.constFind(key);
        if (known != places.cend())
            return *known;
        const QJsonValue description = describe();
        const qsizetype place = rows.size();
        places.insert(key, place);
        rows.append(description);
        return place;
    }

    QJsonArray rows;

private:
    QMap<Key, qsizetype> places;
};
}

#endif
