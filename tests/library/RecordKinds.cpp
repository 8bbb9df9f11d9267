#include "library/RecordKinds.h"

#include "io/CompleteSystem.h"
#include "io/DocumentTest.h"

namespace KelStd::test {

// --- Ellipsoids ------------------------------------------------------------------------------

Ellipsoid EllipsoidKind::record(const QString &name, int value)
{
    Ellipsoid ellipsoid;
    ellipsoid.ellipsoid_name = name;
    ellipsoid.proj4EllpsName = QStringLiteral("krass");
    ellipsoid.biggerHalfAxle.value = 6378245.0;
    ellipsoid.reciprocal = value + 0.5;
    ellipsoid.positiveDir = EllipsoidDirection_WSU;
    return ellipsoid;
}

QByteArray EllipsoidKind::document(const QString &name, int value)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<Ellipsoid_List ver=\"1\">\n"
           "    <Ellpsoid ver=\"1\" ellipsoid_name=\""
           + name.toUtf8() + "\" biggerHalfAxle=\"6378245\" reciprocal=\""
           + QByteArray::number(value)
           + ".5\" positiveDir=\"WSU\" proj4EllpsName=\"krass\"/>\n"
             "</Ellipsoid_List>\n";
}

int EllipsoidKind::valueOf(const Ellipsoid &record)
{
    return static_cast<int>(record.reciprocal);
}

QString EllipsoidKind::nameOf(const Ellipsoid &record)
{
    return record.ellipsoid_name;
}

QByteArray ellipsoidsCalled(const QByteArray &names)
{
    QByteArray document = "<Ellipsoid_List ver=\"1\">";
    for (const char name : names) {
        document += QByteArray("<Ellpsoid ver=\"1\" ellipsoid_name=\"") + name
                    + "\" biggerHalfAxle=\"6378137\" reciprocal=\"298.25\" positiveDir=\"ENU\" "
                      "proj4EllpsName=\"\"/>";
    }
    return document + "</Ellipsoid_List>";
}

// --- Projections -----------------------------------------------------------------------------

Projection ProjectionKind::record(const QString &name, int value)
{
    Projection projection;
    projection.projection_name = name;
    projection.proj4Projection = QStringLiteral("merc");
    projection.locationType = LocationType_X_Y_ElevationHeight;
    projection.loc_or_height_unit = Unit_Meter;
    projection.param[QStringLiteral("FalseEast")] =
        Param(ValueType_Distance, Unit_Meter, static_cast<double>(value));
    projection.paramProj4[QStringLiteral("FalseEast")] = QStringLiteral("x_0");
    return projection;
}

QByteArray ProjectionKind::document(const QString &name, int value)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<Projection_List ver=\"1\">\n"
           "    <Projection ver=\"1\" projection_name=\""
           + name.toUtf8()
           + "\" proj4Projection=\"merc\" locationType=\"X_Y_ElevationHeight\""
             " loc_or_height_unit=\"Meter\">\n"
             "        <param name=\"FalseEast\" ver=\"1\" unit=\"Meter\" valType=\"Distance\""
             " isDictionary=\"false\">"
           + QByteArray::number(value)
           + "</param>\n"
             "        <paramProj4 name=\"FalseEast\" proj4Param=\"x_0\"/>\n"
             "    </Projection>\n"
             "</Projection_List>\n";
}

int ProjectionKind::valueOf(const Projection &record)
{
    return record.param.value(QStringLiteral("FalseEast")).value.toInt();
}

QString ProjectionKind::nameOf(const Projection &record)
{
    return record.projection_name;
}

// --- Custom systems --------------------------------------------------------------------------

Coord SystemKind::record(const QString &name, int value)
{
    Coord coord = completeSystem();
    coord.coord_name = name;
    coord.geoidModel.modelFileName = QString::number(value);
    return coord;
}

QByteArray SystemKind::document(const QString &name, int value)
{
    return storedDocument("complete.xml")
        .replace("D\xC3\xBCne &amp; S\xC3\xB6hne &lt;7>", name.toUtf8())
        .replace("egm96_15.gtx", QByteArray::number(value));
}

int SystemKind::valueOf(const Coord &record)
{
    return record.geoidModel.modelFileName.toInt();
}

QString SystemKind::nameOf(const Coord &record)
{
    return record.coord_name;
}

} // namespace KelStd::test
