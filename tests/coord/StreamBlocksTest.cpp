// The blocks byte for byte. The hex is written from the format, not by this library.

#include "coord/RecordExpectations.h"
#include "stream/StreamBytes.h"
#include "support/Printers.h"

#include <KelStd/coord/Coord.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace KelStd {
namespace {

using test::joined;
using test::loadBytes;
using test::loadHex;
using test::saved;
using test::savedHex;

/// A block in hex, field by field.
using Fields = std::vector<std::pair<const char *, std::string>>;

std::string hexOf(const Fields &fields)
{
    std::string hex;
    for (const auto &field : fields)
        hex += (hex.empty() ? "" : " ") + field.second;
    return hex;
}

/// A double without a dictionary.
std::string numberBlock(const std::string &valType, const std::string &unit,
                        const std::string &value)
{
    return hexOf({{"version", "00 00 00 01"},
                  {"valType", valType},
                  {"unit", unit},
                  {"value: type double, not null", "00 00 00 06 00 " + value},
                  {"isDictionary", "00"},
                  {"dictionarySelKey: null", "ff ff ff ff"},
                  {"dictionaryValues: count", "00 00 00 00"},
                  {"dictionaryBindParamName: null", "ff ff ff ff"}});
}

const std::string zero = "00 00 00 00 00 00 00 00";
const std::string one = "3f f0 00 00 00 00 00 00";
const std::string meters = numberBlock("00 00 00 06", "00 00 00 0a", zero);
const std::string seconds = numberBlock("00 00 00 08", "00 00 01 2d", zero);
const std::string plain = numberBlock("00 00 00 04", "00 00 00 00", zero);

TEST(StreamBlocks, FreshParam)
{
    EXPECT_EQ(savedHex(Param()), hexOf({{"version", "00 00 00 01"},
                                        {"valType", "00 00 00 04"},
                                        {"unit", "00 00 00 00"},
                                        {"value: int 0", "00 00 00 02 00 00 00 00 00"},
                                        {"isDictionary", "00"},
                                        {"dictionarySelKey", "ff ff ff ff"},
                                        {"dictionaryValues", "00 00 00 00"},
                                        {"dictionaryBindParamName", "ff ff ff ff"}}));
}

TEST(StreamBlocks, ClearedParamHoldsAnInvalidVariant)
{
    const std::string hex = hexOf({{"version", "00 00 00 01"},
                                   {"valType", "00 00 00 04"},
                                   {"unit", "00 00 00 00"},
                                   {"value: no type, null", "00 00 00 00 01"},
                                   {"isDictionary", "00"},
                                   {"dictionarySelKey", "ff ff ff ff"},
                                   {"dictionaryValues", "00 00 00 00"},
                                   {"dictionaryBindParamName", "ff ff ff ff"}});
    Param cleared;
    cleared.clear();
    EXPECT_EQ(savedHex(cleared), hex);
    Param loaded(ValueType_Angle, Unit_Second, 5.0);
    test::giveDictionary(loaded);
    EXPECT_TRUE(loadHex(loaded, hex));
    EXPECT_FALSE(loaded.value.isValid());
    EXPECT_TRUE(loaded == cleared);
}

TEST(StreamBlocks, ParamWithADictionaryWritesTheLastKeyFirst)
{
    Param param(ValueType_String, Unit_USFoot, QStringLiteral("é"));
    param.isDictionary = true;
    param.dictionarySelKey = QStringLiteral("a");
    param.dictionaryValues = {{QStringLiteral("a"), 1.0}, {QStringLiteral("b"), false}};
    param.dictionaryBindParamName = QStringLiteral("k");
    const std::string hex = hexOf({
        {"version", "00 00 00 01"},
        {"valType", "00 00 00 01"},
        {"unit", "00 00 00 1e"},
        {"value: QString", "00 00 00 0a 00 00 00 00 02 00 e9"},
        {"isDictionary", "01"},
        {"dictionarySelKey", "00 00 00 02 00 61"},
        {"dictionaryValues: count", "00 00 00 02"},
        {"b: bool", "00 00 00 02 00 62 00 00 00 01 00 00"},
        {"a: double", "00 00 00 02 00 61 00 00 00 06 00 " + one},
        {"dictionaryBindParamName", "00 00 00 02 00 6b"},
    });
    EXPECT_EQ(savedHex(param), hex);
    Param loaded;
    EXPECT_TRUE(loadHex(loaded, hex));
    EXPECT_TRUE(loaded == param);
    EXPECT_EQ(loaded.value.userType(), int(QMetaType::QString));
    EXPECT_EQ(loaded.dictionaryValues.value(QStringLiteral("b")).userType(), int(QMetaType::Bool));
}

TEST(StreamBlocks, NumbersOutsideTheEnumerationsAreKept)
{
    const std::string hex = numberBlock("ff ff ff fe", "7f ff ff ff", one);
    Param param;
    EXPECT_TRUE(loadHex(param, hex));
    EXPECT_EQ(static_cast<qint32>(param.valType), -2);
    EXPECT_EQ(static_cast<qint32>(param.unit), 2147483647);
    EXPECT_EQ(savedHex(param), hex);
}

TEST(StreamBlocks, DoublesKeepEveryBit)
{
    for (const char *value : {"7f f8 00 00 00 00 00 01", "ff f0 00 00 00 00 00 00",
                              "80 00 00 00 00 00 00 00", "00 00 00 00 00 00 00 01"}) {
        const std::string hex = numberBlock("00 00 00 04", "00 00 00 00", value);
        Param param;
        EXPECT_TRUE(loadHex(param, hex)) << value;
        EXPECT_EQ(savedHex(param), hex) << value;
    }
}

TEST(StreamBlocks, Ellipsoid)
{
    Ellipsoid ellipsoid;
    ellipsoid.ellipsoid_name = QStringLiteral("A");
    ellipsoid.biggerHalfAxle.value = 1.0;
    ellipsoid.reciprocal = -2.0;
    ellipsoid.positiveDir = EllipsoidDirection_WNU;
    const std::string hex =
        hexOf({{"version", "00 00 00 01"},
               {"ellipsoid_name", "00 00 00 02 00 41"},
               {"proj4EllpsName", "ff ff ff ff"},
               {"biggerHalfAxle", numberBlock("00 00 00 06", "00 00 00 0a", one)},
               {"reciprocal", "c0 00 00 00 00 00 00 00"},
               {"positiveDir", "00 00 00 03"}});
    EXPECT_EQ(savedHex(ellipsoid), hex);
    Ellipsoid loaded = test::occupiedSystem().ellipsoid;
    EXPECT_TRUE(loadHex(loaded, hex));
    EXPECT_TRUE(loaded == ellipsoid);
    EXPECT_EQ(loaded.ellipsoid_name, QStringLiteral("A"));
    EXPECT_TRUE(loaded.proj4EllpsName.isEmpty()); // overwritten, not kept
}

TEST(StreamBlocks, ProjectionWritesParametersInKeyOrderAndPROJNamesFromTheLast)
{
    Projection projection;
    projection.projection_name = QStringLiteral("P");
    projection.proj4Projection = QStringLiteral("tm");
    projection.param = {{QStringLiteral("b"), Param(ValueType_Angle, Unit_Second, 0.0)},
                        {QStringLiteral("a"), Param(ValueType_Double, Unit_None, 0.0)}};
    projection.paramProj4 = {{QStringLiteral("a"), QStringLiteral("k")},
                             {QStringLiteral("b"), QStringLiteral("h")}};
    projection.locationType = LocationType_Lat_Long_EarthHeight;
    projection.loc_or_height_unit = Unit_Foot; // stands nowhere
    const std::string hex = hexOf({
        {"version", "00 00 00 01"},
        {"projection_name", "00 00 00 02 00 50"},
        {"proj4Projection", "00 00 00 04 00 74 00 6d"},
        {"param: count", "00 00 00 02"},
        {"a", "00 00 00 02 00 61 " + plain},
        {"b", "00 00 00 02 00 62 " + seconds},
        {"paramProj4: count", "00 00 00 02"},
        {"b", "00 00 00 02 00 62 00 00 00 02 00 68"},
        {"a", "00 00 00 02 00 61 00 00 00 02 00 6b"},
        {"locationType", "00 00 00 01"},
    });
    EXPECT_EQ(savedHex(projection), hex);
    Projection loaded = test::occupiedSystem().projection;
    EXPECT_TRUE(loadHex(loaded, hex));
    EXPECT_EQ(loaded.loc_or_height_unit, Unit_USFoot);
    loaded.loc_or_height_unit = Unit_Foot;
    EXPECT_TRUE(loaded == projection);
    EXPECT_EQ(loaded.projection_name, QStringLiteral("P"));
}

TEST(StreamBlocks, ProjectionWithoutParameters)
{
    const std::string hex =
        "00 00 00 01 ff ff ff ff ff ff ff ff 00 00 00 00 00 00 00 00 00 00 00 00";
    EXPECT_EQ(savedHex(Projection()), hex);
    Projection loaded = test::occupiedSystem().projection;
    EXPECT_TRUE(loadHex(loaded, hex));
    EXPECT_TRUE(loaded.param.isEmpty());
    EXPECT_TRUE(loaded.paramProj4.isEmpty());
    EXPECT_TRUE(loaded.projection_name.isEmpty());
    EXPECT_TRUE(loaded.proj4Projection.isEmpty());
    EXPECT_EQ(loaded.locationType, LocationType_X_Y_ElevationHeight);
}

TEST(StreamBlocks, DatumTransformation)
{
    EXPECT_EQ(savedHex(stEllipsoinTransform()),
              hexOf({{"version", "00 00 00 01"},
                     {"fuction", "00 00 00 00"},
                     {"nofuction_transtion", "00 00 00 00"},
                     {"translations", meters + ' ' + meters + ' ' + meters},
                     {"rotations", seconds + ' ' + seconds + ' ' + seconds},
                     {"ratio_ppm", plain}}));
    stEllipsoinTransform codes;
    codes.fuction = static_cast<EEllipsoinTransformFunction>(-3);
    codes.nofuction_transtion = static_cast<EEllipsoinTransition>(9);
    EXPECT_EQ(savedHex(codes).substr(0, 35), "00 00 00 01 ff ff ff fd 00 00 00 09");
    stEllipsoinTransform loaded;
    EXPECT_TRUE(loadBytes(loaded, saved(codes)));
    EXPECT_TRUE(loaded == codes);
}

TEST(StreamBlocks, PlaneTransformation)
{
    EXPECT_EQ(savedHex(stPlaneTransform()), hexOf({{"version", "00 00 00 01"},
                                                   {"fuction", "00 00 00 00"},
                                                   {"north_translate", meters},
                                                   {"east_translate", meters},
                                                   {"rotate_angle", seconds},
                                                   {"ratio", plain}}));
}

TEST(StreamBlocks, HeightFitting)
{
    EXPECT_EQ(savedHex(stElevationFitting()),
              hexOf({{"version", "00 00 00 01"},
                     {"function", "00 00 00 00"},
                     {"a, b, c", plain + ' ' + plain + ' ' + plain},
                     {"d, e, f", plain + ' ' + plain + ' ' + plain},
                     {"north_zero_x0", numberBlock("00 00 00 67", "00 00 00 0a", zero)},
                     {"east_zero_y0", numberBlock("00 00 00 68", "00 00 00 0a", zero)}}));
}

TEST(StreamBlocks, GeoidModel)
{
    stGeoidModel model;
    EXPECT_EQ(savedHex(model), "00 00 00 01 ff ff ff ff");
    model.modelFileName = QStringLiteral("g.x");
    EXPECT_EQ(savedHex(model), "00 00 00 01 00 00 00 06 00 67 00 2e 00 78");
    stGeoidModel loaded;
    EXPECT_TRUE(loadBytes(loaded, saved(model)));
    EXPECT_TRUE(loaded == model);
    EXPECT_TRUE(loadHex(loaded, "00 00 00 01 00 00 00 00"));
    EXPECT_TRUE(loaded.modelFileName.isEmpty());
}

TEST(StreamBlocks, Position)
{
    const std::string hex = "00 00 00 01 3f f0 00 00 00 00 00 00 c0 00 00 00 00 00 00 00 "
                            "3f e0 00 00 00 00 00 00";
    EXPECT_EQ(savedHex(Pos::fromXYZ(1.0, -2.0, 0.5)), hex);
    Pos loaded = Pos::fromXYZ(7, 8, 9);
    EXPECT_TRUE(loadHex(loaded, hex));
    EXPECT_EQ(loaded, Pos::fromXYZ(1.0, -2.0, 0.5));
}

// --- The files of this release ------------------------------------------------------------------

struct KeptFile
{
    const char *name;
    bool hasGeoidModel;
};

TEST(StreamBlocks, KeptFilesAreWhatTheirTextSays)
{
    for (const char *name : {"coord_v2", "coord_v1", "location_v1"})
        EXPECT_EQ(test::streamFile(name).toHex(' '), joined(test::streamFields(name)).toHex(' '))
            << name;
}

TEST(StreamBlocks, KeptSystemsLoadWithEveryMember)
{
    for (const KeptFile &file : {KeptFile{"coord_v2", true}, KeptFile{"coord_v1", false}}) {
        SCOPED_TRACE(file.name);
        Coord expected = test::streamedSystem();
        if (!file.hasGeoidModel)
            expected.geoidModel.modelFileName.clear();
        Coord loaded = test::occupiedSystem();
        QDataStream stream(test::streamFile(file.name));
        EXPECT_TRUE(loaded.load(stream));
        test::expectSameStreamedSystem(loaded, expected, Unit_USFoot);
        EXPECT_EQ(stream.status(), QDataStream::Ok);
        EXPECT_TRUE(stream.atEnd());
    }
}

TEST(StreamBlocks, ASystemIsWrittenAsTheKeptFile)
{
    EXPECT_EQ(savedHex(test::streamedSystem()),
              test::streamFile("coord_v2").toHex(' ').toStdString());
}

TEST(StreamBlocks, KeptLocation)
{
    Location expected;
    expected.wgs84LLH = Pos::fromLongLatH(8.5, 47.25, 408.5);
    expected.wgs84XYZ = Pos::fromXYZ(4278990.25, 639500.5, 4660500.75);
    expected.localLLH = Pos::fromLongLatH(8.501, 47.2485, 358.75);
    expected.localNEH = Pos::fromENU(2683000.0, 1233500.5, 358.75);
    Location loaded;
    EXPECT_TRUE(loadBytes(loaded, test::streamFile("location_v1")));
    EXPECT_TRUE(loaded == expected);
    EXPECT_EQ(saved(expected).toHex(' '), test::streamFile("location_v1").toHex(' '));
}

TEST(StreamBlocks, AVersionOneBlockEndsBeforeTheGeoidModel)
{
    // What follows it in the stream is the caller's.
    QDataStream stream(test::streamFile("coord_v1") + QByteArray::fromHex("00000001 0000002a"));
    Coord loaded = test::occupiedSystem();
    EXPECT_TRUE(loaded.load(stream));
    EXPECT_TRUE(loaded.geoidModel.modelFileName.isEmpty());
    qint64 next = 0;
    stream >> next;
    EXPECT_EQ(next, Q_INT64_C(0x10000002a));
}

// --- The caller's stream -------------------------------------------------------------------------

TEST(StreamBlocks, TheCallersByteOrderAndVersionHold)
{
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out.setByteOrder(QDataStream::LittleEndian);
    out.setVersion(QDataStream::Qt_4_0); // before variants had a null flag
    Param(ValueType_Distance, Unit_Meter, 1.0).save(out);
    EXPECT_EQ(bytes.toHex(' ').toStdString(),
              hexOf({{"version", "01 00 00 00"},
                     {"valType", "06 00 00 00"},
                     {"unit", "0a 00 00 00"},
                     {"value", "06 00 00 00 00 00 00 00 00 00 f0 3f"},
                     {"isDictionary", "00"},
                     {"dictionarySelKey", "ff ff ff ff"},
                     {"dictionaryValues", "00 00 00 00"},
                     {"dictionaryBindParamName", "ff ff ff ff"}}));
    EXPECT_EQ(out.byteOrder(), QDataStream::LittleEndian);
    EXPECT_EQ(out.version(), int(QDataStream::Qt_4_0));

    Param loaded;
    QDataStream in(bytes);
    in.setByteOrder(QDataStream::LittleEndian);
    in.setVersion(QDataStream::Qt_4_0);
    EXPECT_TRUE(loaded.load(in));
    EXPECT_TRUE(loaded == Param(ValueType_Distance, Unit_Meter, 1.0));
    EXPECT_TRUE(in.atEnd());
    EXPECT_EQ(in.byteOrder(), QDataStream::LittleEndian);
    EXPECT_EQ(in.version(), int(QDataStream::Qt_4_0));
}

TEST(StreamBlocks, SystemsTravelInEveryStreamVersionAndByteOrder)
{
    for (int version :
         {QDataStream::Qt_2_1, QDataStream::Qt_3_3, QDataStream::Qt_4_0, QDataStream::Qt_4_2,
          QDataStream::Qt_4_8, QDataStream::Qt_5_0, QDataStream::Qt_5_6, QDataStream::Qt_5_15}) {
        for (const auto order : {QDataStream::BigEndian, QDataStream::LittleEndian}) {
            SCOPED_TRACE(testing::Message() << "version " << version << ", order " << order);
            QByteArray bytes;
            QDataStream out(&bytes, QIODevice::WriteOnly);
            out.setVersion(version);
            out.setByteOrder(order);
            test::streamedSystem().save(out);
            QDataStream in(bytes);
            in.setVersion(version);
            in.setByteOrder(order);
            Coord loaded;
            EXPECT_TRUE(loaded.load(in));
            test::expectSameStreamedSystem(loaded, test::streamedSystem(), Unit_Meter);
            EXPECT_TRUE(in.atEnd());
            EXPECT_EQ(in.status(), QDataStream::Ok);
        }
    }
}

TEST(StreamBlocks, BlocksFollowEachOtherInOneStream)
{
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    test::streamedSystem().save(out);
    Pos::fromXYZ(1, 2, 3).save(out);
    Coord().save(out);
    QDataStream in(bytes);
    Coord first;
    Pos second;
    Coord third = test::occupiedSystem();
    EXPECT_TRUE(first.load(in));
    EXPECT_TRUE(second.load(in));
    EXPECT_TRUE(third.load(in));
    test::expectSameStreamedSystem(first, test::streamedSystem(), Unit_Meter);
    EXPECT_EQ(second, Pos::fromXYZ(1, 2, 3));
    test::expectSameStreamedSystem(third, Coord(), Unit_USFoot);
}

} // namespace
} // namespace KelStd
