// What a fit says of its points, held against fits without them and against normal equations.

#include "calibration/MeasuredSite.h"
#include "support/Printers.h"
#include "support/ProjTest.h"

#include <KelStd/calibration/SiteTransform.h>

#include <algorithm>

namespace KelStd {
namespace {

using calibration::HeightMethod;
using calibration::PlanMethod;
using calibration::SiteFit;
using calibration::SiteFitOptions;
using calibration::SiteTransform;
using test::controlOf;
using test::fitted;
using test::TrueSite;

class FitStatisticsTest : public test::ProjTest
{
protected:
    const Coord m_base = test::planeSystem();

    static TrueSite site()
    {
        TrueSite site;
        site.turn = 0.6;
        site.scale = 1.00004;
        site.a = 0.5;
        site.b = 20e-6;
        site.c = -10e-6;
        return site;
    }
};

/// Least squares by normal equations in long double, with the inverse by elimination.
struct NormalEquations
{
    using Row = std::vector<long double>;

    NormalEquations(const std::vector<Row> &design, const Row &observed, const Row &sigma)
    {
        const std::size_t n = design.front().size();
        std::vector<Row> matrix(n, Row(2 * n, 0.0L));
        Row right(n, 0.0L);
        for (std::size_t r = 0; r < design.size(); ++r) {
            const long double weight = 1.0L / (sigma[r] * sigma[r]);
            for (std::size_t i = 0; i < n; ++i) {
                right[i] += weight * design[r][i] * observed[r];
                for (std::size_t j = 0; j < n; ++j)
                    matrix[i][j] += weight * design[r][i] * design[r][j];
            }
        }
        for (std::size_t i = 0; i < n; ++i)
            matrix[i][n + i] = 1.0L;
        for (std::size_t i = 0; i < n; ++i) {
            const long double pivot = matrix[i][i];
            for (long double &value : matrix[i])
                value /= pivot;
            for (std::size_t j = 0; j < n; ++j) {
                const long double factor = matrix[j][i];
                for (std::size_t k = 0; j != i && k < 2 * n; ++k)
                    matrix[j][k] -= factor * matrix[i][k];
            }
        }
        parameters.assign(n, 0.0L);
        inverse.assign(n, Row(n));
        for (std::size_t i = 0; i < n; ++i) {
            for (std::size_t j = 0; j < n; ++j) {
                inverse[i][j] = matrix[i][n + j];
                parameters[i] += inverse[i][j] * right[j];
            }
        }
        for (std::size_t r = 0; r < design.size(); ++r) {
            long double value = -observed[r];
            long double leverage = 0.0L;
            for (std::size_t i = 0; i < n; ++i) {
                value += design[r][i] * parameters[i];
                for (std::size_t j = 0; j < n; ++j)
                    leverage += design[r][i] * inverse[i][j] * design[r][j];
            }
            residuals.push_back(value);
            redundancies.push_back(1.0L - leverage / (sigma[r] * sigma[r]));
            squares += value * value / (sigma[r] * sigma[r]);
        }
        redundancy = static_cast<int>(design.size() - n);
    }

