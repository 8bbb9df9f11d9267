#include <KelStd/proj/Transformation.h>

#include <KelStd/proj/FixedBuffer.h>
#include <KelStd/proj/TransformationResult.h>

#include <limits>

namespace KelStd::proj {

ProjObject createConversion(PJ_CONTEXT *context, const QString &from, const QString &to)
{
    char source[definitionSize] = {};
    char target[definitionSize] = {};
    if (!copyToBuffer(from, source, sizeof source) || !copyToBuffer(to, target, sizeof target))
        return nullptr;
    return ProjObject(LoadedProj::instance().functions().proj_create_crs_to_crs(context, source,
                                                                                target, nullptr));
}

ProjObject createShift(PJ_CONTEXT *context, const QString &gridFile, ShiftDirection direction)
{
    const QLatin1Char quotation('"');
    if (gridFile.contains(quotation))
        return nullptr; // it would end the path, and what follows would be PROJ parameters
    QString definition =
        QLatin1String("+proj=vgridshift +grids=") + quotation + gridFile + quotation;
    if (direction == ShiftDirection::ToEllipsoid)
        definition += QLatin1String(" +inv");

    char buffer[geoidDefinitionSize] = {};
    if (!copyToBuffer(definition, buffer, sizeof buffer))
        return nullptr;
    return ProjObject(LoadedProj::instance().functions().proj_create(context, buffer));
}

bool transform(PJ *conversion, const Pos &from, Pos &to)
{
    // The three readings of a position share their storage: one of them serves every frame.
    const stXYZ &in = from.getXYZ();
    const PJ_COORD out = LoadedProj::instance().functions().proj_trans(
        conversion, PJ_FWD, PJ_COORD{{in.x, in.y, in.z, 0.0}});
    if (!isResult(out.v[0]) || !isResult(out.v[1]) || !isResult(out.v[2]))
        return false;
    to.setXYZ(out.v[0], out.v[1], out.v[2]);
    return true;
}

bool separation(PJ *shift, const stLongLatH &point, double &diff)
{
    const ProjFunctions &functions = LoadedProj::instance().functions();
    const PJ_COORD in{{functions.proj_torad(point.longitude), functions.proj_torad(point.latitude),
                       point.height,
                       std::numeric_limits<double>::infinity()}}; // at no time in particular
    const double shifted = functions.proj_trans(shift, PJ_FWD, in).v[2];
    if (!isResult(shifted))
        return false;
    diff = shifted - point.height;
    return true;
}

} // namespace KelStd::proj
