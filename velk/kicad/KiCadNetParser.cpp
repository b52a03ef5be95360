#include <velk/kicad/KiCadNetParser.h>

#include <velk/kicad/KiCadNetlistPaths.h>
#include <velk/kicad/KiCadRepair.h>
#include <velk/kicad/KiCadTokens.h>
#include <velk/kicad/KiCadTree.h>
#include <velk/model/EDAException.h>
#include <velk/model/TextNumbers.h>

#include <QHash>
#include <QRegularExpression>
#include <QSet>
#include <QStringList>

#include <algorithm>
#include <iterator>
#include <typeinfo>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;

namespace Velk {

namespace {

// The path for the message is a function that makes it, since it is hardly ever needed.
template <typename Tokens, typename MessagePath>
auto requireToken(const Tokens &tokens, typename Tokens::Token parent, const KiCadPath &path, MessagePath messagePath,
                  const QString &element)
{
    const auto token = path.findFrom(tokens, parent);
    if (!token)
        throw KiCadTokenNotFoundException(messagePath() + element);
    return token;
}

/// One whose value is not empty.
template <typename Tokens, typename MessagePath>
auto requireFilled(const Tokens &tokens, typename Tokens::Token parent, const KiCadPath &path, MessagePath messagePath,
                   const QString &element)
{
    const auto token = requireToken(tokens, parent, path, messagePath, element);
    if (tokens.value(token).isEmpty())
        throw KiCadTokenNotFoundException(messagePath() + element);
    return token;
}

// Some symbols have pins without a number, which cannot be told apart.
template <typename Tokens, typename MessagePath>
auto requirePinNumber(const Tokens &tokens, typename Tokens::Token parent, const KiCadPath &path,
                      MessagePath messagePath, const QString &element, KiCadReadingMode mode)
{
    return mode == KiCadReadingMode::Tolerant ? requireToken(tokens, parent, path, messagePath, element)
                                              : requireFilled(tokens, parent, path, messagePath, element);
}

template <typename Tokens>
auto requireList(const Tokens &tokens, const KiCadPath &path, const QString &listPath)
{
    if (!tokens.root())
        throw KiCadTokenNotFoundException(listPath);
    return requireToken(
        tokens, tokens.root(), path, [&listPath] { return listPath; }, QString());
}

/// The names that come up again, in that order.
class RepeatedNames
{
public:
    RepeatedNames(KiCadRepetition::Kind kindOfElements, bool areMerged)
        : kind(kindOfElements)
        , isMerged(areMerged)
    {
    }

    /// Once for each time that it comes up again.
    void add(const QString &name)
    {
        const auto known = positions.constFind(name);
        if (known != positions.cend()) {
            ++repetitions[*known].count;
            return;
        }
        positions.insert(name, repetitions.size());
        repetitions.append({kind, name, 2, isMerged});
    }

