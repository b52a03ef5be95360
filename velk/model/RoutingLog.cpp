#include <velk/model/RoutingLog.h>

#include <QLoggingCategory>

namespace Velk {

namespace {

QLoggingCategory &category()
{
    static QLoggingCategory routing("routing", QtDebugMsg);
    return routing;
}

const QLoggingCategory &routingLog()
{
    return category();
}

thread_local int silences = 0; // that this thread is in
}

bool isRoutingLogged()
{
    return silences == 0 && routingLog().isDebugEnabled();
}

void setRoutingLogEnabled(bool enabled)
{
    category().setEnabled(QtDebugMsg, enabled);
}

void writeRoutingLog(const QString &line)
{
    qCDebug(routingLog).noquote() << line;
}

RoutingLogSilence::RoutingLogSilence()
{
    ++silences;
}

RoutingLogSilence::~RoutingLogSilence()
{
    --silences;
}
}
