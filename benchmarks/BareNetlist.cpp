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

TextTable::TextTable(TextPlaces &textPlaces)
    : places(textPlaces)
{
}

int TextTable::numberOf(const QString &text)
{
    if (text.isEmpty())
        return noText;
    const auto known = numbers.constFind(text);
    if (known != numbers.cend())
        return *known;
    placesByNumber.push_back(places.of(text));
    return *numbers.insert(text, static_cast<int>(placesByNumber.size()) - 1);
}

std::vector<QString> TextTable::texts() const
{
    std::vector<QString> made;
    made.reserve(placesByNumber.size());
    for (const auto &[offset, length] : placesByNumber)
        made.push_back(QString::fromUtf8(places.netlist.constData() + offset, length));
    return made;
}

namespace {

QString textAt(const std::vector<QString> &texts, int number)
{
    return number == TextTable::noText ? QString() : texts[static_cast<std::size_t>(number)];
}
}

BareTree::BareTree(TextPlaces &places, const QSharedPointer<KiCadToken> &root)
    : table(places)
{
    number(*root);
}

void BareTree::number(const KiCadToken &token)
{
    tokens.push_back({table.numberOf(token.name), table.numberOf(token.value), token.children.size()});
    for (const auto &child : token.children)
        number(*child);
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
    : table(places)
{
    const auto numbers = [this](std::initializer_list<QString> texts) {
        std::vector<int> result;
        for (const QString &text : texts)
            result.push_back(table.numberOf(text));
        return result;
    };
    const auto add = [&](Texts &texts, std::initializer_list<QString> listed) {
        for (const QString &text : listed)
            texts.listed.push_back(table.numberOf(text));
    };
    const auto allParts = netlist.getParts();
    for (const auto &part : allParts) {
        parts.push_back({numbers({part->name, part->lib}), {}});
        for (const auto &pin : std::as_const(part->pins))
            add(parts.back(), {pin->number, pin->name, pin->type});
    }
    const auto allComponents = netlist.getComponents();
    for (const auto &component : allComponents) {
        components.push_back({numbers({component->ref, component->value, component->part}), {}});
        for (auto it = component->properties.cbegin(); it != component->properties.cend(); ++it)
            add(components.back(), {it.key(), it.value()});
    }
    const auto allNets = netlist.getNets();
    for (const auto &net : allNets) {
        nets.push_back({numbers({net->name}), {}});
        for (const auto &node : std::as_const(net->nodes))
            add(nets.back(), {node->ref, node->pin});
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
