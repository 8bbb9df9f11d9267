// The array call over the positions of a file, for a peer in another process to compare itself
// with: each line of standard input starts one run and gets its time.
//
//     location_arrays POINTS LOCATIONS
//
// POINTS holds longitude, latitude [deg] and height [m] of each WGS84 position as doubles. Prints
// the four definitions of the system, one a line, then the seconds of each run. At the end of the
// input LOCATIONS gets the four frames of each position, twelve doubles; projected is east, north.

#include "support/BareProj.h"
#include "support/Environment.h"

#include <KelStd/location/LocationBuilder.h>

#include <QtCore/QFile>

#include <array>
#include <chrono>
#include <cstdio>
#include <iostream>
#include <string>
#include <vector>

namespace {

using namespace KelStd;

std::vector<Pos> readPositions(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("%s cannot be read", qPrintable(path));
    std::vector<Pos> positions;
    std::array<double, 3> values{};
    constexpr qint64 size = sizeof values;
    while (file.read(reinterpret_cast<char *>(values.data()), size) == size)
        positions.push_back(Pos::fromLongLatH(values[0], values[1], values[2]));
    return positions;
}

void writeLocations(const QString &path, const std::vector<Location> &locations)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        qFatal("%s cannot be written", qPrintable(path));
    for (const Location &l : locations) {
        const std::array<double, 12> values = {
            l.get_WGS84_LLH_Long(), l.get_WGS84_LLH_Lat(), l.get_WGS84_LLH_Height(),
            l.get_WGS84_XYZ_X(),    l.get_WGS84_XYZ_Y(),   l.get_WGS84_XYZ_Z(),
            l.get_Local_LLH_Long(), l.get_Local_LLH_Lat(), l.get_Local_LLH_Height(),
            l.get_NEH_E(),          l.get_NEH_N(),         l.get_NEH_H()};
        constexpr qint64 size = sizeof values;
        if (file.write(reinterpret_cast<const char *>(values.data()), size) != size)
            qFatal("%s cannot be written", qPrintable(path));
    }
    if (!file.flush())
        qFatal("%s cannot be written", qPrintable(path));
}

} // namespace

int main(int argc, char **argv)
{
    const KelStd::bench::Environment environment(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 3)
        qFatal("usage: location_arrays POINTS LOCATIONS");

    const std::vector<Pos> positions = readPositions(arguments[1]);
    std::vector<Location> locations(positions.size());
    LocationBuilder builder(bench::benchmarkSystem());
    const bench::Definitions d(bench::benchmarkSystem());
    for (const char *definition :
         {d.wgs84Geographic, d.wgs84Cartesian, d.localGeographic, d.localProjected})
        std::cout << definition << std::endl;

    for (std::string line; std::getline(std::cin, line);) {
        const auto start = std::chrono::steady_clock::now();
        const std::size_t made = builder.make(LocationBuilder::Frame::Wgs84Geographic,
                                              positions.data(), positions.size(), locations.data());
        const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
        if (made != positions.size())
            qFatal("some positions cannot be converted");
        std::cout << taken.count() << std::endl;
    }
    writeLocations(arguments[2], locations);
    return 0;
}
