#include "delivered/DeliveredDocuments.h"
#include "delivered/EpsgReference.h"
#include "delivered/ExpectedOrigin.h"
#include "location/LocationOperations.h"
#include "support/Printers.h"
#include "support/ProjTest.h"

#include <KelStd/io/Coord_IO.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace KelStd {
namespace {

const test::PublishedFigures &deliveredFigures()
{
    static const test::PublishedFigures figures =
        test::readPublishedFigures(QStringLiteral(KELSTD_TEST_DATA_DIR "/delivered_figures.txt"));
    return figures;
}

TEST(DeliveredFigures, AreReadWithoutAnUnknownWord)
{
    for (const std::string &error : deliveredFigures().errors)
        ADD_FAILURE() << error;
}

TEST(DeliveredFigures, HaveAPlanePointOfEveryNationalSystem)
{
    for (const std::string &system : test::nationalSystems()) {
        const auto &cases = deliveredFigures().cases;
        EXPECT_TRUE(std::any_of(cases.begin(), cases.end(),
                                [&system](const test::PublishedCase &published) {
                                    return published.system.toStdString() == system
                                           && (published.from == test::Frame::LocalNEH
                                               || published.expected.front().frame
                                                      == test::Frame::LocalNEH);
                                }))
            << system;
    }
}

class DeliveredFigure : public test::ProjTest,
                        public testing::WithParamInterface<test::PublishedCase>
{};

TEST_P(DeliveredFigure, ComesOutToTheLastDigit)
{
    const test::PublishedCase &published = GetParam();
    const Coord coord = test::deliveredSystem(published.system.toStdString());
    Location location;
    QString error;
    ASSERT_TRUE(test::operationFrom(published.from)
                    .make(published.start, location, nullptr, &coord, &error))
        << error;
    for (const test::ExpectedFrame &expected : published.expected) {
        const auto computed = test::componentsOf(test::frameOf(location, expected.frame));
        for (std::size_t i = 0; i < computed.size(); ++i) {
            if (!expected.figures[i])
                continue;
            EXPECT_NEAR(computed[i] / expected.metresPerUnit[i], expected.figures[i]->value,
                        expected.figures[i]->halfUnit)
                << published.source << ", component " << i;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Cases, DeliveredFigure, testing::ValuesIn(deliveredFigures().cases),
                         [](const auto &row) {
                             return "Line" + std::to_string(row.param.line) + "_"
                                    + test::testName(row.param.system);
                         });

class NationalSystem : public test::ProjTest, public testing::WithParamInterface<std::string>
{};

/// Plane coordinates of the local geographic position, by the EPSG parameters of the system.
TEST_P(NationalSystem, ProjectsAsTheEpsgDatabaseSays)
{
    const Coord coord = test::deliveredSystem(GetParam());
    const QString code = test::citationOf(GetParam()).parameters;
    const test::Usage usage = test::epsgUsage(code);
    test::expectOrigin(test::deliveredOrigin(GetParam()), code, usage);
    const QList<Pos> positions = test::seededPositions(usage.area, 100);
    const QList<Pos> expected = test::epsgProject(code, positions);
    // A south orientated system counts west and south positive in its geographic frame, too.
    const double sign = coord.ellipsoid.positiveDir == EllipsoidDirection_WSU ? -1.0 : 1.0;
    constexpr double metres = 1e-6;
    for (int i = 0; i < positions.size(); ++i) {
        const stXYZ &p = positions[i].getXYZ();
        Location location;
        QString error;
        ASSERT_TRUE(Coord::MakeLocation_byLocalLatLongH(
            Pos::fromLongLatH(sign * p.x, sign * p.y, p.z), location, nullptr, &coord, &error))
            << error;
        EXPECT_NEAR(location.get_NEH_E(), expected[i].getXYZ().x, metres);
        EXPECT_NEAR(location.get_NEH_N(), expected[i].getXYZ().y, metres);
    }
}

/// How far a local latitude or longitude may be from what the EPSG database says [deg].
double shiftTolerance(const Coord &coord)
{
    // Between the definitions of a system, PROJ turns by the exact rotation matrix; the database's
    // pipelines turn by its approximation for small angles. What that leaves out is of the size of
    // the largest rotation squared: 4 mm for the 5.2" of S-JTSK.
    const stEllipsoinTransform &shift = coord.ellipsoidTransform;
    double largest = 0.0;
    for (const Param &rotation : {shift.x_rotate, shift.y_rotate, shift.z_rotate})
        largest = std::max(largest, std::abs(rotation.value.toDouble()));
    constexpr double secondsPerRadian = 206264.806;
    return 1e-9 + largest * largest / secondsPerRadian / 3600.0;
}

/// Local geographic position of a WGS 84 position, by the EPSG transformation.
TEST_P(NationalSystem, ShiftsItsDatumAsTheEpsgDatabaseSays)
{
    const Coord coord = test::deliveredSystem(GetParam());
    const test::Citation citation = test::citationOf(GetParam());
    EXPECT_EQ(coord.ellipsoidTransform.fuction == EllipsoinTransformFunction_None,
              citation.shift.isEmpty());
    const QList<Pos> positions = test::seededPositions(test::epsgArea(citation.parameters), 100);
    const QList<Pos> expected =
        citation.shift.isEmpty() ? positions : test::epsgToLocalDatum(citation.shift, positions);
    const double sign = coord.ellipsoid.positiveDir == EllipsoidDirection_WSU ? -1.0 : 1.0;
    for (int i = 0; i < positions.size(); ++i) {
        Location location;
        QString error;
        ASSERT_TRUE(
            Coord::MakeLocation_byWGS84LatLongH(positions[i], location, nullptr, &coord, &error))
            << error;
        EXPECT_NEAR(sign * location.get_Local_LLH_Long(), expected[i].getXYZ().x,
                    shiftTolerance(coord));
        EXPECT_NEAR(sign * location.get_Local_LLH_Lat(), expected[i].getXYZ().y,
                    shiftTolerance(coord));
    }
}

TEST_P(NationalSystem, NamesItsDatumShiftAsTheEpsgDatabaseDoes)
{
    const QString shift = test::citationOf(GetParam()).shift;
    const auto operation = test::deliveredOrigin(GetParam()).operation;
    ASSERT_EQ(operation.has_value(), !shift.isEmpty());
    if (!operation)
        return;
    EXPECT_EQ(operation->code, shift);
    const QString text = test::epsgText(QStringLiteral("operation"), shift);
    EXPECT_EQ(operation->name, test::nameAfter(QStringLiteral("COORDINATEOPERATION"), text));
    ASSERT_TRUE(operation->accuracyM.has_value());
    EXPECT_TRUE(text.contains(
        QStringLiteral("OPERATIONACCURACY[%1]").arg(*operation->accuracyM, 0, 'f', 1)))
        << text;
}

TEST_P(NationalSystem, NamesItsCountry)
{
    EXPECT_FALSE(test::deliveredOrigin(GetParam()).countries.isEmpty());
}

class DeliveredBase : public test::ProjTest
{};

TEST_F(DeliveredBase, KeepsAPositionAsItIs)
{
    Coord base;
    ASSERT_TRUE(Coord_IO::xml_read(test::deliveredPath(QStringLiteral("base.xml")), base));
    const Pos position = Pos::fromLongLatH(5.25, -52.5, 90.0);
    Location location;
    QString error;
    ASSERT_TRUE(Coord::MakeLocation_byWGS84LatLongH(position, location, nullptr, &base, &error))
        << error;
    EXPECT_NEAR(location.get_NEH_E(), 5.25, 1e-9);
    EXPECT_NEAR(location.get_NEH_N(), -52.5, 1e-9);
    EXPECT_NEAR(location.get_NEH_H(), 90.0, 1e-6);
}

INSTANTIATE_TEST_SUITE_P(Systems, NationalSystem, testing::ValuesIn(test::nationalSystems()),
                         [](const auto &row) {
                             QString name = QString::fromStdString(row.param);
                             name.replace(QLatin1Char('+'), QStringLiteral("plus"));
                             return test::testName(name);
                         });

} // namespace
} // namespace KelStd
