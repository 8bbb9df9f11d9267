#include <KelStd/catalogue/TextShift.h>

#include <cmath>

namespace KelStd::catalogue {

namespace {

/// Definitions are often rounded; the numbers of different operations differ by more.
constexpr double sameTranslation = 0.01; ///< [m]
constexpr double sameRotation = 0.001;   ///< [arc seconds], 3 cm on the ground
constexpr double sameScale = 0.001;      ///< [ppm]

bool isNear(const Vector &a, const Vector &b, double factor, double tolerance)
{
    for (std::size_t axis = 0; axis < 3; ++axis) {
        if (std::abs(a[axis] - factor * b[axis]) > tolerance)
            return false;
    }
    return true;
}

bool isNear(const Similarity &a, const Similarity &b, double rotationFactor)
{
    return isNear(a.translation, b.translation, 1.0, sameTranslation)
           && isNear(a.rotation, b.rotation, rotationFactor, sameRotation)
           && std::abs(a.scale - b.scale) <= sameScale;
}

double distance(const Similarity &a, const Similarity &b, const Coord &coord,
                const GroundPoint &place)
{
    constexpr double radians = 3.14159265358979323846 / 180.0;
    const Vector local =
        cartesian(place.longitude * radians, place.latitude * radians, 0.0,
                  coord.ellipsoid.biggerHalfAxle.value.toDouble(), coord.ellipsoid.reciprocal);
    const Vector first = a.apply(local);
    const Vector second = b.apply(local);
    return std::hypot(first[0] - second[0], first[1] - second[1], first[2] - second[2]);
}

bool isComparable(const ShiftCandidate &candidate)
{
    return candidate.carried && candidate.carried->isPublished
           && candidate.carried->kind != ShiftKind::Grid;
}

} // namespace

TextShiftJudgement judgedTextShift(const Similarity &text,
                                   const std::vector<ShiftCandidate> &candidates,
                                   const Coord &coord, const GroundPoint &place,
                                   const CatalogueWords &words)
{
    TextShiftJudgement judgement;
    const ShiftCandidate *best = nullptr;
    for (const ShiftCandidate &candidate : candidates) {
        if (!isComparable(candidate))
            continue;
        if (best == nullptr)
            best = &candidate;
        const Similarity &known = candidate.carried->similarity;
        if (isNear(text, known, 1.0)) {
            judgement.same = &candidate;
            judgement.warnings.clear();
            return judgement;
        }
        if (text.hasRotation() && known.hasRotation() && isNear(text, known, -1.0)
            && judgement.warnings.isEmpty()) {
            judgement.warnings +=
                QStringLiteral("rotations negated: the definition's datum shift is that of %1 with "
                               "the opposite rotations, which moves positions by %2 m. It was "
                               "taken as it stands; %3 %1 takes the database's.")
                    .arg(candidate.row.code,
                         QString::number(distance(text, known, coord, place), 'f', 1), words.shift);
        }
    }
    if (judgement.warnings.isEmpty() && best != nullptr) {
        judgement.warnings +=
            QStringLiteral("The definition's own datum shift was taken. It is none of the "
                           "database's and differs from the best of them, %1, by %2 m.")
                .arg(best->row.code.isEmpty() ? best->row.name : best->row.code)
                .arg(distance(text, best->carried->similarity, coord, place), 0, 'f', 2);
    }
    return judgement;
}

} // namespace KelStd::catalogue
