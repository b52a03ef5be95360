#ifndef VELK_MODEL_TEXTNUMBERS_H
#define VELK_MODEL_TEXTNUMBERS_H

#include <QHashFunctions>
#include <QString>
#include <QStringView>

#include <algorithm>
#include <cstring>
#include <utility>
#include <vector>

namespace Velk {

/// Takes a few nanoseconds for a short text, where qHash() with a seed may take a hundred. With a seed that nobody
/// knows, nobody can choose texts that all have the same hash.
inline std::size_t textHash(QStringView text, std::size_t seed) noexcept
{
    const auto mixed = [](quint64 hash, quint64 units) {
        hash = (hash ^ units) * 0x9e3779b97f4a7c15U;
        hash = (hash ^ (hash >> 32U)) * 0xd6e8feb86659fd93U;
        return hash ^ (hash >> 32U);
    };
    const auto unitsAt = [text](qsizetype position) {
        quint64 units = 0;
        std::memcpy(&units, text.utf16() + position, sizeof units);
        return units;
    };
    quint64 hash = seed ^ static_cast<quint64>(text.size());
    if (text.size() < 4) {
        quint64 units = 0;
        for (const QChar unit : text)
            units = units << 16U | unit.unicode();
        return static_cast<std::size_t>(mixed(hash, units));
    }
    for (qsizetype i = 0; i + 4 < text.size(); i += 4)
        hash = mixed(hash, unitsAt(i));
    return static_cast<std::size_t>(mixed(hash, unitsAt(text.size() - 4)));
}

/// Numbers texts from 0 in the order in which they come. Equal texts have one number. A \a Text is a QString, or a
/// QStringView of a text that lives as long as the numbers are in use.
template <typename Text>
class TextNumbers
{
public:
    static constexpr int none = -1;

    void reserve(qsizetype count)
    {
        texts.reserve(static_cast<std::size_t>(count));
        resizeTable(static_cast<std::size_t>(count));
    }

    int count() const { return static_cast<int>(texts.size()); }

    /// Or none.
    int numberOf(QStringView text) const { return places.empty() ? none : places[placeOf(text, hashOf(text))].number; }

    /// The number of the text, which is given one if it has none yet.
    int add(const Text &text)
    {
        if (texts.size() * 2 >= places.size())
            resizeTable(texts.size() * 2 + 1);
        const quint32 hash = hashOf(text);
        Place &place = places[placeOf(text, hash)];
        if (place.number == none) {
            place = {hash, count()};
            texts.push_back(text);
        }
        return place.number;
    }

private:
    struct Place
    {
        quint32 hash;
        int number; ///< none where the place is free
    };

    quint32 hashOf(QStringView text) const { return static_cast<quint32>(textHash(text, seed)); }

    /// Where the text is, or the free place for it.
    std::size_t placeOf(QStringView text, quint32 hash) const
    {
        const std::size_t mask = places.size() - 1;
        std::size_t i = hash & mask;
        while (places[i].number != none && (places[i].hash != hash || !isSame(textOf(places[i]), text)))
            i = (i + 1) & mask;
        return i;
    }

    // At most half of the places are taken.
    void resizeTable(std::size_t textCount)
    {
        std::size_t size = 4;
        while (size < textCount * 2)
            size *= 2;
        const auto former = std::exchange(places, std::vector<Place>(size, Place{0, none}));
        for (const Place &place : former) {
            if (place.number != none)
                places[placeOf(textOf(place), place.hash)] = place;
        }
    }

    // Short texts: a call of Qt's comparison takes longer than comparing them.
    static bool isSame(QStringView a, QStringView b)
    {
        return a.size() == b.size() && std::equal(a.utf16(), a.utf16() + a.size(), b.utf16());
    }

    QStringView textOf(const Place &place) const { return texts[static_cast<std::size_t>(place.number)]; }

    const std::size_t seed = QHashSeed::globalSeed();
    std::vector<Place> places; ///< as many as a power of two; a text is in that of its hash or the next that was free
    std::vector<Text> texts;   ///< by number
};
}

#endif
