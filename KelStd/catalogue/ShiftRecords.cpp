#include <KelStd/catalogue/ShiftRecords.h>

namespace KelStd::catalogue {

namespace {

/// The grids of a shift, as "+nadgrids=" has them.
QString gridsOf(const CarriedShift &shift)
{
    for (const ProjStep &step : shift.steps) {
        if (step.name == "hgridshift")
            return QString::fromUtf8(step.text("grids"));
    }
    return {};
}

Param metres(double value)
{
    return Param(ValueType_Distance, Unit_Meter, value);
}

Param seconds(double value)
{
    return Param(ValueType_Angle, Unit_Second, value);
}

/// Minus a number, and never "-0", which documents would show.
double opposite(double value)
{
    return value == 0.0 ? 0.0 : -value;
}

} // namespace

bool setShift(Coord &coord, const CarriedShift &shift)
{
    stEllipsoinTransform &record = coord.ellipsoidTransform;
    record = stEllipsoinTransform();
    if (shift.kind == ShiftKind::Grid) {
        // The ellipsoid's name is passed to PROJ as it stands, with what follows it.
        QString &name = coord.ellipsoid.proj4EllpsName;
        const QString grids = gridsOf(shift);
        if (name.isEmpty() || grids.isEmpty() || grids.contains(QLatin1Char(' ')))
            return false;
        name += QLatin1String(" +nadgrids=") + grids;
        return true;
    }
    // The record leads from WGS 84 to the local frame: translations and scale the other way round,
    // rotations as they are, in the other convention.
    const Similarity &similarity = shift.similarity;
    if (shift.kind == ShiftKind::Three || shift.kind == ShiftKind::Seven) {
        record.x_translate = metres(opposite(similarity.translation[0]));
        record.y_translate = metres(opposite(similarity.translation[1]));
        record.z_translate = metres(opposite(similarity.translation[2]));
        record.fuction = EllipsoinTransformFunction_Three;
    }
    if (shift.kind == ShiftKind::Seven) {
        record.x_rotate = seconds(similarity.rotation[0]);
        record.y_rotate = seconds(similarity.rotation[1]);
        record.z_rotate = seconds(similarity.rotation[2]);
        record.ratio_ppm = Param(ValueType_Double, Unit_None, opposite(similarity.scale));
        record.fuction = EllipsoinTransformFunction_Seven;
    }
    return true;
}

} // namespace KelStd::catalogue
