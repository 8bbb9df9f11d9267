#include <KelStd/catalogue/ExportLoss.h>

#include <KelStd/catalogue/CarriedShift.h>
#include <KelStd/catalogue/OwnCheck.h>
#include <KelStd/catalogue/ProjectionRecords.h>
#include <KelStd/catalogue/RecordedShift.h>
#include <KelStd/catalogue/TextCheck.h>
#include <KelStd/location/SystemNotes.h>

#include <cmath>

namespace KelStd::catalogue {

namespace {

using proj::ProjObject;

/// How far a reader is from the system who applies its seven parameters linearly, in words.
QString linearText(const ProjSession &session, const Coord &coord, const PJ *known)
{
    const ProjObject geodetic = known == nullptr ? nullptr : session.geodeticOf(known);
    if (geodetic == nullptr)
        return {};
    const CarriedShift shift = recordedShift(coord, primeMeridianOf(session, geodetic.get()));
    constexpr int placesPerSide = 4;
    const OwnCheck check = ownCheck(session, coord, shift.steps, projectionSteps(session, known),
                                    placesIn(session.areaOf(known), placesPerSide));
    return check.isReady ? QStringLiteral(", which moves positions by up to %1 m")
                               .arg(check.difference, 0, 'f', 4)
                         : QString();
}

/// What to say of the unit of northing and easting. `inDatabase` is that of a text by the
/// database's words.
QStringList lostUnit(const ProjSession &session, const Coord &coord, const PlaneUnit &unit,
                     const Axis *inDatabase)
{
    constexpr double tolerance = 1e-9;
    const double defined = planeDirections(session, coord).metres;
    const double own = unit ? unit->metres : defined;
    const double written = inDatabase != nullptr ? inDatabase->factor
                           : defined == 1.0      ? own
                                                 : defined;
    if (std::abs(written / own - 1.0) <= tolerance)
        return {};
    if (inDatabase != nullptr && !unit) {
        return {QStringLiteral("Metres: northing and easting of the text count in the unit \"%1\".")
                    .arg(inDatabase->unit)};
    }
    return {QStringLiteral("The unit \"%1\" of northing and easting: the text counts in another.")
                .arg(unit ? unit->name : QString())};
}

/// How far longitudes and latitudes of the same earth-centred position lie apart on two ellipsoids,
/// WGS 84 and that of a system, at 45 degrees of latitude [m], where the latitudes differ most: by
/// half the difference of the squared eccentricities, to its first order.
double shiftOfNothingOn(const ProjSession &session, const PJ *system)
{
    constexpr double axis = 6378137.0;
    constexpr double flattening = 1.0 / 298.257223563;
    const auto squared = [](double f) { return f * (2.0 - f); };
    const auto ellipsoid = ellipsoidOf(session, system);
    if (!ellipsoid)
        return 0.0;
    const double own = ellipsoid->reciprocal == 0.0 ? 0.0 : 1.0 / ellipsoid->reciprocal;
    return std::abs(squared(flattening) - squared(own)) / 2.0 * axis;
}

/// What a text that has no datum shift loses.
QStringList lostShift(const ProjSession &session, const Coord &coord, const PJ *system)
{
    if (isShiftSet(coord))
        return {QStringLiteral("The datum shift: the form has none, and who reads the text takes "
                               "one of his own.")};
    const double metres = shiftOfNothingOn(session, system);
    if (metres < sameText)
        return {};
    return {QStringLiteral("The datum shift: the system has no parameters, but turns positions of "
                           "WGS 84 into those of its own ellipsoid. The form does not say so, and "
                           "who reads the text may leave that out, which moves positions by some "
                           "%1 m.")
                .arg(metres, 0, 'f', metres < 10.0 ? 2 : 0)};
}

/// What a text does not say of the axes, which its `difference` tells.
QStringList lostAxes(const Coord &coord, const WrittenText &written)
{
    if (written.difference <= sameText)
        return {};
    const QString axes = location::unusualAxes(coord.ellipsoid);
    return {QStringLiteral("The directions of the axes%1: who reads the text may count to the east "
                           "and north.")
                .arg(axes.isEmpty() ? QString() : QStringLiteral(", which point ") + axes)};
}

} // namespace

bool isShiftSet(const Coord &coord)
{
    return coord.ellipsoidTransform.fuction == EllipsoinTransformFunction_Three
           || coord.ellipsoidTransform.fuction == EllipsoinTransformFunction_Seven
           || coord.ellipsoid.proj4EllpsName.contains(QLatin1String("nadgrids"));
}

QStringList lostOf(const ProjSession &session, const Coord &coord, const WrittenText &written)
{
    const bool isEsri = written.form == ExportForm::Esri;
    QStringList lost;
    if (!coord.geoidModel.modelFileName.isEmpty())
        lost += QStringLiteral("The geoid model \"%1\": heights of the text are ellipsoidal.")
                    .arg(coord.geoidModel.modelFileName);
    if (coord.planeTransform.fuction != PlaneTransformFunction_None && isEsri)
        lost += QStringLiteral("The plane transformation.");
    if (coord.elevationFitting.function != ElevationFittingFunction_None)
        lost += QStringLiteral("The height fitting.");
    if (isEsri)
        lost += lostShift(session, coord, written.system);
    lost += lostAxes(coord, written);
    if (written.form == ExportForm::Proj)
        lost += QStringLiteral("The name of the system.");
    if (coord.ellipsoidTransform.fuction == EllipsoinTransformFunction_Seven && !isEsri
        && !written.isByOperation)
        lost += QStringLiteral("The full rotation matrix: readers apply the seven parameters "
                               "linearly%1.")
                    .arg(linearText(session, coord, written.known));
    if (coord.projection.paramProj4.values().contains(QStringLiteral("over"))
        && !written.text.contains(QLatin1String("+over")))
        lost += QStringLiteral("\"over\": eastings of longitudes beyond half a turn from the "
                               "central one begin anew on the other side.");
    const std::vector<Axis> axes =
        written.known == nullptr ? std::vector<Axis>() : session.axesOf(written.known);
    const bool isByDatabase = written.form != ExportForm::Proj && !axes.empty();
    lost += lostUnit(session, coord, written.unit, isByDatabase ? &axes.front() : nullptr);
    return lost;
}

QStringList lostOfPipeline(const Coord &coord, const QByteArray &pipeline)
{
    QStringList lost{QStringLiteral("The name of the system.")};
    if (!coord.geoidModel.modelFileName.isEmpty())
        lost += QStringLiteral("Positions for which the geoid model \"%1\" has no value.")
                    .arg(coord.geoidModel.modelFileName);
    if (pipeline.contains("+grids="))
        lost += QStringLiteral("The files of grids: the text names them by their paths here.");
    return lost;
}

} // namespace KelStd::catalogue
