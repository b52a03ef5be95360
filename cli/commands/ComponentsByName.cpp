#include "cli/commands/ComponentsByName.h"

#include <velk/model/References.h>

using namespace Velk;

namespace VelkCli {

ComponentsByName::ComponentsByName(const SwitchingModel &switchingModel)
    : model(switchingModel)
{
    for (int component = 0; component < model.componentCount(); ++component) {
        const QString name = drawnName(model.ref(component));
        drawnSo.insert(name, drawnSo.contains(name) ? SwitchingModel::none : component);
    }
}

int ComponentsByName::componentOf(const QString &ref) const
{
    const int exact = model.componentOf(ref);
    return exact != SwitchingModel::none ? exact : drawnSo.value(ref, SwitchingModel::none);
}
}
