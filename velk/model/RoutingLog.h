#ifndef VELK_MODEL_ROUTINGLOG_H
#define VELK_MODEL_ROUTINGLOG_H

#include <QLoggingCategory>

namespace Velk {

/// The category "routing", which carries every diagnostic of the library, all at debug level. It is enabled
/// unless Qt's logging rules say otherwise.
Q_DECLARE_LOGGING_CATEGORY(routingLog)

/// Switches it on or off, until Qt's logging rules change.
void setRoutingLogEnabled(bool enabled);
}

#endif
