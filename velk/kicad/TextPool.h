#ifndef VELK_KICAD_TEXTPOOL_H
#define VELK_KICAD_TEXTPOOL_H

#include <velk/model/TextNumbers.h>

#include <QString>
#include <QStringView>

#include <vector>

namespace Velk {

/// Lets equal texts share their memory, as far as they come up again before another text has taken their place. So it
/// needs neither more memory nor more time where all texts differ.
class TextPool
{
public:
    /// A null text for an empty one.
    QString textOf(QStringView text)
    {
        if (text.isEmpty())
            return {};
        QString &recent = recentTexts[textHash(text, 0) % most];
        if (recent != text)
            recent = text.toString();
        return recent;
    }

private:
    static constexpr std::size_t most = 4096;
    std::vector<QString> recentTexts = std::vector<QString>(most);
};
}

#endif
