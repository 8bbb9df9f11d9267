#include <KelStd/catalogue/CarriedShift.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace KelStd::catalogue {

namespace {

bool isAffine(const ProjStep &step)
{
    return step.name == "helmert" || step.name == "molobadekas";
}

/// A shift that goes with the time, or is meant for one instant.
bool dependsOnTime(const ProjStep &step)
{
    return step.has("t_epoch") || step.has("t_obs") || step.has("dx") || step.has("drx")
           || step.has("ds");
}

/// The degrees of a prime meridian, which PROJ writes as a number or by a name.
std::optional<double> meridian(const QByteArray &text)
{
    struct Row
    {
        const char *name;
        double degrees;
    };
    // From `proj -lm`; these are defined in degrees, minutes and seconds.
    static constexpr Row rows[] = {
        {"greenwich", 0.0},
        {"lisbon", -(9.0 + 7.0 / 60.0 + 54.862 / 3600.0)},
        {"paris", 2.0 + 20.0 / 60.0 + 14.025 / 3600.0},
        {"bogota", -(74.0 + 4.0 / 60.0 + 51.3 / 3600.0)},
        {"madrid", -(3.0 + 41.0 / 60.0 + 16.58 / 3600.0)},
        {"rome", 12.0 + 27.0 / 60.0 + 8.4 / 3600.0},
        {"bern", 7.0 + 26.0 / 60.0 + 22.5 / 3600.0},
        {"jakarta", 106.0 + 48.0 / 60.0 + 27.79 / 3600.0},
        {"ferro", -(17.0 + 40.0 / 60.0)},
        {"brussels", 4.0 + 22.0 / 60.0 + 4.71 / 3600.0},
        {"stockholm", 18.0 + 3.0 / 60.0 + 29.8 / 3600.0},
        {"athens", 23.0 + 42.0 / 60.0 + 58.815 / 3600.0},
        {"oslo", 10.0 + 43.0 / 60.0 + 22.5 / 3600.0},
        {"copenhagen", 12.0 + 34.0 / 60.0 + 40.35 / 3600.0},
    };
    for (const Row &row : rows) {
        if (text == row.name)
            return row.degrees;
    }
    bool isNumber = false;
    const double degrees = text.toDouble(&isNumber);
    return isNumber ? std::optional<double>(degrees) : std::nullopt;
}

/// A single shift that is taken forwards, with its numbers as they are published.
Similarity published(const ProjStep &step)
{
    Similarity similarity;
    const double sign = step.text("convention") == "coordinate_frame" ? -1.0 : 1.0;
    static constexpr std::array<const char *, 3> translations = {"x", "y", "z"};
    static constexpr std::array<const char *, 3> rotations = {"rx", "ry", "rz"};
    for (std::size_t axis = 0; axis < 3; ++axis) {
        similarity.translation[axis] = step.number(translations[axis]).value_or(0.0);
        const double rotation = step.number(rotations[axis]).value_or(0.0);
        similarity.rotation[axis] = rotation == 0.0 ? 0.0 : sign * rotation;
    }
    similarity.scale = step.number("s").value_or(0.0);
    return similarity;
}

/// Translations alone add up, whatever their directions are.
std::optional<Similarity> translation(const std::vector<ProjStep> &steps)
{
    Similarity sum;
    for (const ProjStep &step : steps) {
        const Similarity part = published(step);
        if (step.name != "helmert" || part.hasRotation() || part.scale != 0.0)
            return std::nullopt;
        for (std::size_t axis = 0; axis < 3; ++axis)
            sum.translation[axis] +=
                step.isInverse ? -part.translation[axis] : part.translation[axis];
    }
    return sum;
}

void setSimilarity(CarriedShift &shift)
{
    if (const auto sum = translation(shift.affine)) {
        shift.similarity = *sum;
        shift.kind = sum->isNull() ? ShiftKind::None : ShiftKind::Three;
        return;
    }
    shift.kind = ShiftKind::Seven;
    const ProjStep &first = shift.affine.front();
    shift.isPublished = shift.affine.size() == 1 && first.name == "helmert" && !first.isInverse;
    if (shift.isPublished)
        shift.similarity = published(first);
}

/// Takes the steps that turn longitudes off the beginning; false where one cannot be read.
bool takeTurns(CarriedShift &shift, std::size_t &next)
{
    for (; next < shift.steps.size() && shift.steps[next].name == "longlat"; ++next) {
        const ProjStep &step = shift.steps[next];
        if (!step.has("pm"))
            continue;
        const auto degrees = meridian(step.text("pm"));
        if (!degrees)
            return false;
        shift.turn += step.isInverse ? *degrees : -*degrees;
    }
    return true;
}

/// The steps from an ellipsoid to WGS 84 with nothing or one shift between.
CarriedShift shiftBy(std::vector<ProjStep> affine, double semiMajorAxis, double inverseFlattening,
                     double primeMeridian)
{
    const auto number = [](double value) { return QByteArray::number(value, 'g', 17); };
    std::vector<std::pair<QByteArray, QByteArray>> shape;
    if (inverseFlattening == 0.0)
        shape = {{"R", number(semiMajorAxis)}};
    else
        shape = {{"a", number(semiMajorAxis)}, {"rf", number(inverseFlattening)}};
    CarriedShift shift;
    shift.turn = primeMeridian;
    shift.affine = std::move(affine);
    if (primeMeridian != 0.0) {
        auto parameters = shape;
        parameters.emplace_back("pm", number(primeMeridian));
        shift.steps.push_back({"longlat", true, parameters});
    }
    shift.steps.push_back({"push", false, {{"v_3", ""}}});
    shift.steps.push_back({"cart", false, shape});
    for (const ProjStep &step : shift.affine)
        shift.steps.push_back(step);
    shift.steps.push_back({"cart", true, {{"ellps", "WGS84"}}});
    shift.steps.push_back({"pop", false, {{"v_3", ""}}});
    return shift;
}

} // namespace

