#include <velk/kicad/KiCadRepair.h>

#include <velk/kicad/KiCadNetlistPaths.h>
#include <velk/kicad/KiCadTokens.h>
#include <velk/kicad/KiCadTree.h>

using namespace Qt::StringLiterals;

namespace Velk {

template <typename Tokens>
KiCadRepair<Tokens>::KiCadRepair(Tokens &completedTokens)
    : tokens(completedTokens)
{
}

template <typename Tokens>
QString KiCadRepair<Tokens>::partPath(Token libpart) const
{
    return namedPath(u"/export/libparts/libpart"_s,
                     u"name=%1,lib=%2"_s.arg(shortened(textOf(kiCadPaths().partName, libpart)),
                                             shortened(textOf(kiCadPaths().partLib, libpart))));
}

template <typename Tokens>
typename KiCadRepair<Tokens>::LibraryAndName KiCadRepair<Tokens>::libraryAndNameOf(Token libpart) const
{
    return {textOf(kiCadPaths().partLib, libpart), textOf(kiCadPaths().partName, libpart)};
}

template <typename Tokens>
bool KiCadRepair<Tokens>::haveSamePins(Token part, Token other) const
{
    const auto &paths = kiCadPaths();
    const auto pins = tokens.children(find(paths.pins, part));
    const auto others = tokens.children(find(paths.pins, other));
    auto otherPin = others.begin();
    for (const Token pin : pins) {
        if (!(otherPin != others.end()))
            return false;
        for (const KiCadPath *path : {&paths.pinNumber, &paths.pinName, &paths.pinType}) {
            if (textOf(*path, pin) != textOf(*path, *otherPin))
                return false;
        }
        ++otherPin;
    }
    return !(otherPin != others.end());
}

template <typename Tokens>
QStringList KiCadRepair<Tokens>::run()
{
    if (!tokens.root() || tokens.name(tokens.root()) != u"export"_s)
        return {};
    isOld = textOf(kiCadPaths().version, tokens.root()) == u"D"_s;
    for (const QString &list : {u"libparts"_s, u"components"_s, u"nets"_s})
        mergeLists(list);
    findOrAddParts();
    repairParts();
    repairComponents();
    repairNets();
    return warnings;
}

template <typename Tokens>
void KiCadRepair<Tokens>::mergeLists(const QString &name)
{
    Token first = {};
    tokens.removeChildren(tokens.root(), [&](Token list) {
        if (tokens.name(list) != name)
            return false;
        if (first)
            tokens.appendChildren(first, list);
        else
            first = list;
        return first != list;
    });
}

template <typename Tokens>
void KiCadRepair<Tokens>::findOrAddParts()
{
    libparts = find(kiCadPaths().libparts, tokens.root());
    hasParts = bool(libparts);
    if (hasParts)
        return;
    libparts = tokens.append(tokens.root(), u"libparts"_s);
    warn(u"/export/libparts"_s, u"missing, so all parts are taken with the pins that the nets name"_s);
}

// Counts through all names, so that a million alike take no longer than others.
template <typename Tokens>
template <typename Names>
QString KiCadRepair<Tokens>::unusedName(const QString &name, const Names &used)
{
    QString unused = name;
    while (used.contains(unused))
        unused = u"%1_%2"_s.arg(name, QString::number(++lastSuffix));
    return unused;
}

template <typename Tokens>
template <typename MessagePath>
void KiCadRepair<Tokens>::complete(Token parent, const KiCadPath &path, const QString &element, MessagePath messagePath)
{
    if (find(path, parent))
        return;
    tokens.append(parent, element);
    warn(u"%1/%2"_s.arg(messagePath(), element), u"missing, taken as empty"_s);
}

template <typename Tokens>
void KiCadRepair<Tokens>::repairParts()
{
    qsizetype position = 0;
    tokens.removeChildren(libparts, [&](Token libpart) {
        const QString path = indexedPath(u"/export/libparts/libpart"_s, position++);
        if (!textOf(kiCadPaths().partName, libpart).isEmpty())
            return false;
        warn(path + u"/part"_s, u"missing, so the part is dropped"_s);
        return true;
    });
    for (const Token libpart : tokens.children(libparts))
        addPart(libpart);
    for (const Token libpart : tokens.children(libparts))
        tellApart(libpart);
    tokens.removeChildren(libparts, [this](Token libpart) { return isReplacedByTheSame(libpart); });
}

template <typename Tokens>
void KiCadRepair<Tokens>::addPart(Token libpart)
{
    const auto part = std::make_shared<Part>(Part{libpart, find(kiCadPaths().partName, libpart)});
    repairPins(*part, partPath(libpart));
    const LibraryAndName known = libraryAndNameOf(libpart);
    partsByLibrary.insert(known, part);
    partsByName.insert(known.second, part);
}

template <typename Tokens>
template <typename MessagePath>
void KiCadRepair<Tokens>::repairPinNumber(Token pin, Part &part, MessagePath messagePath)
{
    if (!find(kiCadPaths().pinNumber, pin))
        tokens.append(pin, u"num"_s);
    const QString number = textOf(kiCadPaths().pinNumber, pin);
    if (number.isEmpty()) {
        warn(messagePath() + u"/num"_s,
             part.pinNumbers.contains(number)
                 ? u"empty like that of another pin, so nets and joins take the two for one pin"_s
                 : u"empty, so the pin has no number"_s);
    }
    part.pinNumbers.insert(number);
}

template <typename Tokens>
void KiCadRepair<Tokens>::repairPins(Part &part, const QString &path)
{
    part.pins = find(kiCadPaths().pins, part.token);
    if (!part.pins) {
        part.pins = tokens.append(part.token, u"pins"_s);
        warn(path + u"/pins"_s, u"missing, so the part has no pins"_s);
    }
    qsizetype position = 0;
    tokens.removeChildren(part.pins, [&](Token pin) {
        const auto pinPath = [&path, index = position++] { return indexedPath(path + u"/pins/pin"_s, index); };
        if (tokens.name(pin) != u"pin"_s) {
            warn(pinPath(), u"'%1' is no pin and dropped"_s.arg(shortened(tokens.name(pin))));
            return true;
        }
        complete(pin, kiCadPaths().pinName, u"name"_s, pinPath);
        complete(pin, kiCadPaths().pinType, u"type"_s, pinPath);
        repairPinNumber(pin, part, pinPath);
        if (const Token name = find(kiCadPaths().pinName, pin); isOld && tokens.value(name) == u"~"_s)
            tokens.setValue(name, {});
        return false;
    });
}

// The parser knows parts by their names alone. Of several with one name it keeps the last one.
template <typename Tokens>
void KiCadRepair<Tokens>::tellApart(Token libpart)
{
    const LibraryAndName known = libraryAndNameOf(libpart);
    const PartPointer last = partsByName.value(known.second);
    const PartPointer part = partsByLibrary.value(known);
    if (part == last || haveSamePins(part->token, last->token))
        partsByLibrary.insert(known, last);
    else
        rename(libpart, known);
    if (const Token list = find(kiCadPaths().aliases, libpart)) {
        for (const Token alias : tokens.children(list)) {
            aliasesByLibrary.insert({known.first, tokens.text(alias)}, partsByLibrary.value(known));
            aliases.insert(tokens.text(alias), partsByLibrary.value(known));
        }
    }
}

// Pins that the nets add are given to the one that replaces it.
template <typename Tokens>
bool KiCadRepair<Tokens>::isReplacedByTheSame(Token libpart) const
{
    const Token last = partsByName.value(textOf(kiCadPaths().partName, libpart))->token;
    return libpart != last && haveSamePins(libpart, last);
}

template <typename Tokens>
void KiCadRepair<Tokens>::rename(Token libpart, const LibraryAndName &known)
{
    QString &name = newNames[known];
    if (name.isEmpty()) {
        name = unusedName(u"%1:%2"_s.arg(known.first, known.second), partsByName);
        partsByName.insert(name, partsByLibrary.value(known));
        ambiguousNames.insert(known.second);
        warn(partPath(libpart),
             u"another library has a part of this name, so this one is named '%1'"_s.arg(shortened(name)));
    }
    tokens.setValue(find(kiCadPaths().partName, libpart), name);
}

template <typename Tokens>
void KiCadRepair<Tokens>::repairComponents()
{
    const Token list = find(kiCadPaths().components, tokens.root());
    if (!list)
        return;
    qsizetype position = 0;
    tokens.removeChildren(list, [&](Token comp) {
        const qsizetype index = position++;
        const QString ref = textOf(kiCadPaths().ref, comp);
        if (ref.isEmpty()) {
            warn(indexedPath(u"/export/components/comp"_s, index) + u"/ref"_s,
                 u"missing, so the component is dropped"_s);
            return true;
        }
        const QString path = namedPath(u"/export/components/comp"_s, ref);
        complete(comp, kiCadPaths().value, u"value"_s, [&path]() -> const QString & { return path; });
        resolvePart(comp, ref, path);
        repairProperties(comp, path);
        return false;
    });
}

template <typename Tokens>
void KiCadRepair<Tokens>::resolvePart(Token comp, const QString &ref, const QString &path)
{
    const LibraryAndName wanted{textOf(kiCadPaths().libOfComponent, comp), textOf(kiCadPaths().partOfComponent, comp)};
    PartPointer part = findPart(wanted, path + u"/libsource/part"_s);
    if (!part && wanted.second.isEmpty()) {
        part = makeUpPart(wanted.first, unusedName(ref, partsByName));
        warnOfUnlisted(path, u"missing, so the part is taken as '%1' with the pins that the nets name"_s.arg(
                                 shortened(tokens.text(part->name))));
    } else if (!part) {
        part = makeUpPart(wanted.first, wanted.second);
        warnOfUnlisted(path, u"'%1' is not listed, so it is taken as a part with the pins that the nets name"_s.arg(
                                 shortened(wanted.second)));
    }
    partsOfComponents.insert(ref, part);
    setPart(comp, tokens.text(part->name));
}

template <typename Tokens>
void KiCadRepair<Tokens>::setPart(Token comp, const QString &name)
{
    if (const Token part = find(kiCadPaths().partOfComponent, comp)) {
        tokens.setValue(part, name);
        return;
    }
    const Token source = find(kiCadPaths().libsource, comp);
    tokens.append(source ? source : tokens.append(comp, u"libsource"_s), u"part"_s, name);
}

// One warning is enough where no part is listed.
template <typename Tokens>
void KiCadRepair<Tokens>::warnOfUnlisted(const QString &path, const QString &text)
{
    if (hasParts)
        warn(path + u"/libsource/part"_s, text);
}

// An alias in the component's own library means more than a part of another one.
template <typename Tokens>
typename KiCadRepair<Tokens>::PartPointer KiCadRepair<Tokens>::findPart(const LibraryAndName &wanted,
                                                                        const QString &path)
{
    if (wanted.second.isEmpty())
        return {};
    if (PartPointer listed = partsByLibrary.value(wanted))
        return listed;
    PartPointer part = aliasesByLibrary.value(wanted);
    if (!part && partsByName.contains(wanted.second)) {
        if (ambiguousNames.contains(wanted.second))
            warn(path, u"library '%1' does not list '%2', so the last one of several is taken"_s.arg(
                           shortened(wanted.first), shortened(wanted.second)));
        return partsByName.value(wanted.second);
    }
    if (!part)
        part = aliases.value(wanted.second);
    if (part)
        warn(path, u"'%1' is an alias of '%2'"_s.arg(shortened(wanted.second), shortened(tokens.text(part->name))));
    return part;
}

template <typename Tokens>
typename KiCadRepair<Tokens>::PartPointer KiCadRepair<Tokens>::makeUpPart(const QString &lib, const QString &name)
{
    const Token libpart = tokens.append(libparts, u"libpart"_s);
    tokens.append(libpart, u"lib"_s, lib);
    auto part = std::make_shared<Part>(Part{libpart, tokens.append(libpart, u"part"_s, name)});
    part->pins = tokens.append(libpart, u"pins"_s);
    part->isMadeUp = true;
    partsByName.insert(name, part);
    return part;
}

template <typename Tokens>
void KiCadRepair<Tokens>::repairProperties(Token comp, const QString &path)
{
    tokens.removeChildren(comp, [&](Token child) {
        if (!find(kiCadPaths().property, child) || !textOf(kiCadPaths().propertyName, child).isEmpty())
            return false;
        warn(path + u"/property/name"_s, u"missing, so the property is dropped"_s);
        return true;
    });
    if (isOld)
        addFieldsAsProperties(comp);
}

template <typename Tokens>
void KiCadRepair<Tokens>::addFieldsAsProperties(Token comp)
{
    const Token fields = find(kiCadPaths().fields, comp);
    if (!fields || find(kiCadPaths().propertyOfComponent, comp))
        return;
    for (const Token field : tokens.children(fields)) {
        const QString name = textOf(kiCadPaths().fieldName, field);
        if (name.isEmpty())
            continue;
        const Token property = tokens.append(comp, u"property"_s);
        tokens.append(property, u"name"_s, name);
        tokens.append(property, u"value"_s, tokens.text(field));
    }
}

template <typename Tokens>
void KiCadRepair<Tokens>::repairNets()
{
    const Token list = find(kiCadPaths().nets, tokens.root());
    if (!list)
        return;
    for (const Token net : tokens.children(list))
        netNames.insert(textOf(kiCadPaths().netName, net));
    qsizetype position = 0;
    tokens.removeChildren(list, [&](Token net) {
        const QString path = indexedPath(u"/export/nets/net"_s, position++);
        if (tokens.name(net) != u"net"_s) {
            warn(path, u"'%1' is no net and dropped"_s.arg(shortened(tokens.name(net))));
            return true;
        }
        nameNet(net, path);
        repairNodes(net);
        return false;
    });
}

// After its first node, as KiCad names nets without a label.
template <typename Tokens>
void KiCadRepair<Tokens>::nameNet(Token net, const QString &path)
{
    if (!textOf(kiCadPaths().netName, net).isEmpty())
        return;
    const Token node = find(kiCadPaths().nodeOfNet, net);
    const QString wanted =
        !node ? u"Net-()"_s
              : u"Net-(%1-Pad%2)"_s.arg(textOf(kiCadPaths().nodeRef, node), textOf(kiCadPaths().nodePin, node));
    const QString name = unusedName(wanted, netNames);
    netNames.insert(name);
    const Token empty = find(kiCadPaths().netName, net);
    tokens.setValue(empty ? empty : tokens.append(net, u"name"_s), name);
    warn(path + u"/name"_s, u"missing, so the net is named '%1'"_s.arg(shortened(name)));
}

template <typename Tokens>
void KiCadRepair<Tokens>::repairNodes(Token net)
{
    const QString netName = textOf(kiCadPaths().netName, net);
    tokens.removeChildren(net,
                          [&](Token child) { return find(kiCadPaths().node, child) && !repairNode(child, netName); });
}

template <typename Tokens>
bool KiCadRepair<Tokens>::repairNode(Token node, const QString &netName)
{
    const auto path = [&netName] { return namedPath(u"/export/nets/net"_s, netName) + u"/node"_s; };
    const QString ref = textOf(kiCadPaths().nodeRef, node);
    const PartPointer part = partsOfComponents.value(ref);
    if (!part) {
        warn(path() + u"/ref"_s, u"component '%1' is not listed, so the node is dropped"_s.arg(shortened(ref)));
        return false;
    }
    complete(node, kiCadPaths().nodePin, u"pin"_s, path);
    const QString pinNumber = textOf(kiCadPaths().nodePin, node);
    if (!part->pinNumbers.contains(pinNumber)) {
        if (!part->isMadeUp) {
            warn(path() + u"/pin"_s, u"part '%1' of component '%2' has no pin '%3', so it is given one"_s.arg(
                                         shortened(tokens.text(part->name)), shortened(ref), shortened(pinNumber)));
        }
        addPin(*part, pinNumber);
    }
    return true;
}

template <typename Tokens>
void KiCadRepair<Tokens>::addPin(Part &part, const QString &number)
{
    part.pinNumbers.insert(number);
    const Token pin = tokens.append(part.pins, u"pin"_s);
    tokens.append(pin, u"num"_s, number);
    tokens.append(pin, u"name"_s);
    tokens.append(pin, u"type"_s);
}

template <typename Tokens>
void KiCadRepair<Tokens>::warn(const QString &path, const QString &text)
{
    warnings.append(u"%1: %2"_s.arg(path, text));
}

template class KiCadRepair<KiCadTokens>;
template class KiCadRepair<KiCadTree>;
}
