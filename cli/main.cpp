#include "cli/CommandLine.h"
#include "cli/commands/CommandError.h"
#include "cli/commands/Trace.h"

int main(int argc, char **argv)
{
    return VelkCli::exitStatusOf([&] {
        VelkCli::setUpLogging();
        return VelkCli::CommandLine().run(argc, argv);
    });
}
