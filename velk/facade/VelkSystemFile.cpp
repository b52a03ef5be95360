#include <velk/facade/VelkSystemFile.h>

#include <velk/check/Finding.h>
#include <velk/facade/StandardTypes.h>
#include <velk/naming/Suggestions.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>

#define TOML_EXCEPTIONS 0
#define TOML_ENABLE_FORMATTERS 0
#define TOML_MAX_NESTED_VALUES 4 // each may hold as many tables as a line has dots: see refuseDeepKeys()
#include <toml++/toml.h>

#include <algorithm>
#include <limits>
#include <variant>

using namespace Qt::StringLiterals;

namespace Velk {

namespace {

using Texts = std::vector<std::string>;

/// Names of files, in the system file relative to its folder.
struct Names
{
    Texts *names;
    bool areRequired;
};

/// As VelkSystem::check() takes them.
struct Findings
{
    Texts *texts;
};

/// A whole number.
template <typename Number>
struct Limit
{
    Number *number;
    int least;
    int greatest;
};

/// A key of the system file, and where what stands behind it goes.
struct Entry
{
    QString key;
    const char *purpose;
    std::variant<Names, Findings, Texts *, VelkReadingMode *, Limit<int>, Limit<std::size_t>> value;
};

/// In the order in which they are written. The file has to stay.
std::vector<Entry> entriesOf(VelkSystemFile &file)
{
    constexpr int least = std::numeric_limits<int>::min();
    constexpr int greatest = std::numeric_limits<int>::max();
    VelkSystemOptions &options = file.options;
    VelkSearchOptions &limits = file.limits;
    return {
        {u"netlists"_s, "The netlists, one for each board, in the order of their numbers #1, #2, ...",
         Names{&file.fileNames, true}},
        {u"tolerant"_s, "Read whatever KiCad 4 to 10 write.", &options.readingMode},
        {u"connector"_s, "Types (CompType) at which boards are joined.", &options.connectorTypes},
        {u"switchable"_s, "Types that a route may pass through.", &options.switchableTypes},
        {u"passive"_s, "Types that always couple all their pins, as fuses do; other switchable ones are relays.",
         &options.passiveTypes},
        {u"interface"_s, "Types whose pins a route lists as side connections.", &options.interfaceTypes},
        {u"dut-type"_s, "Types that are DUTs in the application INI file.", &options.dutTypes},
        {u"device-type"_s, "Types that are devices in the physical INI file.", &options.deviceTypes},
        {u"relays"_s, "CSV files with the columns part and positions: what relays can do, by their parts.",
         Names{&options.relayTables, false}},
        {u"max-switches"_s, "A route goes on from a net that was reached over at most so many switches.",
         Limit<int>{&limits.maxSwitches, least, greatest}},
        {u"max-connections"_s, "Routes with more side connections are left out.",
         Limit<int>{&limits.maxConnections, least, greatest}},
        {u"max-routes"_s, "The first so many routes only; 0 is all.",
         Limit<std::size_t>{&limits.maxRoutes, 0, greatest - 1}},
        {u"without"_s, "Components that no route may cross: REF, or KEY=VALUE for all with this property.",
         &file.excludedComponents},
        {u"without-net"_s, "Nets that no route may enter.", &file.excludedNets},
        {u"ignore"_s, "Findings of velk check that are accepted: CODE or CODE:NAME.", Findings{&file.ignoredFindings}},
    };
}

QString typeOf(const toml::node &node)
{
    switch (node.type()) {
    case toml::node_type::table:
        return u"a table"_s;
    case toml::node_type::array:
        return u"a list"_s;
    case toml::node_type::string:
        return u"a text"_s;
    case toml::node_type::integer:
        return u"a whole number"_s;
    case toml::node_type::floating_point:
        return u"a number with a fraction"_s;
    case toml::node_type::boolean:
        return u"true or false"_s;
    default:
        return u"a date or time"_s;
    }
}

/// Reads one system file.
class SystemFileReader
{
public:
    explicit SystemFileReader(const QString &systemFileName)
        : fileName(systemFileName)
        , folder(QFileInfo(systemFileName).path())
    {
    }

    VelkSystemFile read() const;

private:
    std::string content() const;
    void refuseDeepKeys(std::string_view text) const;
    toml::table parsed(const std::string &text) const;
    std::string openable(const QString &name) const;

    template <typename Value>
    Value valueOf(const toml::node &node, const QString &key, const QString &expected) const;
    Texts textsOf(const toml::node &node, const QString &key) const;

    void take(const toml::node &node, const QString &key, const Names &value) const;
    void take(const toml::node &node, const QString &key, const Findings &value) const;
    void take(const toml::node &node, const QString &key, Texts *value) const;
    void take(const toml::node &node, const QString &key, VelkReadingMode *value) const;
    template <typename Number>
    void take(const toml::node &node, const QString &key, const Limit<Number> &value) const;

