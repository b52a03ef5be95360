#include <velk/switching/PositionText.h>

#include <QStringList>

#include <optional>

using namespace Qt::StringLiterals;

namespace Velk {

namespace {

/// Reads from left to right and stops at the first thing that is wrong.
class PositionReader
{
public:
    PositionReader(const QString &wholeText, const QSet<QString> &pinNumbers)
        : text(wholeText)
        , pins(pinNumbers)
    {
    }

    PositionText read()
    {
        for (qsizetype begin = 0; begin <= text.size() && !isWrong();) {
            const qsizetype slash = text.indexOf(u'/', begin);
            const qsizetype end = slash < 0 ? text.size() : slash;
            readPosition(begin, end);
            begin = end + 1;
        }
        if (!isWrong() && result.positions.size() < 2)
            refuse(text.size(), u"expected '/' and another position"_s);
        if (isWrong())
            result.positions.clear();
        return result;
    }

private:
    void readPosition(qsizetype begin, qsizetype end)
    {
        ContactPosition position;
        const qsizetype nameSize = QStringView(text).mid(begin, end - begin).indexOf(u':');
        if (nameSize >= 0) {
            position.name = text.mid(begin, nameSize).trimmed();
            begin += nameSize;
            if (position.name.isEmpty()) {
                refuse(begin, u"expected a name before ':'"_s);
                return;
            }
            ++begin;
        }
        while (const auto contact = nextContact(begin, end))
            position.closed.append(*contact);
        result.positions.append(position);
    }

    /// The next pair from \a begin on, which is moved behind it; empty at the end and where there is something else.
    std::optional<Contact> nextContact(qsizetype &begin, qsizetype end)
    {
        while (begin < end && isSeparator(text.at(begin)))
            ++begin;
        const qsizetype first = begin;
        while (begin < end && !isSeparator(text.at(begin)))
            ++begin;
        return first == begin ? std::nullopt : contactIn(first, text.mid(first, begin - first));
    }

    std::optional<Contact> contactIn(qsizetype place, const QString &pair)
    {
        const QStringList numbers = pair.split(u'-');
        if (numbers.size() != 2 || numbers.contains(QString()) || pair.contains(u':')) {
            refuse(place, u"expected PIN-PIN, not '%1'"_s.arg(pair));
            return {};
        }
        for (const QString &number : numbers) {
            if (!pins.contains(number)) {
                refuse(place, u"the part has no pin '%1'"_s.arg(number));
                return {};
            }
        }
        if (numbers.first() == numbers.last()) {
            refuse(place, u"pin '%1' is paired with itself"_s.arg(numbers.first()));
            return {};
        }
        return Contact{numbers.first(), numbers.last()};
    }

    static bool isSeparator(QChar character) { return character.isSpace() || character == u','; }

    bool isWrong() const { return !result.problem.isEmpty(); }

    void refuse(qsizetype place, const QString &problem)
    {
        result.problem = problem;
        result.column = place + 1;
    }

    const QString &text;
    const QSet<QString> &pins;
    PositionText result;
};
}

PositionText readPositions(const QString &text, const QSet<QString> &pinNumbers)
{
    return PositionReader(text, pinNumbers).read();
}

QString positionsText(const QList<ContactPosition> &positions)
{
    QStringList words;
    for (qsizetype i = 0; i < positions.size(); ++i) {
        if (i > 0)
            words.append(u"/"_s);
        if (!positions.at(i).name.isEmpty())
            words.append(positions.at(i).name + u':');
        for (const Contact &contact : positions.at(i).closed)
            words.append(contact.pin + u'-' + contact.otherPin);
    }
    return words.join(u' ');
}
}
