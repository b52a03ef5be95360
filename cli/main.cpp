#include "cli/CommandError.h"
#include "cli/CommandLine.h"
#include "cli/Message.h"
#include "cli/Trace.h"

#include <exception>

namespace {

int fail(const QString &message)
{
    VelkCli::printMessage(QStringLiteral("velk: ") + message);
    return VelkCli::exitFailure;
}
}

int main(int argc, char **argv)
{
    try {
        VelkCli::setUpLogging();
        return VelkCli::CommandLine().run(argc, argv);
    } catch (const VelkCli::CommandError &error) {
        return fail(error.message);
    } catch (const std::exception &exception) {
        return fail(QString::fromUtf8(exception.what()));
    }
}
