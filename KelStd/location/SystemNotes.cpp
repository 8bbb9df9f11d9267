#include <KelStd/location/SystemNotes.h>

#include <KelStd/coord/OverrulingKeys.h>
#include <KelStd/text/CoordStringHelper.h>

namespace KelStd::location {

namespace {

QString lengthUnitName(EUnit unit)
{
    const QString name = CoordStringHelper::Unit_to_DescriptionString(unit);
    return name.isEmpty() ? QStringLiteral("a unit without a name") : name;
}

void noteOverrulingKeys(const Coord &coord, QStringList &notes)
{
    const bool hasName = !coord.ellipsoid.proj4EllpsName.trimmed().isEmpty();
    const auto &names = coord.projection.paramProj4;
    for (auto entry = names.constBegin(); entry != names.constEnd(); ++entry) {
        const OverrulingKey *key = findOverrulingKey(entry.value());
        if (key != nullptr && (hasName || !key->isLeftOutBesideNumbers)) {
            notes +=
                QStringLiteral("The parameter \"%1\" is PROJ's \"%2\": it comes first and wins "
                               "over %3.")
                    .arg(entry.key(), entry.value(), QString::fromLatin1(key->overruled));
        }
    }
}

void noteParametersWithoutValue(const Projection &projection, QStringList &notes)
{
    const auto &names = projection.paramProj4;
    for (auto entry = names.constBegin(); entry != names.constEnd(); ++entry) {
        const auto param = projection.param.constFind(entry.key());
        if (param == projection.param.constEnd()) {
            notes += QStringLiteral("The parameter \"%1\" has no value: PROJ is given %2=0.")
                         .arg(entry.key(), entry.value());
        } else if (param->valType == ValueType_String) {
            notes +=
                QStringLiteral("The parameter \"%1\" is a text, which coordinate-system "
                               "documents do not carry: PROJ is given %2=%3.")
                    .arg(entry.key(), entry.value(), CoordStringHelper::GetNoFormatString(*param));
        }
    }
}

void noteDatumShift(const stEllipsoinTransform &shift, QStringList &notes)
{
    if (shift.fuction == EllipsoinTransformFunction_Three
        && shift.z_translate.unit != shift.y_translate.unit) {
        notes += QStringLiteral("The z translation is stored in %1, but a three-parameter shift "
                                "reads it in the unit of y, %2.")
                     .arg(lengthUnitName(shift.z_translate.unit),
                          lengthUnitName(shift.y_translate.unit));
    }
}

/// PROJ 9.1 has a sphere only: at latitude 54.7 the arc of WGS 84's meridian is 25.3 km shorter.
void noteSphericalProjection(const Coord &coord, QStringList &notes)
{
    if (coord.projection.proj4Projection.trimmed() == QLatin1String("eqc")
        && coord.ellipsoid.reciprocal != 0.0) {
        notes += QStringLiteral("PROJ computes the projection \"eqc\" on a sphere: northings "
                                "differ by up to 25 km from those on the ellipsoid.");
    }
}

void noteUnits(const Coord &coord, QStringList &notes)
{
    if (coord.ellipsoid.proj4EllpsName.trimmed().isEmpty()
        && coord.ellipsoid.biggerHalfAxle.unit != Unit_Meter) {
        notes +=
            QStringLiteral("The semi-major axis is stored in %1, and PROJ does not read it so.")
                .arg(lengthUnitName(coord.ellipsoid.biggerHalfAxle.unit));
    }
    if (coord.projection.loc_or_height_unit != Unit_Meter) {
        notes +=
            QStringLiteral("The system's own unit is %1; its positions are computed in metres.")
                .arg(lengthUnitName(coord.projection.loc_or_height_unit));
    }
}

void noteSite(const Coord &coord, QStringList &notes)
{
    if (coord.planeTransform.fuction != PlaneTransformFunction_None) {
        notes += QStringLiteral("The planar transformation is not applied to the four frames: it "
                                "gives northing and easting at the site.");
    }
    if (coord.elevationFitting.function != ElevationFittingFunction_None) {
        notes += QStringLiteral("The height fitting is not applied to the four frames: it gives "
                                "the height at the site.");
    }
}

} // namespace

QString unusualAxes(const Ellipsoid &ellipsoid)
{
    switch (static_cast<int>(ellipsoid.positiveDir)) {
    case EllipsoidDirection_WSU: return QStringLiteral("west and south");
    case EllipsoidDirection_ESU: return QStringLiteral("east and south");
    case EllipsoidDirection_WNU: return QStringLiteral("west and north");
    default: return {};
    }
}

QStringList notesOn(const Coord &coord)
{
    QStringList notes;
    if (!unusualAxes(coord.ellipsoid).isEmpty()) {
        notes += QStringLiteral("The axes of this system point %1: its longitudes, latitudes, "
                                "northings and eastings count positive that way.")
                     .arg(unusualAxes(coord.ellipsoid));
    }
    noteSphericalProjection(coord, notes);
    noteUnits(coord, notes);
    noteOverrulingKeys(coord, notes);
    noteParametersWithoutValue(coord.projection, notes);
    noteDatumShift(coord.ellipsoidTransform, notes);
    noteSite(coord, notes);
    return notes;
}

} // namespace KelStd::location
