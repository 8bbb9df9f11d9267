#include "support/AngleSamples.h"

#include <algorithm>

namespace KelStd::test {

double AngleSamples::uniform(double low, double high)
{
    return std::uniform_real_distribution<double>(low, high)(m_random);
}

int AngleSamples::oneOf(int count)
{
    return std::uniform_int_distribution<int>(0, count - 1)(m_random);
}

AngleSample AngleSamples::next()
{
    const int precision =
        testedPrecisions[static_cast<std::size_t>(oneOf(std::size(testedPrecisions)))];
    const double sign = oneOf(2) == 0 ? 1.0 : -1.0;
    switch (oneOf(6)) {
    case 0: return {uniform(-360.0, 360.0), precision};
    case 1: return {sign * std::pow(10.0, uniform(-8.0, 0.0)), precision};
    case 2: {
        // A whole minute, less or more a distance anywhere between an arc second and nothing.
        const double distance = std::pow(10.0, -uniform(0.0, 16.0)) / 3600.0;
        const double minute = oneOf(60 * 360 + 1) / 60.0;
        return {sign * (oneOf(2) == 0 ? minute - distance : minute + distance), precision};
    }
    case 3: {
        // A whole second, or a double beside it.
        const double second = oneOf(3600 * 360 + 1) / 3600.0;
        const double beside[] = {second, std::nextafter(second, 1000.0),
                                 std::nextafter(second, -1000.0)};
        return {sign * beside[oneOf(3)], precision};
    }
    case 4: { // a few decimals in degrees
        const int decimals = oneOf(7);
        return {sign * std::round(uniform(0.0, 360.0) * std::pow(10.0, decimals))
                    / std::pow(10.0, decimals),
                precision};
    }
    default: { // a few decimals in seconds, one more than is shown among them
        const int decimals = std::min(precision + 1, oneOf(8));
        const double seconds =
            std::round(uniform(0.0, 60.0) * std::pow(10.0, decimals)) / std::pow(10.0, decimals);
        return {sign * (oneOf(360) + oneOf(60) / 60.0 + seconds / 3600.0), precision};
    }
    }
}

} // namespace KelStd::test
