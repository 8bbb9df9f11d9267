#include <KelStd/io/ProjEllipsoid.h>

#include <KelStd/io/NamedEllipsoids.h>

namespace KelStd::io {

namespace {

double inverseFlattening(const NamedEllipsoid &row)
{
    if (row.inverseFlattening != 0.0)
        return row.inverseFlattening;
    const double difference = row.semiMajorAxis - row.semiMinorAxis;
    return difference == 0.0 ? 0.0 : row.semiMajorAxis / difference;
}

} // namespace

std::optional<Ellipsoid> ellipsoidOfProj(const QString &projName)
{
    for (const NamedEllipsoid &row : namedEllipsoids) {
        const QString name = QString::fromLatin1(row.projName);
        if (name.compare(projName, Qt::CaseInsensitive) != 0)
            continue;
        Ellipsoid ellipsoid;
        ellipsoid.ellipsoid_name = name;
        ellipsoid.proj4EllpsName = name;
        ellipsoid.biggerHalfAxle = Param(ValueType_Distance, Unit_Meter, row.semiMajorAxis);
        ellipsoid.reciprocal = inverseFlattening(row);
        ellipsoid.positiveDir = EllipsoidDirection_ENU;
        return ellipsoid;
    }
    return std::nullopt;
}

QStringList ellipsoidNamesOfProj()
{
    QStringList names;
    for (const NamedEllipsoid &row : namedEllipsoids)
        names += QString::fromLatin1(row.projName);
    return names;
}

} // namespace KelStd::io
