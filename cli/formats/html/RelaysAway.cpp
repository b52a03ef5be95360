#include "cli/formats/html/RelaysAway.h"

#include "cli/formats/RelayText.h"

#include <QJsonObject>
#include <QSet>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace VelkCli {

namespace {

/// Those that closed contacts of the component are part of, each once.
QJsonArray setsAt(int component, const std::vector<NetContact> &contacts, const std::function<int(int)> &setOf)
{
    QSet<int> known{SwitchingModel::none};
    QJsonArray result;
    for (const NetContact &contact : contacts) {
        const int set = setOf(contact.net);
        if (contact.component == component && !known.contains(set)) {
            known.insert(set);
            result.append(set);
        }
    }
    return result;
}
}

QJsonArray relaysAwayToData(const SwitchingModel &model, const std::vector<int> &positions,
                            const std::function<qsizetype(const QString &)> &placeOf,
                            const std::function<int(int)> &setOf)
{
    QJsonArray result;
    for (int component = 0; component < model.componentCount(); ++component) {
        const int gang = model.gangOf(component);
        const int position = gang == SwitchingModel::none ? 0 : positions[static_cast<std::size_t>(gang)];
        if (position > 0)
            result.append(QJsonObject{{u"component"_s, placeOf(model.ref(component))},
                                      {u"setting"_s, settingText(model, component, position)},
                                      {u"sets"_s, setsAt(component, model.contactsOf(gang, position), setOf)}});
    }
    return result;
}
}
