#include <velk/kicad/KiCadRepair.h>

#include <velk/kicad/KiCadNetlistPaths.h>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace Velk {

namespace {

using Token = QSharedPointer<KiCadToken>;

QString partPath(KiCadToken &libpart)
{
    return namedPath(u"/export/libparts/libpart"_s,
                     u"name=%1,lib=%2"_s.arg(shortened(kiCadPaths().partName.textFrom(libpart)),
                                             shortened(kiCadPaths().partLib.textFrom(libpart))));
}

std::pair<QString, QString> libraryAndNameOf(KiCadToken &libpart)
{
    return {kiCadPaths().partLib.textFrom(libpart), kiCadPaths().partName.textFrom(libpart)};
}

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
    if (root.isNull() || root->name != u"export"_s)
        return {};
    isOld = kiCadPaths().version.textFrom(*root) == u"D"_s;
    for (const QString &list : {u"libparts"_s, u"components"_s, u"nets"_s})
        mergeLists(list);
    findOrAddParts();
    repairParts();
    repairComponents();
    repairNets();
    return warnings;
}

void KiCadRepair::mergeLists(const QString &name)
{
    Token first;
    root->children.removeIf([&](const Token &list) {
        if (list->name != name)
            return false;
        if (first)
            first->children.append(list->children);
        else
            first = list;
        return first.data() != list.data(); // not by content: an empty list gets that of the next one
    });
}

