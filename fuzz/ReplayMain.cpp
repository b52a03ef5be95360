#include "fuzz/Fuzz.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QStringList>

#include <cstdio>

namespace {

QStringList filesIn(const QString &folder)
{
    QStringList files;
    QDirIterator entries(folder, QDir::Files, QDirIterator::Subdirectories);
    while (entries.hasNext())
        files.append(entries.next());
    files.sort();
    return files;
}

bool replay(const QString &fileName)
{
    std::fprintf(stderr, "%s\n", qUtf8Printable(fileName)); // tells which one fails
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QByteArray bytes = file.readAll();
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t *>(bytes.constData()),
                           static_cast<std::size_t>(bytes.size()));
    return true;
}
}

/// Runs a fuzz target on files, and on all files in folders, without libFuzzer.
int main(int argc, char **argv)
{
    for (int i = 1; i < argc; ++i) {
        const QString name = QFile::decodeName(argv[i]);
        const QStringList files = QFileInfo(name).isDir() ? filesIn(name) : QStringList{name};
        if (files.isEmpty() || !std::all_of(files.cbegin(), files.cend(), replay)) {
            std::fprintf(stderr, "%s: cannot be read, or holds no file\n", argv[i]);
            return 1;
        }
    }
    return argc > 1 ? 0 : 1;
}
