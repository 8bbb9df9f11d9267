#include <KelStd/catalogue/KnownSystem.h>

#include <KelStd/catalogue/CarriedShift.h>
#include <KelStd/catalogue/MethodDifference.h>
#include <KelStd/catalogue/OwnCheck.h>
#include <KelStd/catalogue/ProjectionRecords.h>
#include <KelStd/catalogue/RecordedShift.h>
#include <KelStd/catalogue/ShiftCandidates.h>

#include <algorithm>
#include <cmath>

namespace KelStd::catalogue {

namespace {

using proj::ProjObject;

constexpr double sameSystem = 0.001; ///< [m]
constexpr int placesPerSide = 4;

QByteArray authorityOf(const QString &code)
{
    const auto colon = code.indexOf(QLatin1Char(':'));
    return colon < 0 ? QByteArray() : code.left(colon).toUtf8();
}

QByteArray numberOf(const QString &code)
{
    return code.mid(code.indexOf(QLatin1Char(':')) + 1).toUtf8();
}

/// Places all over the area of a system of the database.
std::vector<GroundPoint> placesOf(const ProjSession &session, const PJ *known)
{
    return placesIn(session.areaOf(known), placesPerSide);
}

/// The database's operation from a geodetic system to WGS 84 with this code; null for one that
/// leads the other way.
ProjObject operationOf(const ProjSession &session, const PJ *geodetic, const QString &code)
{
    const proj::ProjFunctions &proj = session.functions();
    ProjObject operation(proj.proj_create_from_database(
        session.context(), authorityOf(code).constData(), numberOf(code).constData(),
        PJ_CATEGORY_COORDINATE_OPERATION, 0, nullptr));
    if (operation == nullptr || session.typeOf(operation.get()) != PJ_TYPE_TRANSFORMATION)
        return nullptr; // also for a chain of several
    const ProjObject from(proj.proj_get_source_crs(session.context(), operation.get()));
    const ProjObject to(proj.proj_get_target_crs(session.context(), operation.get()));
    // The name is the same with two and with three dimensions.
    const bool leadsThere = from != nullptr && to != nullptr
                            && session.nameOf(from.get()) == session.nameOf(geodetic)
                            && session.codeOf(to.get()) == QLatin1String("EPSG:4326");
    return leadsThere ? std::move(operation) : nullptr;
}

/// But for what is lost when a definition is written.
bool areSame(const Similarity &a, const Similarity &b)
{
    constexpr double tolerance = 1e-9; // [m], ["], [ppm]
    for (std::size_t axis = 0; axis < 3; ++axis) {
        if (std::abs(a.translation[axis] - b.translation[axis]) > tolerance
            || std::abs(a.rotation[axis] - b.rotation[axis]) > tolerance)
            return false;
    }
    return std::abs(a.scale - b.scale) <= tolerance;
}

} // namespace

ProjObject verified(const ProjSession &session, const Coord &coord, const QString &code)
{
    ProjObject object = session.fromDatabase(authorityOf(code), numberOf(code));
    if (object != nullptr && session.typeOf(object.get()) == PJ_TYPE_COMPOUND_CRS)
        object.reset(session.functions().proj_crs_get_sub_crs(session.context(), object.get(), 0));
    // PROJ reads some methods otherwise than they are published: their texts would be misread.
    if (object == nullptr || session.typeOf(object.get()) != PJ_TYPE_PROJECTED_CRS
        || missingTurn(session, object.get()) != 0.0)
        return nullptr;
    const ProjObject geodetic = session.geodeticOf(object.get());
    if (geodetic == nullptr)
        return nullptr;
    const CarriedShift shift = recordedShift(coord, primeMeridianOf(session, geodetic.get()));
    const OwnCheck check =
        ownCheck(session, coord, withFullRotation(shift.steps),
                 projectionSteps(session, object.get()), placesOf(session, object.get()));
    const bool isSame =
        check.isReady && check.compared > 0 && check.missing == 0 && check.difference <= sameSystem;
    return isSame ? std::move(object) : nullptr;
}

bool isWgs84(const ProjSession &session, const PJ *projected)
{
    const ProjObject geodetic = session.geodeticOf(projected);
    return geodetic != nullptr && session.codeOf(geodetic.get()) == QLatin1String("EPSG:4326");
}

ProjObject fittedOperation(ProjSession &session, ShiftMemory &memory, const Coord &coord,
                           const PJ *known)
{
    const ProjObject geodetic = session.geodeticOf(known);
    if (geodetic == nullptr || coord.ellipsoidTransform.fuction != EllipsoinTransformFunction_Seven)
        return nullptr;
    const std::vector<ShiftCandidate> candidates =
        shiftCandidates(session, memory, geodetic.get(), session.areaOf(known), std::nullopt);
    const Similarity stored = recordedShift(coord, 0.0).similarity;
    const bool isPublished = std::any_of(
        candidates.cbegin(), candidates.cend(), [&stored](const ShiftCandidate &candidate) {
            return candidate.carried && candidate.carried->isPublished
                   && areSame(candidate.carried->similarity, stored);
        });
    if (isPublished)
        return nullptr;
    const std::vector<ProjStep> projection = projectionSteps(session, known);
    const std::vector<GroundPoint> places = placesOf(session, known);
    ProjObject best;
    double difference = sameSystem;
    for (const ShiftCandidate &candidate : candidates) {
        if (!candidate.carried || candidate.carried->kind != ShiftKind::Seven
            || candidate.row.code.isEmpty())
            continue;
        const OwnCheck check =
            ownCheck(session, coord, candidate.carried->steps, projection, places, WayBack::OfWay);
        if (!check.isReady || check.compared == 0 || check.difference >= difference)
            continue;
        best = candidate.carried->isPublished
                   ? nullptr
                   : operationOf(session, geodetic.get(), candidate.row.code);
        difference = check.difference;
    }
    return best;
}

} // namespace KelStd::catalogue
