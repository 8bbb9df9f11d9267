// Compares both ways of LocationBuilder between the frames, in every delivered and every published
// system, and says by how much they differ; fails where that is more than is promised.
//
//     way_agreement POINTS LIBRARY
//
// POINTS is how many random positions of each system, LIBRARY the folder of the delivered systems.

#include "support/Environment.h"

#include <KelStd/io/Coord_IO.h>
#include <KelStd/location/LocationBuilder.h>

#include <QtCore/QDir>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <random>
#include <vector>

namespace {

using namespace KelStd;
using Frame = LocationBuilder::Frame;

constexpr double allowedMetres = 1e-6;
constexpr double allowedDegrees = 1e-11;

struct Difference
{
    double metres = 0.0;
    double degrees = 0.0;
    long failures = 0; ///< positions that fail on one way only, or for another reason
};

void compareGeographic(const Pos &a, const Pos &b, Difference &worst)
{
    const stLongLatH &one = a.getLongLatH();
    const stLongLatH &other = b.getLongLatH();
    worst.degrees = std::max({worst.degrees, std::abs(one.longitude - other.longitude),
                              std::abs(one.latitude - other.latitude)});
    worst.metres = std::max(worst.metres, std::abs(one.height - other.height));
}

void compareMetres(const Pos &a, const Pos &b, Difference &worst)
{
    const stXYZ &one = a.getXYZ();
    const stXYZ &other = b.getXYZ();
    worst.metres = std::max({worst.metres, std::abs(one.x - other.x), std::abs(one.y - other.y),
                             std::abs(one.z - other.z)});
}

double lengthOf(const Projection &projection, const char *name)
{
    return projection.param.value(projection.paramProj4.key(QLatin1String(name))).value.toDouble();
}

/// From `frame` both ways, over `positions`.
void compareFrom(Frame frame, const std::vector<Pos> &positions, LocationBuilder &builder,
                 LocationBuilder &byDefinitions, Difference &worst)
{
    for (const Pos &position : positions) {
        Location one;
        Location other;
        LocationBuilder::Outcome outcome;
        LocationBuilder::Outcome expected;
        const bool isMade = builder.make(frame, position, one, outcome);
        if (isMade != byDefinitions.make(frame, position, other, expected)
            || outcome.reason != expected.reason) {
            ++worst.failures;
        } else if (isMade) {
            compareGeographic(one.wgs84LLH, other.wgs84LLH, worst);
            compareMetres(one.wgs84XYZ, other.wgs84XYZ, worst);
            compareGeographic(one.localLLH, other.localLLH, worst);
            compareMetres(one.localNEH, other.localNEH, worst);
        }
    }
}

/// About the projection's origin, near and far, there and back. True for the short way.
bool compareIn(const Coord &coord, std::size_t points, Difference &worst)
{
    LocationBuilder builder(coord);
    LocationBuilder byDefinitions(coord);
    byDefinitions.requireDefinitions();
    std::mt19937 random(4711);
    const auto uniform = [&random](double low, double high) {
        return std::uniform_real_distribution<double>(low, high)(random);
    };
    const double east = lengthOf(coord.projection, "x_0");
    const double north = lengthOf(coord.projection, "y_0");
    std::vector<Pos> planes;
    std::vector<Pos> geographic;
    for (std::size_t i = 0; i < points; ++i) {
        constexpr double reaches[] = {1e5, 5e5, 5e5, 2e6};
        const double reach = reaches[i % std::size(reaches)];
        planes.push_back(Pos::fromENU(east + reach * uniform(-1.0, 1.0),
                                      north + 3.0 * reach * uniform(-1.0, 1.0),
                                      uniform(-1000.0, 5000.0)));
        Location location;
        if (byDefinitions.make(Frame::LocalProjected, planes.back(), location))
            geographic.push_back(location.wgs84LLH);
    }
    compareFrom(Frame::LocalProjected, planes, builder, byDefinitions, worst);
    compareFrom(Frame::Wgs84Geographic, geographic, builder, byDefinitions, worst);
    return builder.way() == LocationBuilder::Way::Short;
}

} // namespace

int main(int argc, char **argv)
{
    const KelStd::bench::Environment environment(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 3)
        qFatal("usage: way_agreement POINTS LIBRARY");
    const auto points = static_cast<std::size_t>(arguments[1].toUInt());

    int systems = 0;
    int isShort = 0;
    Difference worst;
    for (const QString &folder : {arguments[2], QStringLiteral(KELSTD_SYSTEMS_DIR)}) {
        const QDir directory(folder);
        for (const QString &name : directory.entryList({QStringLiteral("*.xml")}, QDir::Files)) {
            Coord coord;
            if (!Coord_IO::xml_read(directory.filePath(name), coord))
                qFatal("%s cannot be read", qPrintable(name));
            Difference ofSystem;
            ++systems;
            isShort += compareIn(coord, points, ofSystem) ? 1 : 0;
            if (!(ofSystem.metres <= allowedMetres && ofSystem.degrees <= allowedDegrees)
                || ofSystem.failures > 0) {
                std::fprintf(stderr, "%s: %.2g m, %.2g degrees, %ld failures differ\n",
                             qPrintable(name), ofSystem.metres, ofSystem.degrees,
                             ofSystem.failures);
            }
            worst.metres = std::max(worst.metres, ofSystem.metres);
            worst.degrees = std::max(worst.degrees, ofSystem.degrees);
            worst.failures += ofSystem.failures;
        }
    }
    std::printf("both ways between the frames in %d systems, %zu points each: %.2g m, %.2g degrees "
                "apart at most (allowed %.0e, %.0e), %ld failures differ; the short one in %d\n",
                systems, points, worst.metres, worst.degrees, allowedMetres, allowedDegrees,
                worst.failures, isShort);
    const bool isRight = systems > 0 && worst.metres <= allowedMetres
                         && worst.degrees <= allowedDegrees && worst.failures == 0;
    return isRight ? 0 : 1;
}
