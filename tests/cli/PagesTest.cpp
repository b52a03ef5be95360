#include "cli/pages/FishCompletion.h"
#include "cli/pages/ManualPage.h"
#include "cli/pages/ZshCompletion.h"
#include "tests/support/TestRegistry.h"
#include "tests/support/TextTable.h"

#include <CLI/CLI.hpp>

#include <QTest>

using namespace Qt::StringLiterals;
using namespace VelkCli;

class PagesTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void descriptionsAreEscaped_data() { addRowsFrom("page_texts.txt", {"description", "manual", "zsh", "fish"}); }
    void descriptionsAreEscaped()
    {
        QFETCH(QString, description);
        const std::string text = description.toStdString();
        CLI::App app("Does.", "velk");
        app.add_subcommand("do", "Do")->add_flag("--flag", text);
        const auto command = describe(app);

        const QString manual = manualPage(command, u"velk 1"_s).section(u"\\-\\-flag\\fR\n"_s, 1);
        QTEST(manual.section(u'\n', 0, 0), "manual");
        const QString zsh = zshCompletion(command).section(u"'--flag["_s, 1);
        QTEST(zsh.section(u"]' \\\n"_s, 0, 0).section(u"]'\n"_s, 0, 0), "zsh");
        const QString fish = fishCompletion(command).section(u"-l flag -d '"_s, 1);
        QTEST(fish.section(u"'\n"_s, 0, 0), "fish");
    }
};

VELK_TEST(PagesTest)

#include "PagesTest.moc"
