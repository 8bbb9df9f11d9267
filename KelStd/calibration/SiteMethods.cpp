#include <KelStd/calibration/SiteMethods.h>

#include <algorithm>

namespace KelStd::calibration {

namespace {

template <typename Method>
struct MethodRow
{
    Method method;
    const char *word;
    int leastPoints;
};

constexpr MethodRow<PlanMethod> planRows[] = {
    {PlanMethod::None, "none", 0},
    {PlanMethod::Shift, "shift", 1},
    {PlanMethod::Rotation, "rotation", 2},
    {PlanMethod::Four, "four", 2},
};

constexpr MethodRow<HeightMethod> heightRows[] = {
    {HeightMethod::None, "none", 0},
    {HeightMethod::Fixed, "fixed", 1},
    {HeightMethod::Plane, "plane", 3},
    {HeightMethod::Curve, "curve", 6},
};

template <typename Rows, typename Method>
const auto &rowOf(const Rows &rows, Method method)
{
    return *std::find_if(std::begin(rows), std::end(rows),
                         [method](const auto &row) { return row.method == method; });
}

template <typename Method, std::size_t Count>
std::optional<Method> methodOf(const MethodRow<Method> (&rows)[Count], const QString &word)
{
    for (const auto &row : rows) {
        if (QLatin1String(row.word) == word)
            return row.method;
    }
    return std::nullopt;
}

} // namespace

int leastPoints(PlanMethod method)
{
    return rowOf(planRows, method).leastPoints;
}

int leastPoints(HeightMethod method)
{
    return rowOf(heightRows, method).leastPoints;
}

QString wordOf(PlanMethod method)
{
    return QLatin1String(rowOf(planRows, method).word);
}

QString wordOf(HeightMethod method)
{
    return QLatin1String(rowOf(heightRows, method).word);
}

std::optional<PlanMethod> planMethodOf(const QString &word)
{
    return methodOf(planRows, word);
}

std::optional<HeightMethod> heightMethodOf(const QString &word)
{
    return methodOf(heightRows, word);
}

} // namespace KelStd::calibration
