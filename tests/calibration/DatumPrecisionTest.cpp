// How well the parameters of a datum shift are known.

#include "support/Printers.h"
#include "support/ProjTest.h"

#include <KelStd/calibration/DatumFit.h>

#include <cmath>
#include <vector>

namespace KelStd {
namespace {

using calibration::CalibrationWarningKind;
using calibration::DatumDeviations;
using calibration::DatumFit;
using calibration::DatumMethod;
using calibration::DatumPair;

using Pairs = QVector<DatumPair>;

struct Row
{
    double local[3];
    double wgs84[3];
};

Pairs pairsOf(const std::vector<Row> &rows)
{
    Pairs pairs;
    for (const Row &row : rows) {
        pairs += DatumPair{QString::number(pairs.size() + 1),
                           Pos::fromXYZ(row.local[0], row.local[1], row.local[2]),
                           Pos::fromXYZ(row.wgs84[0], row.wgs84[1], row.wgs84[2]),
                           {}};
    }
    return pairs;
}

// Over a country, RT 90 to SWEREF 93 (ESRI:108213) with errors of 6 to 41 mm.
const std::vector<Row> country = {
    {{3330000.10, 830000.20, 5350000.30}, {3330498.008, 829950.307, 5350565.359}},
    {{3270000.40, 1010000.50, 5360000.60}, {3270504.503, 1009952.737, 5360565.550}},
    {{2980000.70, 920000.80, 5540000.90}, {2980503.674, 919963.636, 5540569.195}},
    {{2870000.15, 1120000.25, 5560000.35}, {2870510.091, 1119966.947, 5560568.942}},
    {{2600000.45, 950000.55, 5730000.65}, {2600506.359, 949977.113, 5730572.801}},
};

// Over a kilometre: 100, -50 and 25.5 m with errors of 1 to 2 mm.
const std::vector<Row> site = {
    {{3330000.0, 830000.0, 5350000.0}, {3330100.001, 829950.000, 5350025.502}},
    {{3330400.0, 830100.0, 5349800.0}, {3330500.000, 830050.002, 5349825.500}},
    {{3329900.0, 830600.0, 5349950.0}, {3330000.001, 830550.001, 5349975.500}},
    {{3329700.0, 829500.0, 5350200.0}, {3329799.998, 829449.999, 5350225.500}},
};

class DatumPrecision : public test::ProjTest
{
protected:
    DatumFit fitted(const Pairs &pairs, DatumMethod method = DatumMethod::Seven)
    {
        Coord base;
        Coord::CreateDefaultTMercCoordination(base);
        base.ellipsoid.proj4EllpsName = QStringLiteral("bessel");
        calibration::CalibrationFailure failure;
        const auto fit = calibration::fitDatum(base, pairs, method, &failure);
        EXPECT_TRUE(fit.has_value()) << failure.text;
        return fit.value_or(DatumFit());
    }

    static QStringList warningsOfExtent(const DatumFit &fit)
    {
        QStringList texts;
        for (const auto &warning : fit.warnings) {
            if (warning.kind == CalibrationWarningKind::SmallExtent)
                texts += warning.text;
        }
        return texts;
    }

