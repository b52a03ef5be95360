#include "benchmarks/BareNetlist.h"
#include "benchmarks/NetlistText.h"
#include "benchmarks/PeakMemory.h"
#include "benchmarks/Suite.h"
#include "benchmarks/System.h"

#include <velk/kicad/KiCadNetlistFile.h>
#include <velk/kicad/KiCadReader.h>

#include <QFile>
#include <QTemporaryDir>
#include <QTemporaryFile>

#include <stdexcept>

namespace VelkBenchmarks {

using namespace Velk;

namespace {

/// The netlists of a system on the disk, with what they hold as numbers.
struct NetlistFolder
{
    std::unique_ptr<QTemporaryDir> folder;
    std::vector<std::string> files;
    double bytes = 0;
    std::vector<BareTree> trees;
    std::vector<BareModel> models;
};

QByteArray contentOf(const std::string &fileName)
{
    QFile file(QString::fromStdString(fileName));
    if (!file.open(QIODevice::ReadOnly))
        throw std::runtime_error("cannot read " + fileName);
    return file.readAll();
}

QSharedPointer<KiCadToken> treeOf(const std::string &fileName)
{
    QFile file(QString::fromStdString(fileName));
    KiCadReader reader(&file);
    if (reader.read() != KiCadNoError)
        throw std::runtime_error("cannot read " + fileName);
    return reader.getRoot();
}

std::shared_ptr<KiCadNetParser> netlistOf(const std::string &fileName)
{
    return KiCadNetlistFile(QString::fromStdString(fileName)).netlist();
}

void addFile(NetlistFolder &netlists, const std::string &fileName)
{
    const auto root = treeOf(fileName);
    const auto netlist = netlistOf(fileName);
    TextPlaces places(contentOf(fileName));
    netlists.trees.emplace_back(places, root);
    netlists.models.emplace_back(places, *netlist);
    netlists.bytes += static_cast<double>(places.netlist.size());
    if (netlists.trees.back().make() != root)
        throw std::logic_error("a bare tree differs");
    const auto model = netlists.models.back().make();
    if (netlist->getNets() != model.nets || netlist->getComponents() != model.components ||
        netlist->getParts() != model.parts)
        throw std::logic_error("a bare model differs");
}

NetlistFolder netlistFolder(qsizetype nodes)
{
    NetlistFolder netlists;
    netlists.folder = std::make_unique<QTemporaryDir>();
    netlists.files = writeNetlists(sparseSystem(nodes), *netlists.folder);
    for (const auto &file : netlists.files)
        addFile(netlists, file);
    return netlists;
}

/// Where the parentheses and quotes of a file are: the least that has to be looked for in it.
std::vector<qsizetype> scanOf(const std::string &fileName)
{
    const QByteArray text = contentOf(fileName);
    std::vector<qsizetype> places;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char character = text.at(i);
        if (character == '(' || character == ')' || character == '"')
            places.push_back(i);
    }
    return places;
}

template <typename Input, typename Make>
double secondsForAll(const std::vector<Input> &inputs, Make make)
{
    return secondsToMake([&] {
        std::vector<decltype(make(inputs.front()))> made;
        made.reserve(inputs.size());
        for (const auto &input : inputs)
            made.push_back(make(input));
        return made;
    });
}

const NetlistFolder &keptFolder(const Suite &suite)
{
    return kept("netlists", [nodes = suite.mainSize] { return netlistFolder(nodes); });
}

/// Of loading one netlist of about this size.
double peakMemoryPerByte(qsizetype bytes)
{
    constexpr qsizetype sampleNodes = 20'000;
    const auto textOfSystem = [](qsizetype nodes) { return netlistText(*sparseSystem(nodes).boards.at(1)); };
    const QByteArray text = textOfSystem(sampleNodes * bytes / textOfSystem(sampleNodes).size());
    QTemporaryFile file;
    if (!file.open() || file.write(text) != text.size() || !file.flush())
        throw std::runtime_error("cannot write the netlist");
    return peakMemoryOfLoading(file.fileName().toStdString()) / static_cast<double>(text.size());
}
}

void registerLoading(const Suite &suite)
{
    registerComparison("loading/model", [=]() -> Comparison {
        const NetlistFolder &netlists = keptFolder(suite);
        return {
            {{"velk", [&] { return secondsForAll(netlists.files, netlistOf); }},
             {"scan", [&] { return secondsForAll(netlists.files, scanOf); }},
             {"bare", [&] { return secondsForAll(netlists.models, [](const auto &bare) { return bare.make(); }); }}},
            {{"bytes", netlists.bytes}}};
    });
    registerComparison("loading/tree", [=]() -> Comparison {
        const NetlistFolder &netlists = keptFolder(suite);
        return {{{"velk", [&] { return secondsForAll(netlists.files, treeOf); }},
                 {"bare", [&] { return secondsForAll(netlists.trees, [](const auto &bare) { return bare.make(); }); }}},
                {{"bytes", netlists.bytes}}};
    });
    registerComparison("loading/memory",
                       [bytes = suite.fileBytes]() -> Comparison {
                           return {{}, {{"bytes_per_byte", peakMemoryPerByte(bytes)}}};
                       })
        ->Iterations(1)
        ->Repetitions(1);
}
}
