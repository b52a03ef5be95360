#include <velk/model/RoutingLog.h>

namespace Velk {

namespace {

QLoggingCategory &category()
{
    static QLoggingCategory routing("routing", QtDebugMsg);
    return routing;
}
}

const QLoggingCategory &routingLog()
{
    return category();
}

void setRoutingLogEnabled(bool enabled)
{
    category().setEnabled(QtDebugMsg, enabled);
}
}
