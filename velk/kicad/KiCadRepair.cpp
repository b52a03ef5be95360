#include <velk/kicad/KiCadRepair.h>

#include <velk/kicad/KiCadNetlistPaths.h>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace Velk {

namespace {

using Token = QSharedPointer<KiCadToken>;

void setPart(KiCadToken &comp, const QString &name)
{
    if (KiCadToken *part = kiCadPaths().partOfComponent.findFrom(comp)) {
        part->value = name;
        return;
    }
    KiCadToken *source = kiCadPaths().libsource.findFrom(comp);
    (source ? source : comp.append(u"libsource"_s).data())->append(u"part"_s, name);
}

bool haveSamePins(KiCadToken &a, KiCadToken &b)
{
    const auto &paths = kiCadPaths();
    const auto isSamePin = [&paths](const Token &pin, const Token &other) {
        const auto isSame = [&](const KiCadPath &path) { return path.textFrom(*pin) == path.textFrom(*other); };
        return isSame(paths.pinNumber) && isSame(paths.pinName) && isSame(paths.pinType);
    };
    const auto &pins = paths.pins.findFrom(a)->children;
    const auto &others = paths.pins.findFrom(b)->children;
    return std::equal(pins.cbegin(), pins.cend(), others.cbegin(), others.cend(), isSamePin);
}
}

KiCadRepair::KiCadRepair(const QSharedPointer<KiCadToken> &tree)
    : root(tree)
{
}

QStringList KiCadRepair::run()
{
    if (root.isNull())
        return {};
    hasFieldsOnly = kiCadPaths().version.textFrom(*root) == u"D"_s;
    libparts = kiCadPaths().libparts.findFrom(*root);
    if (libparts) {
        repairParts();
        repairComponents();
        repairNets();
    }
    return warnings;
}

// Counts through all names, so that a million alike take no longer than others.
template <typename Names>
QString KiCadRepair::unusedName(const QString &name, const Names &used)
{
    QString unused = name;
    while (used.contains(unused))
        unused = u"%1_%2"_s.arg(name, QString::number(++lastSuffix));
    return unused;
}

void KiCadRepair::repairParts()
{
    qsizetype position = 0;
    libparts->children.removeIf([&](const Token &libpart) {
        const QString path = indexedPath(u"/export/libparts/libpart"_s, position++);
        if (!kiCadPaths().partName.textFrom(*libpart).isEmpty())
            return false;
        warn(path + u"/part"_s, u"missing, so the part is dropped"_s);
        return true;
    });
    for (const Token &libpart : std::as_const(libparts->children))
        addPart(libpart);
    tellPartsApart();
}

void KiCadRepair::addPart(const Token &libpart)
{
    const int number = static_cast<int>(parts.size());
    parts.push_back(
        {libpart, kiCadPaths().partLib.textFrom(*libpart), kiCadPaths().partName.textFrom(*libpart), {}, false});
    Part &part = parts.back();
    repairPins(part);
    partsByName.insert(part.name, number);
    if (const KiCadToken *list = kiCadPaths().aliases.findFrom(*libpart)) {
        for (const Token &alias : list->children) {
            aliasesByLibrary.insert({part.lib, alias->value}, number);
            aliases.insert(alias->value, number);
        }
    }
}

void KiCadRepair::repairPins(Part &part)
{
    const QString path = u"/export/libparts/libpart[name=%1,lib=%2]"_s.arg(part.name, part.lib);
    if (!kiCadPaths().pins.findFrom(*part.token)) {
        part.token->append(u"pins"_s);
        warn(path + u"/pins"_s, u"missing, so the part has no pins"_s);
    }
    auto &pins = kiCadPaths().pins.findFrom(*part.token)->children;
    qsizetype position = 0;
    pins.removeIf([&](const Token &pin) {
        const QString pinPath = indexedPath(path + u"/pins/pin"_s, position++);
        if (pin->name != u"pin"_s) {
            warn(pinPath, u"'%1' is no pin and dropped"_s.arg(pin->name));
            return true;
        }
        complete(*pin, kiCadPaths().pinNumber, u"num"_s, pinPath);
        complete(*pin, kiCadPaths().pinName, u"name"_s, pinPath);
        complete(*pin, kiCadPaths().pinType, u"type"_s, pinPath);
        const QString number = kiCadPaths().pinNumber.textFrom(*pin);
        part.pinNumbers.insert(number);
        if (number.isEmpty())
            warn(pinPath + u"/num"_s, u"empty, so the pin has no number"_s);
        return false;
    });
}

