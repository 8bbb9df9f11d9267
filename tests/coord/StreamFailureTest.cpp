// Other versions, short streams and counts that lie.

#include "coord/RecordExpectations.h"
#include "stream/StreamBytes.h"
#include "support/Printers.h"

#include <KelStd/coord/Coord.h>

#include <QtCore/QElapsedTimer>

#include <gtest/gtest.h>

#include <functional>

namespace KelStd {
namespace {

using test::isVersion;
using test::joined;
using test::loadBytes;
using test::loadHex;
using test::occupiedSystem;
using test::offsetOf;
using test::saved;
using test::savedHex;
using test::streamedSystem;
using test::StreamField;
using test::streamFields;

// --- Another version of the block itself ---------------------------------------------------------

/// Every other version, and no version at all, is refused; what is left is what `clear` leaves.
template <typename Value>
void expectOtherVersionsRefused(const Value &occupied, const std::vector<qint32> &versions)
{
    Value cleared(occupied);
    cleared.clear();
    for (const qint32 version : versions) {
        SCOPED_TRACE(version);
        QByteArray bytes = saved(occupied);
        QDataStream(&bytes, QIODevice::WriteOnly) << version;
        Value value(occupied);
        QDataStream stream(bytes);
        EXPECT_FALSE(value.load(stream));
        EXPECT_EQ(savedHex(value), savedHex(cleared));
        EXPECT_EQ(stream.status(), QDataStream::Ok);
        EXPECT_EQ(stream.device()->pos(), 4) << "nothing is read behind the version";
    }
    Value value(occupied);
    EXPECT_FALSE(loadBytes(value, QByteArray()));
    EXPECT_EQ(savedHex(value), savedHex(cleared));
}

const std::vector<qint32> notOne = {0, 2, 3, -1, 0x01000000, 257};

TEST(StreamVersions, EveryBlockAcceptsOnlyItsOwn)
{
    const Coord system = occupiedSystem();
    expectOtherVersionsRefused(system.ellipsoid.biggerHalfAxle, notOne);
    expectOtherVersionsRefused(system.ellipsoid, notOne);
    expectOtherVersionsRefused(system.projection, notOne);
    expectOtherVersionsRefused(system.ellipsoidTransform, notOne);
    expectOtherVersionsRefused(system.planeTransform, notOne);
    expectOtherVersionsRefused(system.elevationFitting, notOne);
    expectOtherVersionsRefused(system.geoidModel, notOne);
    expectOtherVersionsRefused(Pos::fromXYZ(1, 2, 3), notOne);
    Location location;
    location.localNEH = Pos::fromENU(1, 2, 3);
    expectOtherVersionsRefused(location, notOne);
    expectOtherVersionsRefused(system, {0, 3, 4, -1, 0x02000000, 258});
}

TEST(StreamVersions, ARefusedSystemIsClearedOnlyAsFarAsClearGoes)
{
    Coord system = occupiedSystem();
    EXPECT_FALSE(loadHex(system, "00 00 00 03"));
    EXPECT_TRUE(system.coord_name.isEmpty());
    EXPECT_TRUE(system.ellipsoid.ellipsoid_name.isEmpty());
    EXPECT_EQ(system.ellipsoid.proj4EllpsName, QStringLiteral("kept"));
    test::expectNumber(system.ellipsoid.biggerHalfAxle, ValueType_Distance, Unit_Meter, 0.0);
    test::expectKeptDictionary(system.ellipsoid.biggerHalfAxle);
    EXPECT_TRUE(system.projection.param.isEmpty());
    EXPECT_EQ(static_cast<int>(system.projection.locationType), 7);
    EXPECT_EQ(system.projection.loc_or_height_unit, Unit_USFoot);
    test::expectNumber(system.ellipsoidTransform.x_rotate, ValueType_Angle, Unit_Second, 0.0);
    test::expectKeptDictionary(system.ellipsoidTransform.x_rotate);
    test::expectKeptDictionary(system.planeTransform.ratio);
    test::expectKeptDictionary(system.elevationFitting.east_zero_y0);
    EXPECT_TRUE(system.geoidModel.modelFileName.isEmpty());
}

// --- Another version of a nested block -----------------------------------------------------------

struct NestedFailure
{
    const char *version; ///< the field that holds another version
    std::function<void(const Coord &)> expect;
};

const std::vector<NestedFailure> &nestedFailures()
{
    static const std::vector<NestedFailure> rows = {
        {"ellipsoid/version",
         [](const Coord &c) {
             EXPECT_EQ(c.coord_name, QStringLiteral("Zürich 北"));
             EXPECT_TRUE(c.ellipsoid.ellipsoid_name.isEmpty());
             EXPECT_EQ(c.ellipsoid.proj4EllpsName, QStringLiteral("kept"));
             EXPECT_EQ(c.ellipsoid.reciprocal, 0.0);
         }},
        {"ellipsoid/biggerHalfAxle/version",
         [](const Coord &c) {
             EXPECT_EQ(c.ellipsoid.ellipsoid_name, QStringLiteral("Bessel 1841"));
             EXPECT_EQ(c.ellipsoid.proj4EllpsName, QStringLiteral("bessel"));
             // As the parameter's own reset leaves it, not as the ellipsoid's.
             Param cleared;
             cleared.clear();
             EXPECT_TRUE(c.ellipsoid.biggerHalfAxle == cleared);
             EXPECT_EQ(c.ellipsoid.reciprocal, 0.0);
             EXPECT_EQ(c.ellipsoid.positiveDir, EllipsoidDirection_ENU);
             EXPECT_TRUE(c.projection.projection_name.isEmpty());
         }},
        {"projection/version",
         [](const Coord &c) {
             EXPECT_EQ(c.ellipsoid.reciprocal, 299.1528128);
             EXPECT_EQ(c.ellipsoid.positiveDir, EllipsoidDirection_WSU);
             EXPECT_TRUE(c.projection.projection_name.isEmpty());
             EXPECT_TRUE(c.projection.param.isEmpty());
             EXPECT_EQ(static_cast<int>(c.projection.locationType), 7);
         }},
        {"projection/param/1/version",
         [](const Coord &c) {
             EXPECT_EQ(c.projection.projection_name, QStringLiteral("Oblique"));
             EXPECT_EQ(c.projection.proj4Projection, QStringLiteral("somerc"));
             EXPECT_TRUE(c.projection.param.isEmpty());
             EXPECT_TRUE(c.projection.paramProj4.isEmpty());
         }},
        {"projection/param/3/version",
         [](const Coord &c) {
             EXPECT_EQ(c.projection.param.keys(),
                       (QStringList{QStringLiteral("FalseEast"), QStringLiteral("Method")}));
             EXPECT_TRUE(c.projection.param.value(QStringLiteral("Method"))
                         == streamedSystem().projection.param.value(QStringLiteral("Method")));
             EXPECT_TRUE(c.projection.paramProj4.isEmpty());
             EXPECT_EQ(static_cast<int>(c.projection.locationType), 7);
             EXPECT_EQ(c.ellipsoidTransform.fuction, EllipsoinTransformFunction_None);
         }},
        {"ellipsoidTransform/version",
         [](const Coord &c) {
             EXPECT_EQ(c.projection.paramProj4.size(), 2);
             EXPECT_EQ(c.projection.locationType, LocationType_Lat_Long_EarthHeight);
             EXPECT_EQ(c.ellipsoidTransform.fuction, EllipsoinTransformFunction_None);
             EXPECT_EQ(c.ellipsoidTransform.nofuction_transtion, EllipsoinTransition_XYZ);
         }},
        {"ellipsoidTransform/x_rotate/version",
         [](const Coord &c) {
             EXPECT_EQ(c.ellipsoidTransform.fuction, EllipsoinTransformFunction_Seven);
             EXPECT_EQ(c.ellipsoidTransform.nofuction_transtion, EllipsoinTransition_BLH);
             test::expectNumber(c.ellipsoidTransform.z_translate, ValueType_Distance, Unit_Meter,
                                405.346);
             test::expectEmptyDictionary(c.ellipsoidTransform.z_translate);
             EXPECT_FALSE(c.ellipsoidTransform.x_rotate.value.isValid());
             test::expectEmptyDictionary(c.ellipsoidTransform.x_rotate);
             test::expectNumber(c.ellipsoidTransform.y_rotate, ValueType_Angle, Unit_Second, 0.0);
             test::expectKeptDictionary(c.ellipsoidTransform.y_rotate);
             EXPECT_EQ(c.planeTransform.fuction, PlaneTransformFunction_None);
         }},
        {"planeTransform/version",
         [](const Coord &c) {
             EXPECT_EQ(c.ellipsoidTransform.ratio_ppm.value.toDouble(), 5.5);
             EXPECT_EQ(c.planeTransform.fuction, PlaneTransformFunction_None);
             test::expectKeptDictionary(c.planeTransform.north_translate);
         }},
        {"planeTransform/ratio/version",
         [](const Coord &c) {
             EXPECT_EQ(c.planeTransform.fuction, PlaneTransformFunction_Four);
             EXPECT_EQ(c.planeTransform.rotate_angle.value.toDouble(), 0.125);
             EXPECT_FALSE(c.planeTransform.ratio.value.isValid());
             EXPECT_EQ(c.elevationFitting.function, ElevationFittingFunction_None);
         }},
        {"elevationFitting/version",
         [](const Coord &c) {
             EXPECT_EQ(c.planeTransform.ratio.value.toDouble(), 1.0);
             EXPECT_EQ(c.elevationFitting.function, ElevationFittingFunction_None);
             test::expectKeptDictionary(c.elevationFitting.a);
         }},
        {"elevationFitting/east_zero_y0/version",
         [](const Coord &c) {
             EXPECT_EQ(c.elevationFitting.function, ElevationFittingFunction_Curve);
             EXPECT_EQ(c.elevationFitting.north_zero_x0.value.toDouble(), 1200000.0);
             EXPECT_FALSE(c.elevationFitting.east_zero_y0.value.isValid());
             EXPECT_TRUE(c.geoidModel.modelFileName.isEmpty());
         }},
        {"geoidModel/version",
         [](const Coord &c) {
             EXPECT_EQ(c.elevationFitting.east_zero_y0.value.toDouble(), 2600000.0);
             EXPECT_TRUE(c.geoidModel.modelFileName.isEmpty());
         }},
    };
    return rows;
}

QByteArray withInt32(QByteArray bytes, int offset, qint32 number)
{
    QByteArray field;
    QDataStream(&field, QIODevice::WriteOnly) << number;
    return bytes.replace(offset, field.size(), field);
}

TEST(StreamVersions, ANestedFailureKeepsWhatWasReadAndNoMore)
{
    const std::vector<StreamField> fields = streamFields("coord_v2");
    for (const NestedFailure &row : nestedFailures()) {
        const int offset = offsetOf(fields, row.version);
        for (const qint32 version : {0, 2, 3, -1}) {
            SCOPED_TRACE(testing::Message() << row.version << ' ' << version);
            Coord coord = occupiedSystem();
            QDataStream stream(withInt32(joined(fields), offset, version));
            EXPECT_FALSE(coord.load(stream));
            EXPECT_EQ(coord.coord_name, QStringLiteral("Zürich 北"));
            EXPECT_EQ(coord.projection.loc_or_height_unit, Unit_USFoot);
            EXPECT_EQ(stream.device()->pos(), offset + 4);
            row.expect(coord);
        }
    }
}

TEST(StreamVersions, EveryNestedVersionCounts)
{
    const std::vector<StreamField> fields = streamFields("coord_v2");
    int offset = 0;
    int versions = 0;
    for (const StreamField &field : fields) {
        if (isVersion(field) && offset > 0) {
            Coord coord;
            EXPECT_FALSE(loadBytes(coord, withInt32(joined(fields), offset, 2))) << field.name;
            ++versions;
        }
        offset += field.bytes.size();
    }
    // 6 records, and the parameters: axis, 3 of the projection, 7, 4 and 8.
    EXPECT_EQ(versions, 6 + 1 + 3 + 7 + 4 + 8);
}

TEST(StreamVersions, EllipsoidWithAParameterOfVersionTwo)
{
    Ellipsoid ellipsoid;
    EXPECT_FALSE(loadHex(ellipsoid,
                         "00 00 00 01 00 00 00 02 00 41 00 00 00 02 00 42 00 00 00 02 "
                         "00 00 00 06 00 00 00 0a 00 00 00 06 00 3f f0 00 00 00 00 00 00"));
    EXPECT_EQ(ellipsoid.ellipsoid_name, QStringLiteral("A"));
    EXPECT_EQ(ellipsoid.proj4EllpsName, QStringLiteral("B"));
    EXPECT_EQ(ellipsoid.reciprocal, 0.0);
}

TEST(StreamVersions, LocationWhoseThirdPositionHasVersionZero)
{
    const std::vector<StreamField> fields = streamFields("location_v1");
    const QByteArray bytes = withInt32(joined(fields), offsetOf(fields, "localLLH/version"), 0);
    Location location;
    location.localLLH = location.localNEH = Pos::fromXYZ(7, 8, 9);
    EXPECT_FALSE(loadBytes(location, bytes));
    EXPECT_EQ(location.wgs84LLH, Pos::fromLongLatH(8.5, 47.25, 408.5));
    EXPECT_EQ(location.wgs84XYZ, Pos::fromXYZ(4278990.25, 639500.5, 4660500.75));
    EXPECT_EQ(location.localLLH, Pos());
    EXPECT_EQ(location.localNEH, Pos());
}

// --- A projection's parameters -------------------------------------------------------------------

/// Head of a projection block without names, up to the count of parameters.
const std::string projectionHead = "00 00 00 01 ff ff ff ff ff ff ff ff ";
const std::string keyA = " 00 00 00 02 00 61 ";

std::string intParam(const std::string &version, const std::string &value)
{
    return version + " 00 00 00 02 00 00 00 00 00 00 00 02 00 " + value
           + " 00 ff ff ff ff 00 00 00 00 ff ff ff ff";
}

TEST(StreamParameters, OfAKeyThatOccursTwiceTheLaterStays)
{
    Projection projection;
    EXPECT_TRUE(loadHex(projection, projectionHead + "00 00 00 02" + keyA
                                        + intParam("00 00 00 01", "00 00 00 05") + keyA
                                        + intParam("00 00 00 01", "00 00 00 06")
                                        + " 00 00 00 00 00 00 00 01"));
    ASSERT_EQ(projection.param.size(), 1);
    EXPECT_EQ(projection.param.first().value.toInt(), 6);
    EXPECT_EQ(projection.locationType, LocationType_Lat_Long_EarthHeight);
}

TEST(StreamParameters, AFailingOneLeavesTheEarlierOneUnderItsKey)
{
    Projection projection;
    EXPECT_FALSE(loadHex(projection, projectionHead + "00 00 00 02" + keyA
                                         + intParam("00 00 00 01", "00 00 00 05") + keyA
                                         + intParam("00 00 00 02", "00 00 00 06")
                                         + " 00 00 00 00 00 00 00 01"));
    ASSERT_EQ(projection.param.size(), 1);
    EXPECT_EQ(projection.param.first().value.toInt(), 5);
    EXPECT_EQ(projection.locationType, LocationType_X_Y_ElevationHeight);
}

TEST(StreamParameters, ACountBelowOneMeansNone)
{
    for (const char *count : {"00 00 00 00", "ff ff ff ff", "80 00 00 00"}) {
        SCOPED_TRACE(count);
        Projection projection = occupiedSystem().projection;
        EXPECT_TRUE(loadHex(projection, projectionHead + count + " 00 00 00 01" + keyA
                                            + "00 00 00 02 00 6b"
                                              " 00 00 00 01"));
        EXPECT_TRUE(projection.param.isEmpty());
        EXPECT_EQ(projection.paramProj4.value(QStringLiteral("a")), QStringLiteral("k"));
        EXPECT_EQ(projection.locationType, LocationType_Lat_Long_EarthHeight);
    }
}

/// The end of the stream ends the reading, whatever a count claims.
TEST(StreamParameters, CountsThatLieEndWithTheStream)
{
    QElapsedTimer timer;
    timer.start();
    Projection projection;
    EXPECT_FALSE(loadHex(projection, projectionHead + "7f ff ff ff" + keyA
                                         + intParam("00 00 00 01", "00 00 00 05")));
    EXPECT_EQ(projection.param.size(), 1);
    EXPECT_FALSE(loadHex(projection, projectionHead + "7f ff ff ff"));
    EXPECT_TRUE(projection.param.isEmpty());
    // A map of Qt's whose entries are not all there is empty.
    EXPECT_TRUE(loadHex(projection,
                        projectionHead + "00 00 00 00 ff ff ff ff" + keyA + "00 00 00 02 00 6b"));
    EXPECT_TRUE(projection.paramProj4.isEmpty());
    for (const char *length : {"ff ff ff fe", "7f ff ff fe", "10 00 00 00"}) {
        EXPECT_TRUE(loadHex(projection, std::string("00 00 00 01 ") + length + " 00 41"));
        EXPECT_TRUE(projection.projection_name.isEmpty());
    }
    EXPECT_LT(timer.elapsed(), 10000);
}

// --- Short streams -------------------------------------------------------------------------------

/// A block cut off somewhere loads exactly when each version in it is still there.
template <typename Value>
void expectVersionsDecide(const Value &target, const std::vector<StreamField> &fields,
                          const std::function<void(const Value &, int)> &expect)
{
    const QByteArray bytes = joined(fields);
    int lastVersionEnd = 0;
    int end = 0;
    for (const StreamField &field : fields) {
        end += field.bytes.size();
        if (isVersion(field))
            lastVersionEnd = end;
    }
    for (int length = 0; length <= bytes.size(); ++length) {
        SCOPED_TRACE(testing::Message() << "cut at " << length);
        Value value(target);
        QDataStream stream(bytes.left(length));
        EXPECT_EQ(value.load(stream), length >= lastVersionEnd);
        EXPECT_EQ(stream.status(),
                  length < bytes.size() ? QDataStream::ReadPastEnd : QDataStream::Ok);
        expect(value, length);
    }
}

void expectComplete(const QString &actual, const std::vector<StreamField> &fields,
                    const std::string &name, int length, const QString &whole)
{
    int end = offsetOf(fields, name);
    for (const StreamField &field : fields)
        end += field.name == name ? field.bytes.size() : 0;
    EXPECT_EQ(actual, length >= end ? whole : QString()) << name;
}

TEST(ShortStreams, ASystemCutAtEveryByte)
{
    for (const char *file : {"coord_v2", "coord_v1"}) {
        const auto fields = streamFields(file);
        std::vector<int> parameterVersionEnds;
        for (const char *parameter : {"1", "2", "3"})
            parameterVersionEnds.push_back(
                offsetOf(fields, std::string("projection/param/") + parameter + "/version") + 4);
        Coord target = occupiedSystem();
        target.ellipsoid.proj4EllpsName.clear();
        expectVersionsDecide<Coord>(target, fields, [&](const Coord &coord, int length) {
            expectComplete(coord.coord_name, fields, "coord_name", length,
                           QStringLiteral("Zürich 北"));
            expectComplete(coord.ellipsoid.proj4EllpsName, fields, "ellipsoid/proj4EllpsName",
                           length, QStringLiteral("bessel"));
            expectComplete(coord.projection.proj4Projection, fields, "projection/proj4Projection",
                           length, QStringLiteral("somerc"));
            EXPECT_EQ(coord.projection.param.size(),
                      std::count_if(parameterVersionEnds.begin(), parameterVersionEnds.end(),
                                    [&](int end) { return length >= end; }));
            EXPECT_EQ(coord.projection.loc_or_height_unit, Unit_USFoot);
            const int fitted = offsetOf(fields, "elevationFitting/east_zero_y0/isDictionary");
            EXPECT_EQ(coord.elevationFitting.east_zero_y0.value.toDouble(),
                      length >= fitted ? 2600000.0 : 0.0);
        });
    }
}

TEST(ShortStreams, ALocationCutAtEveryByte)
{
    const auto fields = streamFields("location_v1");
    Location target;
    target.localNEH = Pos::fromXYZ(7, 8, 9);
    expectVersionsDecide<Location>(target, fields, [](const Location &location, int length) {
        EXPECT_EQ(location.get_WGS84_LLH_Long(), length >= 16 ? 8.5 : 0.0);
        EXPECT_EQ(location.get_WGS84_LLH_Lat(), length >= 24 ? 47.25 : 0.0);
        EXPECT_EQ(location.get_NEH_E(), length >= 100 ? 2683000.0 : 0.0);
        EXPECT_EQ(location.get_NEH_N(), length >= 108 ? 1233500.5 : 0.0);
        EXPECT_EQ(location.get_NEH_H(), length >= 116 ? 358.75 : 0.0);
    });
}

TEST(ShortStreams, BehindTheVersionEverythingIsZero)
{
    Param param(ValueType_Angle, Unit_Second, 5.0);
    EXPECT_TRUE(loadHex(param, "00 00 00 01"));
    EXPECT_EQ(param.valType, ValueType_None); // read as zero, not reset
    EXPECT_EQ(param.unit, Unit_None);
    EXPECT_FALSE(param.value.isValid());
    Pos pos = Pos::fromXYZ(7, 8, 9);
    EXPECT_TRUE(loadHex(pos, "00 00 00 01 3f f0 00 00 00 00 00 00"));
    EXPECT_EQ(pos, Pos::fromXYZ(1, 0, 0));
    stGeoidModel model;
    model.modelFileName = QStringLiteral("g");
    EXPECT_TRUE(loadHex(model, "00 00 00 01"));
    EXPECT_TRUE(model.modelFileName.isEmpty());
}

/// A failure from before the load is the caller's, too: reading goes on and the status stays.
TEST(ShortStreams, TheStatusIsNeitherInspectedNorReset)
{
    for (const auto status : {QDataStream::ReadPastEnd, QDataStream::ReadCorruptData}) {
        Coord coord;
        QDataStream stream(test::streamFile("coord_v2"));
        stream.setStatus(status);
        EXPECT_TRUE(coord.load(stream));
        test::expectSameStreamedSystem(coord, streamedSystem(), Unit_Meter);
        EXPECT_EQ(stream.status(), status);

        Location location;
        QDataStream positions(test::streamFile("location_v1"));
        positions.setStatus(status);
        EXPECT_TRUE(location.load(positions));
        EXPECT_EQ(location.get_NEH_H(), 358.75);
        EXPECT_EQ(positions.status(), status);
    }
}

TEST(ShortStreams, AStreamWithoutADeviceIsAnEndedOne)
{
    QDataStream stream;
    Coord coord = occupiedSystem();
    EXPECT_FALSE(coord.load(stream));
    EXPECT_TRUE(coord.coord_name.isEmpty());
    streamedSystem().save(stream);
}

} // namespace
} // namespace KelStd
