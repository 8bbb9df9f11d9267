#include <KelStd/catalogue/ShiftCandidates.h>

#include <QtCore/QFileInfo>

#include <algorithm>
#include <limits>

namespace KelStd::catalogue {

namespace {

using proj::ProjObject;

/// A grid file that an operation needs, as PROJ finds it.
struct Grid
{
    QString name; ///< of the file that PROJ opens; else PROJ's own name for it
    bool isThere = false;
};

std::vector<Grid> gridsOf(const ProjSession &session, const PJ *operation)
{
    const proj::ProjFunctions &proj = session.functions();
    std::vector<Grid> grids;
    const int count = proj.proj_coordoperation_get_grid_used_count(session.context(), operation);
    for (int index = 0; index < count; ++index) {
        const char *name = nullptr;
        const char *path = nullptr;
        int isThere = 0;
        if (proj.proj_coordoperation_get_grid_used(session.context(), operation, index, &name,
                                                   &path, nullptr, nullptr, nullptr, nullptr,
                                                   &isThere)
            == 0)
            continue;
        Grid grid;
        grid.isThere = isThere != 0 && path != nullptr && *path != '\0';
        grid.name =
            grid.isThere ? QFileInfo(QString::fromUtf8(path)).fileName() : QString::fromUtf8(name);
        grids.push_back(grid);
    }
    return grids;
}

QString nameOfEnd(const ProjSession &session, PJ *end)
{
    const ProjObject owned(end);
    return end == nullptr ? QString() : session.nameOf(end);
}

/// What the grid of an operation leads to from the local frame.
QString frameOf(const ProjSession &session, const PJ *operation)
{
    const proj::ProjFunctions &proj = session.functions();
    if (session.typeOf(operation) == PJ_TYPE_CONCATENATED_OPERATION) {
        const int count = proj.proj_concatoperation_get_step_count(session.context(), operation);
        for (int index = 0; index < count; ++index) {
            const ProjObject step(
                proj.proj_concatoperation_get_step(session.context(), operation, index));
            if (step != nullptr
                && proj.proj_coordoperation_get_grid_used_count(session.context(), step.get()) > 0)
                return frameOf(session, step.get());
        }
    }
    return nameOfEnd(session, proj.proj_get_target_crs(session.context(), operation));
}

bool dependsOnTime(const ProjSession &session, const PJ *operation)
{
    const QByteArray pipeline = session.pipelineOf(operation);
    return session.methodOf(operation).contains(QLatin1String("Time-"))
           || pipeline.contains("+t_epoch=") || pipeline.contains("+dx=");
}

/// What does not depend on the system's area.
ShiftCandidate candidateOf(const ProjSession &session, const PJ *operation)
{
    ShiftCandidate candidate;
    DatumShift &row = candidate.row;
    row.code = session.codeOf(operation);
    row.name = session.nameOf(operation);
    row.area = session.areaOf(operation);
    const double accuracy =
        session.functions().proj_coordoperation_get_accuracy(session.context(), operation);
    if (accuracy >= 0.0)
        row.accuracy = accuracy;
    row.isTimeDependent = dependsOnTime(session, operation);
    QByteArray names;
    for (const Grid &grid : gridsOf(session, operation)) {
        row.grids += grid.name;
        names += (names.isEmpty() ? "" : ",") + grid.name.toUtf8();
        if (!grid.isThere)
            row.missingGrids += grid.name;
    }
    candidate.carried = carriedShift(session.pipelineOf(operation));
    if (row.isTimeDependent)
        candidate.carried.reset();
    if (candidate.carried && candidate.carried->kind == ShiftKind::Grid) {
        // PROJ writes the name that its database has for the file, which may lie there by another.
        for (auto &parameter : candidate.carried->steps.back().parameters) {
            if (parameter.first == "grids" && row.missingGrids.isEmpty())
                parameter.second = names;
        }
        candidate.frame = frameOf(session, operation);
    }
    row.kind = candidate.carried ? candidate.carried->kind
                                 : (row.grids.isEmpty() ? ShiftKind::Other : ShiftKind::Grid);
    row.isAvailable = candidate.carried.has_value() && row.missingGrids.isEmpty();
    return candidate;
}

bool isBetter(const ShiftCandidate &a, const ShiftCandidate &b)
{
    constexpr double unknown = std::numeric_limits<double>::infinity();
    if (a.row.containsPoint != b.row.containsPoint)
        return a.row.containsPoint;
    // Where none contains the place, the one that is meant for most of the system is nearest to it.
    if (!a.row.containsPoint && a.row.coverage != b.row.coverage)
        return a.row.coverage > b.row.coverage;
    const double accuracyOfA = a.row.accuracy.value_or(unknown);
    const double accuracyOfB = b.row.accuracy.value_or(unknown);
    if (accuracyOfA != accuracyOfB)
        return accuracyOfA < accuracyOfB;
    return a.row.coverage > b.row.coverage;
}

} // namespace

const std::vector<ShiftCandidate> &ShiftMemory::operationsOf(ProjSession &session,
                                                             const PJ *geodetic)
{
    if (m_session != session.number())
        m_known.clear();
    m_session = session.number();
    const QString code = session.codeOf(geodetic);
    if (const auto known = m_known.find(code); known != m_known.end())
        return known->second;
    std::vector<ShiftCandidate> &candidates = code.isEmpty() ? m_unnamed : m_known[code];
    candidates.clear();
    const ObjectList list = session.operations(geodetic, session.wgs84());
    const int count = session.countOf(list);
    for (int index = 0; index < count; ++index) {
        const ProjObject operation = session.elementOf(list, index);
        if (operation != nullptr
            && session.functions().proj_coordoperation_has_ballpark_transformation(
                   session.context(), operation.get())
                   == 0)
            candidates.push_back(candidateOf(session, operation.get()));
    }
    return candidates;
}

std::vector<ShiftCandidate> shiftCandidates(ProjSession &session, ShiftMemory &memory,
                                            const PJ *geodetic, const SystemArea &area,
                                            const std::optional<GroundPoint> &at)
{
    std::vector<ShiftCandidate> candidates;
    const GroundPoint place = at.value_or(area.centre());
    for (const ShiftCandidate &known : memory.operationsOf(session, geodetic)) {
        ShiftCandidate candidate = known;
        DatumShift &row = candidate.row;
        row.coverage = area.coveredBy(row.area);
        const bool isAnywhere = !row.area.isKnown || (!at && !area.isKnown);
        row.containsPoint = isAnywhere || row.area.contains(place);
        // A datum that is used in many countries has shifts that have nothing to do with this one;
        // a modern frame is the same everywhere.
        if (row.coverage > 0.0 || (at && row.containsPoint) || row.kind == ShiftKind::None)
            candidates.push_back(std::move(candidate));
    }
    std::stable_sort(candidates.begin(), candidates.end(), isBetter);
    int number = 0;
    for (ShiftCandidate &candidate : candidates)
        candidate.row.number = ++number;
    return candidates;
}

bool hasShiftsOfTime(ProjSession &session, const PJ *geodetic)
{
    // Realizations of the international frame to which national ones are tied, cartesian and
    // geographic: ITRF96, 97, 2000, 2005, 2008, 2014 and WGS 84 (G1150, G1674, G1762).
    static constexpr const char *frames[] = {"4918", "4919", "4330", "4896", "5332",
                                             "7789", "8995", "8996", "8997", "8998",
                                             "8999", "9000", "9053", "9055", "9056"};
    for (const char *code : frames) {
        const ProjObject frame = session.fromDatabase("EPSG", code);
        if (frame == nullptr)
            continue;
        const ObjectList list = session.operations(geodetic, frame.get(), false);
        const int count = session.countOf(list);
        for (int index = 0; index < count; ++index) {
            const ProjObject operation = session.elementOf(list, index);
            if (operation != nullptr && dependsOnTime(session, operation.get()))
                return true;
        }
    }
    return false;
}

} // namespace KelStd::catalogue
