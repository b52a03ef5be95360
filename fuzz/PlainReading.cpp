#include "fuzz/PlainReading.h"

#include <QIODevice>
#include <QRegularExpression>
#include <QTextStream>

#include <stdexcept>

namespace PlainReading {

using namespace Qt::StringLiterals;
using namespace Velk;

using TokenPointer = QSharedPointer<PlainToken>;

QSharedPointer<PlainToken> PlainToken::find(const QString &path)
{
    static const QRegularExpression step(u"\\/(?<name>[^\\[\\/]+)(?:\\[(?<subname>[^=]+)='(?<subvalue>[^']+)'\\])?"_s);
    auto current = TokenPointer::create(); // its only child is this token, which the first step names
    current->children.append(sharedFromThis());
    auto steps = step.globalMatch(path);
    while (steps.hasNext()) {
        const auto match = steps.next();
        const QString stepName = match.captured(u"name"_s);
        const QString subname = match.captured(u"subname"_s);
        TokenPointer next;
        if (subname.isEmpty()) {
            next = current->findChild(stepName, QString());
        } else {
            for (const auto &child : std::as_const(current->children)) {
                if (child->name == stepName && child->findChild(subname, match.captured(u"subvalue"_s)))
                    next = child;
            }
        }
        if (next.isNull())
            return {};
        current = next;
    }
    return current->name.isEmpty() ? TokenPointer() : current;
}

QSharedPointer<PlainToken> PlainToken::findChild(const QString &childName, const QString &childValue) const
{
    for (const auto &child : children) {
        if (child->name == childName && (childValue.isNull() || child->value == childValue))
            return child;
    }
    return {};
}

namespace {

class PlainReader
{
public:
    TokenPointer read(QIODevice &device)
    {
        if (!device.open(QIODevice::ReadOnly | QIODevice::Text))
            return {};
        QTextStream stream(&device);
        QString line;
        bool isFine = true;
        while (isFine && stream.readLineInto(&line))
            isFine = readLine(line);
        device.close();
        return isFine ? root : TokenPointer();
    }

private:
    bool readLine(const QString &line)
    {
        for (const QChar character : line) {
            if (outsideQuotes && character == u'(') {
                addToken();
            } else if (outsideQuotes && character == u')') {
                addToken();
                if (open.isEmpty())
                    return false;
                open.removeLast();
            } else if (character == u'"') {
                outsideQuotes = !outsideQuotes;
            } else if (outsideQuotes) {
                text += character;
            } else {
                quoted += character;
            }
        }
        return true;
    }

    void addToken()
    {
        text = text.trimmed();
        if (text.isEmpty())
            return;
        const auto token = TokenPointer::create();
        token->name = text;
        token->value = quoted;
        text.clear();
        quoted.clear();
        if (!open.isEmpty())
            open.last()->children.append(token);
        open.append(token);
        if (root.isNull())
            root = token;
    }

    TokenPointer root;
    QList<TokenPointer> open;
    QString text;
    QString quoted;
    bool outsideQuotes = true;
};

TokenPointer needed(const TokenPointer &token, const QString &path)
{
    auto found = token->find(path);
    if (found.isNull())
        throw std::runtime_error("missing element");
    return found;
}

QString neededValue(const TokenPointer &token, const QString &path)
{
    const auto found = needed(token, path);
    if (found->value.isEmpty())
        throw std::runtime_error("empty element");
    return found->value;
}

template <typename Element>
QSharedPointer<Element> known(const QMap<QString, QSharedPointer<Element>> &elements, const QString &name)
{
    auto element = elements.value(name);
    if (element.isNull())
        throw std::runtime_error("unknown name");
    return element;
}

void parseProperties(const TokenPointer &token, const QSharedPointer<EDAComponent> &component)
{
    for (const auto &child : std::as_const(token->children)) {
        if (child->find(u"/property"_s).isNull())
            continue;
        const QString name = neededValue(child, u"/property/name"_s);
        const auto value = child->find(u"/property/value"_s);
        component->properties.insert(name, value ? value->value : QString());
    }
}

void parseSheetpath(const TokenPointer &token, const QSharedPointer<EDAComponent> &component)
{
    static const QRegularExpression assignment(u"(?<name>\\w+)=(?<value>[^.]+)"_s);
    const auto names = token->find(u"/comp/sheetpath/names"_s);
    if (names.isNull())
        return;
    const auto sheets = names->value.split(u'/', Qt::SkipEmptyParts);
    for (const QString &sheet : sheets) {
        auto matches = assignment.globalMatch(sheet.section(u'-', 0, -2));
        while (matches.hasNext()) {
            const auto match = matches.next();
            component->properties.insert(match.captured(u"name"_s), match.captured(u"value"_s));
        }
    }
}
}

QSharedPointer<PlainToken> readPlainly(QIODevice &device)
{
    return PlainReader().read(device);
}

PlainNetlist::PlainNetlist(const TokenPointer &root)
{
    parseParts(root);
    parseComponents(root);
    parseNets(root);
}

void PlainNetlist::parseParts(const TokenPointer &root)
{
    const auto list = needed(root, u"/export/libparts"_s);
    for (const auto &token : std::as_const(list->children)) {
        const QString name = neededValue(token, u"/libpart/part"_s);
        const auto lib = token->find(u"/libpart/lib"_s);
        const auto part = EDAPart::create(name, lib ? lib->value : QString());
        parts.insert(name, part);
        const auto pins = needed(token, u"/libpart/pins"_s);
        for (const auto &pin : std::as_const(pins->children)) {
            part->pins.append(EDAPin::create(neededValue(pin, u"/pin/num"_s), needed(pin, u"/pin/name"_s)->value,
                                             needed(pin, u"/pin/type"_s)->value));
        }
    }
}

void PlainNetlist::parseComponents(const TokenPointer &root)
{
    const auto list = needed(root, u"/export/components"_s);
    for (const auto &token : std::as_const(list->children)) {
        const QString ref = neededValue(token, u"/comp/ref"_s);
        const QString value = needed(token, u"/comp/value"_s)->value;
        const auto component = EDAComponent::create(ref, value, neededValue(token, u"/comp/libsource/part"_s));
        parseProperties(token, component);
        parseSheetpath(token, component);
        component->part = known(parts, component->part)->name;
        components.insert(ref, component);
    }
}

void PlainNetlist::parseNets(const TokenPointer &root)
{
    const auto list = needed(root, u"/export/nets"_s);
    for (const auto &token : std::as_const(list->children)) {
        const auto net = EDANet::create(neededValue(token, u"/net/name"_s));
        nets.insert(net->name, net);
        for (const auto &child : std::as_const(token->children)) {
            if (child->find(u"/node"_s))
                parseNode(child, net);
        }
    }
}

void PlainNetlist::parseNode(const TokenPointer &token, const QSharedPointer<EDANet> &net)
{
    const QString ref = neededValue(token, u"/node/ref"_s);
    const QString number = neededValue(token, u"/node/pin"_s);
    const auto component = known(components, ref);
    const auto pin = known(parts, component->part)->getPinByNumber(number);
    if (pin.isNull())
        throw std::runtime_error("unknown pin");
    net->addNode(component->ref, pin->number);
}
}
