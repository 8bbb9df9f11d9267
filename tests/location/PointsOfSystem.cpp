#include "location/PointsOfSystem.h"

#include "location/LocationOperations.h"
#include "support/Printers.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace KelStd::test {

namespace {

constexpr double lowest = -400.0;
constexpr double highest = 2000.0;

bool isPlane(const PublishedCase &published)
{
    return published.from == Frame::LocalNEH
           || std::any_of(
               published.expected.begin(), published.expected.end(),
               [](const ExpectedFrame &expected) { return expected.frame == Frame::LocalNEH; });
}

} // namespace

PointsOfSystem::PointsOfSystem(const QString &system, const Coord &coord, unsigned seed)
    : m_random(seed)
{
    std::vector<Pos> all;
    for (const PublishedCase &published : publishedFigures().cases) {
        if (published.system != system)
            continue;
        Location location;
        QString error;
        EXPECT_TRUE(
            operationFrom(published.from).make(published.start, location, nullptr, &coord, &error))
            << error;
        (isPlane(published) ? m_centres : all).push_back(location.wgs84LLH);
    }
    if (m_centres.empty())
        m_centres = all;
}

Pos PointsOfSystem::next()
{
    const stLongLatH &centre = m_centres.at(m_random() % m_centres.size()).getLongLatH();
    const double latitude = std::clamp(centre.latitude + uniform(-0.5, 0.5), -89.9, 89.9);
    return Pos::fromLongLatH(centre.longitude + uniform(-0.5, 0.5), latitude,
                             uniform(lowest, highest));
}

double PointsOfSystem::uniform(double low, double high)
{
    return std::uniform_real_distribution<double>(low, high)(m_random);
}

} // namespace KelStd::test
