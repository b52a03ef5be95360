#include "benchmarks/NetlistText.h"

namespace VelkBenchmarks {

using namespace Qt::StringLiterals;
using namespace Velk;

namespace {

class NetlistWriter
{
public:
    explicit NetlistWriter(const Board &writtenBoard)
        : board(writtenBoard)
    {
    }

    QByteArray write()
    {
        text = "(export (version \"E\")\n";
        writeDesign();
        writeComponents();
        writeParts();
        text += "  (libraries)\n";
        writeNets();
        text += ")\n";
        return text;
    }

private:
    /// (name "value")
    void atom(const char *name, const QString &value)
    {
        text += '(';
        text += name;
        text += " \"";
        text += value.toUtf8();
        text += "\")";
    }

    void writeDesign()
    {
        text += "  (design\n    ";
        atom("source", board.title + u".kicad_sch"_s);
        text += "\n    (date \"2026-01-05T08:00:00+0000\")\n    (tool \"Eeschema 9.0.2\")\n"
                "    (sheet (number \"1\") (name \"/\") (tstamps \"/\")\n      (title_block\n        ";
        atom("title", board.title);
        text += "\n        (company)\n        (rev \"A\")\n        (date \"2026-01-05\")))";
        text += ")\n";
    }

    void writeComponents()
    {
        text += "  (components";
        for (const auto &component : std::as_const(board.components))
            writeComponent(*component);
        text += ")\n";
    }

    void writeComponent(const EDAComponent &component)
    {
        const QString description = component.type() + u" of the test system, contact pins only"_s;
        text += "\n    (comp ";
        atom("ref", component.ref);
        text += "\n      ";
        atom("value", component.value);
        text += "\n      ";
        atom("description", description);
        text += "\n      (fields";
        for (auto it = component.properties.cbegin(); it != component.properties.cend(); ++it) {
            if (isField(it.key()) && !it.key().startsWith(u"ki_") && !it.key().startsWith(u"Sheet"))
                text += "\n        (field (name \"" + it.key().toUtf8() + "\") \"" + it.value().toUtf8() + "\")";
        }
        text += "\n        (field (name \"Footprint\"))\n        (field (name \"Datasheet\"))\n"
                "        (field (name \"Description\") \"" +
                description.toUtf8() + "\"))\n      (libsource (lib \"TestSystem\") ";
        atom("part", component.part);
        text += ' ';
        atom("description", description);
        text += ')';
        for (auto it = component.properties.cbegin(); it != component.properties.cend(); ++it) {
            if (isField(it.key()))
                text +=
                    "\n      (property (name \"" + it.key().toUtf8() + "\") (value \"" + it.value().toUtf8() + "\"))";
        }
        writeSheetpath(component.property(u"Sheetname"_s));
        text += "\n      ";
        atom("tstamps", newStamp());
        text += ')';
    }

    // The reader has these from the name of the sheet.
    static bool isField(const QString &key) { return key != EDAComponent::SLOT && key != EDAComponent::MODULE; }

    void writeSheetpath(const QString &sheetName)
    {
        text += "\n      (sheetpath ";
        if (sheetName.isEmpty()) {
            text += "(names \"/\") (tstamps \"/\"))";
            return;
        }
        atom("names", u'/' + sheetName + u'/');
        text += ' ';
        atom("tstamps", u'/' + newStamp() + u'/');
        text += ')';
    }

    void writeParts()
    {
        text += "  (libparts";
        for (const auto &part : std::as_const(board.parts)) {
            text += "\n    (libpart ";
            atom("lib", part->lib);
            text += ' ';
            atom("part", part->name);
            text += "\n      (docs \"~\")\n      (fields\n        (field (name \"Reference\") \"K\"))\n      (pins";
            for (const auto &pin : std::as_const(part->pins)) {
                text += "\n        (pin ";
                atom("num", pin->number);
                text += ' ';
                atom("name", pin->name);
                text += ' ';
                atom("type", pin->type);
                text += ')';
            }
            text += "))";
        }
        text += ")\n";
    }

    void writeNets()
    {
        text += "  (nets";
        int code = 0;
        for (const auto &net : std::as_const(board.nets)) {
            text += "\n    (net ";
            atom("code", QString::number(++code));
            text += ' ';
            atom("name", net->name);
            text += " (class \"Default\")";
            for (const auto &node : std::as_const(net->nodes))
                writeNode(*node);
            text += ')';
        }
        text += ')';
    }

    void writeNode(const EDANetNode &node)
    {
        const auto part = board.getPartByName(board.getComponentByRef(node.ref)->part);
        const auto pin = part->getPinByNumber(node.pin);
        text += "\n      (node ";
        atom("ref", node.ref);
        text += ' ';
        atom("pin", node.pin);
        text += ' ';
        if (!pin->name.isEmpty()) {
            atom("pinfunction", pin->name);
            text += ' ';
        }
        atom("pintype", pin->type);
        text += ')';
    }

    /// Looks like a UUID and differs from all others.
    QString newStamp()
    {
        // Steps of splitmix64.
        state += 0x9e3779b97f4a7c15U;
        quint64 high = state;
        high = (high ^ (high >> 30U)) * 0xbf58476d1ce4e5b9U;
        high = (high ^ (high >> 27U)) * 0x94d049bb133111ebU;
        const QString digits =
            QString::number(high, 16).rightJustified(16, u'0') + QString::number(state, 16).rightJustified(16, u'0');
        return digits.first(8) + u'-' + digits.mid(8, 4) + u'-' + digits.mid(12, 4) + u'-' + digits.mid(16, 4) + u'-' +
               digits.last(12);
    }

    const Board &board;
    QByteArray text;
    quint64 state = 1;
};
}

QByteArray netlistText(const Board &board)
{
    return NetlistWriter(board).write();
}
}
