#ifndef VELK_TESTS_PLANNINGTEXT_H
#define VELK_TESTS_PLANNINGTEXT_H

#include "tests/support/RelayText.h"

#include <velkplanning/ConnectionRequest.h>
#include <velkplanning/StateChange.h>

#include <velk/switching/SwitchingModel.h>

#include <map>

/// A system as lines for addLine(), with line ends or "; " between them, and among them what is asked of its relays:
/// "connect S1/1 D1/1", "set K1 K2=2", "through R1 R2" for all groups or "through1 R1" for the second one alone,
/// "before K1", "before-through R1", and conditions as "without K1 R1", "without-net A", "allow S1",
/// "side-connections", "no-couplings", "trust-unknown", "fewest-changes".
class PlanningText
{
public:
    explicit PlanningText(const QString &text)
    {
        QStringList lines = QString(text).replace(QLatin1Char('\n'), QLatin1String("; ")).split(QLatin1String("; "));
        lines.removeIf([this](const QString &line) {
            const QString word = line.section(QLatin1Char(' '), 0, 0);
            const bool isAsked = word.at(0).isLower();
            if (isAsked)
                asked.append({word, line.split(QLatin1Char(' ')).mid(1)});
            return isAsked;
        });
        for (const QString &line : std::as_const(lines))
            addLine(line, netlist);
    }

    Velk::SwitchingModel model() const { return Velk::SwitchingModel(netlist); }

    Velk::ConnectionRequest request(const Velk::SwitchingModel &model) const
    {
        Velk::ConnectionRequest request;
        for (const auto &[word, names] : asked) {
            if (word == QLatin1String("connect"))
                request.connections.append({pin(names.at(0), model), pin(names.at(1), model)});
        }
        for (const QString &ref : namesAfter("without"))
            request.excludedComponents.push_back(model.componentOf(ref));
        for (const QString &net : namesAfter("without-net"))
            request.excludedNets.push_back(netOf(net, model));
        for (const QString &ref : namesAfter("allow"))
            request.allowedComponents.push_back(model.componentOf(ref));
        request.allowsSideConnections = has("side-connections");
        request.forbidsCouplings = has("no-couplings");
        request.trustsUnknown = has("trust-unknown");
        if (has("fewest-changes"))
            request.aim = Velk::PlanAim::FewestChanges;
        return request;
    }

    Velk::SwitchedState before(const Velk::SwitchingModel &model) const
    {
        return {positionsAfter("before", model), passivesAfter("before-through", model)};
    }

    Velk::SwitchedState state(const Velk::SwitchingModel &model) const
    {
        return {positionsAfter("set", model), passivesAfter("through", model)};
    }

    /// The passives that each group goes through.
    std::vector<std::vector<int>> through(const Velk::SwitchingModel &model, qsizetype groupCount) const
    {
        std::vector<std::vector<int>> passives(static_cast<std::size_t>(groupCount), passivesAfter("through", model));
        for (std::size_t group = 0; group < passives.size(); ++group) {
            const auto own = passivesAfter("through" + QByteArray::number(static_cast<int>(group)), model);
            passives[group].insert(passives[group].end(), own.begin(), own.end());
        }
        return passives;
    }

private:
    QStringList namesAfter(const QByteArray &wanted) const
    {
        QStringList found;
        for (const auto &[word, names] : asked) {
            if (word == QLatin1String(wanted))
                found += names;
        }
        return found;
    }

    bool has(const char *wanted) const
    {
        return std::any_of(asked.cbegin(), asked.cend(),
                           [wanted](const auto &each) { return each.first == QLatin1String(wanted); });
    }

    static Velk::InterfacePin pin(const QString &name, const Velk::SwitchingModel &model)
    {
        const QString ref = name.section(QLatin1Char('/'), 0, 0);
        const QString number = name.section(QLatin1Char('/'), 1);
        return {ref, number, model.netOf(ref, number)};
    }

    static int netOf(const QString &name, const Velk::SwitchingModel &model)
    {
        int net = 0;
        while (net < model.netCount() && !model.netNames(net).contains(name))
            ++net;
        return net;
    }

    std::vector<int> positionsAfter(const QByteArray &word, const Velk::SwitchingModel &model) const
    {
        std::vector<int> positions(static_cast<std::size_t>(model.gangCount()), 0);
        for (const QString &setting : namesAfter(word)) {
            const int gang = model.gangOf(model.componentOf(setting.section(QLatin1Char('='), 0, 0)));
            const QString position = setting.section(QLatin1Char('='), 1);
            positions[static_cast<std::size_t>(gang)] = position.isEmpty() ? 1 : position.toInt();
        }
        return positions;
    }

    std::vector<int> passivesAfter(const QByteArray &word, const Velk::SwitchingModel &model) const
    {
        const QStringList refs = namesAfter(word);
        std::vector<int> numbers;
        for (std::size_t i = 0; i < model.passives().size(); ++i) {
            if (refs.contains(model.passives()[i].ref))
                numbers.push_back(static_cast<int>(i));
        }
        return numbers;
    }

    StubProvider netlist;
    QList<std::pair<QString, QStringList>> asked;
};

/// "S1.1 S1.2".
inline QString toText(const QList<Velk::InterfacePin> &pins)
{
    QStringList names;
    for (const Velk::InterfacePin &pin : pins)
        names.append(pin.ref + QLatin1Char('.') + pin.number);
    return names.join(QLatin1Char(' '));
}

#endif
