#ifndef VELK_KICAD_KICADREPAIR_H
#define VELK_KICAD_KICADREPAIR_H

#include <velk/kicad/KiCadPath.h>
#include <velk/kicad/KiCadToken.h>

#include <QHash>
#include <QSet>
#include <QSharedPointer>
#include <QString>
#include <QStringList>

#include <utility>
#include <vector>

namespace Velk {

/// Completes the tree of a netlist that KiCad has written, so that KiCadNetParser understands it as KiCad means it.
class KiCadRepair
{
public:
    explicit KiCadRepair(const QSharedPointer<KiCadToken> &tree);

    /// Changes the tree itself. Returns a text for each change: the path of the element, what is wrong with it and how
    /// it is taken. Lists that are missing altogether are left to the parser's complaint.
    QStringList run();

private:
    using LibraryAndName = std::pair<QString, QString>;

    struct Part
    {
        QSharedPointer<KiCadToken> token;
        QString lib;
        QString name; ///< in the file
        QSet<QString> pinNumbers;
        bool isMadeUp = false;
    };

    static constexpr int none = -1;

    void repairParts();
    void addPart(const QSharedPointer<KiCadToken> &libpart);
    void repairPins(Part &part);
    void tellPartsApart();
    void rename(int number);

    void repairComponents();
    void resolvePart(KiCadToken &comp, const QString &ref, const QString &path);
    int partOf(const LibraryAndName &wanted) const;
    int makeUpPart(const LibraryAndName &wanted);
    void repairProperties(KiCadToken &comp, const QString &path);

    void repairNets();
    void repairNodes(KiCadToken &net);
    bool repairNode(KiCadToken &node, const QString &path);
    static void addPin(Part &part, const QString &number);
    void nameNet(KiCadToken &net, const QString &path);

    template <typename Names>
    QString unusedName(const QString &name, const Names &used);
    void complete(KiCadToken &parent, const KiCadPath &path, const QString &element, const QString &messagePath);
    void warn(const QString &path, const QString &text);

    QSharedPointer<KiCadToken> root;
    KiCadToken *libparts = nullptr;
    std::vector<Part> parts;
    QHash<LibraryAndName, int> partsByLibrary;
    QHash<QString, int> partsByName; ///< the last one of each name
    QHash<LibraryAndName, int> aliasesByLibrary;
    QHash<QString, int> aliases;
    QHash<QString, int> partsOfComponents;
    QSet<QString> netNames;
    int lastSuffix = 0;
    bool hasFieldsOnly = false; ///< as KiCad 4 and 5 write them, instead of properties
    QStringList warnings;
};
}

#endif
