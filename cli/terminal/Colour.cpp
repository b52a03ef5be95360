#include "cli/terminal/Colour.h"

#include "cli/terminal/Terminal.h"

using namespace Qt::StringLiterals;

namespace VelkCli {

namespace {

QString codeOf(Colour::Role role)
{
    switch (role) {
    case Colour::Role::Heading:
        return u"1"_s; // bold
    case Colour::Role::End:
        return u"1;32"_s; // bold green
    case Colour::Role::Reference:
        return u"36"_s; // cyan
    case Colour::Role::SideConnection:
        return u"33"_s; // yellow
    }
    return {};
}
}

Colour Colour::forOutput(const QString &fileName)
{
    Colour colour;
    colour.isOn = fileName.isEmpty() && takesControlSequences(stdout) && qgetenv("NO_COLOR").isEmpty();
    return colour;
}

QString Colour::paint(Role role, const QString &text) const
{
    if (!isOn || text.isEmpty())
        return printable(text);
    return u"\x1b[%1m%2\x1b[0m"_s.arg(codeOf(role), printable(text));
}
}
