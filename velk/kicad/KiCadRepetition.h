#ifndef VELK_KICAD_KICADREPETITION_H
#define VELK_KICAD_KICADREPETITION_H

#include <QString>

namespace Velk {

/// Elements of a netlist that have the same name, so that the model does not hold each of them as it stands.
struct KiCadRepetition
{
    /// What they are, and which of them holds.
    enum class Kind
    {
        List,      ///< libparts, components or nets as a whole; by default the first one holds
        Part,      ///< with other pins each time; the last one holds
        Component, ///< by default the last one holds
        Net,       ///< likewise
    };

    Kind kind;     ///< of all of them
    QString name;  ///< of the list, the part or the net, or the reference
    int count;     ///< how often it is listed, 2 or more
    bool isMerged; ///< whether tolerant reading has made one of them, so that none is lost
};
}

#endif
