#include <velk/model/RoutingLog.h>

namespace Velk {

Q_LOGGING_CATEGORY(routingLog, "routing", QtDebugMsg)
}
