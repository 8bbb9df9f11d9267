// A false origin is refused exactly where positions of its plane are: what can be computed is not
// refused, and what is accepted can be computed.

#include "support/Printers.h"
#include "support/ProjTest.h"

#include <KelStd/io/Coord_IO.h>
#include <KelStd/io/DocumentReview.h>
#include <KelStd/location/LocationBuilder.h>

#include <QtCore/QTemporaryDir>

namespace KelStd {
namespace {

struct Row
{
    const char *parameter; ///< of PROJ
    double offset;         ///< [m]
    bool isAccepted;
};

const Row rows[] = {
    {"x_0", 64'500'000.0, true},   // zone 64, EPSG 2581
    {"x_0", 120'500'000.0, true},  // the last of 120 zones
    {"x_0", 130'000'000.0, true},  //
    {"x_0", 130'000'001.0, false}, //
    {"x_0", -130'000'000.0, true}, //
    {"x_0", -130'000'001.0, false}, {"y_0", 130'000'000.0, true},   {"y_0", 130'000'001.0, false},
    {"y_0", -130'000'000.0, true},  {"y_0", -130'000'001.0, false},
};

/// Transverse Mercator of WGS 84 round longitude and latitude 0, with one offset.
Coord systemOf(const Row &row)
{
    const QString key = QString::fromLatin1(row.parameter);
    Coord coord;
    Coord::CreateDefaultTMercCoordination(coord);
    coord.coord_name = QStringLiteral("Offset");
    coord.projection.param = {{key, Param(ValueType_Distance, Unit_Meter, row.offset)}};
    coord.projection.paramProj4 = {{key, key}};
    return coord;
}

using PlaneLimit = test::ProjTest;

TEST_F(PlaneLimit, IsOneForFalseOriginsAndPositions)
{
    const QTemporaryDir directory;
    const QString file = directory.filePath(QStringLiteral("system.xml"));
    for (const Row &row : rows) {
        SCOPED_TRACE(testing::Message() << row.parameter << ' ' << row.offset);
        const Coord coord = systemOf(row);
        QString error;
        ASSERT_TRUE(Coord_IO::xml_write(coord, file, &error)) << error;
        Coord read;
        QList<io::DocumentFinding> findings;
        ASSERT_TRUE(io::reviewCoord(file, read, findings, &error)) << error;
        EXPECT_EQ(findings.isEmpty(), row.isAccepted) << testing::PrintToString(findings.size());
        for (const io::DocumentFinding &finding : findings)
            EXPECT_EQ(finding.kind, io::FindingKind::Implausible);

        LocationBuilder builder(read);
        builder.requireOneToOne();
        Location location;
        const bool isMade = builder.make(LocationBuilder::Frame::Wgs84Geographic,
                                         Pos::fromLongLatH(0.0, 0.0, 10.0), location, &error);
        EXPECT_EQ(isMade, row.isAccepted) << error;
        if (!isMade)
            continue;
        // At its origin a projection gives its false easting and northing.
        const bool isEasting = row.parameter[0] == 'x';
        constexpr double nearest = 1e-6;
        EXPECT_NEAR(location.localNEH.getENU().e, isEasting ? row.offset : 0.0, nearest);
        EXPECT_NEAR(location.localNEH.getENU().n, isEasting ? 0.0 : row.offset, nearest);
    }
}

} // namespace
} // namespace KelStd
