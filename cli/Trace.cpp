#include "cli/Trace.h"

#include <QLoggingCategory>
#include <QString>

#include <cstdio>

namespace VelkCli {

namespace {

bool traceEnabled = false;
QLoggingCategory::CategoryFilter defaultFilter = nullptr;

void filterCategory(QLoggingCategory *category)
{
    defaultFilter(category);
    if (qstrcmp(category->categoryName(), "routing") == 0)
        category->setEnabled(QtDebugMsg, traceEnabled);
}

// Qt's own handler may send everything to the system's journal instead.
void printMessage(QtMsgType, const QMessageLogContext &, const QString &message)
{
    std::fprintf(stderr, "%s\n", qUtf8Printable(message));
}
}

void setUpLogging()
{
    qInstallMessageHandler(printMessage);
    defaultFilter = QLoggingCategory::installFilter(nullptr);
    setTraceEnabled(false);
}

void setTraceEnabled(bool enabled)
{
    traceEnabled = enabled;
    QLoggingCategory::installFilter(filterCategory); // applies it to the categories that exist
}
}
