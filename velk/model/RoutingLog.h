#ifndef VELK_MODEL_ROUTINGLOG_H
#define VELK_MODEL_ROUTINGLOG_H

#include <QString>

namespace Velk {

// The logging category "routing", which carries every diagnostic of the library, all at debug level. It is enabled
// unless Qt's logging rules say otherwise.

/// Whether what this thread does now is logged.
bool isRoutingLogged();

/// Switches the category on or off, until Qt's logging rules change.
void setRoutingLogEnabled(bool enabled);

void writeRoutingLog(const QString &line);

/// Logs what the function \a line makes, if anything is logged.
template <typename Line>
void logRouting(Line line)
{
    if (isRoutingLogged())
        writeRoutingLog(line());
}

/// Nothing is logged of what its thread does as long as it lives, whatever the rules say.
class RoutingLogSilence
{
public:
    RoutingLogSilence();
    ~RoutingLogSilence();
    RoutingLogSilence(const RoutingLogSilence &) = delete;
    RoutingLogSilence &operator=(const RoutingLogSilence &) = delete;
};
}

#endif