// The parser knows parts by their names alone, the last one of a name.
void KiCadRepair::tellPartsApart()
{
    for (int number = 0; number < static_cast<int>(parts.size()); ++number) {
        const Part &part = parts[static_cast<std::size_t>(number)];
        const int lastNumber = partsByName.value(part.name);
        const Part &last = parts[static_cast<std::size_t>(lastNumber)];
        const bool isTheSame = part.lib == last.lib || haveSamePins(*part.token, *last.token);
        partsByLibrary.insert({part.lib, part.name}, isTheSame ? lastNumber : number);
        if (!isTheSame)
            rename(number);
    }
}

void KiCadRepair::rename(int number)
{
    const Part &part = parts[static_cast<std::size_t>(number)];
    const QString name = unusedName(u"%1:%2"_s.arg(part.lib, part.name), partsByName);
    warn(u"/export/libparts/libpart[name=%1,lib=%2]"_s.arg(part.name, part.lib),
         u"another library has a part of this name, so this one is named '%1'"_s.arg(name));
    kiCadPaths().partName.findFrom(*part.token)->value = name;
    partsByName.insert(name, number);
}

void KiCadRepair::repairComponents()
{
    KiCadToken *list = kiCadPaths().components.findFrom(*root);
    if (!list)
        return;
    qsizetype position = 0;
    list->children.removeIf([&](const Token &comp) {
        const QString indexed = indexedPath(u"/export/components/comp"_s, position++);
        const QString ref = kiCadPaths().ref.textFrom(*comp);
        if (ref.isEmpty()) {
            warn(indexed + u"/ref"_s, u"missing, so the component is dropped"_s);
            return true;
        }
        const QString path = u"/export/components/comp[%1]"_s.arg(ref);
        complete(*comp, kiCadPaths().value, u"value"_s, path);
        resolvePart(*comp, ref, path);
        repairProperties(*comp, path);
        return false;
    });
}

void KiCadRepair::resolvePart(KiCadToken &comp, const QString &ref, const QString &path)
{
    const LibraryAndName wanted{kiCadPaths().libOfComponent.textFrom(comp),
                                kiCadPaths().partOfComponent.textFrom(comp)};
    int number = partOf(wanted);
    if (number == none) {
        number = makeUpPart({wanted.first, wanted.second.isEmpty() ? ref : wanted.second});
        warn(path + u"/libsource/part"_s,
             u"'%1' is not listed, so it is taken as a part of the pins that the nets name"_s.arg(wanted.second));
    }
    const Part &part = parts[static_cast<std::size_t>(number)];
    if (part.name != wanted.second && !part.isMadeUp)
        warn(path + u"/libsource/part"_s, u"'%1' is an alias of '%2'"_s.arg(wanted.second, part.name));
    partsOfComponents.insert(ref, number);
    setPart(comp, kiCadPaths().partName.textFrom(*part.token));
}

// An alias of the component's own library means more than a part of another one.
int KiCadRepair::partOf(const LibraryAndName &wanted) const
{
    if (partsByLibrary.contains(wanted))
        return partsByLibrary.value(wanted);
    if (aliasesByLibrary.contains(wanted))
        return aliasesByLibrary.value(wanted);
    if (partsByName.contains(wanted.second))
        return partsByName.value(wanted.second);
    return aliases.value(wanted.second, none);
}

int KiCadRepair::makeUpPart(const LibraryAndName &wanted)
{
    const Token libpart = libparts->append(u"libpart"_s);
    libpart->append(u"lib"_s, wanted.first);
    libpart->append(u"part"_s, wanted.second);
    libpart->append(u"pins"_s);
    const int number = static_cast<int>(parts.size());
    parts.push_back({libpart, wanted.first, wanted.second, {}, true});
    partsByLibrary.insert(wanted, number);
    partsByName.insert(wanted.second, number);
    return number;
}