void KiCadRepair::findOrAddParts()
{
    libparts = kiCadPaths().libparts.findFrom(*root);
    hasParts = libparts != nullptr;
    if (hasParts)
        return;
    libparts = root->append(u"libparts"_s).data();
    warn(u"/export/libparts"_s, u"missing, so all parts are taken with the pins that the nets name"_s);
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

template <typename MessagePath>
void KiCadRepair::complete(KiCadToken &parent, const KiCadPath &path, const QString &element, MessagePath messagePath)
{
    if (path.findFrom(parent))
        return;
    parent.append(element);
    warn(u"%1/%2"_s.arg(messagePath(), element), u"missing, taken as empty"_s);
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
    for (const Token &libpart : std::as_const(libparts->children))
        tellApart(libpart);
    libparts->children.removeIf([this](const Token &libpart) { return isReplacedByTheSame(libpart); });
}

void KiCadRepair::addPart(const Token &libpart)
{
    const auto part = std::make_shared<Part>(Part{libpart, kiCadPaths().partName.findFrom(*libpart)});
    repairPins(*part, partPath(*libpart));
    const LibraryAndName known = libraryAndNameOf(*libpart);
    partsByLibrary.insert(known, part);
    partsByName.insert(known.second, part);
}

template <typename MessagePath>
void KiCadRepair::repairPinNumber(KiCadToken &pin, Part &part, MessagePath messagePath)
{
    if (!kiCadPaths().pinNumber.findFrom(pin))
        pin.append(u"num"_s);
    const QString number = kiCadPaths().pinNumber.textFrom(pin);
    if (number.isEmpty()) {
        warn(messagePath() + u"/num"_s,
             part.pinNumbers.contains(number)
                 ? u"empty like that of another pin, so nets and joins take the two for one pin"_s
                 : u"empty, so the pin has no number"_s);
    }
    part.pinNumbers.insert(number);
}

void KiCadRepair::repairPins(Part &part, const QString &path)
{
    part.pins = kiCadPaths().pins.findFrom(*part.token);
    if (!part.pins) {
        part.pins = part.token->append(u"pins"_s).data();
        warn(path + u"/pins"_s, u"missing, so the part has no pins"_s);
    }
    qsizetype position = 0;
    part.pins->children.removeIf([&](const Token &pin) {
        const auto pinPath = [&path, index = position++] { return indexedPath(path + u"/pins/pin"_s, index); };
        if (pin->name != u"pin"_s) {
            warn(pinPath(), u"'%1' is no pin and dropped"_s.arg(shortened(pin->name)));
            return true;
        }
        complete(*pin, kiCadPaths().pinName, u"name"_s, pinPath);
        complete(*pin, kiCadPaths().pinType, u"type"_s, pinPath);
        repairPinNumber(*pin, part, pinPath);
        if (KiCadToken *name = kiCadPaths().pinName.findFrom(*pin); isOld && name->value == u"~"_s)
            name->value.clear();
        return false;
    });
}

// The parser knows parts by their names alone. Of several with one name it keeps the last one.
void KiCadRepair::tellApart(const Token &libpart)
{
    const LibraryAndName known = libraryAndNameOf(*libpart);
    const PartPointer last = partsByName.value(known.second);
    const PartPointer part = partsByLibrary.value(known);
    if (part == last || haveSamePins(*part->token, *last->token))
        partsByLibrary.insert(known, last);
    else
        rename(*libpart, known);
    if (const KiCadToken *list = kiCadPaths().aliases.findFrom(*libpart)) {
        for (const Token &alias : list->children) {
            aliasesByLibrary.insert({known.first, alias->value}, partsByLibrary.value(known));
            aliases.insert(alias->value, partsByLibrary.value(known));
        }
    }
}

// Pins that the nets add are given to the one that replaces it.
bool KiCadRepair::isReplacedByTheSame(const Token &libpart) const
{
    const Token &last = partsByName.value(kiCadPaths().partName.textFrom(*libpart))->token;
    return libpart.data() != last.data() && haveSamePins(*libpart, *last);
}

void KiCadRepair::rename(KiCadToken &libpart, const LibraryAndName &known)
{
    QString &name = newNames[known];
    if (name.isEmpty()) {
        name = unusedName(u"%1:%2"_s.arg(known.first, known.second), partsByName);
        partsByName.insert(name, partsByLibrary.value(known));
        ambiguousNames.insert(known.second);
        warn(partPath(libpart),
             u"another library has a part of this name, so this one is named '%1'"_s.arg(shortened(name)));
    }
    kiCadPaths().partName.findFrom(libpart)->value = name;
}

void KiCadRepair::repairComponents()
{
    KiCadToken *list = kiCadPaths().components.findFrom(*root);
    if (!list)
        return;
    qsizetype position = 0;
    list->children.removeIf([&](const Token &comp) {
        const qsizetype index = position++;
        const QString ref = kiCadPaths().ref.textFrom(*comp);
        if (ref.isEmpty()) {
            warn(indexedPath(u"/export/components/comp"_s, index) + u"/ref"_s,
                 u"missing, so the component is dropped"_s);
            return true;
        }
        const QString path = namedPath(u"/export/components/comp"_s, ref);
        complete(*comp, kiCadPaths().value, u"value"_s, [&path]() -> const QString & { return path; });
        resolvePart(*comp, ref, path);
        repairProperties(*comp, path);
        return false;
    });
}

void KiCadRepair::resolvePart(KiCadToken &comp, const QString &ref, const QString &path)
{
    const LibraryAndName wanted{kiCadPaths().libOfComponent.textFrom(comp),
                                kiCadPaths().partOfComponent.textFrom(comp)};
    PartPointer part = findPart(wanted, path + u"/libsource/part"_s);
    if (!part && wanted.second.isEmpty()) {
        part = makeUpPart(wanted.first, unusedName(ref, partsByName));
        warnOfUnlisted(path, u"missing, so the part is taken as '%1' with the pins that the nets name"_s.arg(
                                 shortened(part->name->value)));
    } else if (!part) {
        part = makeUpPart(wanted.first, wanted.second);
        warnOfUnlisted(path, u"'%1' is not listed, so it is taken as a part with the pins that the nets name"_s.arg(
                                 shortened(wanted.second)));
    }
    partsOfComponents.insert(ref, part);
    setPart(comp, part->name->value);
}

// One warning is enough where no part is listed.
void KiCadRepair::warnOfUnlisted(const QString &path, const QString &text)
{
    if (hasParts)
        warn(path + u"/libsource/part"_s, text);
}

// An alias in the component's own library means more than a part of another one.
KiCadRepair::PartPointer KiCadRepair::findPart(const LibraryAndName &wanted, const QString &path)
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
        warn(path, u"'%1' is an alias of '%2'"_s.arg(shortened(wanted.second), shortened(part->name->value)));
    return part;
}

