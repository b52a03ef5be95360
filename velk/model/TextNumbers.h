#ifndef VELK_MODEL_TEXTNUMBERS_H
#define VELK_MODEL_TEXTNUMBERS_H

#include <QHash>
#include <QString>
#include <QStringView>

#include <algorithm>
#include <cstring>
#include <vector>

namespace Velk {

/// Takes a few nanoseconds for a short text, where qHash() with a seed may take a hundred. The seed, which nobody
/// knows, keeps others from simply choosing texts of one hash.
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

/// A text as a key of QHash.
struct HashedText
{
    QStringView text;

    friend bool operator==(HashedText a, HashedText b) { return a.text == b.text; }
    friend std::size_t qHash(HashedText key, std::size_t seed) noexcept { return textHash(key.text, seed); }
};

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
        numbers.reserve(count);
    }

    int count() const { return static_cast<int>(texts.size()); }

    /// Or none.
    int numberOf(QStringView text) const { return numbers.value({text}).number; }

    /// The number of the text, which is given one if it has none yet.
    int add(const Text &text)
    {
        Numbered &numbered = numbers[{text}];
        if (numbered.number == none) {
            numbered.number = count();
            texts.push_back(text);
        }
        return numbered.number;
    }

private:
    struct Numbered
    {
        int number = none;
    };

    QHash<HashedText, Numbered> numbers;
    std::vector<Text> texts; ///< by number; they keep what the keys see
};
}

#endif
