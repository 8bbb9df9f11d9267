// Datum shifts fitted to pairs of positions.

#include "calibration/OriginOfBase.h"
#include "calibration/SiteRecords.h"
#include "proj/ProjPrograms.h"
#include "support/Printers.h"
#include "support/ProjTest.h"

#include <KelStd/calibration/DatumFit.h>
#include <KelStd/location/LocationBuilder.h>

#include <cmath>
#include <limits>

namespace KelStd {
namespace {

using calibration::CalibrationFailure;
using calibration::CalibrationFault;
using calibration::DatumFit;
using calibration::DatumMethod;
using calibration::DatumPair;
using calibration::DatumParameters;

using Pairs = QVector<DatumPair>;

/// A transverse Mercator system on Bessel's ellipsoid.
Coord besselSystem()
{
    Coord coord;
    Coord::CreateDefaultTMercCoordination(coord);
    coord.ellipsoid.proj4EllpsName = QStringLiteral("bessel");
    return coord;
}

QString number(double value)
{
    return QString::number(value, 'g', 17);
}

/// Twenty places over Sweden, longitude and latitude [deg].
QList<Pos> localPositions(const Coord &coord)
{
    QList<Pos> positions;
    for (int i = 0; i < 20; ++i) {
        const Pos at = Pos::fromLongLatH(12.0 + (i * 7) % 11, 55.5 + 0.65 * i, 40.0 * (i % 5));
        const auto cartesian = calibration::cartesianOf(coord.ellipsoid, at);
        EXPECT_TRUE(cartesian.has_value());
        positions << cartesian.value_or(Pos());
    }
    return positions;
}

/// What PROJ's own program makes of them with the exact matrix, by the position vector convention.
Pairs shifted(const QList<Pos> &local, const DatumParameters &p)
{
    const QString definition =
        QStringLiteral("+proj=helmert +convention=position_vector +exact +x=%1 +y=%2 +z=%3 +rx=%4 "
                       "+ry=%5 +rz=%6 +s=%7")
            .arg(number(p.x), number(p.y), number(p.z), number(p.rx), number(p.ry), number(p.rz),
                 number(p.scale));
    const QList<Pos> wgs84 = test::runCct(definition, local);
    Pairs pairs;
    for (int i = 0; i < local.size(); ++i)
        pairs += DatumPair{QStringLiteral("S%1").arg(i + 1), local.at(i), wgs84.value(i), {}};
    return pairs;
}

class DatumFitTest : public test::ProjTest
{
protected:
    DatumFit fitted(const Pairs &pairs, DatumMethod method)
    {
        CalibrationFailure failure;
        const auto fit = calibration::fitDatum(m_base, pairs, method, &failure);
        EXPECT_TRUE(fit.has_value()) << failure.text;
        return fit.value_or(DatumFit());
    }

    CalibrationFault refusalOf(const Pairs &pairs, DatumMethod method)
    {
        CalibrationFailure failure;
        EXPECT_FALSE(calibration::fitDatum(m_base, pairs, method, &failure));
        EXPECT_TRUE(failure.text.contains(QLatin1Char(';'))) << failure.text;
        return failure.kind;
    }