void KiCadRepair::repairProperties(KiCadToken &comp, const QString &path)
{
    comp.children.removeIf([&](const Token &child) {
        if (!kiCadPaths().property.findFrom(*child) || !kiCadPaths().propertyName.textFrom(*child).isEmpty())
            return false;
        warn(path + u"/property/name"_s, u"missing, so the property is dropped"_s);
        return true;
    });
    const KiCadToken *fields = hasFieldsOnly ? kiCadPaths().fields.findFrom(comp) : nullptr;
    if (!fields)
        return;
    for (const Token &field : std::as_const(fields->children)) {
        const QString name = kiCadPaths().fieldName.textFrom(*field);
        if (name.isEmpty())
            continue;
        const Token property = comp.append(u"property"_s);
        property->append(u"name"_s, name);
        property->append(u"value"_s, field->value);
    }
}

void KiCadRepair::repairNets()
{
    KiCadToken *list = kiCadPaths().nets.findFrom(*root);
    if (!list)
        return;
    for (const Token &net : std::as_const(list->children))
        netNames.insert(kiCadPaths().netName.textFrom(*net));
    qsizetype position = 0;
    list->children.removeIf([&](const Token &net) {
        const QString path = indexedPath(u"/export/nets/net"_s, position++);
        if (net->name != u"net"_s) {
            warn(path, u"'%1' is no net and dropped"_s.arg(net->name));
            return true;
        }
        nameNet(*net, path);
        repairNodes(*net);
        return false;
    });
}

// After its first node, as KiCad names nets without a label.
void KiCadRepair::nameNet(KiCadToken &net, const QString &path)
{
    KiCadToken *token = kiCadPaths().netName.findFrom(net);
    if (token && !token->value.isEmpty())
        return;
    const auto &children = std::as_const(net.children);
    const auto node = std::find_if(children.cbegin(), children.cend(),
                                   [](const Token &child) { return kiCadPaths().node.findFrom(*child); });
    const QString name = node == children.cend() ? u"Net-()"_s
                                                 : u"Net-(%1-Pad%2)"_s.arg(kiCadPaths().nodeRef.textFrom(**node),
                                                                           kiCadPaths().nodePin.textFrom(**node));
    (token ? token : net.append(u"name"_s).data())->value = unusedName(name, netNames);
    netNames.insert(kiCadPaths().netName.textFrom(net));
    warn(path + u"/name"_s, u"missing, so the net is named '%1'"_s.arg(kiCadPaths().netName.textFrom(net)));
}

void KiCadRepair::repairNodes(KiCadToken &net)
{
    const QString path = u"/export/nets/net[%1]/node"_s.arg(kiCadPaths().netName.textFrom(net));
    net.children.removeIf(
        [&](const Token &child) { return kiCadPaths().node.findFrom(*child) && !repairNode(*child, path); });
}

bool KiCadRepair::repairNode(KiCadToken &node, const QString &path)
{
    const QString ref = kiCadPaths().nodeRef.textFrom(node);
    const int number = partsOfComponents.value(ref, none);
    if (number == none) {
        warn(path + u"/ref"_s, u"component '%1' is not listed, so the node is dropped"_s.arg(ref));
        return false;
    }
    complete(node, kiCadPaths().nodePin, u"pin"_s, path);
    const QString pinNumber = kiCadPaths().nodePin.textFrom(node);
    Part &part = parts[static_cast<std::size_t>(number)];
    if (!part.pinNumbers.contains(pinNumber)) {
        if (!part.isMadeUp)
            warn(path + u"/pin"_s,
                 u"part '%1' of component '%2' has no pin '%3', so it is given one"_s.arg(part.name, ref, pinNumber));
        addPin(part, pinNumber);
    }
    return true;
}

void KiCadRepair::addPin(Part &part, const QString &number)
{
    part.pinNumbers.insert(number);
    const Token pin = kiCadPaths().pins.findFrom(*part.token)->append(u"pin"_s);
    pin->append(u"num"_s, number);
    pin->append(u"name"_s);
    pin->append(u"type"_s);
}

void KiCadRepair::complete(KiCadToken &parent, const KiCadPath &path, const QString &element,
                           const QString &messagePath)
{
    if (path.findFrom(parent))
        return;
    parent.append(element);
    warn(u"%1/%2"_s.arg(messagePath, element), u"missing, taken as empty"_s);
}

void KiCadRepair::warn(const QString &path, const QString &text)
{
    warnings.append(u"%1: %2"_s.arg(path, text));
}
}
