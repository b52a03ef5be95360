#include <velk/kicad/KiCadNetParser.h>

#include <velk/kicad/KiCadNetlistPaths.h>
#include <velk/kicad/KiCadRepair.h>
#include <velk/model/EDAException.h>

#include <QHash>
#include <QRegularExpression>
#include <QSet>
#include <QStringList>

#include <algorithm>
#include <iterator>
#include <typeinfo>
#include <utility>

using namespace Qt::StringLiterals;

namespace Velk {

namespace {

using Token = QSharedPointer<KiCadToken>;

// The path for the message is a function that makes it, since it is hardly ever needed.
template <typename MessagePath>
KiCadToken &requireToken(KiCadToken &parent, const KiCadPath &path, MessagePath messagePath, const QString &element)
{
    KiCadToken *token = path.findFrom(parent);
    if (!token)
        throw KiCadTokenNotFoundException(messagePath() + element);
    return *token;
}

template <typename MessagePath>
QString requireText(KiCadToken &parent, const KiCadPath &path, MessagePath messagePath, const QString &element)
{
    const QString &text = requireToken(parent, path, messagePath, element).value;
    if (text.isEmpty())
        throw KiCadTokenNotFoundException(messagePath() + element);
    return text;
}

// Some symbols have pins without a number, which cannot be told apart.
template <typename MessagePath>
QString requirePinNumber(KiCadToken &parent, const KiCadPath &path, MessagePath messagePath, const QString &element,
                         KiCadReadingMode mode)
{
    return mode == KiCadReadingMode::Tolerant ? requireToken(parent, path, messagePath, element).value
                                              : requireText(parent, path, messagePath, element);
}

const QList<Token> &requireList(const Token &root, const KiCadPath &path, const QString &listPath)
{
    if (root.isNull())
        throw KiCadTokenNotFoundException(listPath);
    const auto messagePath = [&listPath] { return listPath; };
    return requireToken(*root, path, messagePath, QString()).children;
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
void addMissing(QMap<QString, QString> &properties, QMap<QString, QString> &earlier)
{
    for (auto it = properties.cbegin(); it != properties.cend(); ++it)
        earlier.insert(it.key(), it.value());
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
        for (auto it = parts.cbegin(); it != parts.cend(); ++it) {
            KnownPart &known = partsByName[it.key()];
            known.part = it.value();
            for (const auto &pin : std::as_const(known.part->pins))
                known.pinNumbers.insert(pin->number);
        }
        componentsByRef.reserve(components.size());
        for (auto it = components.cbegin(); it != components.cend(); ++it)
            componentsByRef.insert(it.key(), it.value());
    }

    QSharedPointer<EDANetNode> create(const QString &ref, const QString &pinNumber) const
    {
        const auto component = componentsByRef.value(ref);
        if (component.isNull())
            throw EDAComponentNotFoundException({{u"ref"_s, ref}});
        const auto known = partsByName.constFind(component->part);
        if (known == partsByName.cend())
            throw EDAPartNotFoundException(component, component->part);
        const auto number = known->pinNumbers.constFind(pinNumber);
        if (number == known->pinNumbers.cend())
            throw EDAPinNotFoundException(known->part, component, pinNumber);
        return EDANetNode::create(component->ref, *number); // both share their texts with the model
    }

private:
    struct KnownPart
    {
        QSharedPointer<EDAPart> part;
        QSet<QString> pinNumbers;
    };

    QHash<QString, KnownPart> partsByName;
    QHash<QString, QSharedPointer<EDAComponent>> componentsByRef;
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
    noteRepeatedLists();
    if (isTolerant())
        repairs = KiCadRepair(root).run();
    // Components are resolved against the parts, nodes against both.
    parseParts();
    parseComponents();
    parseNets();
}

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

void KiCadNetParser::noteRepeatedLists()
{
    if (root.isNull() || root->name != u"export"_s)
        return;
    for (const QString &name : {u"libparts"_s, u"components"_s, u"nets"_s}) {
        const auto count = std::count_if(root->children.cbegin(), root->children.cend(),
                                         [&name](const Token &list) { return list->name == name; });
        if (count > 1)
            repeated.append({KiCadRepetition::Kind::List, name, static_cast<int>(count), isTolerant()});
    }
}

void KiCadNetParser::releaseTree()
{
    root.reset();
}

void KiCadNetParser::parseParts()
{
    parts.clear();
    const auto &libparts = requireList(root, kiCadPaths().libparts, u"/export/libparts"_s);
    RepeatedNames names(KiCadRepetition::Kind::Part, false);
    QSet<QString> differing;
    for (qsizetype i = 0; i < libparts.size(); ++i) {
        KiCadToken &libpart = *libparts.at(i);
        const auto messagePath = [i] { return indexedPath(u"/export/libparts/libpart"_s, i); };
        const QString name = requireText(libpart, kiCadPaths().partName, messagePath, u"/part"_s);
        const auto part = EDAPart::create(name, kiCadPaths().partLib.textFrom(libpart));
        const auto earlier = parts.value(name);
        parts.insert(name, part);
        parsePinsOfPart(libpart, part);
        if (earlier.isNull())
            continue;
        names.add(name);
        if (earlier->pins != part->pins)
            differing.insert(name);
    }
    std::copy_if(names.all().cbegin(), names.all().cend(), std::back_inserter(repeated),
                 [&differing](const KiCadRepetition &repetition) { return differing.contains(repetition.name); });
}

void KiCadNetParser::parsePinsOfPart(KiCadToken &libpart, const QSharedPointer<EDAPart> &part) const
{
    // Names the pin even where the whole list is missing.
    const auto messagePath = [&part] {
        return u"/export/libparts/libpart[name=%1,lib=%2]/pins/pin"_s.arg(part->name, part->lib);
    };
    const auto &pins = requireToken(libpart, kiCadPaths().pins, messagePath, QString()).children;
    part->pins.reserve(pins.size());
    for (const Token &pin : pins) {
        const QString number = requirePinNumber(*pin, kiCadPaths().pinNumber, messagePath, u"/num"_s, mode);
        const QString &name = requireToken(*pin, kiCadPaths().pinName, messagePath, u"/name"_s).value;
        const QString &type = requireToken(*pin, kiCadPaths().pinType, messagePath, u"/type"_s).value;
        part->pins.append(EDAPin::create(number, name, type));
    }
}

void KiCadNetParser::parseComponents()
{
    const auto &list = requireList(root, kiCadPaths().components, u"/export/components"_s);
    RepeatedNames refs(KiCadRepetition::Kind::Component, isTolerant());
    QHash<QString, QMap<QString, QString>> propertiesBySheetNames; // components of one sheet have the same
    for (qsizetype i = 0; i < list.size(); ++i) {
        KiCadToken &comp = *list.at(i);
        const auto messagePath = [i] { return indexedPath(u"/export/components/comp"_s, i); };
        const QString ref = requireText(comp, kiCadPaths().ref, messagePath, u"/ref"_s);
        const QString &value = requireToken(comp, kiCadPaths().value, messagePath, u"/value"_s).value;
        const QString partName = requireText(comp, kiCadPaths().partOfComponent, messagePath, u"/libsource/part"_s);
        const auto component = EDAComponent::create(ref, value, partName);
        parsePropertiesOfComponent(comp, component);
        const QString sheetNames = kiCadPaths().sheetNames.textFrom(comp);
        auto sheet = propertiesBySheetNames.constFind(sheetNames);
        if (sheet == propertiesBySheetNames.cend())
            sheet = propertiesBySheetNames.insert(sheetNames, parsePropertiesFromComponentSheetpath(sheetNames));
        component->properties.insert(*sheet);

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

void KiCadNetParser::parsePropertiesOfComponent(KiCadToken &comp, const QSharedPointer<EDAComponent> &component)
{
    const auto messagePath = [&component] { return u"/export/components/comp[%1]/property"_s.arg(component->ref); };
    for (const Token &child : std::as_const(comp.children)) {
        if (!kiCadPaths().property.findFrom(*child))
            continue;
        const QString name = requireText(*child, kiCadPaths().propertyName, messagePath, u"/name"_s);
        component->properties.insert(name, kiCadPaths().propertyValue.textFrom(*child));
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

void KiCadNetParser::parseNets()
{
    const auto &list = requireList(root, kiCadPaths().nets, u"/export/nets"_s);
    const NodeFactory nodeFactory(components, parts);
    RepeatedNames names(KiCadRepetition::Kind::Net, isTolerant());
    for (qsizetype i = 0; i < list.size(); ++i) {
        KiCadToken &netToken = *list.at(i);
        const auto messagePath = [i] { return indexedPath(u"/export/nets/net"_s, i); };
        const QString name = requireText(netToken, kiCadPaths().netName, messagePath, u"/name"_s);
        auto net = isTolerant() ? nets.value(name) : nullptr;
        if (net.isNull())
            net = EDANet::create(name);
        if (replaces(nets, name, net))
            names.add(name);
        parseNodesOfNet(netToken, net, nodeFactory);
    }
    if (isTolerant()) {
        for (const KiCadRepetition &repetition : names.all())
            keepEachOnce(nets.value(repetition.name)->nodes);
    }
    repeated += names.all();
}

void KiCadNetParser::parseNodesOfNet(KiCadToken &netToken, const QSharedPointer<EDANet> &net,
                                     const NodeFactory &nodeFactory) const
{
    const auto messagePath = [&net] { return u"/export/nets/net[%1]/node"_s.arg(net->name); };
    if (net->nodes.isEmpty())
        net->nodes.reserve(netToken.children.size());
    for (const Token &child : std::as_const(netToken.children)) {
        if (!kiCadPaths().node.findFrom(*child))
            continue;
        const QString ref = requireText(*child, kiCadPaths().nodeRef, messagePath, u"/ref"_s);
        const QString pinNumber = requirePinNumber(*child, kiCadPaths().nodePin, messagePath, u"/pin"_s, mode);
        net->nodes.append(nodeFactory.create(ref, pinNumber));
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
