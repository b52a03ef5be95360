#include "cli/formats/RelayText.h"

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace VelkCli {

QString positionText(const SwitchingModel &model, int component, int position)
{
    const auto &positions = model.positions(component).positions;
    const QString &name = positions.at(position).name;
    if (positions.size() == 2 && name.isEmpty())
        return {};
    bool isNumber = false;
    name.toInt(&isNumber);
    const bool isWord = !name.isEmpty() &&
                        std::none_of(name.cbegin(), name.cend(), [](QChar character) { return character.isSpace(); });
    const bool isTaken = std::any_of(positions.cbegin(), positions.cbegin() + position,
                                     [&](const ContactPosition &earlier) { return earlier.name == name; });
    return isWord && !isNumber && !isTaken ? name : QString::number(position);
}

QString settingText(const SwitchingModel &model, int component, int position)
{
    const QString text = positionText(model, component, position);
    return text.isEmpty() ? model.ref(component) : u"%1=%2"_s.arg(model.ref(component), text);
}

QStringList settingTexts(const SwitchingModel &model, const std::vector<int> &positions)
{
    QStringList texts;
    for (int component = 0; component < model.componentCount(); ++component) {
        const int gang = model.gangOf(component);
        const int position = gang == SwitchingModel::none ? 0 : positions[static_cast<std::size_t>(gang)];
        if (position > 0)
            texts.append(settingText(model, component, position));
    }
    return texts;
}
}