    const QList<KiCadRepetition> &all() const { return repetitions; }

private:
    KiCadRepetition::Kind kind;
    bool isMerged;
    QList<KiCadRepetition> repetitions;
    QHash<QString, qsizetype> positions;
};

QString placeOf(const KiCadRepetition &repetition)
{
    switch (repetition.kind) {
    case KiCadRepetition::Kind::List:
        return u"/export/"_s + repetition.name;
    case KiCadRepetition::Kind::Part:
        return namedPath(u"/export/libparts/libpart"_s, repetition.name);
    case KiCadRepetition::Kind::Component:
        return namedPath(u"/export/components/comp"_s, repetition.name);
    case KiCadRepetition::Kind::Net:
        return namedPath(u"/export/nets/net"_s, repetition.name);
    }
    return {};
}

QString effectOf(const KiCadRepetition &repetition)
{
    if (repetition.isMerged)
        return u"taken as one"_s;
    if (repetition.kind == KiCadRepetition::Kind::List)
        return u"and the first one holds"_s;
    return repetition.kind == KiCadRepetition::Kind::Part ? u"with other pins, and the last one holds"_s
                                                          : u"and the last one holds"_s;
}

/// Puts the element into the map and tells whether there was one of that name.
template <typename Element>
bool replaces(QMap<QString, QSharedPointer<Element>> &elements, const QString &name,
              const QSharedPointer<Element> &element)
{
    const auto count = elements.size();
    elements.insert(elements.cend(), name, element);
    return elements.size() == count;
}

// One by one: QMap's own union takes as long as both are large, and there may be many components of one reference.
void insertAll(QMap<QString, QString> &properties, const QMap<QString, QString> &further)
{
    for (auto it = further.cbegin(); it != further.cend(); ++it)
        properties.insert(it.key(), it.value());
}

void addMissing(QMap<QString, QString> &properties, QMap<QString, QString> &earlier)
{
    insertAll(earlier, properties);
    properties.swap(earlier);
}

void keepEachOnce(QList<QSharedPointer<EDANetNode>> &nodes)
{
    QSet<std::pair<QString, QString>> known;
    nodes.removeIf([&known](const auto &node) {
        const auto count = known.size();
        known.insert({node->ref, node->pin});
        return known.size() == count;
    });
}

template <typename Element>
QList<QSharedPointer<Element>> clonesOf(const QMap<QString, QSharedPointer<Element>> &elements)
{
    QList<QSharedPointer<Element>> clones;
    clones.reserve(elements.size());
    for (const auto &element : elements)
        clones.append(element->clone());
    return clones;
}

template <typename Element>
QSharedPointer<Element> cloneOf(const QSharedPointer<Element> &element)
{
    return element ? element->clone() : element;
}
}

/// Makes the nodes of nets, each checked against the component and the pin that it names.
class KiCadNetParser::NodeFactory
{
public:
    NodeFactory(const QMap<QString, QSharedPointer<EDAComponent>> &components,
                const QMap<QString, QSharedPointer<EDAPart>> &parts)
    {
        TextNumbers<QStringView> partNames;
        for (auto it = parts.cbegin(); it != parts.cend(); ++it) {
            partNames.add(it.key());
            knownParts.emplace_back(*it);
        }
        refs.reserve(components.size());
        for (auto it = components.cbegin(); it != components.cend(); ++it) {
            refs.add(it.key());
            knownComponents.push_back({*it, partNames.numberOf((*it)->part)});
        }
    }

    QSharedPointer<EDANetNode> create(QStringView ref, QStringView pinNumber) const
    {
        const int number = refs.numberOf(ref);
        if (number == refs.none)
            throw EDAComponentNotFoundException({{u"ref"_s, ref.toString()}});
        const auto &[component, partNumber] = knownComponents[static_cast<std::size_t>(number)];
        if (partNumber == refs.none)
            throw EDAPartNotFoundException(component, component->part);
        const KnownPart &known = knownParts[static_cast<std::size_t>(partNumber)];
        const EDAPin *const pin = known.findPin(pinNumber);
        if (!pin)
            throw EDAPinNotFoundException(known.part, component, pinNumber.toString());
        return EDANetNode::create(component->ref, pin->number); // both share their texts with the model
    }

private:
    struct KnownPart
    {
        explicit KnownPart(const QSharedPointer<EDAPart> &knownPart)
            : part(knownPart)
        {
            for (const auto &pin : std::as_const(part->pins)) {
                if (pinNumbers.add(pin->number) == static_cast<int>(pins.size()))
                    pins.push_back(pin.data());
            }
        }

        const EDAPin *findPin(QStringView number) const
        {
            const int found = pinNumbers.numberOf(number);
            return found == pinNumbers.none ? nullptr : pins[static_cast<std::size_t>(found)];
        }

        QSharedPointer<EDAPart> part;
        TextNumbers<QStringView> pinNumbers;
        std::vector<const EDAPin *> pins; ///< the first one of each number
    };
    struct KnownComponent
    {
        QSharedPointer<EDAComponent> component;
        int part; ///< among the known ones, or none
    };

