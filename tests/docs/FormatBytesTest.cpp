// The bytes that the pages of the formats show, read and written again.

#include "docs/PageTables.h"
#include "house/SourceFiles.h"
#include "support/Printers.h"
#include "support/TemporaryHome.h"

#include <KelStd/KelStd.h>

#include <QtCore/QDataStream>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

#include <ostream>

namespace KelStd {
namespace {

QString page(const char *name)
{
    return test::sourceText(QStringLiteral("docs/formats/") + QString::fromLatin1(name));
}

/// A table of docs/formats/streams.md, and whether the bytes were read as it says.
struct Block
{
    const char *heading;
    std::function<bool(QDataStream &, QByteArray &again)> isAsShown;
};

void PrintTo(const Block &block, std::ostream *out)
{
    *out << block.heading;
}

/// Reads a value, and writes it again.
template <typename Value>
Block block(const char *heading, std::function<bool(const Value &)> isAsShown)
{
    return {heading, [isAsShown](QDataStream &stream, QByteArray &again) {
                Value value;
                if (!value.load(stream) || !stream.atEnd())
                    return false;
                QDataStream out(&again, QIODevice::WriteOnly);
                out.setVersion(QDataStream::Qt_5_15);
                value.save(out);
                return isAsShown(value);
            }};
}

const Block blocks[] = {
    block<Pos>("Pos", [](const Pos &pos) { return pos == Pos::fromLongLatH(5.25, 52.5, 40.0); }),
    block<Param>(
        "Param",
        [](const Param &param) { return param == Param(ValueType_Distance, Unit_Meter, 1.5); }),
    block<stGeoidModel>("stGeoidModel",
                        [](const stGeoidModel &model) {
                            return model.modelFileName == QLatin1String("egm96_15.gtx");
                        }),
    block<Projection>(
        "Projection",
        [](const Projection &projection) {
            const QString zone = QStringLiteral("zone");
            return projection.projection_name == QLatin1String("UTM 31")
                   && projection.proj4Projection == QLatin1String("utm")
                   && projection.param
                          == QMap<QString, Param>{{zone, Param(ValueType_Int32, Unit_None, 31)}}
                   && projection.paramProj4 == QMap<QString, QString>{{zone, zone}}
                   && projection.locationType == LocationType_X_Y_ElevationHeight;
        }),
    block<TimeUtc>("TimeUtc",
                   [](const TimeUtc &time) {
                       return time.toString(true) == QLatin1String("2024-02-29 12:34:56.789");
                   }),
    block<TimeGpsT>("TimeGpsT",
                    [](const TimeGpsT &time) {
                        return time.toUtc() == TimeUtc(2024, 2, 29, 12, 34, 56, 789)
                               && time.leapSeconds() == 18;
                    }),
    block<TimeGpsW>("TimeGpsW",
                    [](const TimeGpsW &time) {
                        return time.toUtc() == TimeUtc(2024, 2, 29, 12, 34, 56, 0)
                               && time.gps_weeks() == 2303;
                    }),
    block<TimeLocal>("TimeLocal",
                     [](const TimeLocal &time) {
                         return time.toUtc() == TimeUtc(2024, 2, 29, 12, 34, 56, 789)
                                && time.timeZoneSeconds() == 3600;
                     }),
    block<TimeSpan>("TimeSpan", [](const TimeSpan &span) { return span.time_span() == -90061001; }),
};

class FormatStreams : public testing::TestWithParam<Block>
{};

INSTANTIATE_TEST_SUITE_P(Blocks, FormatStreams, testing::ValuesIn(blocks),
                         [](const auto &row) { return std::string(row.param.heading); });

TEST_P(FormatStreams, AreReadAndWrittenAsThePageShowsThem)
{
    const QByteArray bytes = test::bytesOf(
        test::tableBelow(page("streams.md"), QString::fromLatin1(GetParam().heading)));
    QDataStream stream(bytes);
    stream.setVersion(QDataStream::Qt_5_15);
    QByteArray again;
    EXPECT_TRUE(GetParam().isAsShown(stream, again));
    EXPECT_EQ(again.toHex(' ').toStdString(), bytes.toHex(' ').toStdString());
}

TEST(FormatDisplay, IsThatOfANewConfiguration)
{
    const auto rows = test::tableBelow(page("display.md"), {});
    const QByteArray bytes = test::bytesOf(rows);
    ASSERT_EQ(bytes.size(), 68);
    QDataStream stream(bytes);
    stShowConfig config;
    config.clear();
    ASSERT_TRUE(config.load(stream));
    EXPECT_EQ(config, stShowConfig());
    QByteArray again;
    QDataStream out(&again, QIODevice::WriteOnly);
    stShowConfig().save(out);
    EXPECT_EQ(again.toHex(' ').toStdString(), bytes.toHex(' ').toStdString());
    // Decimal numbers beside the bytes.
    for (const QStringList &row : rows) {
        const QByteArray shown = test::bytesOf({{QStringLiteral("0"), row.at(1)}});
        EXPECT_EQ(row.at(4).toUInt(), shown.toHex().toUInt(nullptr, 16)) << row.at(2);
    }
}

TEST(FormatGgf, BecomesTheGtxBesideIt)
{
    const QTemporaryDir directory;
    const QString ggf = directory.filePath(QStringLiteral("model.ggf"));
    const QString gtx = directory.filePath(QStringLiteral("model.gtx"));
    const QString shown = page("ggf.md");
    test::writeFile(ggf, test::bytesOf(test::tableBelow(shown, QStringLiteral("GGF"))));
    ASSERT_TRUE(ProjLib::ConvertGeoidModelFile_GGF(ggf, gtx));
    const QByteArray expected = test::bytesOf(test::tableBelow(shown, QStringLiteral("GTX")));
    EXPECT_EQ(test::readFile(gtx).toHex(' ').toStdString(), expected.toHex(' ').toStdString());
    for (const QString &file : {ggf, gtx}) {
        GridFile grid;
        ASSERT_FALSE(grid.open(file)) << file;
        EXPECT_EQ(grid.nodes(), (GridNodes{52.0, 5.0, 0.25, 0.5, 2, 3}));
        GridFile::Values values;
        ASSERT_FALSE(grid.readValues(values));
        EXPECT_EQ(values.lowest.value, 40.0);
        EXPECT_EQ(values.lowest.row, 0);
        EXPECT_EQ(values.lowest.column, 2);
        EXPECT_EQ(values.highest.value, 41.5);
        EXPECT_EQ(values.highest.row, 1);
        EXPECT_EQ(values.highest.column, 0);
    }
}

} // namespace
} // namespace KelStd