    static void expectDeviations(const DatumFit &fit, const DatumDeviations &expected)
    {
        ASSERT_TRUE(fit.deviations.has_value());
        const auto expectNear = [](double found, double wanted) {
            // Positions of 5e6 m are doubles, of which residuals of centimetres keep seven digits.
            EXPECT_NEAR(found, wanted, 1e-6 * wanted);
        };
        expectNear(fit.deviations->x, expected.x);
        expectNear(fit.deviations->y, expected.y);
        expectNear(fit.deviations->z, expected.z);
        for (auto each : {&DatumDeviations::rx, &DatumDeviations::ry, &DatumDeviations::rz,
                          &DatumDeviations::scale}) {
            ASSERT_EQ(((*fit.deviations).*each).has_value(), (expected.*each).has_value());
            if (expected.*each)
                expectNear(*((*fit.deviations).*each), *(expected.*each));
        }
    }
};

// Expected: an adjustment of all seven parameters at once, without centroids, by Gauss and Newton
// with numerical derivatives and 50 digits (Python, mpmath): s0 times the roots of the diagonal of
// the inverse normal matrix.
TEST_F(DatumPrecision, OfSevenParametersIsThatOfAnAdjustmentOfAllAtOnce)
{
    const DatumFit fit = fitted(pairsOf(country));
    EXPECT_NEAR(fit.rigorous.y, 40.5760297375, 1e-6);
    EXPECT_NEAR(fit.rigorous.rx, -0.87759312733, 1e-8);
    EXPECT_NEAR(*fit.statistics.s0, 0.02753909158, 1e-8);
    expectDeviations(fit, {0.256039274, 0.8431586322, 0.2931807226, 0.02479201433, 0.008892444172,
                           0.01468290665, 0.0387528781});
    EXPECT_EQ(warningsOfExtent(fit), QStringList());
}

TEST_F(DatumPrecision, StandardDeviationsOfPairsReplaceS0)
{
    Pairs pairs = pairsOf(country);
    const double sigmas[] = {0.02, 0.05, 0.03, 0.02, 0.10};
    for (int i = 0; i < pairs.size(); ++i)
        pairs[i].sigma = sigmas[i];
    const DatumFit fit = fitted(pairs);
    EXPECT_NEAR(fit.rigorous.y, 40.5125231632, 1e-6);
    expectDeviations(fit, {0.4644767093, 1.076081668, 0.4820348819, 0.03224412332, 0.01880933284,
                           0.01732543967, 0.0448573219});
}

// Of a mean of n: that of one over the root of n.
TEST_F(DatumPrecision, OfThreeParametersIsThatOfAMean)
{
    const DatumFit fit = fitted(pairsOf(site), DatumMethod::Three);
    const double each = *fit.statistics.s0 / 2.0;
    expectDeviations(fit, {each, each, each, {}, {}, {}, {}});
    EXPECT_EQ(warningsOfExtent(fit), QStringList());
    EXPECT_FALSE(fitted(pairsOf({site[0]}), DatumMethod::Three).deviations.has_value());
}

TEST_F(DatumPrecision, PairsTooNearEachOtherAreWarnedOf)
{
    const DatumFit fit = fitted(pairsOf(site));
    expectDeviations(fit, {15.32014165, 12.29287047, 11.34413609, 0.3725055551, 0.5420396091,
                           0.3324944241, 1.430418698});
    const QStringList texts = warningsOfExtent(fit);
    ASSERT_EQ(texts.size(), 1);
    EXPECT_TRUE(texts.first().startsWith(
        QStringLiteral("the translation is known to 15.3 m only (standard deviation): "
                       "the pairs lie too near each other")))
        << texts.first();

    // Numbers that fit by chance are known to a millimetre at best, unless they are said to be.
    Pairs exact = pairsOf(site);
    for (DatumPair &pair : exact) {
        const stXYZ &at = pair.local.getXYZ();
        pair.wgs84 = Pos::fromXYZ(at.x + 100.0, at.y - 50.0, at.z + 25.5);
    }
    const QStringList raised = warningsOfExtent(fitted(exact));
    ASSERT_EQ(raised.size(), 1);
    EXPECT_TRUE(raised.first().contains(QStringLiteral("of coordinates that are good to 1 mm")))
        << raised.first();
    for (DatumPair &pair : exact)
        pair.sigma = 0.0001;
    EXPECT_EQ(warningsOfExtent(fitted(exact)), QStringList());
    for (DatumPair &pair : exact)
        pair.sigma = 0.01;
    EXPECT_EQ(warningsOfExtent(fitted(exact)).size(), 1);
}

} // namespace
} // namespace KelStd
