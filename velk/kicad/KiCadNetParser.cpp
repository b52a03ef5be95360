#include <velk/kicad/KiCadNetParser.h>

#include <velk/model/EDAException.h>

#include <QRegularExpression>
#include <QStringList>

using namespace Qt::StringLiterals;

namespace Velk {

namespace {

using Token = QSharedPointer<KiCadToken>;

QString indexedPath(const QString &listPath, qsizetype index)
{
    return u"%1[%2]"_s.arg(listPath).arg(index);
}

Token requireToken(const Token &parent, const QString &path, const QString &messagePath)
{
    Token token = parent ? parent->find(path) : Token();
    if (token.isNull())
        throw KiCadTokenNotFoundException(messagePath);
    return token;
}

QString requireText(const Token &parent, const QString &path, const QString &messagePath)
{
    QString text = requireToken(parent, path, messagePath)->value;
    if (text.isEmpty())
        throw KiCadTokenNotFoundException(messagePath);
    return text;
}

QString optionalText(const Token &parent, const QString &path)
{
    const Token token = parent->find(path);
    return token ? token->value : QString();
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

KiCadNetParser::KiCadNetParser(const QSharedPointer<KiCadToken> &tree)
    : root(tree)
{
}

KiCadNetParser::~KiCadNetParser() = default;
KiCadNetParser::KiCadNetParser(const KiCadNetParser &other) = default;
KiCadNetParser &KiCadNetParser::operator=(const KiCadNetParser &other) = default;

void KiCadNetParser::parse()
{
    // Components are resolved against the parts, nodes against both.
    parseParts();
    parseComponents();
    parseNets();
}

void KiCadNetParser::parseParts()
{
    parts.clear();
    const Token libparts = requireToken(root, u"/export/libparts"_s, u"/export/libparts"_s);
    for (qsizetype i = 0; i < libparts->children.size(); ++i) {
        const Token &libpart = libparts->children.at(i);
        const QString messagePath = indexedPath(u"/export/libparts/libpart"_s, i);
        const QString name = requireText(libpart, u"/libpart/part"_s, messagePath + u"/part"_s);
        const auto part = EDAPart::create(name, optionalText(libpart, u"/libpart/lib"_s));
        parts.insert(name, part);
        parsePinsOfPart(libpart, part);
    }
}

void KiCadNetParser::parsePinsOfPart(const Token &libpart, const QSharedPointer<EDAPart> &part)
{
    // Names the pin even where the whole list is missing.
    const QString messagePath = u"/export/libparts/libpart[name=%1,lib=%2]/pins/pin"_s.arg(part->name, part->lib);
    const Token pins = requireToken(libpart, u"/libpart/pins"_s, messagePath);
    part->pins.reserve(pins->children.size());
    for (const Token &pin : std::as_const(pins->children)) {
        const QString number = requireText(pin, u"/pin/num"_s, messagePath + u"/num"_s);
        const Token name = requireToken(pin, u"/pin/name"_s, messagePath + u"/name"_s);
        const Token type = requireToken(pin, u"/pin/type"_s, messagePath + u"/type"_s);
        part->pins.append(EDAPin::create(number, name->value, type->value));
    }
}

void KiCadNetParser::parseComponents()
{
    const Token list = requireToken(root, u"/export/components"_s, u"/export/components"_s);
    for (qsizetype i = 0; i < list->children.size(); ++i) {
        const Token &comp = list->children.at(i);
        const QString messagePath = indexedPath(u"/export/components/comp"_s, i);
        const QString ref = requireText(comp, u"/comp/ref"_s, messagePath + u"/ref"_s);
        const Token value = requireToken(comp, u"/comp/value"_s, messagePath + u"/value"_s);
        const QString partName = requireText(comp, u"/comp/libsource/part"_s, messagePath + u"/libsource/part"_s);
        const auto component = EDAComponent::create(ref, value->value, partName);
        parsePropertiesOfComponent(comp, component);
        parsePropertiesFromComponentSheetpath(comp, component);

        const auto part = parts.value(partName);
        if (part.isNull())
            throw EDAPartNotFoundException(component, partName);
        component->part = part->name; // the same text, held in memory once
        components.insert(ref, component);
    }
}

void KiCadNetParser::parsePropertiesOfComponent(const Token &comp, const QSharedPointer<EDAComponent> &component)
{
    const QString messagePath = u"/export/components/comp[%1]/property"_s.arg(component->ref);
    for (const Token &child : std::as_const(comp->children)) {
        if (child->find(u"/property"_s).isNull())
            continue;
        const QString name = requireText(child, u"/property/name"_s, messagePath + u"/name"_s);
        component->properties.insert(name, optionalText(child, u"/property/value"_s));
    }
}

void KiCadNetParser::parsePropertiesFromComponentSheetpath(const Token &comp,
                                                           const QSharedPointer<EDAComponent> &component)
{
    static const QRegularExpression propertyExpression(uR"((?<name>\w+)=(?<value>[^.]+))"_s);

    const QStringList sheetNames = optionalText(comp, u"/comp/sheetpath/names"_s).split(u'/', Qt::SkipEmptyParts);
    for (const QString &sheetName : sheetNames) {
        auto matches = propertyExpression.globalMatch(sheetName.section(u'-', 0, -2));
        while (matches.hasNext()) {
            const auto match = matches.next();
            component->properties.insert(match.captured(u"name"_s), match.captured(u"value"_s));
        }
    }
}

void KiCadNetParser::parseNets()
{
    const Token list = requireToken(root, u"/export/nets"_s, u"/export/nets"_s);
    for (qsizetype i = 0; i < list->children.size(); ++i) {
        const Token &netToken = list->children.at(i);
        const QString messagePath = indexedPath(u"/export/nets/net"_s, i);
        const auto net = EDANet::create(requireText(netToken, u"/net/name"_s, messagePath + u"/name"_s));
        nets.insert(net->name, net);
        parseNodesOfNet(netToken, net);
    }
}

void KiCadNetParser::parseNodesOfNet(const Token &netToken, const QSharedPointer<EDANet> &net) const
{
    const QString messagePath = u"/export/nets/net[%1]/node"_s.arg(net->name);
    for (const Token &child : std::as_const(netToken->children)) {
        if (child->find(u"/node"_s).isNull())
            continue;
        const QString ref = requireText(child, u"/node/ref"_s, messagePath + u"/ref"_s);
        const QString pinNumber = requireText(child, u"/node/pin"_s, messagePath + u"/pin"_s);
        const auto component = components.value(ref);
        if (component.isNull())
            throw EDAComponentNotFoundException({{u"ref"_s, ref}});
        const auto part = parts.value(component->part);
        if (part.isNull())
            throw EDAPartNotFoundException(component, component->part);
        const auto pin = part->getPinByNumber(pinNumber);
        if (pin.isNull())
            throw EDAPinNotFoundException(part, component, pinNumber);
        net->addNode(component->ref, pin->number);
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
}
