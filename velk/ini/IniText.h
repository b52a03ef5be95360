#ifndef VELK_INI_INITEXT_H
#define VELK_INI_INITEXT_H

#include <QString>

namespace Velk {

/// Whether no writer would escape anything in it and no reader take anything in it for something else, as is the case
/// for most keys and values. Never for the empty text.
bool isPlainIniText(const QString &text);

/// As IniWriter writes it, which alone knows how it escapes, and which an installed library may replace.
QString writtenIniSection(const QString &name);
QString writtenIniKey(const QString &key);
QString writtenIniValue(const QString &value);
}

#endif
