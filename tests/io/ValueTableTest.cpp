#include "io/DocumentTest.h"
#include "io/XmlTree.h"

#include <limits>

namespace KelStd::test {
namespace {

class ValueTable : public DocumentTest
{
protected:
    QString textOf(EValueType type, const QVariant &value) const
    {
        Coord coord;
        coord.projection.param[QStringLiteral("p")] = Param(type, Unit_None, value);
        return parsed(written(coord)).child("Projection").child("param").text;
    }

    /// What a parameter with this word and text reads as; its value before is the fresh one's.
    Param readFrom(const QByteArray &word, const QByteArray &text) const
    {
        Coord coord;
        EXPECT_TRUE(read(documentWithProjection("<param name=\"p\" ver=\"1\" valType=\"" + word
                                                + "\">" + text + "</param>"),
                         coord));
        return coord.projection.param.value(QStringLiteral("p"));
    }
};

struct WriteRow
{
    EValueType type;
    QVariant value;
    const char *text;
};

const WriteRow writeRows[] = {
    {ValueType_Proj4_Param_Bool, true, "true"},
    {ValueType_Proj4_Param_Bool, 0, "false"},
    {ValueType_Boolean, true, "true"},
    {ValueType_Boolean, false, "false"},
    {ValueType_Boolean, 7, "true"},
    {ValueType_Boolean, QVariant(), "false"},
    {ValueType_Int32, 0, "0"},
    {ValueType_Int32, -2147483647 - 1, "-2147483648"},
    {ValueType_Int32, 2147483647, "2147483647"},
    {ValueType_Int32, QStringLiteral("42"), "42"},
    {ValueType_Int64, Q_INT64_C(-9223372036854775807) - 1, "-9223372036854775808"},
    {ValueType_Int64, Q_INT64_C(9223372036854775807), "9223372036854775807"},
    {ValueType_TimeSpan, Q_INT64_C(86400000000), "86400000000"},
    {ValueType_LocationZeroType, 0, "Equator_Zero"},
    {ValueType_LocationZeroType, 1, "Central_Meridian_Zero"},
    {ValueType_LocationZeroType, 2, ""},
    {ValueType_WhichHalfEarth, 0, "N"},
    {ValueType_WhichHalfEarth, 1, "S"},
    {ValueType_WhichHalfEarth, 2, ""},
    {ValueType_EllipsoidDirection, 0, "ENU"},
    {ValueType_EllipsoidDirection, 1, "WSU"},
    {ValueType_EllipsoidDirection, 2, "ESU"},
    {ValueType_EllipsoidDirection, 3, "WNU"},
    {ValueType_EllipsoidDirection, 4, ""},
    {ValueType_String, QStringLiteral("some text"), ""},
    {ValueType_None, QStringLiteral("some text"), "some text"},
    {ValueType_None, 1.5, "1.5"},
    {ValueType_None, QVariant(), ""},
    {static_cast<EValueType>(50), QStringLiteral("some text"), "some text"},
    {static_cast<EValueType>(-1), 12, "12"},
};

TEST_F(ValueTable, EachKindIsWrittenAsItsText)
{
    for (const WriteRow &row : writeRows) {
        SCOPED_TRACE(testing::Message() << "type " << row.type << ", text " << row.text);
        EXPECT_EQ(textOf(row.type, row.value), QString::fromLatin1(row.text));
    }
}

struct NumberKind
{
    EValueType type;
    const char *word;
};

constexpr NumberKind numberKinds[] = {
    {ValueType_Double, "Double"},
    {ValueType_Distance, "Distance"},
    {ValueType_Height, "Height"},
    {ValueType_Angle, "Angle"},
    {ValueType_Pressure, "Pressure"},
    {ValueType_Temprature, "Temprature"},
    {ValueType_Longitude, "Longitude"},
    {ValueType_Latitude, "Latitude"},
    {ValueType_EarthHeight, "EarthHeight"},
    {ValueType_X, "X"},
    {ValueType_Y, "Y"},
    {ValueType_ElevationHeight, "ElevationHeight"},
};

struct NumberText
{
    QVariant value;
    const char *text;
};

TEST_F(ValueTable, EachKindOfNumberHasFifteenSignificantDigits)
{
    const NumberText numbers[] = {
        {0.0, "0"},
        {0.9996, "0.9996"},
        {1.0 / 3.0, "0.333333333333333"},
        {-2.0 / 3.0, "-0.666666666666667"},
        {6378137.0, "6378137"},
        {123456789.123456789, "123456789.123457"},
        {1e-05, "1e-05"},
        {1e20, "1e+20"},
        {3, "3"},
        {QStringLiteral("2.5"), "2.5"},
        {QVariant(), "0"},
    };
    for (const NumberKind &kind : numberKinds) {
        SCOPED_TRACE(kind.word);
        for (const NumberText &number : numbers)
            EXPECT_EQ(textOf(kind.type, number.value), QString::fromLatin1(number.text));
    }
}

TEST_F(ValueTable, EachKindOfNumberReadsAsADouble)
{
    const NumberText numbers[] = {
        {0.9996, "0.9996"}, {-12.5, "-12.5"},   {1e-5, "1e-05"}, {12345.0, "12345"},
        {2.5, "+2.5"},      {2.5, "\n  2.5 "},  {0.0, "abc"},    {0.0, "1,5"},
        {0.0, "1.5 m"},     {0.0, "1.234.567"}, {0.0, "0x10"},   {0.0, "1,234.5"},
    };
    for (const NumberKind &kind : numberKinds) {
        SCOPED_TRACE(kind.word);
        for (const NumberText &number : numbers) {
            SCOPED_TRACE(number.text);
            const Param param = readFrom(kind.word, number.text);
            EXPECT_EQ(param.valType, kind.type);
            EXPECT_STREQ(param.value.typeName(), "double");
            EXPECT_EQ(param.value.toDouble(), number.value.toDouble());
        }
    }
}

struct ReadRow
{
    const char *word;
    const char *text;
    EValueType type;
    QVariant value;
};

const ReadRow readRows[] = {
    {"Proj4_Param_Bool", "true", ValueType_Proj4_Param_Bool, true},
    {"Proj4_Param_Bool", "TRUE", ValueType_Proj4_Param_Bool, true},
    {"Proj4_Param_Bool", "yes", ValueType_Proj4_Param_Bool, false},
    {"Boolean", "true", ValueType_Boolean, true},
    {"Boolean", "tRuE", ValueType_Boolean, true},
    {"Boolean", "false", ValueType_Boolean, false},
    {"Boolean", "1", ValueType_Boolean, false},
    {"Boolean", " true", ValueType_Boolean, false},
    {"Int32", "-42", ValueType_Int32, -42},
    {"Int32", "2147483647", ValueType_Int32, 2147483647},
    {"Int32", "2147483648", ValueType_Int32, 0},
    {"Int32", "1.5", ValueType_Int32, 0},
    {"Int32", "0x10", ValueType_Int32, 0},
    {"Int32", "abc", ValueType_Int32, 0},
    {"Int64", "-9223372036854775808", ValueType_Int64, Q_INT64_C(-9223372036854775807) - 1},
    {"Int64", "9223372036854775808", ValueType_Int64, Q_INT64_C(0)},
    {"Int64", "abc", ValueType_Int64, Q_INT64_C(0)},
    {"TimeSpan", "86400000000", ValueType_TimeSpan, Q_INT64_C(86400000000)},
    {"LocationZeroType", "Equator_Zero", ValueType_LocationZeroType, 0},
    {"LocationZeroType", "Central_Meridian_Zero", ValueType_LocationZeroType, 1},
    {"LocationZeroType", "central_meridian_zero", ValueType_LocationZeroType, 0},
    {"WhichHalfEarth", "N", ValueType_WhichHalfEarth, 0},
    {"WhichHalfEarth", "S", ValueType_WhichHalfEarth, 1},
    {"WhichHalfEarth", "s", ValueType_WhichHalfEarth, 0},
    // Directions read through the hemisphere words.
    {"EllipsoidDirection", "ENU", ValueType_EllipsoidDirection, 0},
    {"EllipsoidDirection", "WSU", ValueType_EllipsoidDirection, 0},
    {"EllipsoidDirection", "ESU", ValueType_EllipsoidDirection, 0},
    {"EllipsoidDirection", "WNU", ValueType_EllipsoidDirection, 0},
    {"EllipsoidDirection", "S", ValueType_EllipsoidDirection, 1},
    {"String", "some text", ValueType_String, QStringLiteral("some text")},
    {"String", " 12 ", ValueType_String, QStringLiteral(" 12 ")},
    {"None", "1.5", ValueType_None, QStringLiteral("1.5")},
    {"no such word", "1.5", ValueType_None, QStringLiteral("1.5")},
    {"", "1.5", ValueType_None, QStringLiteral("1.5")},
    {"double", "1.5", ValueType_None, QStringLiteral("1.5")},
    // No file word, so a document cannot ask for a time.
    {"Time", "1.5", ValueType_None, QStringLiteral("1.5")},
};

TEST_F(ValueTable, EachKindIsReadFromItsText)
{
    for (const ReadRow &row : readRows) {
        SCOPED_TRACE(testing::Message() << row.word << ": " << row.text);
        const Param param = readFrom(row.word, row.text);
        EXPECT_EQ(param.valType, row.type);
        EXPECT_STREQ(param.value.typeName(), row.value.typeName());
        EXPECT_EQ(param.value, row.value);
    }
}

TEST_F(ValueTable, DictionaryEntriesFollowTheTable)
{
    for (const ReadRow &row : readRows) {
        SCOPED_TRACE(testing::Message() << row.word << ": " << row.text);
        Coord coord;
        ASSERT_TRUE(read(
            documentWithProjection(QByteArray("<param name=\"p\" ver=\"1\" isDictionary=\"true\" ")
                                   + "valType=\"" + row.word + "\"><key key_name=\"k\">" + row.text
                                   + "</key></param>"),
            coord));
        const QVariant value = coord.projection.param.value(QStringLiteral("p"))
                                   .dictionaryValues.value(QStringLiteral("k"));
        EXPECT_STREQ(value.typeName(), row.value.typeName());
        EXPECT_EQ(value, row.value);
    }
    for (const WriteRow &row : writeRows) {
        SCOPED_TRACE(testing::Message() << "type " << row.type << ", text " << row.text);
        Coord coord;
        Param &param = coord.projection.param[QStringLiteral("p")];
        param.valType = row.type;
        param.isDictionary = true;
        param.dictionaryValues[QStringLiteral("k")] = row.value;
        EXPECT_EQ(parsed(written(coord)).child("Projection").child("param").child("key").text,
                  QString::fromLatin1(row.text));
    }
}

/// A string is written as nothing, so reading leaves the value that the parameter had.
TEST_F(ValueTable, StringIsNotWrittenAndLeavesTheValueOfItsReader)
{
    Coord coord;
    coord.projection.param[QStringLiteral("p")] =
        Param(ValueType_String, Unit_None, QStringLiteral("some text"));
    coord.planeTransform.ratio = Param(ValueType_String, Unit_None, QStringLiteral("some text"));
    written(coord);

    Coord result;
    result.planeTransform.ratio.value = QStringLiteral("former");
    ASSERT_TRUE(Coord_IO::xml_read(path(), result, nullptr));
    const Param param = result.projection.param.value(QStringLiteral("p"));
    EXPECT_EQ(param.valType, ValueType_String);
    EXPECT_STREQ(param.value.typeName(), "int"); // a fresh parameter's 0
    EXPECT_EQ(param.value.toInt(), 0);
    EXPECT_EQ(result.planeTransform.ratio.valType, ValueType_String);
    EXPECT_EQ(result.planeTransform.ratio.value.toString(), QStringLiteral("former"));
}

TEST_F(ValueTable, DirectionComesBackAsZero)
{
    Coord coord;
    coord.projection.param[QStringLiteral("p")] =
        Param(ValueType_EllipsoidDirection, Unit_None, static_cast<int>(EllipsoidDirection_WNU));
    EXPECT_EQ(textOf(ValueType_EllipsoidDirection, 3), QStringLiteral("WNU"));
    const Param param = throughFile(coord).projection.param.value(QStringLiteral("p"));
    EXPECT_EQ(param.valType, ValueType_EllipsoidDirection);
    EXPECT_STREQ(param.value.typeName(), "int");
    EXPECT_EQ(param.value.toInt(), 0);
}

TEST_F(ValueTable, InfinitiesAndNaNComeBack)
{
    Coord coord;
    coord.elevationFitting.a.value = std::numeric_limits<double>::infinity();
    coord.elevationFitting.b.value = -std::numeric_limits<double>::infinity();
    coord.elevationFitting.c.value = std::numeric_limits<double>::quiet_NaN();
    const Coord result = throughFile(coord);
    EXPECT_EQ(result.elevationFitting.a.value.toDouble(), std::numeric_limits<double>::infinity());
    EXPECT_EQ(result.elevationFitting.b.value.toDouble(), -std::numeric_limits<double>::infinity());
    EXPECT_TRUE(qIsNaN(result.elevationFitting.c.value.toDouble()));
}

} // namespace
} // namespace KelStd::test
