#include "benchmarks/BareNetlist.h"

#include <stdexcept>

namespace VelkBenchmarks {

using namespace Velk;

TextPlaces::TextPlaces(const QByteArray &scannedText)
    : netlist(scannedText)
{
    for (qsizetype i = 0; i < netlist.size(); ++i) {
        if (netlist.at(i) == '(')
            addTextAt(i + 1, " ()\n");
        else if (netlist.at(i) == '"')
            i = addTextAt(i + 1, "\"");
    }
}

// Returns where the text ends.
qsizetype TextPlaces::addTextAt(qsizetype offset, QByteArrayView ends)
{
    qsizetype end = offset;
    while (!ends.contains(netlist.at(end)))
        ++end;
    const QString text = QString::fromUtf8(netlist.constData() + offset, end - offset);
    if (!places.contains(text))
        places.insert(text, {offset, end - offset});
    return end;
}

TextPlace TextPlaces::of(const QString &text)
{
    const auto known = places.constFind(text);
    return known != places.cend() ? *known : *places.insert(text, find(text));
}

TextPlace TextPlaces::find(const QString &text) const
{
    const QByteArray bytes = text.toUtf8();
    const qsizetype offset = netlist.indexOf(bytes);
    if (offset < 0)
        throw std::logic_error("a text is not in the netlist");
    return {offset, bytes.size()};
}

std::vector<QString> TextTable::texts() const
{
    std::vector<QString> made;
    made.reserve(places.size());
    for (const auto &[offset, length] : places)
        made.push_back(QString::fromUtf8(netlist.constData() + offset, length));
    return made;
}

namespace {

/// Numbers texts as they come up.
class TextNumbers
{
public:
    TextNumbers(TextPlaces &textPlaces, TextTable &filledTable)
        : places(textPlaces)
        , table(filledTable)
    {
        table.netlist = places.netlist;
    }

    /// The same for equal texts, which are made once.
    int of(const QString &text)
    {
        const auto known = numbers.constFind(text);
        return known != numbers.cend() ? *known : *numbers.insert(text, ofOwn(text));
    }

    /// Of a text that is made for its element alone.
    int ofOwn(const QString &text)
    {
        if (text.isEmpty())
            return TextTable::noText;
        table.places.push_back(places.of(text));
        return static_cast<int>(table.places.size()) - 1;
    }

private:
    TextPlaces &places;
    TextTable &table;
    QHash<QString, int> numbers;
};

QString textAt(const std::vector<QString> &texts, int number)
{
    return number == TextTable::noText ? QString() : texts[static_cast<std::size_t>(number)];
}
}

BareTree::BareTree(TextPlaces &places, const QSharedPointer<KiCadToken> &root)
{
    TextNumbers numbers(places, table);
    const auto add = [&](const KiCadToken &token, const auto &addChild) -> void {
        tokens.push_back({numbers.of(token.name), numbers.of(token.value), token.children.size()});
        for (const auto &child : token.children)
            addChild(*child, addChild);
    };
    add(*root, add);
}

QSharedPointer<KiCadToken> BareTree::make() const
{
    const auto texts = table.texts();
    auto next = tokens.cbegin();
    const auto makeToken = [&](const auto &makeChild) -> QSharedPointer<KiCadToken> {
        const Token &token = *next++;
        auto made = QSharedPointer<KiCadToken>::create(textAt(texts, token.name), textAt(texts, token.value));
        made->children.reserve(token.childCount);
        for (qsizetype i = 0; i < token.childCount; ++i)
            made->children.append(makeChild(makeChild));
        return made;
    };
    return makeToken(makeToken);
}

BareModel::BareModel(TextPlaces &places, const EDAProvider &netlist)
{
    TextNumbers numbers(places, table);
    const auto allParts = netlist.getParts();
    for (const auto &part : allParts) {
        parts.push_back({{numbers.of(part->name), numbers.of(part->lib)}, {}});
        for (const auto &pin : std::as_const(part->pins)) {
            for (const int text : {numbers.of(pin->number), numbers.ofOwn(pin->name), numbers.of(pin->type)})
                parts.back().listed.push_back(text);
        }
    }
    const auto allComponents = netlist.getComponents();
    for (const auto &component : allComponents) {
        components.push_back(
            {{numbers.of(component->ref), numbers.ofOwn(component->value), numbers.of(component->part)}, {}});
        for (auto it = component->properties.cbegin(); it != component->properties.cend(); ++it) {
            for (const int text : {numbers.of(it.key()), numbers.ofOwn(it.value())})
                components.back().listed.push_back(text);
        }
    }
    const auto allNets = netlist.getNets();
    for (const auto &net : allNets) {
        nets.push_back({{numbers.ofOwn(net->name)}, {}});
        for (const auto &node : std::as_const(net->nodes)) {
            for (const int text : {numbers.of(node->ref), numbers.of(node->pin)})
                nets.back().listed.push_back(text);
        }
    }
}

ModelElements BareModel::make() const
{
    const auto texts = table.texts();
    const auto text = [&](int number) { return textAt(texts, number); };
    ModelElements elements;
    elements.parts.reserve(static_cast<qsizetype>(parts.size()));
    for (const auto &[own, listed] : parts) {
        auto part = EDAPart::create(text(own[0]), text(own[1]));
        part->pins.reserve(static_cast<qsizetype>(listed.size() / 3));
        for (std::size_t i = 0; i < listed.size(); i += 3)
            part->pins.append(EDAPin::create(text(listed[i]), text(listed[i + 1]), text(listed[i + 2])));
        elements.parts.append(std::move(part));
    }
    elements.components.reserve(static_cast<qsizetype>(components.size()));
    for (const auto &[own, listed] : components) {
        auto component = EDAComponent::create(text(own[0]), text(own[1]), text(own[2]));
        auto &properties = component->properties;
        for (std::size_t i = 0; i < listed.size(); i += 2)
            properties.insert(properties.cend(), text(listed[i]), text(listed[i + 1]));
        elements.components.append(std::move(component));
    }
    elements.nets.reserve(static_cast<qsizetype>(nets.size()));
    for (const auto &[own, listed] : nets) {
        auto net = EDANet::create(text(own[0]));
        net->nodes.reserve(static_cast<qsizetype>(listed.size() / 2));
        for (std::size_t i = 0; i < listed.size(); i += 2)
            net->nodes.append(EDANetNode::create(text(listed[i]), text(listed[i + 1])));
        elements.nets.append(std::move(net));
    }
    return elements;
}
}
