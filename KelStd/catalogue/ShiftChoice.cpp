#include <KelStd/catalogue/ShiftChoice.h>

#include <KelStd/catalogue/ProjectionRecords.h>
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

QString nameOf(const DatumShift &shift)
{
    return shift.code.isEmpty() ? shift.name
                                : shift.code + QLatin1String(" (") + shift.name + QLatin1Char(')');
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

QString consentText(const ImportWork &work)
{
    return QStringLiteral("use %1, which takes its positions as WGS 84 ones, without any shift")
        .arg(work.words.consent);
}

bool refuseForShift(ImportWork &work)
{
    const QString name = work.source.system.name;
    const QString consent = consentText(work);
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
        const int colon = frame.indexOf(QLatin1Char(':'));
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
