// Maps in streams, byte for byte, whichever Qt writes them: the last key stands first, in maps
// within other values, too. The hex is written from the format of Qt 5's streams.

#include "stream/StreamBytes.h"
#include "support/Printers.h"

#include <KelStd/coord/Param.h>

#include <QtCore/QHash>

#include <gtest/gtest.h>

namespace KelStd {
namespace {

struct Row
{
    const char *testName;
    QVariant value;
    int version;     ///< of the stream
    std::string hex; ///< of the variant
};

void PrintTo(const Row &row, std::ostream *out)
{
    *out << row.testName;
}

const QVariantMap ab{{QStringLiteral("a"), 7}, {QStringLiteral("b"), true}};

const std::string b = "00 00 00 02 00 62 ";
const std::string a = "00 00 00 02 00 61 ";
const std::string abContent = "00 00 00 02 " + b + "00 00 00 01 00 01 " // bool
                              + a + "00 00 00 02 00 00 00 00 07";       // int

class WrittenMaps : public testing::TestWithParam<Row>
{};

TEST_P(WrittenMaps, BeginWithTheLastKey)
{
    const Row &row = GetParam();
    Param param(ValueType_String, Unit_None, row.value);
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out.setVersion(row.version);
    param.save(out);
    EXPECT_EQ(bytes.toHex(' ').toStdString(), "00 00 00 01 00 00 00 01 00 00 00 00 " + row.hex
                                                  + " 00 ff ff ff ff 00 00 00 00 ff ff ff ff");
    QDataStream in(bytes);
    in.setVersion(row.version);
    Param loaded;
    EXPECT_TRUE(loaded.load(in));
    EXPECT_EQ(in.status(), QDataStream::Ok);
    EXPECT_TRUE(in.atEnd());
    EXPECT_TRUE(loaded == param);
}

INSTANTIATE_TEST_SUITE_P(
    Of, WrittenMaps,
    testing::Values(
        Row{"AMap", ab, QDataStream::Qt_5_15, "00 00 00 08 00 " + abContent},
        Row{"AnEmptyMap", QVariantMap(), QDataStream::Qt_5_15, "00 00 00 08 00 00 00 00 00"},
        // Without the null flag, which Qt 4.2 brought.
        Row{"AMapInTheFormOfQt40", QVariantMap{{QStringLiteral("a"), 7}}, QDataStream::Qt_4_0,
            "00 00 00 08 00 00 00 01 " + a + "00 00 00 02 00 00 00 07"},
        Row{"AMapInAList", QVariantList{7, ab}, QDataStream::Qt_5_15,
            "00 00 00 09 00 00 00 00 02 00 00 00 02 00 00 00 00 07 00 00 00 08 00 " + abContent},
        Row{"AMapInAMap",
            QVariantMap{{QStringLiteral("b"), ab}, {QStringLiteral("a"), QStringLiteral("x")}},
            QDataStream::Qt_5_15,
            "00 00 00 08 00 00 00 00 02 " + b + "00 00 00 08 00 " + abContent + " " + a
                + "00 00 00 0a 00 00 00 00 02 00 78"},
        // The number of hashes is 28; in the forms of Qt 4 it is the same.
        Row{"AMapInAHash", QVariantHash{{QStringLiteral("a"), ab}}, QDataStream::Qt_5_15,
            "00 00 00 1c 00 00 00 00 01 " + a + "00 00 00 08 00 " + abContent},
        Row{"AMapInAHashInTheFormOfQt48", QVariantHash{{QStringLiteral("a"), ab}},
            QDataStream::Qt_4_8,
            "00 00 00 1c 00 00 00 00 01 " + a + "00 00 00 08 00 " + abContent}),
    [](const testing::TestParamInfo<Row> &row) { return row.param.testName; });

} // namespace
} // namespace KelStd
