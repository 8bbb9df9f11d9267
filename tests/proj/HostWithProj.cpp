// A host that is linked to PROJ itself, as everything is that uses GDAL: both have to compute what
// they compute alone, and the process has to end well.

#include "support/TemporaryHome.h"

#include <KelStd/KelStd.h>

#include <QtCore/QString>

#include <proj.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

using namespace KelStd;

#define EXPECT_HERE(condition) expect(condition, #condition)

void expect(bool holds, const char *what)
{
    if (holds)
        return;
    std::fprintf(stderr, "does not hold: %s\n", what);
    std::exit(EXIT_FAILURE);
}

/// The origin of the Dutch grid, which is given in RD New's definition (EPSG:28992).
constexpr double originEast = 155000.0;
constexpr double originNorth = 463000.0;

void convertByTheHost()
{
    PJ_CONTEXT *const context = proj_context_create();
    PJ *const way = proj_create_crs_to_crs(context, "EPSG:4289", "EPSG:28992", nullptr);
    EXPECT_HERE(way != nullptr);
    // Latitude, longitude of the origin on Bessel's ellipsoid.
    const PJ_COORD in{{52.15616055555556, 5.387638888888889, 0.0, HUGE_VAL}};
    const PJ_COORD out = proj_trans(way, PJ_FWD, in);
    EXPECT_HERE(std::abs(out.v[0] - originEast) < 1e-3);
    EXPECT_HERE(std::abs(out.v[1] - originNorth) < 1e-3);
    proj_destroy(way);
    proj_context_destroy(context);
}

void convertByKelStd()
{
    Coord coord;
    EXPECT_HERE(
        Coord_IO::xml_read(QStringLiteral(KELSTD_TEST_DATA_DIR "/systems/rd_new.xml"), coord));
    EXPECT_HERE(ProjLib::___InitializeEnviroment());
    Location location;
    EXPECT_HERE(Coord::MakeLocation_byLocalLatLongH(
        Pos::fromLongLatH(5.387638888888889, 52.15616055555556, 43.0), location, nullptr, &coord,
        nullptr));
    EXPECT_HERE(std::abs(location.get_NEH_E() - originEast) < 1e-3);
    EXPECT_HERE(std::abs(location.get_NEH_N() - originNorth) < 1e-3);
    // The catalogue has PROJ make and destroy the most objects.
    catalogue::Catalogue catalogue;
    EXPECT_HERE(catalogue.importSystem("EPSG:28992").system.has_value());
}

} // namespace

int main(int argc, char **argv)
{
    const char *const order = argc == 2 ? argv[1] : "";
    const test::TemporaryHome home(test::TemporaryHome::PreparedProj);
    if (std::strcmp(order, "HostFirst") == 0) {
        convertByTheHost();
        convertByKelStd();
        convertByTheHost();
    } else if (std::strcmp(order, "KelStdFirst") == 0) {
        convertByKelStd();
        convertByTheHost();
        convertByKelStd();
    } else if (std::strcmp(order, "Unloaded") == 0) {
        convertByTheHost();
        convertByKelStd();
        ProjLib::___unloadEnviroment();
        convertByTheHost();
    } else {
        std::fprintf(stderr, "no test is called \"%s\"\n", order);
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
