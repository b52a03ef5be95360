#ifndef VELK_CLI_INIENTRIES_H
#define VELK_CLI_INIENTRIES_H

#include <QByteArray>

#include <functional>

namespace VelkCli {

struct IniEntry
{
    QByteArray section; ///< with its brackets
    QByteArray comment; ///< the last one before it in the section, without its "; "; may be empty
    QByteArray key;
};

/// Visits the entries of an INI text as Velk writes it, in order.
void forEachIniEntry(const QByteArray &ini, const std::function<void(const IniEntry &)> &visit);
}

#endif