    [[noreturn]] void refuse(const QString &reason) const;
    [[noreturn]] void refuse(const toml::source_position &place, const QString &reason) const;
    [[noreturn]] void refuseKey(const toml::key &key, const std::vector<Entry> &entries) const;

    QString fileName;
    QString folder;
};

void SystemFileReader::refuse(const QString &reason) const
{
    throw VelkSystemException(VelkSystemException::Kind::Reading, u"%1: %2"_s.arg(fileName, reason).toStdString());
}

void SystemFileReader::refuse(const toml::source_position &place, const QString &reason) const
{
    throw VelkSystemException(
        VelkSystemException::Kind::Reading,
        u"%1:%2:%3: %4"_s.arg(fileName, QString::number(place.line), QString::number(place.column), reason)
            .toStdString());
}

std::string SystemFileReader::content() const
{
    constexpr qint64 most = 16 << 20; // a device may have no end
    QFile file(fileName);
    const QByteArray bytes = file.open(QIODevice::ReadOnly) ? file.read(most + 1) : QByteArray();
    if (file.error() != QFileDevice::NoError)
        refuse(u"cannot be read: %1"_s.arg(file.errorString()));
    if (bytes.size() > most)
        refuse(u"has more than 16 MiB, so that it can be no system file"_s);
    return bytes.toStdString();
}

// A table within a table for each dot: toml++ lets go of them level by level, on the stack.
void SystemFileReader::refuseDeepKeys(std::string_view text) const
{
    constexpr int most = 1000;
    toml::source_position place{1, 1};
    int dots = 0;
    for (const char character : text) {
        if (character == '\n') {
            ++place.line;
            dots = 0;
        } else if (character == '.' && ++dots > most) {
            refuse(place, u"more than 1000 dots in a line; give each text a line of its own"_s);
        }
    }
}

toml::table SystemFileReader::parsed(const std::string &text) const
{
    refuseDeepKeys(text);
    toml::parse_result result = toml::parse(text);
    if (!result)
        refuse(result.error().source().begin, QString::fromUtf8(result.error().description()));
    return std::move(result).table();
}

// "-" alone would be standard input to the command.
std::string SystemFileReader::openable(const QString &name) const
{
    const bool isHere = folder == u"."_s && name != u"-"_s;
    return (isHere ? name : QDir(folder).filePath(name)).toStdString();
}

template <typename Value>
Value SystemFileReader::valueOf(const toml::node &node, const QString &key, const QString &expected) const
{
    const auto *value = node.as<Value>();
    if (!value)
        refuse(node.source().begin, u"%1: expected %2, not %3"_s.arg(key, expected, typeOf(node)));
    return value->get();
}

Texts SystemFileReader::textsOf(const toml::node &node, const QString &key) const
{
    const auto *list = node.as_array();
    if (!list)
        refuse(node.source().begin, u"%1: expected a list of texts, not %2"_s.arg(key, typeOf(node)));
    Texts texts;
    for (const toml::node &element : *list)
        texts.push_back(valueOf<std::string>(element, key, u"a text"_s));
    return texts;
}

void SystemFileReader::take(const toml::node &node, const QString &key, const Names &value) const
{
    const Texts names = textsOf(node, key);
    if (value.areRequired && names.empty())
        refuse(node.source().begin, u"%1: expected the name of a file at least"_s.arg(key));
    value.names->clear();
    for (const std::string &name : names) {
        if (name.empty() || name.find('\0') != std::string::npos)
            refuse(node.as_array()->get(value.names->size())->source().begin,
                   u"%1: expected the name of a file, which is not empty and holds no U+0000"_s.arg(key));
        value.names->push_back(openable(QString::fromStdString(name)));
    }
}

void SystemFileReader::take(const toml::node &node, const QString &key, const Findings &value) const
{
    *value.texts = textsOf(node, key);
    for (std::size_t i = 0; i < value.texts->size(); ++i) {
        const QString code = QString::fromStdString((*value.texts)[i]).section(u':', 0, 0);
        if (!Finding::names().contains(code))
            refuse(
                node.as_array()->get(i)->source().begin,
                u"%1: no code '%2'; there are %3"_s.arg(key, code, enumeration(nearestFirst(code, Finding::names()))));
    }
}

void SystemFileReader::take(const toml::node &node, const QString &key, Texts *value) const
{
    *value = textsOf(node, key);
}

void SystemFileReader::take(const toml::node &node, const QString &key, VelkReadingMode *value) const
{
    *value = valueOf<bool>(node, key, u"true or false"_s) ? VelkReadingMode::Tolerant : VelkReadingMode::Default;
}

template <typename Number>
void SystemFileReader::take(const toml::node &node, const QString &key, const Limit<Number> &value) const
{
    const auto number = valueOf<std::int64_t>(node, key, u"a whole number"_s);
    if (number < value.least || number > value.greatest)
        refuse(node.source().begin, u"%1: %2 is no whole number from %3 to %4"_s.arg(key, QString::number(number),
                                                                                     QString::number(value.least),
                                                                                     QString::number(value.greatest)));
    *value.number = static_cast<Number>(number);
}

void SystemFileReader::refuseKey(const toml::key &key, const std::vector<Entry> &entries) const
{
    const QString written = QString::fromUtf8(key.str());
    QStringList keys;
    for (const Entry &entry : entries)
        keys.append(entry.key);
    refuse(key.source().begin, u"no key '%1'; there are %2"_s.arg(written, enumeration(nearestFirst(written, keys))));
}

VelkSystemFile SystemFileReader::read() const
{
    const toml::table table = parsed(content());
    std::vector<std::pair<const toml::key *, const toml::node *>> lines;
    for (auto &&[key, node] : table)
        lines.emplace_back(&key, &node);
    const auto place = [](const auto &line) { return line.first->source().begin; };
    std::sort(lines.begin(), lines.end(), [&](const auto &a, const auto &b) { return place(a) < place(b); });

    VelkSystemFile file;
    const auto entries = entriesOf(file);
    for (const auto &[key, node] : lines) {
        const QString name = QString::fromUtf8(key->str());
        const auto entry =
            std::find_if(entries.begin(), entries.end(), [&](const Entry &each) { return each.key == name; });
        if (entry == entries.end())
            refuseKey(*key, entries);
        const toml::node &value = *node;
        std::visit([&](const auto &target) { take(value, name, target); }, entry->value);
    }
    if (file.fileNames.empty())
        refuse({1, 1}, u"there is no key 'netlists', which names the netlists of the system"_s);
    return file;
}

QString quoted(const QString &text)
{
    QString result;
    for (const QChar character : text) {
        if (character < u' ' || character == u'\x7f')
            result += u"\\u%1"_s.arg(uint(character.unicode()), 4, 16, QLatin1Char('0'));
        else if (character == u'"' || character == u'\\')
            result += u'\\' + character;
        else
            result += character;
    }
    return u'"' + result + u'"';
}

/// By the folders that the two really are in: "link/.." is the parent of what the link points to.
QString relativeName(const std::string &fileName, const QString &folder)
{
    const QFileInfo file(QString::fromStdString(fileName));
    const QString base = QDir(folder).canonicalPath();
    const QString place = file.dir().canonicalPath();
    if (base.isEmpty() || place.isEmpty())
        return file.absoluteFilePath();
    return QDir(base).relativeFilePath(QDir(place).filePath(file.fileName()));
}

/// Writes values as a system file of the folder has them.
struct SystemFileWriter
{
    QString folder;

