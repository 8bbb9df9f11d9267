#include <KelStd/catalogue/Import.h>

#include <KelStd/catalogue/CarriedShift.h>
#include <KelStd/catalogue/OwnCheck.h>
#include <KelStd/catalogue/ProjectionRecords.h>
#include <KelStd/catalogue/ShiftCandidates.h>
#include <KelStd/catalogue/ShiftFit.h>
#include <KelStd/catalogue/ShiftRecords.h>
#include <KelStd/catalogue/TextShift.h>
#include <KelStd/catalogue/VerticalPart.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace KelStd::catalogue {

namespace {

using Kind = CatalogueFailureKind;

constexpr double tolerance = 0.001; ///< [m], of the own check
constexpr int placesPerSide = 5;

/// What an import has found out so far.
struct Work
{
    ProjSession &session;
    ShiftMemory &memory;
    const SourceSystem &source;
    const ImportOptions &options;
    ImportedSystem &result;
    std::vector<ShiftCandidate> candidates;
    CarriedShift shift;
    SystemArea shiftArea;
    double primeMeridian = 0.0;
    bool fits = false; ///< published parameters are fitted

    bool refuse(Kind kind, const QString &text)
    {
        result.refusal = {kind, text};
        result.system.reset();
        return false;
    }

    void warn(const QString &text) { result.report.warnings += text; }
};

bool isOfGlobalSize(const Ellipsoid &ellipsoid)
{
    // GRS 1980 and WGS 84, of which every modern frame has one.
    return ellipsoid.biggerHalfAxle.value.toDouble() == 6378137.0
           && std::abs(ellipsoid.reciprocal - 298.25722) < 1e-4;
}

QString percent(double share)
{
    return QStringLiteral("%1 %").arg(share * 100.0, 0, 'f', 0);
}

QString nameOf(const DatumShift &shift)
{
    return shift.code.isEmpty() ? shift.name
                                : shift.code + QLatin1String(" (") + shift.name + QLatin1Char(')');
}

QString gridsOf(const std::vector<ShiftCandidate> &candidates)
{
    QStringList names;
    for (const ShiftCandidate &candidate : candidates)
        names += candidate.row.missingGrids;
    names.removeDuplicates();
    constexpr int most = 6;
    const int more = names.size() - most;
    QString text = QStringList(names.mid(0, most)).join(QLatin1String(", "));
    if (more > 0)
        text += QStringLiteral(" and %1 more").arg(more);
    return text;
}

const QString consent =
    QStringLiteral("give --take-as-wgs84 to take its positions as WGS 84 ones, without any shift");

bool refuseForShift(Work &work)
{
    const QString name = work.source.system.name;
    const bool needsGrids =
        std::any_of(work.candidates.cbegin(), work.candidates.cend(),
                    [](const ShiftCandidate &candidate) { return !candidate.row.grids.isEmpty(); });
    if (needsGrids) {
        const QString missing = gridsOf(work.candidates);
        return work.refuse(
            Kind::GridOnly,
            missing.isEmpty()
                ? QStringLiteral("every shift between %1 and WGS 84 chains grids, which a system "
                                 "cannot carry; %2")
                      .arg(name, consent)
                : QStringLiteral("every shift between %1 and WGS 84 that is better than a "
                                 "ballpark one needs a grid that is not there: %2; add one, or %3")
                      .arg(name, missing, consent));
    }
    const bool dependsOnTime =
        std::any_of(work.candidates.cbegin(), work.candidates.cend(),
                    [](const ShiftCandidate &candidate) { return candidate.row.isTimeDependent; })
        || (work.candidates.empty() && hasShiftsOfTime(work.session, work.source.geodetic.get()));
    if (dependsOnTime)
        return work.refuse(Kind::TimeSpecific,
                           QStringLiteral("the shifts between %1 and WGS 84 depend on the time, "
                                          "which a system cannot carry; %2")
                               .arg(name, consent));
    if (!work.candidates.empty())
        return work.refuse(Kind::NoShift,
                           QStringLiteral("the shift between %1 and WGS 84, %2, is of a kind that "
                                          "a system cannot carry; %3")
                               .arg(name, nameOf(work.candidates.front().row), consent));
    return work.refuse(Kind::NoShift,
                       QStringLiteral("PROJ knows no shift between %1 and WGS 84 but a ballpark "
                                      "one, which can be wrong by hundreds of metres; %2")
                           .arg(name, consent));
}

void report(Work &work, const ShiftCandidate &candidate)
{
    ImportReport::Shift &shift = work.result.report.shift;
    shift.kind = candidate.row.kind;
    shift.code = candidate.row.code;
    shift.name = candidate.row.name;
    shift.accuracy = candidate.row.accuracy;
    shift.coverage = candidate.row.coverage;
    shift.grids = candidate.row.grids;
    shift.frame = candidate.frame;
}

void reportOthers(Work &work, int chosen)
{
    ImportReport &report = work.result.report;
    const auto &accuracy = report.shift.accuracy;
    for (const ShiftCandidate &candidate : work.candidates) {
        const DatumShift &row = candidate.row;
        if (row.number == chosen)
            continue;
        if (row.isAvailable)
            report.alternatives.push_back(row);
        else if (row.containsPoint && row.accuracy && (!accuracy || *row.accuracy < *accuracy))
            report.better.push_back(row);
    }
}

bool isSameShift(const CarriedShift &a, const CarriedShift &b)
{
    return a.kind == b.kind && a.turn == b.turn && a.affine.size() == b.affine.size()
           && pipelineText(a.affine) == pipelineText(b.affine)
           && (a.kind != ShiftKind::Grid || pipelineText(a.steps) == pipelineText(b.steps));
}

/// Says what speaks against the shift that was chosen by itself.
void warnOfChoice(Work &work, const ShiftCandidate &chosen)
{
    const DatumShift &row = chosen.row;
    if (!work.source.system.area.isKnown && !work.options.at && work.candidates.size() > 1)
        work.warn(QStringLiteral("The system has no area of use, so the datum shift was chosen by "
                                 "its accuracy alone: --at says where it is used."));
    if (!row.containsPoint)
        work.warn(QStringLiteral("No datum shift that can be taken contains the place: %1 is for "
                                 "%2.")
                      .arg(nameOf(row), row.area.name));
    for (const ShiftCandidate &other : work.candidates) {
        if (other.row.number == row.number || !other.row.isAvailable
            || other.row.containsPoint != row.containsPoint || other.row.accuracy != row.accuracy
            || std::abs(other.row.coverage - row.coverage) > 0.005
            || isSameShift(*other.carried, *chosen.carried))
            continue;
        work.warn(QStringLiteral("%1 is as good as the datum shift that was taken, %2: --shift "
                                 "takes it.")
                      .arg(nameOf(other.row), nameOf(row)));
        break;
    }
}

/// Whether an operation of the database is one of this ellipsoid. A text may give a datum that it
/// names an ellipsoid of its own, and PROJ does not mind.
bool isOfEllipsoid(const Work &work, const QString &operation, const Ellipsoid &ellipsoid)
{
    const ProjSession &session = work.session;
    const QByteArray code = operation.toUtf8();
    const int colon = code.indexOf(':');
    if (colon <= 0)
        return true;
    const proj::ProjObject object(session.functions().proj_create_from_database(
        session.context(), code.left(colon).constData(), code.mid(colon + 1).constData(),
        PJ_CATEGORY_COORDINATE_OPERATION, 0, nullptr));
    if (object == nullptr)
        return true;
    const proj::ProjObject ends[] = {
        proj::ProjObject(session.functions().proj_get_source_crs(session.context(), object.get())),
        proj::ProjObject(session.functions().proj_get_target_crs(session.context(), object.get()))};
    const auto axes = [](const Ellipsoid &figure) {
        const double a = figure.biggerHalfAxle.value.toDouble();
        return std::pair(a, figure.reciprocal == 0.0 ? a : a - a / figure.reciprocal);
    };
    constexpr double sameAxis = 1.0; // [m], as texts round and editions of an ellipsoid differ
    // What changes the order of axes alone belongs to no system.
    bool isOfNone = true;
    for (const proj::ProjObject &end : ends) {
        const auto known = end == nullptr ? std::nullopt : ellipsoidOf(session, end.get());
        if (!known)
            continue;
        isOfNone = false;
        if (std::abs(axes(*known).first - axes(ellipsoid).first) <= sameAxis
            && std::abs(axes(*known).second - axes(ellipsoid).second) <= sameAxis)
            return true;
    }
    return isOfNone;
}

bool take(Work &work, const ShiftCandidate &candidate)
{
    const Ellipsoid &ellipsoid = work.result.system->ellipsoid;
    if (work.source.isText && !isOfEllipsoid(work, candidate.row.code, ellipsoid))
        return work.refuse(
            Kind::NotUnderstood,
            QStringLiteral("the definition gives its datum another ellipsoid (\"%1\", "
                           "%2 m, 1/f %3) than the database has for it; import the "
                           "system by its code, or correct the definition")
                .arg(ellipsoid.ellipsoid_name)
                .arg(ellipsoid.biggerHalfAxle.value.toDouble(), 0, 'f', 3)
                .arg(ellipsoid.reciprocal, 0, 'f', 6));
    work.shift = *candidate.carried;
    work.shiftArea = candidate.row.area;
    report(work, candidate);
    reportOthers(work, candidate.row.number);
    if (candidate.row.coverage < 0.995)
        work.warn(QStringLiteral("The datum shift covers %1 of the system's area: %2.")
                      .arg(percent(candidate.row.coverage), candidate.row.area.name));
    return true;
}

bool takeAsked(Work &work)
{
    const QString asked = work.options.shift.trimmed();
    for (const ShiftCandidate &candidate : work.candidates) {
        const DatumShift &row = candidate.row;
        if (asked != QString::number(row.number)
            && (row.code.isEmpty() || asked.compare(row.code, Qt::CaseInsensitive) != 0))
            continue;
        if (row.isAvailable)
            return take(work, candidate);
        return work.refuse(
            row.missingGrids.isEmpty() ? Kind::NoSuchShift : Kind::GridOnly,
            row.missingGrids.isEmpty()
                ? QStringLiteral("%1 is of a kind that a system cannot carry").arg(nameOf(row))
                : QStringLiteral("%1 needs a grid that is not there: %2")
                      .arg(nameOf(row), row.missingGrids.join(QLatin1String(", "))));
    }
    return work.refuse(Kind::NoSuchShift,
                       QStringLiteral("%1 has no datum shift \"%2\"; \"kelstd system shifts\" "
                                      "lists them")
                           .arg(work.source.system.name, asked));
}

bool takeNothing(Work &work, const Ellipsoid &ellipsoid)
{
    work.shift = shiftOfNothing(ellipsoid.biggerHalfAxle.value.toDouble(), ellipsoid.reciprocal,
                                work.primeMeridian);
    ImportReport::Shift &shift = work.result.report.shift;
    shift.kind = ShiftKind::None;
    shift.coverage = 1.0;
    reportOthers(work, 0);
    work.warn(isOfGlobalSize(ellipsoid)
                  ? QStringLiteral("Taken as WGS 84 without a datum shift, as asked.")
                  : QStringLiteral("TAKEN AS WGS 84 WITHOUT A DATUM SHIFT, AS ASKED: the "
                                   "ellipsoid \"%1\" is a classical one, and positions can be "
                                   "wrong by hundreds of metres.")
                        .arg(ellipsoid.ellipsoid_name));
    return true;
}

bool takeText(Work &work, const Ellipsoid &ellipsoid)
{
    const Similarity &similarity = *work.source.textShift;
    work.shift = shiftOfText(similarity, ellipsoid.biggerHalfAxle.value.toDouble(),
                             ellipsoid.reciprocal, work.primeMeridian);
    ImportReport::Shift &shift = work.result.report.shift;
    shift.kind = work.shift.kind;
    shift.name = QStringLiteral("the definition's own");
    shift.coverage = 1.0;
    std::vector<ShiftCandidate> likely;
    if (work.candidates.empty() && work.source.likelyGeodetic != nullptr)
        likely = shiftCandidates(work.session, work.memory, work.source.likelyGeodetic.get(),
                                 work.source.system.area, work.options.at);
    const TextShiftJudgement judged =
        judgedTextShift(similarity, likely.empty() ? work.candidates : likely, *work.result.system,
                        work.options.at.value_or(work.source.system.area.centre()));
    if (judged.same != nullptr)
        report(work, *judged.same);
    shift.kind = work.shift.kind;
    work.result.report.warnings += judged.warnings;
    if (likely.empty())
        reportOthers(work, judged.same != nullptr ? judged.same->row.number : 0);
    return true;
}

bool chooseShift(Work &work, const Ellipsoid &ellipsoid)
{
    if (!work.options.shift.isEmpty())
        return takeAsked(work);
    if (work.source.textShift)
        return takeText(work, ellipsoid);
    const auto best =
        std::find_if(work.candidates.cbegin(), work.candidates.cend(),
                     [](const ShiftCandidate &candidate) { return candidate.row.isAvailable; });
    if (best != work.candidates.cend()) {
        warnOfChoice(work, *best);
        return take(work, *best);
    }
    return work.options.takeAsWgs84 ? takeNothing(work, ellipsoid) : refuseForShift(work);
}

/// Where the result is held against PROJ's own: in the system's area, as far as the shift goes.
std::vector<GroundPoint> placesToCheck(const Work &work)
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

bool refuseForCheck(Work &work, const OwnCheck &check)
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
bool isFitted(const Work &work)
{
    return work.shift.kind == ShiftKind::Seven && (work.fits || !work.shift.isPublished);
}

bool passesOwnCheck(Work &work, const std::vector<GroundPoint> &places)
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
                                     "--fit makes up for it.")
                          .arg(check.difference, 0, 'f', 4));
            return true;
        }
    }
    return refuseForCheck(work, check);
}

void fillReport(Work &work)
{
    ImportReport &report = work.result.report;
    report.source = work.source.source;
    report.name = work.source.system.name;
    report.code = work.source.system.code;
    report.area = work.source.system.area;
    report.warnings = work.source.warnings;
}

bool import(Work &work)
{
    fillReport(work);
    CatalogueFailure failure;
    auto records = projectionRecords(work.session, work.source.projected.get(), 0.0, &failure);
    if (!records)
        return work.refuse(failure.kind, failure.text);
    ImportReport &report = work.result.report;
    report.axisUnit = records->axisUnit;
    report.metresPerUnit = records->metresPerUnit;
    const QString remark = methodWarning(work.session, work.source.projected.get());
    if (!remark.isEmpty())
        work.warn(remark);
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
                        const ImportOptions &options)
{
    ImportedSystem result;
    Work work{session, memory, source, options, result, {}, {}, {}, 0.0, options.fit};
    import(work);
    return result;
}

} // namespace KelStd::catalogue
