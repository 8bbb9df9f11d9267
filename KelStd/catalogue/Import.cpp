#include <KelStd/catalogue/Import.h>

#include <KelStd/catalogue/ImportWork.h>
#include <KelStd/catalogue/MethodDifference.h>
#include <KelStd/catalogue/OwnCheck.h>
#include <KelStd/catalogue/ProjectionRecords.h>
#include <KelStd/catalogue/ShiftChoice.h>
#include <KelStd/catalogue/ShiftFit.h>
#include <KelStd/catalogue/ShiftRecords.h>
#include <KelStd/catalogue/VerticalPart.h>
#include <KelStd/io/DocumentReview.h>

#include <algorithm>

namespace KelStd::catalogue {

namespace {

using Kind = CatalogueFailureKind;

constexpr double tolerance = 0.001; ///< [m], of the own check
constexpr int placesPerSide = 5;

/// Where the result is held against PROJ's own: in the system's area, as far as the shift goes.
std::vector<GroundPoint> placesToCheck(const ImportWork &work)
{
    SystemArea area = work.source.system.area;
    if (!area.isKnown)
        area = work.shiftArea;
    if (!area.isKnown) {
        const Projection &projection = work.result.system->projection;
        const auto angle = [&projection](const char *key) {
            return projection.param.value(QString::fromLatin1(key)).value.toDouble();
        };
        const double longitude = angle("lon_0") != 0.0 ? angle("lon_0") : angle("lonc");
        const double latitude = angle("lat_0") != 0.0 ? angle("lat_0") : angle("lat_1");
        area.west = longitude - 1.5;
        area.east = longitude + 1.5;
        area.south = std::max(-80.0, latitude - 1.5);
        area.north = std::min(80.0, latitude + 1.5);
    }
    std::vector<GroundPoint> places = placesIn(area, placesPerSide);
    if (!work.shiftArea.isKnown)
        return places;
    const auto isOutside = [&work](const GroundPoint &place) {
        return !work.shiftArea.contains(place);
    };
    std::vector<GroundPoint> inside = places;
    inside.erase(std::remove_if(inside.begin(), inside.end(), isOutside), inside.end());
    return inside.size() >= 4 ? inside : placesIn(work.shiftArea, placesPerSide);
}

bool refuseForCheck(ImportWork &work, const OwnCheck &check)
{
    const bool isText = work.source.isText;
    if (!check.isReady)
        return work.refuse(isText ? Kind::NotUnderstood : Kind::OwnCheck,
                           isText ? QStringLiteral("PROJ cannot compute with the numbers of the "
                                                   "definition; look for one out of range")
                                  : QStringLiteral("PROJ makes no conversion of what was made of "
                                                   "the system; report this"));
    const QString misses =
        QStringLiteral("the result misses PROJ's own by %1 m at %2, and %3 of %4 "
                       "positions have none; ")
            .arg(check.difference, 0, 'f', 4)
            .arg(check.place)
            .arg(check.missing)
            .arg(check.missing + check.compared);
    return work.refuse(Kind::OwnCheck,
                       misses
                           + (isText ? QStringLiteral("the definition may give another ellipsoid "
                                                      "or unit than the datum that it names has")
                                     : QStringLiteral("report this")));
}

/// Whether seven parameters are fitted instead of taken over.
bool isFitted(const ImportWork &work)
{
    return work.shift.kind == ShiftKind::Seven && (work.fits || !work.shift.isPublished);
}

bool passesOwnCheck(ImportWork &work, const std::vector<GroundPoint> &places)
{
    const Coord &coord = *work.result.system;
    const auto projection = projectionSteps(work.session, work.source.projected.get());
    const OwnCheck check = ownCheck(work.session, coord, work.shift.steps, projection, places,
                                    isFitted(work) ? WayBack::OfWay : WayBack::OfProj);
    work.result.report.difference = check.difference;
    if (!check.isReady)
        return refuseForCheck(work, check);
    if (check.compared == 0)
        return work.refuse(Kind::NoProjection,
                           QStringLiteral("PROJ computes no position of the system's area"));
    // A grid ends where it ends, by a hair earlier one way than the other.
    const bool hasAll = check.missing == 0 || work.shift.kind == ShiftKind::Grid;
    if (hasAll && check.difference <= tolerance)
        return true;
    if (hasAll && work.shift.isPublished && isFitted(work))
        return false; // not refused: the published numbers are still there
    // The published method is linear in the rotations, the conversions of a system are not.
    if (hasAll && work.shift.kind == ShiftKind::Seven && !isFitted(work)) {
        const OwnCheck exact =
            ownCheck(work.session, coord, withFullRotation(work.shift.steps), projection, places);
        if (exact.isReady && exact.missing == 0 && exact.difference <= tolerance) {
            work.warn(QStringLiteral("The datum shift is applied by its full rotation matrix, "
                                     "which differs from the published linear method by %1 m: "
                                     "%2 makes up for it.")
                          .arg(QString::number(check.difference, 'f', 4), work.words.fit));
            return true;
        }
    }
    return refuseForCheck(work, check);
}

/// Refuses what a document of the system would be refused for.
bool isUnderstoodInDocuments(ImportWork &work)
{
    QList<io::DocumentFinding> findings;
    io::DocumentFailure failure;
    const bool isReadable = io::reviewFromMemory(*work.result.system, findings, failure);
    if (isReadable && findings.isEmpty())
        return true;
    const QString reason =
        isReadable ? io::describedFinding(findings.front()) : io::describedFailure(failure);
    return work.refuse(
        work.source.isText ? Kind::NotUnderstood : Kind::NoProjection,
        QStringLiteral("a document of the system would not be understood: %1").arg(reason));
}

void fillReport(ImportWork &work)
{
    ImportReport &report = work.result.report;
    report.source = work.source.source;
    report.name = work.source.system.name;
    report.code = work.source.system.code;
    report.area = work.source.system.area;
    report.warnings = work.source.warnings;
}

bool import(ImportWork &work)
{
    fillReport(work);
    CatalogueFailure failure;
    auto records = projectionRecords(work.session, work.source.projected.get(), 0.0, &failure);
    if (!records)
        return work.refuse(failure.kind, failure.text);
    ImportReport &report = work.result.report;
    report.axisUnit = records->axisUnit;
    report.metresPerUnit = records->metresPerUnit;
    const MethodDifference method =
        methodDifference(work.session, work.source.projected.get(), work.source.system.area);
    report.methodDifference = method.metres;
    if (!method.warning.isEmpty())
        work.warn(method.warning);
    work.primeMeridian = primeMeridianOf(work.session, work.source.geodetic.get());
    work.candidates = shiftCandidates(work.session, work.memory, work.source.geodetic.get(),
                                      work.source.system.area, work.options.at);
    Coord &coord = work.result.system.emplace();
    coord.coord_name = report.name;
    coord.ellipsoid = records->ellipsoid;
    coord.projection = records->projection;
    if (!chooseShift(work, records->ellipsoid))
        return false;

    records =
        projectionRecords(work.session, work.source.projected.get(), work.shift.turn, &failure);
    if (!records)
        return work.refuse(failure.kind, failure.text);
    coord.projection = records->projection;
    const std::vector<GroundPoint> places = placesToCheck(work);
    const Similarity published = work.shift.similarity;
    if (isFitted(work))
        work.shift.similarity = fittedShift(work.session, work.shift, places);
    if (!setShift(coord, work.shift))
        return work.refuse(Kind::GridOnly,
                           QStringLiteral("PROJ has no name for the ellipsoid \"%1\", without "
                                          "which a system carries no grid")
                               .arg(coord.ellipsoid.ellipsoid_name));
    if (!isUnderstoodInDocuments(work))
        return false;
    if (!passesOwnCheck(work, places)) {
        const bool mayFallBack = work.result.system.has_value();
        if (!mayFallBack)
            return false;
        // Over a large area one rotation cannot make up for what a linear one does to it.
        work.warn(QStringLiteral("No seven parameters fit the datum shift to 1 mm over the whole "
                                 "area: the published ones were taken."));
        work.fits = false;
        work.shift.similarity = published;
        if (!setShift(coord, work.shift) || !passesOwnCheck(work, places))
            return false;
    }
    setVerticalPart(work.session, work.source, coord, report);
    return true;
}

} // namespace

ImportedSystem imported(ProjSession &session, ShiftMemory &memory, const SourceSystem &source,
                        const ImportOptions &options, const CatalogueWords &words)
{
    ImportedSystem result;
    ImportWork work{session, memory, source, options, words, result, {}, {}, {}, 0.0, options.fit};
    import(work);
    return result;
}

} // namespace KelStd::catalogue