    QString text(const QStringList &texts) const
    {
        QStringList words;
        for (const QString &each : texts)
            words.append(quoted(each));
        return u'[' + words.join(u", "_s) + u']';
    }
    QString text(const Names &value) const
    {
        QStringList words;
        for (const std::string &name : *value.names)
            words.append(quoted(relativeName(name, folder)));
        return words.size() > 1 ? u"[\n    %1,\n]"_s.arg(words.join(u",\n    "_s))
                                : u'[' + words.join(QString()) + u']';
    }
    QString text(const Findings &value) const { return text(value.texts); }
    QString text(const Texts *value) const { return text(toQt(*value)); }
    QString text(const VelkReadingMode *value) const
    {
        return *value == VelkReadingMode::Tolerant ? u"true"_s : u"false"_s;
    }
    template <typename Number>
    QString text(const Limit<Number> &value) const
    {
        return QString::number(*value.number);
    }
    QString textOf(const Entry &entry) const
    {
        return entry.key + u" = "_s + std::visit([this](const auto &value) { return text(value); }, entry.value);
    }
};
}

VelkSystemFile VelkSystemFile::read(const std::string &fileName)
{
    return SystemFileReader(QString::fromStdString(fileName)).read();
}

std::string VelkSystemFile::toToml(const std::string &folder) const
{
    VelkSystemFile written = *this;
    VelkSystemFile byDefault;
    const SystemFileWriter writer{QString::fromStdString(folder)};
    const auto entries = entriesOf(written);
    const auto defaults = entriesOf(byDefault);
    QStringList paragraphs;
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const QString line = writer.textOf(entries[i]);
        const QString comment = line == writer.textOf(defaults[i]) ? u"# "_s : QString();
        paragraphs.append(u"# %1\n%2%3\n"_s.arg(QString::fromUtf8(entries[i].purpose), comment, line));
    }
    return paragraphs.join(u'\n').toStdString();
}
}