    Coord m_base = besselSystem();
};

// RT 90 to SWEREF 93, fitted to 20 points by Lantmateriet: all digits in ESRI:108213, rounded in
// EPSG:1896, both in PROJ's database; here from RT 90, with rotations as position vector.
const DatumParameters sweden = {
    414.0978567149, 41.3381489658, 603.0627177516, -0.8550434314, 2.1413465185, -7.0227209516, 0.0};
const DatumParameters swedenRounded = {414.1, 41.3, 603.1, -0.855, 2.141, -7.023, 0.0};

TEST_F(DatumFitTest, ThePublishedSwedishSetIsRecoveredToItsLastDigit)
{
    const DatumFit fit = fitted(shifted(localPositions(m_base), swedenRounded), DatumMethod::Seven);
    EXPECT_NEAR(fit.rigorous.x, 414.1, 0.5e-1);
    EXPECT_NEAR(fit.rigorous.y, 41.3, 0.5e-1);
    EXPECT_NEAR(fit.rigorous.z, 603.1, 0.5e-1);
    EXPECT_NEAR(fit.rigorous.rx, -0.855, 0.5e-3);
    EXPECT_NEAR(fit.rigorous.ry, 2.141, 0.5e-3);
    EXPECT_NEAR(fit.rigorous.rz, -7.023, 0.5e-3);
    EXPECT_NEAR(fit.rigorous.scale, 0.0, 1e-6);

    const DatumFit digits = fitted(shifted(localPositions(m_base), sweden), DatumMethod::Seven);
    // Positions are doubles of 4e6 m: 1e-9 m, which twenty of them determine the shift to.
    EXPECT_NEAR(digits.rigorous.x, sweden.x, 2e-8);
    EXPECT_NEAR(digits.rigorous.y, sweden.y, 2e-8);
    EXPECT_NEAR(digits.rigorous.z, sweden.z, 2e-8);
    EXPECT_NEAR(digits.rigorous.rx, sweden.rx, 1e-9);
    EXPECT_NEAR(digits.rigorous.ry, sweden.ry, 1e-9);
    EXPECT_NEAR(digits.rigorous.rz, sweden.rz, 1e-9);
    EXPECT_EQ(digits.statistics.redundancy, 53);
    EXPECT_LT(*digits.statistics.s0, 1e-8);
}

TEST_F(DatumFitTest, LargeRotationsAreTakenFromTheMatrixInTheOrderOfTheChain)
{
    // In another order the rotations would be 0.01" off.
    const DatumParameters large = {-120.5, 350.25, 80.125, 30.0, -45.0, 60.0, 12.5};
    const DatumFit fit = fitted(shifted(localPositions(m_base), large), DatumMethod::Seven);
    EXPECT_NEAR(fit.rigorous.rx, 30.0, 1e-8);
    EXPECT_NEAR(fit.rigorous.ry, -45.0, 1e-8);
    EXPECT_NEAR(fit.rigorous.rz, 60.0, 1e-8);
    EXPECT_NEAR(fit.rigorous.scale, 12.5, 1e-8);
    EXPECT_NEAR(fit.rigorous.x, -120.5, 1e-6);
    // The linear matrix is another one: products of rotations are millimetres and more.
    EXPECT_GT(std::abs(fit.linear.rx - fit.rigorous.rx), 1e-3);
}

TEST_F(DatumFitTest, StoresTheSignsThatTheChainReads)
{
    const QList<Pos> local = localPositions(m_base);
    const Pairs pairs = shifted(local, swedenRounded);
    const DatumFit fit = fitted(pairs, DatumMethod::Seven);
    EXPECT_NEAR(fit.coord.ellipsoidTransform.x_translate.value.toDouble(), -414.1, 1e-5);
    EXPECT_NEAR(fit.coord.ellipsoidTransform.z_rotate.value.toDouble(), -7.023, 1e-6);
    LocationBuilder builder(fit.coord);
    for (int i = 0; i < pairs.size(); ++i) {
        Location location;
        ASSERT_TRUE(
            builder.make(LocationBuilder::Frame::Wgs84Cartesian, pairs.at(i).wgs84, location));
        const stLongLatH &found = location.localLLH.getLongLatH();
        EXPECT_NEAR(found.longitude, 12.0 + (i * 7) % 11, 2e-9);
        EXPECT_NEAR(found.latitude, 55.5 + 0.65 * i, 1e-9);
        EXPECT_NEAR(found.height, 40.0 * (i % 5), 1e-4);
    }
}

TEST_F(DatumFitTest, ThreeParametersAreTheMeanDifference)
{
    Pairs pairs = shifted(localPositions(m_base), {100.0, -50.0, 25.5, 0.0, 0.0, 0.0, 0.0});
    pairs.resize(4);
    const double errors[] = {0.03, -0.01, -0.04, 0.02};
    for (int i = 0; i < 4; ++i) {
        const stXYZ at = pairs.at(i).wgs84.getXYZ();
        pairs[i].wgs84 = Pos::fromXYZ(at.x + errors[i], at.y, at.z - errors[i]);
    }
    const DatumFit fit = fitted(pairs, DatumMethod::Three);
    EXPECT_NEAR(fit.rigorous.x, 100.0, 1e-8);
    EXPECT_NEAR(fit.rigorous.y, -50.0, 1e-8);
    EXPECT_NEAR(fit.rigorous.z, 25.5, 1e-8);
    EXPECT_EQ(fit.rigorous.rx, 0.0);
    EXPECT_NEAR(fit.linear.x, 100.0, 1e-8);
    EXPECT_EQ(fit.statistics.redundancy, 9);
    EXPECT_NEAR(*fit.statistics.s0, std::sqrt(2.0 * 0.003 / 9.0), 1e-8);
    EXPECT_NEAR(fit.points.at(0).residualX, -0.03, 1e-8);
    EXPECT_NEAR(fit.points.at(0).residualZ, 0.03, 1e-8);
    EXPECT_EQ(fit.coord.ellipsoidTransform.fuction, EllipsoinTransformFunction_Three);
    pairs.resize(1);
    EXPECT_FALSE(fitted(pairs, DatumMethod::Three).warnings.isEmpty());
}

QStringList warningsOfSize(const DatumFit &fit)
{
    QStringList texts;
    for (const auto &warning : fit.warnings) {
        if (warning.kind == calibration::CalibrationWarningKind::LargeShift)
            texts += warning.text;
    }
    return texts;
}

// X and Y of the local side mixed up by a quarter turn: 324000 arc seconds about Z, which fit
// perfectly.
TEST_F(DatumFitTest, WarnsOfAShiftThatNoDatumHas)
{
    Pairs pairs = shifted(localPositions(m_base), {100.0, -50.0, 25.5, 0.0, 0.0, 0.0, 0.0});
    EXPECT_EQ(warningsOfSize(fitted(pairs, DatumMethod::Seven)), QStringList());
    Pairs turned = pairs;
    for (DatumPair &pair : turned) {
        const stXYZ at = pair.local.getXYZ();
        pair.local = Pos::fromXYZ(at.y, -at.x, at.z);
    }
    const DatumFit fit = fitted(turned, DatumMethod::Seven);
    EXPECT_NEAR(fit.rigorous.rz, 324000.0, 1e-3);
    EXPECT_LT(*fit.statistics.s0, 1e-6);
    const QStringList texts = warningsOfSize(fit);
    ASSERT_EQ(texts.size(), 1);
    EXPECT_TRUE(texts.first().startsWith(QStringLiteral("the rotation of 324000.0\" is larger")))
        << texts.first();

    for (DatumPair &pair : pairs) {
        const stXYZ at = pair.local.getXYZ();
        pair.local = Pos::fromXYZ(at.x * 1.002, at.y * 1.002, at.z * 1.002);
    }
    const QStringList scaled = warningsOfSize(fitted(pairs, DatumMethod::Seven));
    ASSERT_EQ(scaled.size(), 1);
    EXPECT_TRUE(scaled.first().startsWith(QStringLiteral("the scale of 1996.0 ppm"))) // 1 - 1/1.002
        << scaled.first();
}

TEST_F(DatumFitTest, NamesThePairOfABlunder)
{
    Pairs pairs = shifted(localPositions(m_base), swedenRounded);
    for (int i = 0; i < pairs.size(); ++i) {
        const stXYZ at = pairs.at(i).wgs84.getXYZ();
        const double error = 0.01 * std::sin(3.0 * i * i + 1.0);
        pairs[i].wgs84 = Pos::fromXYZ(at.x + error, at.y - error, at.z + 0.5 * error);
    }
    const stXYZ at = pairs.at(11).wgs84.getXYZ();
    pairs[11].wgs84 = Pos::fromXYZ(at.x, at.y + 0.4, at.z);
    const DatumFit fit = fitted(pairs, DatumMethod::Seven);
    EXPECT_EQ(fit.statistics.suspect, QStringLiteral("S12"));
    EXPECT_TRUE(fit.points.at(11).isSuspect);
    EXPECT_FALSE(fit.points.at(10).isSuspect);
}

TEST_F(DatumFitTest, IsRefused)
{
    const Pairs good = shifted(localPositions(m_base), swedenRounded);
    EXPECT_EQ(refusalOf(good.mid(0, 2), DatumMethod::Seven), CalibrationFault::TooFewPoints);
    EXPECT_EQ(refusalOf({}, DatumMethod::Three), CalibrationFault::TooFewPoints);
    Pairs bad = good;
    bad[3].name = bad.at(2).name;
    EXPECT_EQ(refusalOf(bad, DatumMethod::Seven), CalibrationFault::DuplicateName);
    bad = good;
    bad[3].local = bad.at(2).local;
    EXPECT_EQ(refusalOf(bad, DatumMethod::Seven), CalibrationFault::CoincidentPoints);
    bad = good;
    bad[3].local = Pos::fromXYZ(std::numeric_limits<double>::infinity(), 0.0, 0.0);
    EXPECT_EQ(refusalOf(bad, DatumMethod::Seven), CalibrationFault::NotFinite);
    bad = good;
    bad[3].wgs84 = Pos::fromXYZ(1e300, 0.0, 0.0);
    EXPECT_EQ(refusalOf(bad, DatumMethod::Seven), CalibrationFault::NotFinite);
    bad = good;
    bad[3].wgs84 = Pos::fromXYZ(0.0, 0.0, 0.0);
    EXPECT_EQ(refusalOf(bad, DatumMethod::Seven), CalibrationFault::NotFinite);
    bad = good;
    bad[3].sigma = 0.01;
    EXPECT_EQ(refusalOf(bad, DatumMethod::Seven), CalibrationFault::MissingSigma);
    bad.clear();
    for (int i = 0; i < 5; ++i) {
        const Pos at = Pos::fromXYZ(3e6 + 1000.0 * i, 1e6 + 200.0 * i, 5.5e6 - 30.0 * i);
        bad += DatumPair{QStringLiteral("L%1").arg(i), at, at, {}};
    }
    EXPECT_EQ(refusalOf(bad, DatumMethod::Seven), CalibrationFault::CollinearPoints);
}

// The site was fitted to positions by the former datum shift.
TEST_F(DatumFitTest, ASiteOfTheBaseIsLeftOutWithAWarning)
{
    const Pairs pairs = shifted(localPositions(m_base), swedenRounded);
    const auto warningsOfSite = [&](const Coord &base) {
        const auto fit = calibration::fitDatum(base, pairs, DatumMethod::Seven);
        EXPECT_TRUE(fit.has_value());
        EXPECT_TRUE(fit->coord.planeTransform == stPlaneTransform());
        EXPECT_TRUE(fit->coord.elevationFitting == stElevationFitting());
        QStringList texts;
        for (const auto &warning : fit->warnings) {
            if (warning.kind == calibration::CalibrationWarningKind::ReplacedRecords)
                texts += warning.text;
        }
        return texts;
    };
    EXPECT_EQ(warningsOfSite(m_base), QStringList());
    Coord plane = m_base;
    plane.planeTransform = test::similarity(1000.0, 2000.0, 3600.0, 1.0001);
    Coord heights = m_base;
    heights.elevationFitting = test::inclinedPlane(12.5, 1e-5, 2e-5);
    for (const Coord &base : {plane, heights}) {
        const QStringList texts = warningsOfSite(base);
        ASSERT_EQ(texts.size(), 1);
        EXPECT_TRUE(
            texts.first().startsWith(QStringLiteral("the base system has a site already, whose")))
            << texts.first();
    }
}

TEST(DatumOrigins, KeepWhatHoldsForThePlaceButNeitherCodeNorOperation)
{
    SystemOrigin base = test::originOfBase();
    base.control.resize(2);

    SystemOrigin expected;
    expected.area = base.area;
    expected.areaName = base.areaName;
    expected.countries = base.countries;
    expected.planeUnit = base.planeUnit;
    EXPECT_TRUE(calibration::datumOrigin(base) == expected);
}

TEST_F(DatumFitTest, AnEllipsoidWithoutASizeIsRefused)
{
    Coord grid = besselSystem();
    grid.ellipsoid.proj4EllpsName = QStringLiteral("bessel +nadgrids=x.gsb");
    CalibrationFailure failure;
    EXPECT_FALSE(calibration::fitDatum(grid, {}, DatumMethod::Three, &failure));
    EXPECT_EQ(failure.kind, CalibrationFault::BadRecords);
    EXPECT_FALSE(calibration::cartesianOf(Ellipsoid(), Pos(), &failure));
}

struct Axes
{
    EEllipsoidDirection direction;
    double east;
    double north;
};
const Axes allAxes[] = {{EllipsoidDirection_ENU, 1.0, 1.0},
                        {EllipsoidDirection_WSU, -1.0, -1.0},
                        {EllipsoidDirection_ESU, 1.0, -1.0},
                        {EllipsoidDirection_WNU, -1.0, 1.0}};

// The shift is one between earth-centred coordinates, whichever way the system's plane counts.
TEST_F(DatumFitTest, AxesOfTheSystemDoNotMatter)
{
    const DatumParameters three{100.5, -50.25, 25.125, 0.0, 0.0, 0.0, 0.0};
    const DatumParameters seven{565.04, 49.91, 465.84, -0.40939, 0.35971, -1.86849, 4.0772};
    const QList<Pos> local = localPositions(m_base);
    for (const Axes &axes : allAxes) {
        m_base.ellipsoid.positiveDir = axes.direction;
        for (const auto &[method, given] : {std::make_pair(DatumMethod::Three, three),
                                            std::make_pair(DatumMethod::Seven, seven)}) {
            const DatumParameters found = fitted(shifted(local, given), method).rigorous;
            EXPECT_NEAR(found.x, given.x, 1e-5);
            EXPECT_NEAR(found.y, given.y, 1e-5);
            EXPECT_NEAR(found.z, given.z, 1e-5);
            EXPECT_NEAR(found.rz, given.rz, 1e-6);
            EXPECT_NEAR(found.scale, given.scale, 1e-6);
        }
    }
}

TEST_F(DatumFitTest, AnglesCountAsTheAxesOfTheEllipsoid)
{
    const QList<Pos> expected = test::runCct(QStringLiteral("+proj=cart +ellps=bessel"),
                                             {Pos::fromLongLatH(29.5, -25.5, 40.0)});
    for (const Axes &axes : allAxes) {
        m_base.ellipsoid.positiveDir = axes.direction;
        const auto found = calibration::cartesianOf(
            m_base.ellipsoid, Pos::fromLongLatH(axes.east * 29.5, axes.north * -25.5, 40.0));
        test::expectNear({found.value_or(Pos())}, expected, 5e-9);
    }
}

// PROJ's own program.
TEST_F(DatumFitTest, GeographicPositionsBecomeCartesianOnes)
{
    const QList<Pos> positions = {Pos::fromLongLatH(12.5, 55.25, 40.0),
                                  Pos::fromLongLatH(-179.5, -89.0, 9000.0)};
    QList<Pos> bessel;
    QList<Pos> wgs84;
    for (const Pos &at : positions) {
        bessel << calibration::cartesianOf(m_base.ellipsoid, at).value_or(Pos());
        wgs84 << calibration::wgs84CartesianOf(at);
    }
    test::expectNear(bessel, test::runCct(QStringLiteral("+proj=cart +ellps=bessel"), positions),
                     5e-9);
    test::expectNear(wgs84, test::runCct(QStringLiteral("+proj=cart +ellps=WGS84"), positions),
                     5e-9);
}

} // namespace
} // namespace KelStd
