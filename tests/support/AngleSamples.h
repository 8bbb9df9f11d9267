#pragma once

#include "support/ShownAngle.h"

#include <cmath>
#include <cstddef>
#include <iterator>
#include <random>

namespace KelStd::test {

/// The decimals with which angles are printed.
constexpr int testedPrecisions[] = {0, 1, 2, 3, 4, 6, 9, 12, 15};

/// How many angles each test of a property takes, and of how many carries it takes one.
constexpr int anglesPerTest = KELSTD_ANGLES_PER_TEST;
constexpr int carryStep = KELSTD_CARRY_STEP;

/// An angle to print, and how.
struct AngleSample
{
    double degrees;
    int precision;
};

/// Seeded angles from all over the circle and around zero, beside carries, with few decimals in
/// degrees or in seconds (ties among them), of both signs.
class AngleSamples
{
public:
    explicit AngleSamples(unsigned seed) : m_random(seed) {}

    AngleSample next();
    /// A number that says which of the less frequent questions are asked of a sample.
    int turn() { return oneOf(5040); }

private:
    double uniform(double low, double high);
    int oneOf(int count);

    std::mt19937_64 m_random;
};

/// Calls `check` with every whole minute from `firstDegree` to `lastDegree`, the doubles beside it,
/// and the angles on both sides of where the seconds before it round to 60, at every precision.
template <typename Check>
void forEveryCarry(int firstDegree, int lastDegree, const Check &check)
{
    for (int minute = firstDegree * 60; minute <= lastDegree * 60; minute += carryStep) {
        const double at = minute / 60.0;
        const double sign = minute % 2 == 0 ? 1.0 : -1.0;
        for (const int precision : testedPrecisions) {
            const auto half = static_cast<double>(halfUnit(precision)) / 3600.0;
            check(AngleSample{sign * (at - 0.999 * half), precision}); // carried
            check(AngleSample{sign * (at - 1.001 * half), precision}); // not yet
        }
        const int precision =
            testedPrecisions[static_cast<std::size_t>(minute) % std::size(testedPrecisions)];
        check(AngleSample{sign * at, precision});
        check(AngleSample{sign * std::nextafter(at, 1000.0), precision});
        check(AngleSample{sign * std::nextafter(at, -1000.0), precision});
    }
}

} // namespace KelStd::test