    std::vector<KnownPart> knownParts;
    TextNumbers<QStringView> refs;
    std::vector<KnownComponent> knownComponents; ///< by the numbers of their references
};

KiCadNetParser::KiCadNetParser(const QSharedPointer<KiCadToken> &tree, KiCadReadingMode readingMode)
    : root(tree)
    , mode(readingMode)
{
}

KiCadNetParser::~KiCadNetParser() = default;
KiCadNetParser::KiCadNetParser(const KiCadNetParser &other) = default;
KiCadNetParser &KiCadNetParser::operator=(const KiCadNetParser &other) = default;
KiCadNetParser::KiCadNetParser(KiCadNetParser &&other) noexcept = default;
KiCadNetParser &KiCadNetParser::operator=(KiCadNetParser &&other) noexcept = default;

void KiCadNetParser::parse()
{
    KiCadTree tree(root);
    parseFrom(tree);
}

template <typename Tokens>
void KiCadNetParser::parseFrom(Tokens &tokens)
{
    noteRepeatedLists(tokens);
    if (isTolerant())
        repairs = KiCadRepair<Tokens>(tokens).run();
    // Components are resolved against the parts, nodes against both.
    parseParts(tokens);
    parseComponents(tokens);
    parseNets(tokens);
}

template void KiCadNetParser::parseFrom(KiCadTokens &tokens);

QStringList KiCadNetParser::warnings() const
{
    QStringList texts = repairs;
    for (const KiCadRepetition &repetition : repeated) {
        texts.append(u"%1: listed %2 times, %3"_s.arg(placeOf(repetition), QString::number(repetition.count),
                                                      effectOf(repetition)));
    }
    return texts;
}

QList<KiCadRepetition> KiCadNetParser::repetitions() const
{
    return repeated;
}

bool KiCadNetParser::isTolerant() const
{
    return mode == KiCadReadingMode::Tolerant;
}

template <typename Tokens>
void KiCadNetParser::noteRepeatedLists(const Tokens &tokens)
{
    if (!tokens.root() || tokens.name(tokens.root()) != u"export"_s)
        return;
    for (const QString &name : {u"libparts"_s, u"components"_s, u"nets"_s}) {
        int count = 0;
        for (const typename Tokens::Token list : tokens.children(tokens.root()))
            count += tokens.name(list) == name ? 1 : 0;
        if (count > 1)
            repeated.append({KiCadRepetition::Kind::List, name, count, isTolerant()});
    }
}

void KiCadNetParser::releaseTree()
{
    root.reset();
}

template <typename Tokens>
void KiCadNetParser::parseParts(const Tokens &tokens)
{
    parts.clear();
    const auto list = requireList(tokens, kiCadPaths().libparts, u"/export/libparts"_s);
    RepeatedNames names(KiCadRepetition::Kind::Part, false);
    QSet<QString> differing;
    qsizetype index = -1;
    const auto messagePath = [&index] { return indexedPath(u"/export/libparts/libpart"_s, index); };
    for (const typename Tokens::Token libpart : tokens.children(list)) {
        ++index;
        const QString name =
            tokens.text(requireFilled(tokens, libpart, kiCadPaths().partName, messagePath, u"/part"_s));
        const auto part = EDAPart::create(name, kiCadPaths().partLib.textFrom(tokens, libpart));
        const auto earlier = parts.value(name);
        parts.insert(name, part);
        parsePinsOfPart(tokens, libpart, *part);
        if (earlier.isNull())
            continue;
        names.add(name);
        if (earlier->pins != part->pins)
            differing.insert(name);
    }
    std::copy_if(names.all().cbegin(), names.all().cend(), std::back_inserter(repeated),
                 [&differing](const KiCadRepetition &repetition) { return differing.contains(repetition.name); });
}

template <typename Tokens>
void KiCadNetParser::parsePinsOfPart(const Tokens &tokens, typename Tokens::Token libpart, EDAPart &part) const
{
    // Names the pin even where the whole list is missing.
    const auto messagePath = [&part] {
        return u"/export/libparts/libpart[name=%1,lib=%2]/pins/pin"_s.arg(part.name, part.lib);
    };
    const auto list = requireToken(tokens, libpart, kiCadPaths().pins, messagePath, QString());
    for (const typename Tokens::Token pin : tokens.children(list)) {
        const auto number = requirePinNumber(tokens, pin, kiCadPaths().pinNumber, messagePath, u"/num"_s, mode);
        const auto name = requireToken(tokens, pin, kiCadPaths().pinName, messagePath, u"/name"_s);
        const auto type = requireToken(tokens, pin, kiCadPaths().pinType, messagePath, u"/type"_s);
        part.pins.append(EDAPin::create(tokens.text(number), tokens.text(name), tokens.text(type)));
    }
}

template <typename Tokens>
void KiCadNetParser::parseComponents(const Tokens &tokens)
{
    const auto list = requireList(tokens, kiCadPaths().components, u"/export/components"_s);
    RepeatedNames refs(KiCadRepetition::Kind::Component, isTolerant());
    QHash<QString, QMap<QString, QString>> propertiesBySheetNames; // components of one sheet have the same
    qsizetype index = -1;
    const auto messagePath = [&index] { return indexedPath(u"/export/components/comp"_s, index); };
    for (const typename Tokens::Token comp : tokens.children(list)) {
        ++index;
        const QString ref = tokens.text(requireFilled(tokens, comp, kiCadPaths().ref, messagePath, u"/ref"_s));
        const auto value = requireToken(tokens, comp, kiCadPaths().value, messagePath, u"/value"_s);
        const QString partName =
            tokens.text(requireFilled(tokens, comp, kiCadPaths().partOfComponent, messagePath, u"/libsource/part"_s));
        const auto component = EDAComponent::create(ref, tokens.text(value), partName);
        parsePropertiesOfComponent(tokens, comp, *component);
        const QString sheetNames = kiCadPaths().sheetNames.textFrom(tokens, comp);
        auto sheet = propertiesBySheetNames.constFind(sheetNames);
        if (sheet == propertiesBySheetNames.cend())
            sheet = propertiesBySheetNames.insert(sheetNames, parsePropertiesFromComponentSheetpath(sheetNames));
        insertAll(component->properties, *sheet);

        const auto part = parts.value(partName);
        if (part.isNull())
            throw EDAPartNotFoundException(component, partName);
        component->part = part->name; // the same text, held in memory once
        if (const auto earlier = isTolerant() ? components.value(ref) : nullptr)
            addMissing(component->properties, earlier->properties);
        if (replaces(components, ref, component))
            refs.add(ref);
    }
    repeated += refs.all();
}

template <typename Tokens>
void KiCadNetParser::parsePropertiesOfComponent(const Tokens &tokens, typename Tokens::Token comp,
                                                EDAComponent &component)
{
    const auto messagePath = [&component] { return u"/export/components/comp[%1]/property"_s.arg(component.ref); };
    for (const typename Tokens::Token child : tokens.children(comp)) {
        if (!kiCadPaths().property.findFrom(tokens, child))
            continue;
        const auto name = requireFilled(tokens, child, kiCadPaths().propertyName, messagePath, u"/name"_s);
        component.properties.insert(component.properties.cend(), tokens.text(name), // most exports are sorted
                                    kiCadPaths().propertyValue.textFrom(tokens, child));
    }
}

QMap<QString, QString> KiCadNetParser::parsePropertiesFromComponentSheetpath(const QString &names)
{
    static const QRegularExpression propertyExpression(uR"((?<name>\w+)=(?<value>[^.]+))"_s);

    QMap<QString, QString> properties;
    const QStringList sheetNames = names.split(u'/', Qt::SkipEmptyParts);
    for (const QString &sheetName : sheetNames) {
        auto matches = propertyExpression.globalMatch(sheetName.section(u'-', 0, -2));
        while (matches.hasNext()) {
            const auto match = matches.next();
            properties.insert(match.captured(u"name"_s), match.captured(u"value"_s));
        }
    }
    return properties;
}

template <typename Tokens>
void KiCadNetParser::parseNets(const Tokens &tokens)
{
    const auto list = requireList(tokens, kiCadPaths().nets, u"/export/nets"_s);
    const NodeFactory nodeFactory(components, parts);
    RepeatedNames names(KiCadRepetition::Kind::Net, isTolerant());
    qsizetype index = -1;
    const auto messagePath = [&index] { return indexedPath(u"/export/nets/net"_s, index); };
    for (const typename Tokens::Token netToken : tokens.children(list)) {
        ++index;
        const QString name =
            tokens.text(requireFilled(tokens, netToken, kiCadPaths().netName, messagePath, u"/name"_s));
        auto net = isTolerant() ? nets.value(name) : nullptr;
        if (net.isNull())
            net = EDANet::create(name);
        if (replaces(nets, name, net))
            names.add(name);
        parseNodesOfNet(tokens, netToken, *net, nodeFactory);
    }
    if (isTolerant()) {
        for (const KiCadRepetition &repetition : names.all())
            keepEachOnce(nets.value(repetition.name)->nodes);
    }
    repeated += names.all();
}

template <typename Tokens>
void KiCadNetParser::parseNodesOfNet(const Tokens &tokens, typename Tokens::Token netToken, EDANet &net,
                                     const NodeFactory &nodeFactory) const
{
    const auto messagePath = [&net] { return u"/export/nets/net[%1]/node"_s.arg(net.name); };
    for (const typename Tokens::Token child : tokens.children(netToken)) {
        if (!kiCadPaths().node.findFrom(tokens, child))
            continue;
        const auto ref = requireFilled(tokens, child, kiCadPaths().nodeRef, messagePath, u"/ref"_s);
        const auto pin = requirePinNumber(tokens, child, kiCadPaths().nodePin, messagePath, u"/pin"_s, mode);
        net.nodes.append(nodeFactory.create(tokens.value(ref), tokens.value(pin)));
    }
}

QList<QSharedPointer<EDANet>> KiCadNetParser::getNets() const
{
    return clonesOf(nets);
}

QList<QSharedPointer<EDAComponent>> KiCadNetParser::getComponents() const
{
    return clonesOf(components);
}

QSharedPointer<EDAComponent> KiCadNetParser::getComponentByRef(const QString &ref) const
{
    return cloneOf(components.value(ref));
}

QSharedPointer<EDAComponent> KiCadNetParser::getComponentByProperties(const QMap<QString, QString> &properties) const
{
    for (const auto &component : components) {
        if (component->matchesProperties(properties))
            return component;
    }
    return {};
}

QList<QSharedPointer<EDAPart>> KiCadNetParser::getParts() const
{
    return clonesOf(parts);
}

QSharedPointer<EDAPart> KiCadNetParser::getPartByName(const QString &name) const
{
    return cloneOf(parts.value(name));
}

// A derived class may answer in a way of its own.
bool KiCadNetParser::isDerived() const
{
    return typeid(*this) != typeid(KiCadNetParser);
}

QList<QSharedPointer<EDANet>> KiCadNetParser::ownNets() const
{
    return isDerived() ? getNets() : nets.values();
}

QList<QSharedPointer<EDAComponent>> KiCadNetParser::ownComponents() const
{
    return isDerived() ? getComponents() : components.values();
}

QList<QSharedPointer<EDAPart>> KiCadNetParser::ownParts() const
{
    return isDerived() ? getParts() : parts.values();
}
}
