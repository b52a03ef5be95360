#include "cli/formats/RelayText.h"

using namespace Qt::StringLiterals;
using namespace Velk;

namespace VelkCli {

QString settingText(const SwitchingModel &model, int component, int position)
{
    const auto &positions = model.positions(component).positions;
    const QString &name = positions.at(position).name;
    const int number = name.toInt();
    const bool isAnotherNumber = QString::number(number) == name && number >= 0 && number < positions.size();
    if (!name.isEmpty() && !isAnotherNumber)
        return u"%1=%2"_s.arg(model.ref(component), name);
    return positions.size() == 2 ? model.ref(component)
                                 : u"%1=%2"_s.arg(model.ref(component), QString::number(position));
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
