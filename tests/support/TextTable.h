#ifndef VELK_TESTS_TEXTTABLE_H
#define VELK_TESTS_TEXTTABLE_H

#include <QFile>
#include <QList>
#include <QStringList>
#include <QTest>

inline QString textOf(const char *fileName)
{
    QFile file(QStringLiteral(VELK_TEST_DATA "/%1").arg(QLatin1String(fileName)));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("cannot read %s", fileName);
    return QString::fromUtf8(file.readAll());
}

/// Adds the rows of a table in tests/data: each line holds a name and the columns, which are texts, separated
/// by
/// "|"; blanks around them are dropped. Lines that begin with "# " are comments.
inline void addRowsFrom(const char *fileName, const QList<const char *> &columns)
{
    for (const char *column : columns)
        QTest::addColumn<QString>(column);
    for (const QString &line : textOf(fileName).split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
        if (line.startsWith(QLatin1String("# ")))
            continue;
        QTestData &row = QTest::newRow(qPrintable(line.section(QLatin1Char('|'), 0, 0).trimmed()));
        for (int i = 1; i <= columns.size(); ++i)
            row << line.section(QLatin1Char('|'), i, i).trimmed();
    }
}

/// Adds the cases of these files in tests/data with the columns "input" and "expected". A case is a line "# name",
/// the lines of the input, a line "=>" and the lines expected. What stands before the first is a comment.
inline void addCasesFrom(const QList<const char *> &fileNames)
{
    QTest::addColumn<QString>("input");
    QTest::addColumn<QString>("expected");
    for (const char *fileName : fileNames) {
        for (const QString &text : textOf(fileName).split(QLatin1String("\n# ")).mid(1)) {
            const QString name = text.section(QLatin1Char('\n'), 0, 0);
            const QStringList halves = text.mid(name.size()).split(QLatin1String("\n=>"));
            QTest::newRow(qPrintable(name)) << halves.at(0).trimmed() << halves.at(1).trimmed();
        }
    }
}

inline void addCasesFrom(const char *fileName)
{
    addCasesFrom(QList<const char *>{fileName});
}

#endif
