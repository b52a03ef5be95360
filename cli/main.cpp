#include "cli/CommandError.h"
#include "cli/CommandLine.h"
#include "cli/Trace.h"

int main(int argc, char **argv)
{
    return VelkCli::exitStatusOf([&] {
        VelkCli::setUpLogging();
        return VelkCli::CommandLine().run(argc, argv);
    });
}
