#include "cli/CommandLine.h"
#include "cli/commands/Trace.h"
#include "cli/terminal/CommandError.h"

int main(int argc, char **argv)
{
    return VelkCli::exitStatusOf([&] {
        VelkCli::setUpLogging();
        return VelkCli::CommandLine().run(argc, argv);
    });
}