    Row parameters, residuals, redundancies;
    std::vector<Row> inverse;
    long double squares = 0.0L;
    int redundancy = 0;
};

double value(long double number)
{
    return static_cast<double>(number);
}

TEST_F(FitStatisticsTest, OfFourParametersAreThoseOfNormalEquations)
{
    for (const bool isWeighted : {false, true}) {
        ControlPoints control = controlOf(m_base, site(), 1.0);
        for (int i = 0; isWeighted && i < control.size(); ++i)
            control[i].sigmaH = 0.003 + 0.001 * i;
        SiteFitOptions options;
        options.height = HeightMethod::None;
        const SiteFit fit = fitted(m_base, control, options);

        std::vector<NormalEquations::Row> design;
        NormalEquations::Row observed;
        NormalEquations::Row sigma;
        for (std::size_t i = 0; i < 8; ++i) {
            const stENU &place = test::places()[i];
            const auto index = static_cast<int>(i);
            design.push_back({1.0L, 0.0L, place.e, place.n});
            design.push_back({0.0L, 1.0L, place.n, -place.e});
            observed.push_back(control.at(index).east - 1000.0L);
            observed.push_back(control.at(index).north - 2000.0L);
            sigma.insert(sigma.end(), 2, control.at(index).sigmaH.value_or(1.0));
        }
        const NormalEquations expected(design, observed, sigma);
        const double s0 = std::sqrt(value(expected.squares) / expected.redundancy);
        const double unit = isWeighted ? 1.0 : s0;
        EXPECT_EQ(fit.plan.statistics.redundancy, 12);
        EXPECT_NEAR(*fit.plan.statistics.s0, s0, 1e-6 * s0);
        EXPECT_EQ(fit.plan.statistics.test,
                  isWeighted ? calibration::OutlierTest::Baarda : calibration::OutlierTest::Pope);
        double squares = 0.0;
        for (std::size_t i = 0; i < 8; ++i) {
            const auto &point = fit.points.at(static_cast<int>(i));
            const double east = value(expected.residuals[2 * i]);
            const double north = value(expected.residuals[2 * i + 1]);
            squares += east * east + north * north;
            EXPECT_NEAR(*point.residualEast, east, 1e-8);
            EXPECT_NEAR(*point.residualNorth, north, 1e-8);
            const double r = std::min(value(expected.redundancies[2 * i]),
                                      value(expected.redundancies[2 * i + 1]));
            EXPECT_NEAR(*point.plan.redundancy, r, 1e-9);
            const double rowSigma = unit * value(sigma[2 * i]);
            EXPECT_NEAR(*point.plan.test,
                        std::max(std::abs(east), std::abs(north)) / (rowSigma * std::sqrt(r)),
                        1e-5);
            EXPECT_NEAR(*point.plan.detectable, 4.1321 * rowSigma / std::sqrt(r), 1e-6);
        }
        EXPECT_NEAR(*fit.plan.statistics.rms, std::sqrt(squares / 8.0), 1e-9);
        const double deviation = unit * std::sqrt(value(expected.inverse[2][2]));
        EXPECT_NEAR(*fit.plan.scaleDeviation, deviation * 1e6, 1e-4);
        EXPECT_NEAR(*fit.plan.rotationDeviation, deviation / 1.00004 * 206264.806247, 1e-4);
        // Of an isotropic similarity the ellipse is a circle: by the point's rows.
        const auto &row = design[0];
        long double variance = 0.0L;
        for (std::size_t i = 0; i < 4; ++i) {
            for (std::size_t j = 0; j < 4; ++j)
                variance += row[i] * expected.inverse[i][j] * row[j];
        }
        ASSERT_TRUE(fit.points.first().ellipse);
        const double radius = unit * std::sqrt(value(variance));
        EXPECT_NEAR(fit.points.first().ellipse->major, radius, 1e-7);
        EXPECT_NEAR(fit.points.first().ellipse->minor, radius, 1e-7);
    }
}

TEST_F(FitStatisticsTest, OfAPlaneOfHeightsAreThoseOfNormalEquations)
{
    const ControlPoints control = controlOf(m_base, site(), 1.0);
    const SiteFit fit = fitted(m_base, control);
    std::vector<NormalEquations::Row> design;
    NormalEquations::Row observed;
    for (const auto &point : fit.points) {
        design.push_back({1.0L, point.site.n - 2000.0L, point.site.e - 1000.0L});
        observed.push_back(point.control.u - static_cast<long double>(point.base.u));
    }
    const NormalEquations expected(design, observed, NormalEquations::Row(8, 1.0L));
    EXPECT_NEAR(fit.height.surface.b, value(expected.parameters[1]), 1e-11);
    EXPECT_NEAR(fit.height.surface.c, value(expected.parameters[2]), 1e-11);
    const double s0 = std::sqrt(value(expected.squares) / 5.0);
    EXPECT_NEAR(*fit.height.statistics.s0, s0, 1e-8);
    EXPECT_NEAR(*fit.height.slopeNorthDeviation, s0 * std::sqrt(value(expected.inverse[1][1])),
                1e-10);
    for (std::size_t i = 0; i < 8; ++i) {
        const auto &point = fit.points.at(static_cast<int>(i));
        const double r = value(expected.redundancies[i]);
        EXPECT_NEAR(*point.residualHeight, value(expected.residuals[i]), 1e-9);
        EXPECT_NEAR(*point.height.redundancy, r, 1e-9);
        EXPECT_NEAR(*point.leftOutHeight, value(expected.residuals[i]) / r, 1e-8);
    }
}

TEST_F(FitStatisticsTest, LeftOutResidualsAreThoseOfAFitWithoutThePoint)
{
    for (const PlanMethod plan : {PlanMethod::Shift, PlanMethod::Rotation, PlanMethod::Four}) {
        for (const bool isWeighted : {false, true}) {
            SCOPED_TRACE(calibration::wordOf(plan).toStdString());
            // Errors of decimetres: what is not linear shows.
            ControlPoints control = controlOf(m_base, site(), 50.0);
            for (int i = 0; isWeighted && i < control.size(); ++i)
                control[i].sigmaH = 0.1 + 0.05 * i;
            SiteFitOptions options;
            options.plan = plan;
            options.height = HeightMethod::None;
            const SiteFit fit = fitted(m_base, control, options);
            for (const auto &point : fit.points) {
                SiteFitOptions others = options;
                others.without = QStringList(point.name);
                const SiteFit without = fitted(m_base, control, others);
                const auto site = SiteTransform::of(without.coord);
                ASSERT_TRUE(site);
                const stENU found = site->toSite(point.base);
                EXPECT_NEAR(*point.leftOutEast, found.e - point.control.e, 1e-7);
                EXPECT_NEAR(*point.leftOutNorth, found.n - point.control.n, 1e-7);
            }
        }
    }
    for (const HeightMethod height :
         {HeightMethod::Fixed, HeightMethod::Plane, HeightMethod::Curve}) {
        SCOPED_TRACE(calibration::wordOf(height).toStdString());
        const ControlPoints control = controlOf(m_base, site(), 1.0);
        SiteFitOptions options;
        options.height = height;
        const SiteFit fit = fitted(m_base, control, options);
        for (int i = 0; i < fit.points.size(); ++i) {
            ControlPoints others = control;
            others[i].isUsedInHeight = false;
            const auto site = SiteTransform::of(fitted(m_base, others, options).coord);
            ASSERT_TRUE(site);
            const auto &point = fit.points.at(i);
            EXPECT_NEAR(*point.leftOutHeight, site->toSite(point.base).u - point.control.u, 1e-7);
        }
    }
}

TEST_F(FitStatisticsTest, APlantedBlunderIsFoundAndNamedOneAtATime)
{
    for (const bool isWeighted : {false, true}) {
        ControlPoints control = controlOf(m_base, site(), 1.0);
        control[3].east += 0.15;
        control[6].height = *control.at(6).height - 0.20;
        SiteFitOptions options;
        if (isWeighted) {
            options.sigmaH = 0.005;
            options.sigmaV = 0.006;
        }
        const SiteFit fit = fitted(m_base, control, options);
        EXPECT_EQ(fit.plan.statistics.suspect, QStringLiteral("P4"));
        EXPECT_EQ(fit.height.statistics.suspect, QStringLiteral("P7"));
        for (const auto &point : fit.points) {
            EXPECT_EQ(point.plan.isSuspect, point.name == QStringLiteral("P4"));
            EXPECT_EQ(point.height.isSuspect, point.name == QStringLiteral("P7"));
        }
        // Nothing is dropped by itself; without them nothing is suspect.
        EXPECT_EQ(fit.plan.statistics.points, 8);
        options.without = QStringList{QStringLiteral("P4"), QStringLiteral("P7")};
        const SiteFit without = fitted(m_base, control, options);
        EXPECT_TRUE(without.plan.statistics.suspect.isEmpty());
        EXPECT_TRUE(without.height.statistics.suspect.isEmpty());
        EXPECT_EQ(without.plan.statistics.points, 6);
        EXPECT_EQ(without.control.at(3).useWord(), QStringLiteral("-"));
        EXPECT_FALSE(without.points.at(3).residualEast);
    }
}

// Student's t for two sides at 0.001, as tables have it: 31.599 (2 degrees of freedom), 6.869 (5),
// 4.221 (13).
TEST_F(FitStatisticsTest, CriticalValuesAreThoseOfTheTables)
{
    const struct
    {
        std::size_t points;
        PlanMethod plan;
        int redundancy;
        double student;
    } rows[] = {
        {5, PlanMethod::Four, 6, 6.869},
        {8, PlanMethod::Shift, 14, 4.221},
    };
    for (const auto &row : rows) {
        SiteFitOptions options;
        options.plan = row.plan;
        options.height = HeightMethod::None;
        const SiteFit fit = fitted(m_base, controlOf(m_base, TrueSite(), 1.0, row.points), options);
        ASSERT_EQ(fit.plan.statistics.redundancy, row.redundancy);
        const double t = row.student;
        EXPECT_NEAR(*fit.plan.statistics.criticalValue,
                    std::sqrt(row.redundancy) * t / std::sqrt(row.redundancy - 1 + t * t), 5e-4);
        options.sigmaH = 0.01;
        EXPECT_EQ(*fitted(m_base, controlOf(m_base, TrueSite(), 1.0, row.points), options)
                       .plan.statistics.criticalValue,
                  3.2905);
    }
}

TEST_F(FitStatisticsTest, WithoutRedundancyThereIsNoTest)
{
    const SiteFit fit = fitted(m_base, controlOf(m_base, site(), 1.0, 2));
    EXPECT_EQ(fit.plan.statistics.redundancy, 0);
    EXPECT_FALSE(fit.plan.statistics.s0);
    EXPECT_FALSE(fit.plan.statistics.criticalValue);
    EXPECT_FALSE(fit.plan.scaleDeviation);
    for (const auto &point : fit.points) {
        EXPECT_EQ(*point.plan.redundancy, 0.0);
        EXPECT_FALSE(point.plan.test);
        EXPECT_FALSE(point.plan.detectable);
        EXPECT_FALSE(point.leftOutNorth);
        EXPECT_FALSE(point.ellipse);
        // Two heights and one shift: both tests are equal, and none is suspected for it.
        EXPECT_NEAR(*point.height.test, 1.0, 1e-9);
        EXPECT_FALSE(point.height.isSuspect);
    }
    EXPECT_FALSE(fit.height.statistics.criticalValue);
}

TEST_F(FitStatisticsTest, EqualTestsNameNobody)
{
    // Two heights that disagree by a metre, with standard deviations of a centimetre.
    ControlPoints control = controlOf(m_base, TrueSite(), 0.0, 2);
    control[1].height = *control.at(1).height + 1.0;
    SiteFitOptions options;
    options.sigmaV = 0.01;
    const SiteFit fit = fitted(m_base, control, options);
    EXPECT_GT(*fit.points.first().height.test, 3.2905);
    EXPECT_TRUE(fit.height.statistics.suspect.isEmpty());
    EXPECT_TRUE(std::any_of(fit.warnings.begin(), fit.warnings.end(), [](const auto &warning) {
        return warning.kind == calibration::CalibrationWarningKind::Suspect;
    }));
}

} // namespace
} // namespace KelStd
