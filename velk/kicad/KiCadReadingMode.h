#ifndef VELK_KICAD_KICADREADINGMODE_H
#define VELK_KICAD_KICADREADINGMODE_H

namespace Velk {

/// How KiCadReader and KiCadNetParser take a netlist. Both must be given the same mode.
enum class KiCadReadingMode
{
    /// Every value is quoted, there is no escape character, and a missing element is an error.
    Default,
    /// Whatever KiCad 4 to 10 write: bare and quoted words, escapes in quotes, incomplete elements, which are
    /// completed with a warning.
    Tolerant,
};
}

#endif
