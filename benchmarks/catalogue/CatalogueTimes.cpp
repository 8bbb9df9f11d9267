// How long an import of a system takes, and a search: prints rows of figures as the
// benchmarks do, in milliseconds. Each is the first one of its catalogue, which keeps the list of
// systems and the shifts of a frame for later ones.

#include "support/Environment.h"

#include <KelStd/catalogue/Catalogue.h>

#include <QtCore/QElapsedTimer>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace {

using namespace KelStd;
using catalogue::Catalogue;

double milliseconds(const QElapsedTimer &timer)
{
    return static_cast<double>(timer.nsecsElapsed()) * 1e-6;
}

void print(const char *name, double value)
{
    std::printf("\"%s_median\",1,%.3f,%.3f,ms\n", name, value, value);
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values.empty() ? 0.0 : values[values.size() / 2];
}

/// Every tenth projected system of EPSG.
std::vector<QByteArray> sources()
{
    Catalogue catalogue;
    std::vector<QByteArray> codes;
    std::size_t count = 0;
    for (const catalogue::FoundSystem &system : catalogue.search({})) {
        if (system.kind == catalogue::SystemKind::Projected
            && system.code.startsWith(QLatin1String("EPSG:")) && count++ % 10 == 0)
            codes.push_back(system.code.toUtf8());
    }
    return codes;
}

void measureImports()
{
    std::vector<double> times;
    for (const QByteArray &code : sources()) {
        Catalogue catalogue;
        catalogue.databaseVersion(); // opens the database, as the program has done by then
        QElapsedTimer timer;
        timer.start();
        catalogue.importSystem(code);
        times.push_back(milliseconds(timer));
    }
    print("importOfMedian", median(times));
    print("importAtWorst", *std::max_element(times.cbegin(), times.cend()));
}

void measureSearch()
{
    std::vector<double> times;
    for (int count = 0; count < 9; ++count) {
        Catalogue catalogue;
        catalogue::SystemQuery query;
        query.words = QStringLiteral("mga 55");
        QElapsedTimer timer;
        timer.start();
        catalogue.search(query);
        times.push_back(milliseconds(timer));
    }
    print("searchOfAll", median(times));
}

} // namespace

int main(int argc, char **argv)
{
    const KelStd::bench::Environment environment(argc, argv);
    measureImports();
    measureSearch();
    return 0;
}
