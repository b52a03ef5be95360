#ifndef VELK_CLI_FORMATS_PAINTEDNAMES_H
#define VELK_CLI_FORMATS_PAINTEDNAMES_H

#include "cli/terminal/Colour.h"

#include <velk/naming/PinNames.h>
#include <velk/switching/SwitchingModel.h>

#include <QList>
#include <QStringList>

namespace VelkCli {

/// Names in texts for people; lists with commas in between.
class PaintedNames
{
public:
    PaintedNames(const Velk::PinNames &namesOfPins, const Colour &colourOfText);

    QString ref(const QString &text) const;
    QString refs(const QStringList &texts) const;
    QString pin(const Velk::InterfacePin &pin) const;
    QString pins(const QList<Velk::InterfacePin> &pins) const;
    /// The end of a way.
    QString end(const Velk::InterfacePin &pin) const;
    /// A word at which readers should stop.
    QString problem(const QString &text) const;
    QString heading(const QString &text) const;

private:
    QString pinName(const Velk::InterfacePin &pin) const;

    Velk::PinNames pinNames;
    Colour colour;
};
}

#endif