KiCadRepair::PartPointer KiCadRepair::makeUpPart(const QString &lib, const QString &name)
{
    const Token libpart = libparts->append(u"libpart"_s);
    libpart->append(u"lib"_s, lib);
    auto part = std::make_shared<Part>(Part{libpart, libpart->append(u"part"_s, name).data()});
    part->pins = libpart->append(u"pins"_s).data();
    part->isMadeUp = true;
    partsByName.insert(name, part);
    return part;
}

void KiCadRepair::repairProperties(KiCadToken &comp, const QString &path)
{
    comp.children.removeIf([&](const Token &child) {
        if (!kiCadPaths().property.findFrom(*child) || !kiCadPaths().propertyName.textFrom(*child).isEmpty())
            return false;
        warn(path + u"/property/name"_s, u"missing, so the property is dropped"_s);
        return true;
    });
    if (isOld)
        addFieldsAsProperties(comp);
}

void KiCadRepair::addFieldsAsProperties(KiCadToken &comp)
{
    const KiCadToken *fields = kiCadPaths().fields.findFrom(comp);
    const bool hasProperties = std::any_of(comp.children.cbegin(), comp.children.cend(), [](const Token &child) {
        return kiCadPaths().property.findFrom(*child) != nullptr;
    });
    if (!fields || hasProperties)
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
            warn(path, u"'%1' is no net and dropped"_s.arg(shortened(net->name)));
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
    if (!kiCadPaths().netName.textFrom(net).isEmpty())
        return;
    const auto &children = std::as_const(net.children);
    const auto node = std::find_if(children.cbegin(), children.cend(),
                                   [](const Token &child) { return kiCadPaths().node.findFrom(*child); });
    const QString wanted = node == children.cend() ? u"Net-()"_s
                                                   : u"Net-(%1-Pad%2)"_s.arg(kiCadPaths().nodeRef.textFrom(**node),
                                                                             kiCadPaths().nodePin.textFrom(**node));
    const QString name = unusedName(wanted, netNames);
    netNames.insert(name);
    if (!kiCadPaths().netName.findFrom(net))
        net.append(u"name"_s);
    kiCadPaths().netName.findFrom(net)->value = name;
    warn(path + u"/name"_s, u"missing, so the net is named '%1'"_s.arg(shortened(name)));
}

void KiCadRepair::repairNodes(KiCadToken &net)
{
    const QString netName = kiCadPaths().netName.textFrom(net);
    net.children.removeIf(
        [&](const Token &child) { return kiCadPaths().node.findFrom(*child) && !repairNode(*child, netName); });
}

bool KiCadRepair::repairNode(KiCadToken &node, const QString &netName)
{
    const auto path = [&netName] { return namedPath(u"/export/nets/net"_s, netName) + u"/node"_s; };
    const QString ref = kiCadPaths().nodeRef.textFrom(node);
    const PartPointer part = partsOfComponents.value(ref);
    if (!part) {
        warn(path() + u"/ref"_s, u"component '%1' is not listed, so the node is dropped"_s.arg(shortened(ref)));
        return false;
    }
    complete(node, kiCadPaths().nodePin, u"pin"_s, path);
    const QString pinNumber = kiCadPaths().nodePin.textFrom(node);
    if (!part->pinNumbers.contains(pinNumber)) {
        if (!part->isMadeUp) {
            warn(path() + u"/pin"_s, u"part '%1' of component '%2' has no pin '%3', so it is given one"_s.arg(
                                         shortened(part->name->value), shortened(ref), shortened(pinNumber)));
        }
        addPin(*part, pinNumber);
    }
    return true;
}

void KiCadRepair::addPin(Part &part, const QString &number)
{
    part.pinNumbers.insert(number);
    const Token pin = part.pins->append(u"pin"_s);
    pin->append(u"num"_s, number);
    pin->append(u"name"_s);
    pin->append(u"type"_s);
}

void KiCadRepair::warn(const QString &path, const QString &text)
{
    warnings.append(u"%1: %2"_s.arg(path, text));
}
}
