#include "stream/StreamBytes.h"

#include "coord/RecordExpectations.h"
#include "support/Printers.h"

#include <QtCore/QFile>

#include <gtest/gtest.h>

#include <stdexcept>

namespace KelStd::test {

namespace {

QByteArray fileContent(const std::string &name)
{
    QFile file(QString::fromStdString(KELSTD_TEST_DATA_DIR "/streams/" + name));
    if (!file.open(QIODevice::ReadOnly))
        throw std::runtime_error("no file " + name);
    return file.readAll();
}

Param occupied(double value)
{
    Param param(ValueType_Height, Unit_USFoot, value);
    giveDictionary(param);
    return param;
}

} // namespace

std::vector<StreamField> streamFields(const char *file)
{
    std::vector<StreamField> fields;
    for (const QByteArray &line : fileContent(std::string(file) + ".txt").trimmed().split('\n')) {
        const QList<QByteArray> parts = line.split('|');
        const QByteArray hex = parts.value(1).trimmed();
        const StreamField field{parts.first().trimmed().toStdString(), QByteArray::fromHex(hex)};
        if (parts.size() != 2 || field.name.empty() || hex.isEmpty()
            || field.bytes.toHex(' ') != hex)
            throw std::runtime_error(std::string(file) + ": " + line.toStdString());
        fields.push_back(field);
    }
    return fields;
}

QByteArray streamFile(const char *file)
{
    return fileContent(std::string(file) + ".bin");
}

QByteArray joined(const std::vector<StreamField> &fields)
{
    QByteArray bytes;
    for (const StreamField &field : fields)
        bytes += field.bytes;
    return bytes;
}

int offsetOf(const std::vector<StreamField> &fields, const std::string &name)
{
    int offset = 0;
    for (const StreamField &field : fields) {
        if (field.name == name)
            return offset;
        offset += field.bytes.size();
    }
    throw std::runtime_error("no field " + name);
}

bool isVersion(const StreamField &field)
{
    const std::string end = "version";
    return field.name.size() >= end.size()
           && field.name.compare(field.name.size() - end.size(), end.size(), end) == 0;
}

Coord streamedSystem()
{
    Coord coord;
    coord.coord_name = QStringLiteral("Zürich 北");

    coord.ellipsoid.ellipsoid_name = QStringLiteral("Bessel 1841");
    coord.ellipsoid.proj4EllpsName = QStringLiteral("bessel");
    coord.ellipsoid.biggerHalfAxle.value = 6377397.155;
    coord.ellipsoid.reciprocal = 299.1528128;
    coord.ellipsoid.positiveDir = EllipsoidDirection_WSU;

    Projection &projection = coord.projection;
    projection.projection_name = QStringLiteral("Oblique");
    projection.proj4Projection = QStringLiteral("somerc");
    Param method(ValueType_Int32, Unit_None, 2);
    method.isDictionary = true;
    method.dictionarySelKey = QStringLiteral("two");
    method.dictionaryValues = {{QStringLiteral("one"), 1},
                               {QStringLiteral("three"), QVariant()},
                               {QStringLiteral("two"), 2}};
    method.dictionaryBindParamName = QStringLiteral("FalseEast");
    projection.param = {
        {QStringLiteral("FalseEast"), Param(ValueType_Distance, Unit_Meter, 2600000.0)},
        {QStringLiteral("Method"), method},
        {QStringLiteral("South"), Param(ValueType_Boolean, Unit_None, true)}};
    projection.paramProj4 = {{QStringLiteral("FalseEast"), QStringLiteral("x_0")},
                             {QStringLiteral("South"), QStringLiteral("south")}};
    projection.locationType = LocationType_Lat_Long_EarthHeight;

    stEllipsoinTransform &datum = coord.ellipsoidTransform;
    datum.fuction = EllipsoinTransformFunction_Seven;
    datum.nofuction_transtion = EllipsoinTransition_BLH;
    datum.x_translate.value = 674.374;
    datum.y_translate.value = 15.056;
    datum.z_translate.value = 405.346;
    datum.x_rotate.value = -0.5;
    datum.y_rotate.value = 0.25;
    datum.z_rotate.value = 1.75;
    datum.ratio_ppm.value = 5.5;

    coord.planeTransform.fuction = PlaneTransformFunction_Four;
    coord.planeTransform.north_translate.value = 1.5;
    coord.planeTransform.east_translate.value = -2.5;
    coord.planeTransform.rotate_angle.value = 0.125;
    coord.planeTransform.ratio.value = 1.0;

    stElevationFitting &fitting = coord.elevationFitting;
    fitting.function = ElevationFittingFunction_Curve;
    fitting.a.value = 0.5;
    fitting.b.value = 0.25;
    fitting.c.value = 0.125;
    fitting.d.value = -0.5;
    fitting.e.value = -0.25;
    fitting.f.value = -0.125;
    fitting.north_zero_x0.value = 1200000.0;
    fitting.east_zero_y0.value = 2600000.0;

    coord.geoidModel.modelFileName = QStringLiteral("egm96_15.gtx");
    return coord;
}

Coord occupiedSystem()
{
    Coord coord;
    coord.coord_name = QStringLiteral("before");
    coord.ellipsoid.ellipsoid_name = QStringLiteral("before");
    coord.ellipsoid.proj4EllpsName = QStringLiteral("kept");
    coord.ellipsoid.biggerHalfAxle = occupied(1.0);
    coord.ellipsoid.reciprocal = 2.0;
    coord.ellipsoid.positiveDir = EllipsoidDirection_WNU;
    coord.projection.projection_name = QStringLiteral("before");
    coord.projection.proj4Projection = QStringLiteral("before");
    coord.projection.param.insert(QStringLiteral("before"), occupied(3.0));
    coord.projection.paramProj4.insert(QStringLiteral("before"), QStringLiteral("k"));
    coord.projection.locationType = static_cast<ELocationType>(7);
    coord.projection.loc_or_height_unit = Unit_USFoot;
    coord.ellipsoidTransform.fuction = EllipsoinTransformFunction_Three;
    coord.ellipsoidTransform.nofuction_transtion = EllipsoinTransition_BLH;
    coord.planeTransform.fuction = static_cast<EPlaneTransformFunction>(7);
    coord.elevationFitting.function = ElevationFittingFunction_Plane;
    double value = 10.0;
    auto &datum = coord.ellipsoidTransform;
    for (Param *param : {&datum.x_translate, &datum.y_translate, &datum.z_translate,
                         &datum.x_rotate, &datum.y_rotate, &datum.z_rotate, &datum.ratio_ppm})
        *param = occupied(value++);
    auto &plane = coord.planeTransform;
    for (Param *param :
         {&plane.north_translate, &plane.east_translate, &plane.rotate_angle, &plane.ratio})
        *param = occupied(value++);
    auto &fitting = coord.elevationFitting;
    for (Param *param : {&fitting.a, &fitting.b, &fitting.c, &fitting.d, &fitting.e, &fitting.f,
                         &fitting.north_zero_x0, &fitting.east_zero_y0})
        *param = occupied(value++);
    coord.geoidModel.modelFileName = QStringLiteral("before");
    return coord;
}

void expectSameStreamedSystem(const Coord &actual, const Coord &expected, EUnit heightUnit)
{
    EXPECT_EQ(actual.projection.loc_or_height_unit, heightUnit);
    Coord comparable(actual);
    comparable.projection.loc_or_height_unit = expected.projection.loc_or_height_unit;
    EXPECT_TRUE(comparable == expected);
    EXPECT_EQ(actual.coord_name, expected.coord_name);
    EXPECT_EQ(actual.ellipsoid.ellipsoid_name, expected.ellipsoid.ellipsoid_name);
    EXPECT_EQ(actual.projection.projection_name, expected.projection.projection_name);
    // Equality of variants converts their types, and 5.5 is as good as "5.5".
    EXPECT_EQ(actual.ellipsoidTransform.ratio_ppm.value.userType(),
              expected.ellipsoidTransform.ratio_ppm.value.userType());
}

} // namespace KelStd::test
