#include <KelStd/catalogue/Similarity.h>

#include <cmath>

namespace KelStd::catalogue {

namespace {

using Matrix = std::array<Vector, 3>;

constexpr double radiansPerSecond = 3.14159265358979323846 / 180.0 / 3600.0;
constexpr double partsPerMillion = 1e-6;

/// The full rotation matrix of the position-vector convention [rad], as PROJ's "helmert" with
/// "+exact" has it.
Matrix rotationMatrix(const Vector &angles)
{
    const double cf = std::cos(angles[0]);
    const double sf = std::sin(angles[0]);
    const double ct = std::cos(angles[1]);
    const double st = std::sin(angles[1]);
    const double cp = std::cos(angles[2]);
    const double sp = std::sin(angles[2]);
    return {{{ct * cp, -ct * sp, st},
             {cf * sp + sf * st * cp, cf * cp - sf * st * sp, -sf * ct},
             {sf * sp - cf * st * cp, sf * cp + cf * st * sp, cf * ct}}};
}

Vector times(const Matrix &matrix, const Vector &vector)
{
    Vector result{};
    for (std::size_t row = 0; row < 3; ++row) {
        for (std::size_t column = 0; column < 3; ++column)
            result[row] += matrix[row][column] * vector[column];
    }
    return result;
}

Vector minus(const Vector &a, const Vector &b)
{
    return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}

constexpr std::size_t unknowns = 7;
using Normal = std::array<std::array<double, unknowns + 1>, unknowns>;

/// Solves the normal equations, whose right side is the last column, by Gauss with pivots; what
/// cannot be told from the data stays zero.
std::array<double, unknowns> solved(Normal &rows)
{
    for (std::size_t column = 0; column < unknowns; ++column) {
        std::size_t pivot = column;
        for (std::size_t row = column + 1; row < unknowns; ++row) {
            if (std::abs(rows[row][column]) > std::abs(rows[pivot][column]))
                pivot = row;
        }
        std::swap(rows[column], rows[pivot]);
        if (rows[column][column] == 0.0)
            continue;
        for (std::size_t row = 0; row < unknowns; ++row) {
            if (row == column)
                continue;
            const double factor = rows[row][column] / rows[column][column];
            for (std::size_t next = column; next <= unknowns; ++next)
                rows[row][next] -= factor * rows[column][next];
        }
    }
    std::array<double, unknowns> result{};
    for (std::size_t row = 0; row < unknowns; ++row)
        result[row] = rows[row][row] == 0.0 ? 0.0 : rows[row][unknowns] / rows[row][row];
    return result;
}

} // namespace

bool Similarity::hasRotation() const
{
    return rotation != Vector{};
}

bool Similarity::isNull() const
{
    return translation == Vector{} && !hasRotation() && scale == 0.0;
}

Vector Similarity::apply(const Vector &point) const
{
    const Matrix matrix =
        rotationMatrix({rotation[0] * radiansPerSecond, rotation[1] * radiansPerSecond,
                        rotation[2] * radiansPerSecond});
    Vector result = times(matrix, point);
    for (std::size_t index = 0; index < 3; ++index)
        result[index] = translation[index] + (1.0 + scale * partsPerMillion) * result[index];
    return result;
}

Similarity fitted(const std::vector<Pair> &pairs)
{
    // About the middle of the places, where translation and rotation do not depend on each other.
    Vector from{};
    Vector to{};
    double size = 0.0;
    const auto count = static_cast<double>(pairs.size());
    for (const Pair &pair : pairs) {
        for (std::size_t index = 0; index < 3; ++index) {
            from[index] += pair.first[index] / count;
            to[index] += pair.second[index] / count;
        }
    }
    for (const Pair &pair : pairs) {
        const Vector d = minus(pair.first, from);
        size = std::max(size, std::sqrt(d[0] * d[0] + d[1] * d[1] + d[2] * d[2]));
    }
    if (!(size > 0.0))
        size = 1.0;
    Vector angles{}; // [rad]
    double scale = 1.0;
    Vector offset{};          // of the middles [m]
    constexpr int rounds = 4; // Newton's: the rotations are small
    for (int round = 0; round < rounds; ++round) {
        const Matrix matrix = rotationMatrix(angles);
        Normal normal{};
        for (const Pair &pair : pairs) {
            Vector d = minus(pair.first, from);
            const Vector wanted = minus(pair.second, to);
            const Vector turned = times(matrix, d);
            for (double &component : d)
                component /= size;
            // Derivatives by offset, the rotations (times size) and the scale (times size).
            const std::array<std::array<double, unknowns>, 3> by = {
                {{1.0, 0.0, 0.0, 0.0, d[2], -d[1], d[0]},
                 {0.0, 1.0, 0.0, -d[2], 0.0, d[0], d[1]},
                 {0.0, 0.0, 1.0, d[1], -d[0], 0.0, d[2]}}};
            for (std::size_t axis = 0; axis < 3; ++axis) {
                const double misses = wanted[axis] - offset[axis] - scale * turned[axis];
                for (std::size_t row = 0; row < unknowns; ++row) {
                    for (std::size_t column = 0; column < unknowns; ++column)
                        normal[row][column] += by[axis][row] * by[axis][column];
                    normal[row][unknowns] += by[axis][row] * misses;
                }
            }
        }
        const auto step = solved(normal);
        for (std::size_t index = 0; index < 3; ++index) {
            offset[index] += step[index];
            angles[index] += step[3 + index] / size;
        }
        scale += step[6] / size;
    }
    Similarity result;
    const Vector middle = times(rotationMatrix(angles), from);
    for (std::size_t index = 0; index < 3; ++index) {
        result.translation[index] = to[index] + offset[index] - scale * middle[index];
        result.rotation[index] = angles[index] / radiansPerSecond;
    }
    result.scale = (scale - 1.0) / partsPerMillion;
    return result;
}

Vector cartesian(double longitude, double latitude, double height, double semiMajorAxis,
                 double inverseFlattening)
{
    const double f = inverseFlattening == 0.0 ? 0.0 : 1.0 / inverseFlattening;
    const double e2 = f * (2.0 - f);
    const double sine = std::sin(latitude);
    const double n = semiMajorAxis / std::sqrt(1.0 - e2 * sine * sine);
    return {(n + height) * std::cos(latitude) * std::cos(longitude),
            (n + height) * std::cos(latitude) * std::sin(longitude),
            (n * (1.0 - e2) + height) * sine};
}

} // namespace KelStd::catalogue
