#include "cli/formats/RouteReport.h"

using namespace Qt::StringLiterals;

namespace VelkCli {

QString switchCount(qsizetype count)
{
    return count == 1 ? u"1 switch"_s : u"%1 switches"_s.arg(count);
}
}