std::optional<CarriedShift> carriedShift(const QByteArray &pipeline)
{
    if (pipeline.isEmpty())
        return std::nullopt;
    CarriedShift shift;
    shift.steps = withoutBookkeeping(stepsOf(pipeline));
    std::size_t next = 0;
    if (!takeTurns(shift, next))
        return std::nullopt;
    const auto &steps = shift.steps;
    const std::size_t count = steps.size();
    if (next == count)
        return shift;
    if (next + 1 == count && steps[next].name == "hgridshift" && !steps[next].isInverse) {
        shift.kind = ShiftKind::Grid;
        return shift;
    }
    if (steps[next].name == "push")
        ++next;
    if (next == count || steps[next].name != "cart" || steps[next].isInverse)
        return std::nullopt;
    for (++next; next < count && isAffine(steps[next]); ++next) {
        if (dependsOnTime(steps[next]))
            return std::nullopt;
        shift.affine.push_back(steps[next]);
    }
    if (next == count || steps[next].name != "cart" || !steps[next].isInverse)
        return std::nullopt;
    ++next;
    if (next < count && steps[next].name == "pop")
        ++next;
    if (next != count)
        return std::nullopt;
    setSimilarity(shift);
    return shift;
}

CarriedShift shiftOfNothing(double semiMajorAxis, double inverseFlattening, double primeMeridian)
{
    return shiftBy({}, semiMajorAxis, inverseFlattening, primeMeridian);
}

CarriedShift shiftOfText(const Similarity &similarity, double semiMajorAxis,
                         double inverseFlattening, double primeMeridian)
{
    const auto number = [](double value) { return QByteArray::number(value, 'g', 17); };
    ProjStep step;
    step.name = "helmert";
    step.parameters = {{"x", number(similarity.translation[0])},
                       {"y", number(similarity.translation[1])},
                       {"z", number(similarity.translation[2])}};
    if (similarity.hasRotation() || similarity.scale != 0.0) {
        step.parameters.emplace_back("rx", number(similarity.rotation[0]));
        step.parameters.emplace_back("ry", number(similarity.rotation[1]));
        step.parameters.emplace_back("rz", number(similarity.rotation[2]));
        step.parameters.emplace_back("s", number(similarity.scale));
        step.parameters.emplace_back("convention", "position_vector");
    }
    CarriedShift shift = shiftBy({step}, semiMajorAxis, inverseFlattening, primeMeridian);
    setSimilarity(shift);
    return shift;
}

std::vector<ProjStep> withFullRotation(std::vector<ProjStep> steps)
{
    static constexpr std::array<const char *, 3> rotations = {"rx", "ry", "rz"};
    for (ProjStep &step : steps) {
        if (!isAffine(step))
            continue;
        // The full matrices of the two conventions turn about the axes in opposite orders, so that
        // the other signs alone do not lead from one to the other.
        const bool isOther = step.text("convention") == "coordinate_frame";
        for (auto &parameter : step.parameters) {
            const bool isRotation = std::find(rotations.cbegin(), rotations.cend(), parameter.first)
                                    != rotations.cend();
            if (isOther && isRotation)
                parameter.second = QByteArray::number(-parameter.second.toDouble(), 'g', 17);
            else if (parameter.first == "convention")
                parameter.second = "position_vector";
        }
        step.parameters.emplace_back("exact", "");
    }
    return steps;
}

} // namespace KelStd::catalogue
