#include <cli/vector/ReferenceCheck.h>

#include <cli/vector/DatumFacts.h>
#include <cli/vector/PlaneProjection.h>

#include <algorithm>
#include <cmath>

namespace KelStd::cli::vector {

namespace {

using positions::Frame;
using Kind = Reference::Kind;

constexpr double degree = 0.017453292519943295; ///< [rad]
const std::string wgs84 = "EPSG:4326";
constexpr std::size_t shiftParameters = 7;

QString text(const std::string &bytes)
{
    return QString::fromStdString(bytes);
}

/// What a frame needs, and what its positions are called.
struct FrameNeed
{
    Frame frame;
    Kind kind;
    const char *positions;
};

constexpr FrameNeed needs[] = {
    {Frame::Wgs84Geographic, Kind::Geographic, "longitude and latitude"},
    {Frame::Wgs84Cartesian, Kind::Geocentric, "geocentric X, Y, Z"},
    {Frame::LocalGeographic, Kind::Geographic, "longitude and latitude"},
    {Frame::LocalProjected, Kind::Projected, "easting and northing"},
};

const FrameNeed &needOf(Frame frame)
{
    return *std::find_if(std::begin(needs), std::end(needs),
                         [frame](const FrameNeed &need) { return need.frame == frame; });
}

QString positionsOf(Kind kind)
{
    const auto *const need =
        std::find_if(std::begin(needs), std::end(needs),
                     [kind](const FrameNeed &each) { return each.kind == kind; });
    return need == std::end(needs) ? QString() : QString::fromLatin1(need->positions);
}

QString nameOf(Frame frame)
{
    return QString::fromLatin1(positions::rowOf(frame).option);
}

} // namespace

QString shownName(const Reference &reference)
{
    if (reference.code.empty())
        return text(reference.name);
    return QStringLiteral("%1 (%2)").arg(text(reference.name), text(reference.code));
}

ReferenceFit ReferenceCheck::fit(const Reference &layer, Frame frame, bool hasHeights) const
{
    ReferenceFit result;
    const QString needed = QString::fromLatin1(needOf(frame).positions);
    if (layer.kind == Kind::None) {
        result.notes += QStringLiteral("the layer names no coordinate reference system: its "
                                       "positions are taken as %1")
                            .arg(nameOf(frame));
        return result;
    }
    const QString name = shownName(layer);
    if (layer.kind == Kind::Other) {
        result.mistake =
            layer.otherAxes.empty()
                ? QStringLiteral("the layer is in \"%1\", which is no system of the earth")
                      .arg(name)
                : QStringLiteral("the layer is in \"%1\", whose axes are %2, not east and north")
                      .arg(name, text(layer.otherAxes));
        return result;
    }
    if (layer.kind != needOf(frame).kind) {
        result.mistake = QStringLiteral("the layer holds %1 of \"%2\", and %3 is %4")
                             .arg(positionsOf(layer.kind), name, nameOf(frame), needed);
        return result;
    }
    if (layer.kind == Kind::Geographic && layer.primeMeridian != 0.0) {
        result.mistake =
            QStringLiteral("the layer \"%1\" counts longitudes from a meridian that is "
                           "%2 degrees east of Greenwich, and %3 from that of Greenwich")
                .arg(name, QString::number(layer.primeMeridian, 'g', 12), nameOf(frame));
        return result;
    }
    result.mistake = datumMistake(layer, frame, result.notes);
    if (result.mistake.isEmpty())
        result.mistake = shiftMistake(layer, frame);
    if (result.mistake.isEmpty() && layer.kind == Kind::Geographic
        && std::abs(layer.unitFactor - degree) > 1e-12) {
        result.mistake =
            QStringLiteral("the layer counts angles in the unit \"%1\" (%2), and %3 in "
                           "degrees")
                .arg(text(layer.unit), name, nameOf(frame));
    }
    if (result.mistake.isEmpty() && layer.kind == Kind::Geocentric && layer.unitFactor != 1.0) {
        result.mistake =
            QStringLiteral("the layer counts in the unit \"%1\" (%2), and %3 in metres")
                .arg(text(layer.unit), name, nameOf(frame));
    }
    if (result.mistake.isEmpty() && frame == Frame::LocalProjected)
        result.mistake = planeMistake(layer);
    if (result.mistake.isEmpty() && hasHeights)
        result.mistake = heightMistake(layer, frame, result.warnings);
    return result;
}

/// Two that state different shifts are two systems, whatever their datum is called.
QString ReferenceCheck::shiftMistake(const Reference &layer, Frame frame) const
{
    const bool isLocal = frame == Frame::LocalGeographic || frame == Frame::LocalProjected;
    const std::vector<double> none(shiftParameters, 0.0);
    if (!isLocal && !haveSameShift(layer.toWgs84, none)) {
        return QStringLiteral("the layer \"%1\" states the datum shift %2 to WGS 84, and %3 is "
                              "WGS 84")
            .arg(shownName(layer), shownShift(layer.toWgs84), nameOf(frame));
    }
    if (!isLocal)
        return {};
    const auto mistake = [&](const QString &one, const QString &other) {
        return QStringLiteral(
                   "the layer \"%1\" states the datum shift %2 to WGS 84, and the system "
                   "%3 has %4")
            .arg(shownName(layer), one, m_systemName, other);
    };
    const bool stateBoth = !layer.toWgs84.empty() && !m_system.toWgs84.empty();
    if (stateBoth) {
        return haveSameShift(layer.toWgs84, m_system.toWgs84)
                   ? QString()
                   : mistake(shownShift(layer.toWgs84), shownShift(m_system.toWgs84));
    }
    const QString inLayer = shiftInName(layer.datum);
    const QString inSystem = m_system.toWgs84.empty() ? shiftInName(m_system.datum)
                                                      : plainShift(shownShift(m_system.toWgs84));
    if (inLayer.isEmpty() || inSystem.isEmpty() || inLayer == inSystem
        || inLayer == shiftInName(m_system.datum))
        return {};
    return mistake(text(layer.datum),
                   m_system.toWgs84.empty() ? text(m_system.datum) : shownShift(m_system.toWgs84));
}

QString ReferenceCheck::datumMistake(const Reference &layer, Frame frame, QStringList &notes) const
{
    const bool isLocal = frame == Frame::LocalGeographic || frame == Frame::LocalProjected;
    if (isLocal)
        return systemDatumMistake(layer, notes);
    if (isWgs84(layer.datum) && layer.primeMeridian == 0.0)
        return {};
    if (layer.kind == Kind::Geographic && m_sameDatum(layer.definition, wgs84))
        return {};
    if (isNearWgs84(layer.datum) && layer.primeMeridian == 0.0) {
        notes += QStringLiteral("the layer is in \"%1\", which is taken as WGS 84: the two differ "
                                "by some decimetres")
                     .arg(shownName(layer));
        return {};
    }
    return QStringLiteral("the layer \"%1\" has %2, and %3 is WGS 84")
        .arg(shownName(layer), shownDatum(layer), nameOf(frame));
}

QString ReferenceCheck::systemDatumMistake(const Reference &layer, QStringList &notes) const
{
    if (layer.kind == Kind::Geographic && m_system.primeMeridian != 0.0) {
        // The system's longitudes are counted from Greenwich, whatever its projection begins at.
        Reference system = m_system;
        system.primeMeridian = 0.0;
        system.datum = m_system.greenwichDatum;
        system.definition = m_system.greenwichDefinition;
        return ReferenceCheck(system, m_systemName, m_hasGeoid, m_sameDatum)
            .systemDatumMistake(layer, notes);
    }
    if (m_system.kind == Kind::None) {
        return QStringLiteral("the layer is in \"%1\", and it cannot be found out whether that is "
                              "the system %2: %3")
            .arg(shownName(layer), m_systemName, m_unknown);
    }
    const auto mistake = [&] {
        return QStringLiteral("the layer \"%1\" has %2 (ellipsoid %3), and the system %4 has %5 "
                              "(ellipsoid %6)")
            .arg(shownName(layer), shownDatum(layer), text(layer.ellipsoid), m_systemName,
                 shownDatum(m_system), text(m_system.ellipsoid));
    };
    if (m_sameDatum(layer.definition, m_system.definition))
        return {};
    if (isUnnamed(layer.datum) || isUnnamed(m_system.datum)) {
        if (!haveSameEllipsoid(layer, m_system))
            return mistake();
        notes +=
            QStringLiteral("%1 does not name its datum: \"%2\" and the system %3 have the same "
                           "ellipsoid, and are taken to have the same datum")
                .arg(isUnnamed(layer.datum) ? QStringLiteral("the layer")
                                            : QStringLiteral("the system"),
                     shownName(layer), m_systemName);
        return {};
    }
    if (plainName(layer.datum) == plainName(m_system.datum) && haveSameEllipsoid(layer, m_system))
        return {};
    if (isNearWgs84(layer.datum) && isNearWgs84(m_system.datum)
        && layer.primeMeridian == m_system.primeMeridian) {
        notes += QStringLiteral("the layer \"%1\" has %2, the system %3 has %4: they are taken as "
                                "one, and differ by some decimetres")
                     .arg(shownName(layer), shownDatum(layer), m_systemName, shownDatum(m_system));
        return {};
    }
    return mistake();
}

QString ReferenceCheck::planeMistake(const Reference &layer) const
{
    const bool hasProjections = !layer.projection.empty() && !m_system.projection.empty();
    const bool hasSameCode = !layer.code.empty() && layer.code == m_system.code;
    QString difference;
    if (hasProjections) {
        difference = PlaneProjection::from(layer.projection)
                         .differenceTo(PlaneProjection::from(m_system.projection));
    } else if (!hasSameCode) {
        difference = QStringLiteral("their projections cannot be compared");
    }
    if (!difference.isEmpty()) {
        return QStringLiteral("the layer is in \"%1\", and the system is %2: %3")
            .arg(shownName(layer), m_systemName, difference);
    }
    constexpr double unitTolerance = 1e-9;
    if (std::abs(layer.unitFactor - m_system.unitFactor) > unitTolerance * m_system.unitFactor) {
        return QStringLiteral(
                   "the layer \"%1\" counts in the unit \"%2\" (%3 m), and the system %4 "
                   "in \"%5\" (%6 m)")
            .arg(shownName(layer), text(layer.unit), QString::number(layer.unitFactor, 'g', 12),
                 m_systemName, text(m_system.unit), QString::number(m_system.unitFactor, 'g', 12));
    }
    return {};
}

/// Heights above some sea level are never taken as ellipsoidal ones, depths never as heights.
QString ReferenceCheck::heightMistake(const Reference &layer, Frame frame,
                                      QStringList &warnings) const
{
    if (layer.countsDown) {
        return QStringLiteral("the layer counts \"%1\" downwards, and heights count upwards")
            .arg(text(layer.vertical.empty() ? layer.name : layer.vertical));
    }
    if (layer.vertical.empty())
        return {};
    if (frame == Frame::LocalProjected && m_hasGeoid) {
        warnings +=
            QStringLiteral("heights of the layer are \"%1\", and are taken as heights above "
                           "the geoid model of the system %2: see to it that this is the "
                           "model of that vertical system")
                .arg(text(layer.vertical), m_systemName);
        return {};
    }
    return QStringLiteral("heights of the layer are \"%1\", and those of %2 are ellipsoidal%3")
        .arg(text(layer.vertical), nameOf(frame),
             frame == Frame::LocalProjected
                 ? QStringLiteral(" in the system %1, which names no geoid model").arg(m_systemName)
                 : QString());
}

std::optional<Frame> ReferenceCheck::onlyFrame(const Reference &layer, bool hasHeights,
                                               QString &mistake) const
{
    if (layer.kind == Kind::None) {
        mistake = QStringLiteral("the layer names no coordinate reference system; --from says what "
                                 "its positions are");
        return std::nullopt;
    }
    std::vector<Frame> fitting;
    QStringList names;
    // What is WGS 84 in both frames has the same numbers in both: then the first one is taken.
    for (const FrameNeed &need : needs) {
        const ReferenceFit found = fit(layer, need.frame, hasHeights);
        if (found.mistake.isEmpty() && found.notes.isEmpty())
            return need.frame;
        if (found.mistake.isEmpty()) {
            fitting.push_back(need.frame);
            names += nameOf(need.frame);
        } else if (mistake.isEmpty() || layer.kind == need.kind) {
            mistake = found.mistake;
        }
    }
    // In a system on WGS 84 longitude and latitude are the same in both frames.
    if (fitting.size() == 1 || (!fitting.empty() && isWgs84(m_system.datum)))
        return fitting.front();
    if (fitting.empty() && hasHeights) {
        // Where the heights are all that does not fit, they are the reason.
        QString ignored;
        if (const auto frame = onlyFrame(layer, false, ignored))
            mistake = fit(layer, *frame, true).mistake;
    }
    if (!fitting.empty()) {
        mistake = QStringLiteral("the layer \"%1\" may hold %2; --from says which")
                      .arg(shownName(layer), names.join(QLatin1String(" or ")));
    }
    return std::nullopt;
}

} // namespace KelStd::cli::vector
