// Times the catalogue of systems with PROJ loaded: the first search, which reads the list of all
// systems, and the import of every fifth projected system of EPSG. Prints the times in the layout
// of the benchmark programs' CSV [ms].

#include "support/Environment.h"

#include <KelStd/catalogue/Catalogue.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

namespace {

using namespace KelStd;
using namespace KelStd::catalogue;

/// [ms]
template <typename Action>
double timeOf(Action action)
{
    const auto start = std::chrono::steady_clock::now();
    action();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
        .count();
}

void printFigure(const char *name, std::size_t runs, double time)
{
    std::printf("\"%s_median\",%zu,%.6f,%.6f,ms\n", name, runs, time, time);
}

} // namespace

int main(int argc, char **argv)
{
    const bench::Environment environment(argc, argv);
    std::vector<double> searches;
    for (int i = 0; i < 7; ++i) {
        Catalogue fresh;
        SystemQuery query;
        query.words = QStringLiteral("mga 55");
        searches.push_back(timeOf([&] {
            if (fresh.search(query).empty())
                qFatal("the search finds nothing");
        }));
    }
    std::sort(searches.begin(), searches.end());
    printFigure("search", searches.size(), searches.at(searches.size() / 2));

    constexpr std::size_t step = 5;
    Catalogue catalogue;
    std::vector<double> imports;
    std::size_t seen = 0;
    for (const FoundSystem &system : catalogue.search({})) {
        if (system.kind != SystemKind::Projected || !system.code.startsWith(QLatin1String("EPSG:"))
            || seen++ % step != 0)
            continue;
        const QByteArray source = system.code.toUtf8();
        imports.push_back(timeOf([&] { catalogue.importSystem(source); }));
    }
    if (imports.empty())
        qFatal("there is no system to import");
    std::sort(imports.begin(), imports.end());
    printFigure("import", imports.size(), imports.at(imports.size() / 2));
    printFigure("slowestImport", imports.size(), imports.back());
    return 0;
}
