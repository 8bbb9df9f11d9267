#include <KelStd/display/stShowConfig.h>

#include <QtCore/QByteArray>
#include <QtCore/QDataStream>
#include <QtCore/QIODevice>

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

namespace KelStd {
namespace {

/// A field and its bytes in hexadecimal digits: of a new record, of a cleared one and of
/// `distinct`.
struct Field
{
    const char *name;
    const char *constructed;
    const char *cleared;
    const char *distinct;
    std::function<qint64(const stShowConfig &)> get;
    std::function<void(stShowConfig &, qint64)> set;

    int size() const { return static_cast<int>(std::string(distinct).size()) / 2; }
};

template <typename Type>
Field field(const char *name, Type stShowConfig::*member, const char *constructed,
            const char *cleared, const char *distinct)
{
    return {name,
            constructed,
            cleared,
            distinct,
            [member](const stShowConfig &config) { return static_cast<qint64>(config.*member); },
            [member](stShowConfig &config, qint64 value) {
                config.*member = static_cast<Type>(value);
            }};
}

using C = stShowConfig;

const std::vector<Field> fields = {
    field("coordOrder", &C::coordOrder, "00000001", "00000001", "00000002"),
    field("doublePrecision", &C::doublePrecision, "06", "0c", "ff"), // 255
    field("doubleKeepZero", &C::doubleKeepZero, "00", "00", "01"),
    field("latLongFormat", &C::latLongFormat, "00000014", "00000014", "00000018"),
    field("latLongPrecision", &C::latLongPrecision, "06", "0f", "80"), // 128
    field("latLongKeepZero", &C::latLongKeepZero, "00", "00", "01"),
    field("earthHeightUnit", &C::earthHeightUnit, "0000000a", "0000000a", "0000000b"),
    field("earthHeightPrecision", &C::earthHeightPrecision, "04", "0f", "7f"),
    field("earthHeightKeepZero", &C::earthHeightKeepZero, "00", "00", "00"),
    field("xyUnit", &C::xyUnit, "0000000a", "0000000a", "0000001e"),
    field("xyPrecision", &C::xyPrecision, "04", "0f", "03"),
    field("xyKeepZero", &C::xyKeepZero, "00", "00", "01"),
    field("elevationHeightUnit", &C::elevationHeightUnit, "0000000a", "0000000a", "00000014"),
    field("elevationHeightPrecision", &C::elevationHeightPrecision, "04", "0f", "05"),
    field("elevationHeightKeepZero", &C::elevationHeightKeepZero, "00", "00", "00"),
    field("timeFormat", &C::timeFormat, "0000001e", "0000001e", "00000021"),
    field("tempratureUnit", &C::tempratureUnit, "000000c8", "000000c8", "000000ca"),
    field("tempraturePrecision", &C::tempraturePrecision, "00", "02", "07"),
    field("tempratureKeepZero", &C::tempratureKeepZero, "00", "00", "00"),
    field("pressureUnit", &C::pressureUnit, "00000064", "00000064", "00000067"),
    field("pressurePrecision", &C::pressurePrecision, "00", "02", "08"),
    field("pressureKeepZero", &C::pressureKeepZero, "00", "00", "01"),
    field("angleFormat", &C::angleFormat, "00000017", "00000016", "00000000"),
    field("anglePrecision", &C::anglePrecision, "02", "0f", "09"),
    field("angleKeepZero", &C::angleKeepZero, "00", "00", "01"),
    field("distanceUnit", &C::distanceUnit, "0000000a", "0000000a", "01020304"), // no unit known
    field("distancePrecision", &C::distancePrecision, "04", "0f", "0b"),
    field("distanceKeepZero", &C::distanceKeepZero, "00", "00", "01"),
    field("heightUnit", &C::heightUnit, "0000000a", "0000000a", "ffffffff"), // -1
    field("heightPrecision", &C::heightPrecision, "04", "0f", "00"),
    field("heightKeepZero", &C::heightKeepZero, "00", "00", "01"),
};

const QByteArray version1 = QByteArray::fromHex("00000001");

QByteArray golden(const char *Field::*bytes)
{
    QByteArray all = version1;
    for (const Field &each : fields)
        all += QByteArray::fromHex(each.*bytes);
    return all;
}

/// The number that a field's bytes stand for, most significant first.
qint64 valueOf(const QByteArray &bytes)
{
    quint32 number = 0;
    for (const char byte : bytes)
        number = number << 8 | static_cast<unsigned char>(byte);
    return bytes.size() == 4 ? static_cast<qint32>(number) : static_cast<qint64>(number);
}

/// A record that has in each field the value whose bytes stand in the table.
stShowConfig recordOf(const char *Field::*bytes)
{
    stShowConfig config;
    for (const Field &each : fields)
        each.set(config, valueOf(QByteArray::fromHex(each.*bytes)));
    return config;
}

QByteArray saved(const stShowConfig &config, QDataStream::ByteOrder order = QDataStream::BigEndian)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setByteOrder(order);
    config.save(stream);
    return bytes;
}

struct Loaded
{
    bool success;
    stShowConfig config;
};

/// What loading makes of a record that has the value of neither default in any field.
Loaded loaded(const QByteArray &bytes, QDataStream::ByteOrder order = QDataStream::BigEndian)
{
    Loaded result{false, recordOf(&Field::distinct)};
    for (const Field &each : fields)
        each.set(result.config, each.get(result.config) == 1 ? 0 : 1);
    QDataStream stream(bytes);
    stream.setByteOrder(order);
    result.success = result.config.load(stream);
    return result;
}

stShowConfig cleared()
{
    stShowConfig config;
    config.clear();
    return config;
}

TEST(ShowConfigStream, HasSixtyEightBytes)
{
    EXPECT_EQ(golden(&Field::constructed).size(), 68);
    EXPECT_EQ(saved(stShowConfig()).size(), 68);
}

TEST(ShowConfigStream, OfBothDefaultSetsIsTheseBytes)
{
    EXPECT_EQ(saved(stShowConfig()).toHex().toStdString(),
              golden(&Field::constructed).toHex().toStdString());
    EXPECT_EQ(saved(cleared()).toHex().toStdString(),
              golden(&Field::cleared).toHex().toStdString());
}

TEST(ShowConfigStream, OfADistinctRecordIsTheseBytes)
{
    EXPECT_EQ(saved(recordOf(&Field::distinct)).toHex().toStdString(),
              golden(&Field::distinct).toHex().toStdString());
}

TEST(ShowConfigStream, ComesBackInEveryField)
{
    for (const auto bytes : {&Field::constructed, &Field::cleared, &Field::distinct}) {
        const Loaded result = loaded(golden(bytes));
        EXPECT_TRUE(result.success);
        for (const Field &each : fields)
            EXPECT_EQ(each.get(result.config), valueOf(QByteArray::fromHex(each.*bytes)))
                << each.name;
        EXPECT_TRUE(result.config == recordOf(bytes));
        EXPECT_EQ(saved(result.config), golden(bytes));
    }
}

TEST(ShowConfigStream, EachFieldStandsInItsOwnBytes)
{
    int offset = version1.size();
    for (const Field &each : fields) {
        SCOPED_TRACE(each.name);
        // -2 as a unit or style; 254 as decimals; a flag set.
        stShowConfig config;
        each.set(config, each.size() == 4 ? -2 : 254);
        const QByteArray changed = saved(config);
        const QByteArray before = golden(&Field::constructed);
        for (int at = 0; at < before.size(); ++at) {
            const bool own = at >= offset && at < offset + each.size();
            EXPECT_EQ(changed.at(at) != before.at(at), own) << at;
        }
        EXPECT_TRUE(loaded(changed).config == config);
        offset += each.size();
    }
    EXPECT_EQ(offset, 68);
}

TEST(ShowConfigStream, EveryNumberOfDecimalsComesBack)
{
    for (int precision = 0; precision <= 255; ++precision) {
        stShowConfig config;
        config.heightPrecision = static_cast<unsigned char>(precision);
        const QByteArray bytes = saved(config);
        ASSERT_EQ(static_cast<unsigned char>(bytes.at(66)), precision);
        ASSERT_EQ(loaded(bytes).config.heightPrecision, precision);
    }
}

TEST(ShowConfigStream, AnyByteButZeroIsASetFlag)
{
    for (const int byte : {1, 2, 127, 128, 255}) {
        QByteArray bytes = golden(&Field::constructed);
        bytes[67] = static_cast<char>(byte);
        const Loaded result = loaded(bytes);
        EXPECT_TRUE(result.success);
        EXPECT_TRUE(result.config.heightKeepZero) << byte;
        EXPECT_EQ(saved(result.config).at(67), 1);
    }
}

TEST(ShowConfigStream, OfAnotherVersionIsRefusedAndLeavesTheClearedValues)
{
    for (const char *version : {"00000002", "00000000", "ffffffff", "01000000", "00010001"}) {
        SCOPED_TRACE(version);
        QByteArray bytes = golden(&Field::distinct);
        bytes.replace(0, 4, QByteArray::fromHex(version));
        const Loaded result = loaded(bytes);
        EXPECT_FALSE(result.success);
        EXPECT_TRUE(result.config == cleared());
    }
}

TEST(ShowConfigStream, OfAnotherVersionIsReadNoFurther)
{
    const QByteArray bytes = QByteArray::fromHex("0000000200000007");
    QDataStream stream(bytes);
    stShowConfig config;
    EXPECT_FALSE(config.load(stream));
    qint32 next = 0;
    stream >> next;
    EXPECT_EQ(next, 7);
}

TEST(ShowConfigStream, CutBeforeTheEndOfItsVersionIsRefused)
{
    for (int size = 0; size < 4; ++size) {
        const Loaded result = loaded(golden(&Field::distinct).left(size));
        EXPECT_FALSE(result.success) << size;
        EXPECT_TRUE(result.config == cleared()) << size;
    }
}

TEST(ShowConfigStream, CutAfterItsVersionLoadsTrueWithZerosForWhatIsMissing)
{
    const QByteArray whole = golden(&Field::distinct);
    for (int size = 4; size <= whole.size(); ++size) {
        SCOPED_TRACE(size);
        const Loaded result = loaded(whole.left(size));
        EXPECT_TRUE(result.success);
        int end = version1.size();
        for (const Field &each : fields) {
            end += each.size();
            const qint64 expected = end <= size ? valueOf(QByteArray::fromHex(each.distinct)) : 0;
            EXPECT_EQ(each.get(result.config), expected) << each.name;
        }
    }
}

TEST(ShowConfigStream, KeepsTheCallersByteOrder)
{
    QByteArray expected = QByteArray::fromHex("01000000");
    for (const Field &each : fields) {
        QByteArray bytes = QByteArray::fromHex(each.distinct);
        std::reverse(bytes.begin(), bytes.end());
        expected += bytes;
    }
    const stShowConfig distinct = recordOf(&Field::distinct);
    EXPECT_EQ(saved(distinct, QDataStream::LittleEndian).toHex().toStdString(),
              expected.toHex().toStdString());
    const Loaded result = loaded(expected, QDataStream::LittleEndian);
    EXPECT_TRUE(result.success);
    EXPECT_TRUE(result.config == distinct);
    // In the other order its version is no version 1.
    EXPECT_FALSE(loaded(expected).success);

    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setByteOrder(QDataStream::LittleEndian);
    stream.setVersion(QDataStream::Qt_4_0);
    distinct.save(stream);
    EXPECT_EQ(stream.byteOrder(), QDataStream::LittleEndian);
    EXPECT_EQ(stream.version(), QDataStream::Qt_4_0);
    EXPECT_EQ(bytes, expected);
}

TEST(ShowConfigStream, StandsBetweenOtherThings)
{
    QByteArray bytes;
    QDataStream writing(&bytes, QIODevice::WriteOnly);
    writing << qint32(17);
    recordOf(&Field::distinct).save(writing);
    cleared().save(writing);
    writing << qint32(18);
    EXPECT_EQ(bytes.size(), 4 + 68 + 68 + 4);

    QDataStream reading(bytes);
    qint32 before = 0;
    qint32 after = 0;
    stShowConfig one;
    stShowConfig other;
    reading >> before;
    EXPECT_TRUE(one.load(reading));
    EXPECT_TRUE(other.load(reading));
    reading >> after;
    EXPECT_EQ(before, 17);
    EXPECT_EQ(after, 18);
    EXPECT_TRUE(one == recordOf(&Field::distinct));
    EXPECT_TRUE(other == cleared());
}

TEST(ShowConfigStream, WithoutADeviceIsRefused)
{
    QDataStream stream;
    stShowConfig config;
    EXPECT_FALSE(config.load(stream));
    EXPECT_TRUE(config == cleared());
}

} // namespace
} // namespace KelStd
