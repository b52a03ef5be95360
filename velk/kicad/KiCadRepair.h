#ifndef VELK_KICAD_KICADREPAIR_H
#define VELK_KICAD_KICADREPAIR_H

#include <velk/kicad/KiCadPath.h>
#include <velk/kicad/KiCadToken.h>

#include <QHash>
#include <QSet>
#include <QSharedPointer>
#include <QString>
#include <QStringList>

#include <memory>
#include <utility>

namespace Velk {

/// Completes the tree of a netlist that KiCad has written, so that KiCadNetParser understands it as KiCad means it.
class KiCadRepair
{
public:
    explicit KiCadRepair(const QSharedPointer<KiCadToken> &tree);

    /// Changes the tree itself. Returns a text for each change: the path of the element, what is wrong with it and how
    /// it is taken. Components or nets that are missing altogether are left to the parser's complaint, and what is
    /// listed more than once to its warning.
    QStringList run();

private:
    struct Part
    {
        QSharedPointer<KiCadToken> token;
        KiCadToken *name;
        // Found once: there may be much else in a part, and many nets that name it.
        KiCadToken *pins = nullptr;
        QSet<QString> pinNumbers = {};
        bool isMadeUp = false;
    };
    using PartPointer = std::shared_ptr<Part>;
    using LibraryAndName = std::pair<QString, QString>;

    void mergeLists(const QString &name);
    void findOrAddParts();
    void repairParts();
    void addPart(const QSharedPointer<KiCadToken> &libpart);
    void repairPins(Part &part, const QString &path);
    template <typename MessagePath>
    void repairPinNumber(KiCadToken &pin, Part &part, MessagePath messagePath);
    void tellApart(const QSharedPointer<KiCadToken> &libpart);
    bool isReplacedByTheSame(const QSharedPointer<KiCadToken> &libpart) const;
    void rename(KiCadToken &libpart, const LibraryAndName &known);

    void repairComponents();
    void resolvePart(KiCadToken &comp, const QString &ref, const QString &path);
    void warnOfUnlisted(const QString &path, const QString &text);
    PartPointer findPart(const LibraryAndName &wanted, const QString &path);
    PartPointer makeUpPart(const QString &lib, const QString &name);
    void repairProperties(KiCadToken &comp, const QString &path);
    static void addFieldsAsProperties(KiCadToken &comp);

    void repairNets();
    void repairNodes(KiCadToken &net);
    bool repairNode(KiCadToken &node, const QString &netName);
    static void addPin(Part &part, const QString &number);
    void nameNet(KiCadToken &net, const QString &path);

    template <typename Names>
    QString unusedName(const QString &name, const Names &used);
    template <typename MessagePath>
    void complete(KiCadToken &parent, const KiCadPath &path, const QString &element, MessagePath messagePath);
    void warn(const QString &path, const QString &text);

    QSharedPointer<KiCadToken> root;
    KiCadToken *libparts = nullptr;
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
