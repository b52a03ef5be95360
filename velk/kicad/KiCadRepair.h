#ifndef VELK_KICAD_KICADREPAIR_H
#define VELK_KICAD_KICADREPAIR_H

#include <velk/kicad/KiCadPath.h>

#include <QHash>
#include <QSet>
#include <QString>
#include <QStringList>

#include <memory>
#include <utility>

namespace Velk {

/// Completes a netlist that KiCad has written, as KiCadTokens or KiCadTree, so that KiCadNetParser understands it as
/// KiCad means it.
template <typename Tokens>
class KiCadRepair
{
public:
    explicit KiCadRepair(Tokens &completedTokens);

    /// Changes the tokens themselves. Returns a text for each change: the path of the element, what is wrong with it
    /// and how it is taken. Components or nets that are missing altogether are left to the parser's complaint, and what
    /// is listed more than once to its warning.
    QStringList run();

private:
    using Token = typename Tokens::Token;
    struct Part
    {
        Token token;
        Token name;
        // Found once: there may be much else in a part, and many nets that name it.
        Token pins = {};
        QSet<QString> pinNumbers = {};
        bool isMadeUp = false;
    };
    using PartPointer = std::shared_ptr<Part>;
    using LibraryAndName = std::pair<QString, QString>;

    Token find(const KiCadPath &path, Token token) const { return path.findFrom(tokens, token); }
    QString textOf(const KiCadPath &path, Token token) const { return path.textFrom(tokens, token); }
    QString partPath(Token libpart) const;
    LibraryAndName libraryAndNameOf(Token libpart) const;
    bool haveSamePins(Token part, Token other) const;

    void mergeLists(const QString &name);
    void findOrAddParts();
    void repairParts();
    void addPart(Token libpart);
    void repairPins(Part &part, const QString &path);
    template <typename MessagePath>
    void repairPinNumber(Token pin, Part &part, MessagePath messagePath);
    void tellApart(Token libpart);
    bool isReplacedByTheSame(Token libpart) const;
    void rename(Token libpart, const LibraryAndName &known);

    void repairComponents();
    void resolvePart(Token comp, const QString &ref, const QString &path);
    void setPart(Token comp, const QString &name);
    void warnOfUnlisted(const QString &path, const QString &text);
    PartPointer findPart(const LibraryAndName &wanted, const QString &path);
    PartPointer makeUpPart(const QString &lib, const QString &name);
    void repairProperties(Token comp, const QString &path);
    void addFieldsAsProperties(Token comp);

    void repairNets();
    void repairNodes(Token net);
    bool repairNode(Token node, const QString &netName);
    void addPin(Part &part, const QString &number);
    void nameNet(Token net, const QString &path);

    template <typename Names>
    QString unusedName(const QString &name, const Names &used);
    template <typename MessagePath>
    void complete(Token parent, const KiCadPath &path, const QString &element, MessagePath messagePath);
    void warn(const QString &path, const QString &text);

    Tokens &tokens;
    Token libparts = {};
    bool hasParts = true; ///< listed in the file
    bool isOld = false;   ///< of KiCad 4 or 5, which write fields instead of properties, and "~" for no name
    /// By the names in the file. Of several with one name, the one that the parser keeps.
    QHash<LibraryAndName, PartPointer> partsByLibrary;
    QHash<QString, PartPointer> partsByName;
    QHash<LibraryAndName, PartPointer> aliasesByLibrary;
    QHash<QString, PartPointer> aliases;
    QHash<LibraryAndName, QString> newNames;
    QSet<QString> ambiguousNames; ///< of parts that differ from library to library
    QHash<QString, PartPointer> partsOfComponents;
    QSet<QString> netNames;
    int lastSuffix = 0;
    QStringList warnings;
};
}

#endif
