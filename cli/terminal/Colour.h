#ifndef VELK_CLI_TERMINAL_COLOUR_H
#define VELK_CLI_TERMINAL_COLOUR_H

#include <QString>

namespace VelkCli {

/// Colours for text that people read; made without arguments, it leaves texts without.
class Colour
{
public:
    enum class Role
    {
        Heading,
        End, ///< of a route
        Reference,
        SideConnection
    };

    /// For what is written to this file, or to standard output where that is empty: colours on a terminal, unless the
    /// environment variable NO_COLOR has a value.
    static Colour forOutput(const QString &fileName);

    /// The text as printable() makes it, which takes as much room.
    QString paint(Role role, const QString &text) const;

private:
    bool isOn = false;
};
}

#endif
