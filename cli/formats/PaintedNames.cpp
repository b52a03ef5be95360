#include "cli/formats/PaintedNames.h"

using namespace Qt::StringLiterals;
using namespace Velk;

namespace VelkCli {

PaintedNames::PaintedNames(const PinNames &namesOfPins, const Colour &colourOfText)
    : pinNames(namesOfPins)
    , colour(colourOfText)
{
}

QString PaintedNames::ref(const QString &text) const
{
    return colour.paint(Colour::Role::Reference, text);
}

QString PaintedNames::refs(const QStringList &texts) const
{
    QStringList painted;
    for (const QString &text : texts)
        painted.append(ref(text));
    return painted.join(u", "_s);
}

QString PaintedNames::pin(const InterfacePin &pin) const
{
    return ref(pinName(pin));
}

QString PaintedNames::pins(const QList<InterfacePin> &pins) const
{
    QStringList texts;
    for (const InterfacePin &each : pins)
        texts.append(pin(each));
    return texts.join(u", "_s);
}

QString PaintedNames::end(const InterfacePin &pin) const
{
    return colour.paint(Colour::Role::End, pinName(pin));
}

QString PaintedNames::problem(const QString &text) const
{
    return colour.paint(Colour::Role::SideConnection, text);
}

QString PaintedNames::heading(const QString &text) const
{
    return colour.paint(Colour::Role::Heading, text);
}

QString PaintedNames::pinName(const InterfacePin &pin) const
{
    return pinNames.text(pin.ref, pin.number);
}
}
