#include <velk/ini/IniText.h>

#include <velkini/IniWriter.h>

#include <QBuffer>
#include <QStringDecoder>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace Velk {

namespace {

/// The only line that \a write gives to the writer.
template <typename Write>
QString writtenLine(Write write)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    IniWriter writer(&buffer);
    writer.open();
    write(writer);
    QStringDecoder decode(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom);
    const QString line = decode(buffer.data());
    return line.chopped(1);
}
}

bool isPlainIniText(const QString &text)
{
    static const QString special = u"\",/:;@\\%=[]#"_s;
    return !text.isEmpty() && std::all_of(text.cbegin(), text.cend(),
                                          [](QChar c) { return c > u' ' && c < u'\x7f' && !special.contains(c); });
}

QString writtenIniSection(const QString &name)
{
    const QString line = writtenLine([&](IniWriter &writer) { writer.writeSection(name, {}); });
    return line.sliced(1).chopped(1);
}

QString writtenIniKey(const QString &key)
{
    if (isPlainIniText(key))
        return key;
    return writtenLine([&](IniWriter &writer) { writer.writeProperty(key, {}, {}); }).chopped(1);
}

QString writtenIniValue(const QString &value)
{
    return writtenLine([&](IniWriter &writer) { writer.writeProperty({}, value, {}); }).sliced(1);
}
}
