#include "tests/support/TestRegistry.h"
#include "tests/support/TextTable.h"

#include <velk/kicad/KiCadReader.h>

#include <QScopedArrayPointer>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace Velk;

class KiCadTokenTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void find_data() { addRowsFrom("token_paths.txt", {"path", "expected"}); }
    void find()
    {
        QFETCH(QString, path);
        const auto root = read("(export \"root\" (parts (part (id \"1\") (name \"R\")) (part (id \"2\") (name \"R2\"))"
                               "(part (id \"3\") (name \"C\")) (part (id \"4\") (name \"R\"))) (sheet \"S\"))");
        const auto token = root->find(path);
        QTEST(token ? token->value : QString(), "expected");
    }

    void comparesTrees_data() { addRowsFrom("token_comparisons.txt", {"other", "expected"}); }
    void comparesTrees()
    {
        QFETCH(QString, other);
        const auto tree = read("(a (b \"1\") (c (d \"2\")))");
        QTEST(tree == read(other.toUtf8()) ? u"equal"_s : u"different"_s, "expected");
        QVERIFY(tree != QSharedPointer<KiCadToken>());
        QVERIFY(QSharedPointer<KiCadToken>(new KiCadToken(*tree)) == tree);
    }

    void prints()
    {
        QCOMPARE(text(QSharedPointer<KiCadToken>::create(u"ref"_s, u"R1"_s)), "KiCadToken('ref', 'R1')");
        QCOMPARE(text({}), "KiCadToken(nullptr)");
        QCOMPARE(text(read("(comp (ref \"R1\") (x (y \"%1\")) (z))")),
                 "KiCadToken('comp', '', [KiCadToken('ref', 'R1'), KiCadToken('x', '', [KiCadToken('y', '%1')]), "
                 "KiCadToken('z', '')])");
    }

    // As if each child were printed by itself.
    void printsUpToANull()
    {
        QCOMPARE(text(read(QByteArray("(a (b \"1\0x\" (c)) (d \"2\"))", 25))),
                 "KiCadToken('a', '', [KiCadToken('b', '1, KiCadToken('d', '2')])");
        QCOMPARE(text(read(QByteArray("(a (b\0 (c)) (d \"2\"))", 20))),
                 "KiCadToken('a', '', [KiCadToken('b, KiCadToken('d', '2')])");
    }

    void copiesAndMoves()
    {
        const auto tree = read("(a \"1\" (b) (c))");
        KiCadToken copy;
        copy = *tree;
        QCOMPARE(copy.children.at(1).data(), tree->children.at(1).data());
        KiCadToken moved(std::move(copy));
        QCOMPARE(moved.name + moved.value, u"a1"_s);
        const auto assigned = QSharedPointer<KiCadToken>::create(u"x"_s);
        *assigned = std::move(moved);
        QVERIFY(assigned == tree);
        QCOMPARE(assigned->find(u"/a"_s).data(), assigned.data());
    }

    void appends()
    {
        const auto parent = QSharedPointer<KiCadToken>::create(u"comp"_s);
        const auto child = parent->append(u"ref"_s, u"R1"_s);
        QVERIFY(parent->append(u"value"_s)->value.isNull());
        QCOMPARE(parent->append(child).data(), child.data());
        QCOMPARE(parent->children.size(), 3);
        QCOMPARE(child->find(u"/ref"_s).data(), child.data());
    }

    // Printing, comparing and destroying must not take a stack frame for each level.
    void copesWithAnyDepth()
    {
        constexpr int depth = 300'000;
        const QByteArray input = QByteArray("(a").repeated(depth);
        const auto tree = read(input);
        const QByteArray expected = QByteArray("KiCadToken('a', '', [").repeated(depth - 1) + "KiCadToken('a', '')" +
                                    QByteArray("])").repeated(depth - 1);
        QVERIFY(text(tree) == expected + ""); // without the texts in the failure message
        QVERIFY(tree == read(input + ")"));
        QVERIFY(tree != read(input + "(a)"));
    }

private:
    static QSharedPointer<KiCadToken> read(const QByteArray &input)
    {
        // A name without closing parenthesis only becomes a token at the next parenthesis.
        KiCadReader reader(input + (input.endsWith(')') ? "" : "()"));
        return reader.read() == KiCadNoError ? reader.getRoot() : QSharedPointer<KiCadToken>();
    }

    static QByteArray text(const QSharedPointer<KiCadToken> &token)
    {
        return QScopedArrayPointer<char>(toString(token)).data();
    }
};

VELK_TEST(KiCadTokenTest)

#include "KiCadTokenTest.moc"
