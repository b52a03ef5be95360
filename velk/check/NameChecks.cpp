#include <velk/check/NameChecks.h>

#include <velk/naming/SimilarNames.h>

#include <QMap>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace Velk {

namespace {

/// Each text with the components that have it.
using Uses = QMap<QString, QList<int>>;

class NameChecks
{
public:
    explicit NameChecks(const CheckedSystem &checkedSystem)
        : system(checkedSystem)
    {
    }

    QList<SingleFinding> run()
    {
        findPropertyNames();
        for (const QString &key : readKeys)
            findBlanks(key);
        findTypes();
        for (const QString &key : {EDAComponent::BENCH, EDAComponent::DEVICE, EDAComponent::GROUP})
            findValues(key);
        findIdentifiers();
        return findings;
    }

private:
    void findPropertyNames();
    void findBlanks(const QString &key);
    void findTypes();
    void findValues(const QString &key);
    void findIdentifiers();
    Uses valuesOf(const QString &key) const;
    void addSpellings(const QString &key, const Uses &uses);
    void add(const QString &what, const QString &name, const QString &known, const QList<int> &components);
    void addAlike(const QString &what, const QStringList &names, const Uses &uses);
    void addForEach(const QList<int> &components, const QString &text);

    /// Those that mean something to Velk.
    const QStringList readKeys{EDAComponent::TYPE,   EDAComponent::IDENTIFER,     EDAComponent::BENCH,
                               EDAComponent::DEVICE, EDAComponent::DEVICE_NUMBER, EDAComponent::CHANNEL,
                               EDAComponent::GROUP};
    const QStringList keysOfRelays{u"Gang"_s, u"Positions"_s}; ///< which mean nothing on others
    const CheckedSystem &system;
    QList<SingleFinding> findings;
    int groups = 0;
};

void NameChecks::add(const QString &what, const QString &name, const QString &known, const QList<int> &components)
{
    addForEach(components, u"the %1 '%2' is nearly '%3'"_s.arg(what, name, known));
}

void NameChecks::addAlike(const QString &what, const QStringList &names, const Uses &uses)
{
    QStringList refs;
    for (const QString &name : names)
        refs += system.refsOf(uses[name]);
    findings.append(
        {FindingCode::SimilarNames, refs, u"their %1 is nearly the same: %2"_s.arg(what, listedInQuotes(names)), refs});
}

void NameChecks::addForEach(const QList<int> &components, const QString &text)
{
    findings += findingsOfEach(FindingCode::SimilarNames, system.refsOf(components), text, ++groups);
}

/// Only where a component lacks the one that is meant. "Channels" may be how many there are.
void NameChecks::findPropertyNames()
{
    Uses uses;
    for (int i = 0; i < system.componentCount(); ++i) {
        const auto &properties = system.component(i).properties;
        for (auto it = properties.keyBegin(); it != properties.keyEnd(); ++it)
            uses[*it].append(i);
    }
    const QStringList knownKeys = readKeys + keysOfRelays;
    for (auto use = uses.cbegin(); use != uses.cend(); ++use) {
        if (knownKeys.contains(use.key()))
            continue;
        const auto known = std::find_if(knownKeys.cbegin(), knownKeys.cend(), [&](const QString &key) {
            return use.key() != key + u's' && resembles(use.key(), key, 1);
        });
        if (known == knownKeys.cend())
            continue;
        QList<int> lacking = use.value();
        lacking.removeIf([&](int number) {
            const auto &component = system.component(number);
            const bool isReadThere = readKeys.contains(*known) || system.types().isRelay(component);
            return !isReadThere || !component.property(*known).isEmpty();
        });
        if (!lacking.isEmpty())
            add(u"property"_s, use.key(), *known, lacking);
    }
}

void NameChecks::findBlanks(const QString &key)
{
    const Uses uses = valuesOf(key);
    for (auto use = uses.cbegin(); use != uses.cend(); ++use) {
        if (use.key() == use.key().trimmed())
            continue;
        addForEach(use.value(), u"the %1 '%2' begins or ends with a blank"_s.arg(key, use.key()));
    }
}

void NameChecks::findTypes()
{
    const Uses uses = valuesOf(EDAComponent::TYPE);
    const QStringList known = system.types().known();
    for (auto use = uses.cbegin(); use != uses.cend(); ++use) {
        if (known.contains(use.key().trimmed(), Qt::CaseInsensitive))
            continue;
        const auto meant = std::find_if(known.cbegin(), known.cend(), [&](const QString &type) {
            return !type.isEmpty() && resembles(use.key(), type, 2); // options may be empty
        });
        if (meant != known.cend())
            add(EDAComponent::TYPE, use.key(), *meant, use.value());
    }
}

/// A slip is a name that a single component has and that is nearly one of many.
void NameChecks::findValues(const QString &key)
{
    constexpr int many = 5;
    const Uses uses = valuesOf(key);
    addSpellings(key, uses);
    const auto isCommon = [](const QList<int> &components) { return components.size() >= many; };
    if (std::none_of(uses.cbegin(), uses.cend(), isCommon))
        return;
    const QStringList names = uses.keys();
    for (const auto &[first, second] : slips(names)) {
        const bool isFirstRare = uses[names.at(first)].size() < uses[names.at(second)].size();
        const QString &rare = names.at(isFirstRare ? first : second);
        const QString &common = names.at(isFirstRare ? second : first);
        if (uses[rare].size() == 1 && isCommon(uses[common]))
            add(key, rare, common, uses[rare]);
    }
}

/// Two connectors whose Identifiers nobody else has, on two boards, are meant for each other if these are nearly the
/// same.
void NameChecks::findIdentifiers()
{
    const Uses uses = valuesOf(EDAComponent::IDENTIFER);
    addSpellings(EDAComponent::IDENTIFER, uses);
    QStringList single;
    for (auto use = uses.cbegin(); use != uses.cend(); ++use) {
        if (use.value().size() == 1 && system.types().isConnector(system.component(use.value().first())))
            single.append(use.key());
    }
    for (const auto &[first, second] : slips(single)) {
        const int a = uses[single.at(first)].first();
        const int b = uses[single.at(second)].first();
        if (system.netlistOfComponent(a) != system.netlistOfComponent(b))
            addAlike(EDAComponent::IDENTIFER, {single.at(first), single.at(second)}, uses);
    }
}

Uses NameChecks::valuesOf(const QString &key) const
{
    Uses uses;
    for (int i = 0; i < system.componentCount(); ++i) {
        const QString value = system.component(i).property(key);
        if (!value.isEmpty())
            uses[value].append(i);
    }
    return uses;
}

/// Names with one plain name: the commonest is right, of several as common nobody knows which. Blanks at the ends are
/// found already.
void NameChecks::addSpellings(const QString &key, const Uses &uses)
{
    QMap<QString, QStringList> spellings;
    for (auto use = uses.cbegin(); use != uses.cend(); ++use) {
        if (use.key() == use.key().trimmed())
            spellings[plainName(use.key())].append(use.key());
    }
    for (const QStringList &names : std::as_const(spellings)) {
        const auto isRarer = [&](const auto &a, const auto &b) { return uses[a].size() < uses[b].size(); };
        const QString common = *std::max_element(names.cbegin(), names.cend(), isRarer);
        QStringList commonest;
        for (const QString &name : names) {
            if (isRarer(name, common))
                add(key, name, common, uses[name]);
            else
                commonest.append(name);
        }
        if (commonest.size() > 1)
            addAlike(key, commonest, uses);
    }
}
}

QList<SingleFinding> nameFindings(const CheckedSystem &system)
{
    return NameChecks(system).run();
}
}
