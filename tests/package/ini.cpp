#include <velkini/IniWriter.h>

#include <QFile>

#include <cstdio>

int main()
{
    QFile output;
    if (!output.open(stdout, QIODevice::WriteOnly))
        return 1;
    Velk::IniWriter writer(&output);
    writer.open();
    writer.writeSection(QStringLiteral("Consumer"), {});
    writer.writeProperty(QStringLiteral("key"), QStringLiteral("value"), {});
    writer.close();
    return 0;
}
