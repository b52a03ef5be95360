#include "cli/terminal/CommandError.h"

#include "cli/terminal/Message.h"

#include <exception>

using namespace Qt::StringLiterals;

namespace VelkCli {

int exitStatusOf(const std::function<int()> &run)
{
    try {
        return run();
    } catch (const CommandError &error) {
        printMessage(u"velk: "_s + error.message);
    } catch (const std::exception &exception) {
        printMessage(u"velk: "_s + QString::fromUtf8(exception.what()));
    }
    return exitFailure;
}
}
