#include <KelStd/catalogue/ShiftChoice.h>

#include <KelStd/catalogue/ProjectionRecords.h>
#include <KelStd/catalogue/ShiftRefusal.h>
#include <KelStd/catalogue/TextShift.h>
#include <KelStd/proj/ShiftGrids.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace KelStd::catalogue {

namespace {

using Kind = CatalogueFailureKind;

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

/// The descriptions of areas end with a full stop; here they stand before one.
QString withoutStop(const QString &description)
{
    return description.endsWith(QLatin1Char('.')) ? description.chopped(1) : description;
}

/// By which a shift is asked for.
QString keyOf(const DatumShift &shift)
{
    return shift.code.isEmpty() ? QString::number(shift.number) : shift.code;
}

ShiftGrids::File examined(const QString &grid)
{
    return ShiftGrids::examine(ShiftGrids::directory().filePath(grid));
}

/// What the headers of grids say that they lead to; empty where they do not say it.
QString frameInHeaders(const ProjSession &session, const QStringList &grids)
{
    QStringList frames;
    for (const QString &grid : grids) {
        const QString frame = examined(grid).toSystem;
        const auto colon = frame.indexOf(QLatin1Char(':'));
        const proj::ProjObject known =
            colon < 0
                ? nullptr
                : session.fromDatabase(frame.left(colon).toUtf8(), frame.mid(colon + 1).toUtf8());
        frames += known == nullptr ? frame : session.nameOf(known.get());
    }
    frames.removeAll(QString());
    frames.removeDuplicates();
    return frames.join(QLatin1String(", "));
}

void report(ImportWork &work, const ShiftCandidate &candidate)
{
    ImportReport::Shift &shift = work.result.report.shift;
    shift.kind = candidate.row.kind;
    shift.code = candidate.row.code;
    shift.name = candidate.row.name;
    shift.accuracy = candidate.row.accuracy;
    shift.coverage = candidate.row.coverage;
    shift.grids = candidate.row.grids;
    shift.operationFrame = candidate.frame;
    const QString header = frameInHeaders(work.session, shift.grids);
    shift.frame = header.isEmpty() ? candidate.frame : header;
}

void reportOthers(ImportWork &work, int chosen)
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
void warnOfChoice(ImportWork &work, const ShiftCandidate &chosen)
{
    const DatumShift &row = chosen.row;
    if (!work.source.system.area.isKnown && !work.options.at && work.candidates.size() > 1)
        work.warn(QStringLiteral("The system has no area of use, so the datum shift was chosen by "
                                 "its accuracy alone: %1 says where it is used.")
                      .arg(work.words.place));
    if (!row.containsPoint)
        work.warn(QStringLiteral("No datum shift that can be taken contains the place: %1 is for "
                                 "%2.")
                      .arg(nameOf(row), withoutStop(row.area.name)));
    for (const ShiftCandidate &other : work.candidates) {
        if (other.row.number == row.number || !other.row.isAvailable
            || other.row.containsPoint != row.containsPoint || other.row.accuracy != row.accuracy
            || std::abs(other.row.coverage - row.coverage) > 0.005
            || isSameShift(*other.carried, *chosen.carried))
            continue;
        work.warn(QStringLiteral("%1 is as good as the datum shift that was taken, %2: %3 %4 takes "
                                 "it.")
                      .arg(nameOf(other.row), nameOf(row), work.words.shift, keyOf(other.row)));
        break;
    }
}

/// Whether an operation of the database is one of this ellipsoid. A text may give a datum that it
/// names an ellipsoid of its own, and PROJ does not mind.
bool isOfEllipsoid(const ImportWork &work, const QString &operation, const Ellipsoid &ellipsoid)
{
    const ProjSession &session = work.session;
    const QByteArray code = operation.toUtf8();
    const auto colon = code.indexOf(':');
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

bool take(ImportWork &work, const ShiftCandidate &candidate)
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
    for (const QString &grid : candidate.row.grids) {
        const ShiftGrids::File file = examined(grid);
        if (file.failure)
            return work.refuse(Kind::GridOnly,
                               QStringLiteral("the grid %1 of the datum shift %2 cannot be used: "
                                              "%3; replace it, or take another shift")
                                   .arg(grid, nameOf(candidate.row), file.failure.text));
    }
    work.shift = *candidate.carried;
    work.shiftArea = candidate.row.area;
    report(work, candidate);
    reportOthers(work, candidate.row.number);
    if (candidate.row.coverage < 0.995)
        work.warn(QStringLiteral("The datum shift covers %1 of the system's area: %2.")
                      .arg(percent(candidate.row.coverage), withoutStop(candidate.row.area.name)));
    return true;
}

bool takeAsked(ImportWork &work)
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
                       QStringLiteral("%1 has no datum shift \"%2\"; %3 shows them")
                           .arg(work.source.system.name, asked, work.words.shifts));
}

bool takeNothing(ImportWork &work, const Ellipsoid &ellipsoid)
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

/// Whether two shifts that were published move positions by the same.
bool areNear(const ProjSession &session, const CarriedShift &a, const CarriedShift &b)
{
    constexpr double tolerance = 1e-6; // [m]: texts have fifteen digits
    constexpr double radius = 6371000.0;
    const proj::ProjObject first = session.fromText(pipelineText(a.affine));
    const proj::ProjObject second = session.fromText(pipelineText(b.affine));
    if (first == nullptr || second == nullptr || a.turn != b.turn)
        return false;
    for (const Vector &axis : {Vector{1, 0, 0}, Vector{0, 1, 0}, Vector{0, 0, 1}}) {
        const PJ_COORD at = {{axis[0] * radius, axis[1] * radius, axis[2] * radius, HUGE_VAL}};
        const PJ_COORD here = session.functions().proj_trans(first.get(), PJ_FWD, at);
        const PJ_COORD there = session.functions().proj_trans(second.get(), PJ_FWD, at);
        const double distance =
            std::hypot(here.v[0] - there.v[0], here.v[1] - there.v[1], here.v[2] - there.v[2]);
        if (!(distance <= tolerance))
            return false;
    }
    return true;
}

/// A definition's own operation, as the database has it.
bool takeTextOperation(ImportWork &work)
{
    for (const ShiftCandidate &candidate : work.candidates) {
        if (candidate.row.isAvailable && candidate.carried->kind == work.source.textOperation->kind
            && areNear(work.session, *candidate.carried, *work.source.textOperation))
            return take(work, candidate);
    }
    return work.refuse(Kind::NotUnderstood,
                       QStringLiteral("the definition's own datum shift is about a point of "
                                      "rotation, and none of the database's for this system"));
}

bool takeText(ImportWork &work, const Ellipsoid &ellipsoid)
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
                        work.options.at.value_or(work.source.system.area.centre()), work.words);
    if (judged.same != nullptr)
        report(work, *judged.same);
    shift.kind = work.shift.kind;
    work.result.report.warnings += judged.warnings;
    if (likely.empty())
        reportOthers(work, judged.same != nullptr ? judged.same->row.number : 0);
    return true;
}

} // namespace

bool chooseShift(ImportWork &work, const Ellipsoid &ellipsoid)
{
    if (!work.options.shift.isEmpty())
        return takeAsked(work);
    if (work.source.textOperation)
        return takeTextOperation(work);
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

} // namespace KelStd::catalogue
