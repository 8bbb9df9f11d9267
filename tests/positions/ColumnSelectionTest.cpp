// Lists of frames and of columns.

#include <KelStd/positions/ColumnSelection.h>
#include <KelStd/positions/CsvWriter.h>
#include <KelStd/positions/FactorColumns.h>
#include <KelStd/positions/JsonWriter.h>
#include <KelStd/positions/PrintedColumns.h>

#include "support/Printers.h"

#include <gtest/gtest.h>

namespace KelStd {
namespace {

using positions::ColumnSelection;
using positions::Frame;
using positions::InputColumns;
using positions::PrintedColumns;
using positions::ValuePrinter;

const ValuePrinter printer({}, ValuePrinter::Output::Csv);

QString names(const PrintedColumns &columns)
{
    QStringList all;
    for (const auto &column : columns.all())
        all += column.name;
    return all.join(QLatin1Char(' '));
}

InputColumns carrying(const QStringList &headings)
{
    InputColumns columns;
    columns.carried = headings;
    return columns;
}

ColumnSelection fields(const char *list)
{
    ColumnSelection selection;
    QString mistake;
    EXPECT_TRUE(positions::readFields(QString::fromUtf8(list), selection.fields, mistake))
        << mistake;
    return selection;
}

TEST(ColumnSelections, ReadFramesByTheirNames)
{
    using positions::FrameOrSite;
    std::vector<FrameOrSite> frames;
    QString mistake;
    EXPECT_TRUE(positions::readFrames(QStringLiteral("site-neh"), frames, mistake));
    EXPECT_EQ(frames, std::vector<FrameOrSite>{std::nullopt});
    EXPECT_TRUE(positions::readFrames(QStringLiteral(" local-neh , wgs84-xyz"), frames, mistake));
    EXPECT_EQ(frames, (std::vector<FrameOrSite>{Frame::LocalProjected, Frame::Wgs84Cartesian}));
    for (const char *list : {"", ",", "local-neh,", "Local-NEH", "local-neh,wgs84-xyz,local-neh",
                             "site-neh,site-neh"}) {
        EXPECT_FALSE(positions::readFrames(QString::fromUtf8(list), frames, mistake)) << list;
        EXPECT_FALSE(mistake.isEmpty()) << list;
    }
    EXPECT_EQ(frames.size(), 2U) << "untouched by a mistake";
}

TEST(ColumnSelections, FactorsAreMeantByOptionOrByName)
{
    EXPECT_EQ(ColumnSelection().factors().size(), 0U);
    ColumnSelection all;
    all.hasFactors = true;
    EXPECT_EQ(all.factors().size(), positions::factorCount);
    EXPECT_EQ(fields("point,convergence,combined_factor").factors().size(), 2U);
    EXPECT_EQ(fields("point,wgs84_x").factors().size(), 0U);
}

TEST(ColumnSelections, GoByExactNamesBeforeThoseWithoutUnits)
{
    const auto input = carrying({QStringLiteral("local_northing"), QStringLiteral("point"),
                                 QStringLiteral("convergence_deg")});
    const PrintedColumns printed(printer, input,
                                 fields("local_northing_m,local_northing,point_2,convergence_deg"));
    EXPECT_EQ(printed.mistake(), QString());
    EXPECT_EQ(names(printed), "local_northing_m local_northing point_2 convergence_deg");
    using Kind = positions::PrintedColumn::Kind;
    EXPECT_EQ(printed.all().at(1).kind, Kind::Carried);
    EXPECT_EQ(printed.all().at(2).kind, Kind::Carried);
    EXPECT_EQ(printed.all().at(3).kind, Kind::Factor);
}

TEST(ColumnSelections, LeaveOutWhatIsNoColumnAndSaySo)
{
    const PrintedColumns printed(printer, {}, fields("quux,point,else"));
    EXPECT_TRUE(printed.mistake().startsWith(QLatin1String("'quux' is no column; there are ")));
    EXPECT_EQ(names(printed), "point");
}

// A caller who does not ask for mistakes gets lines without columns, and no broken ones.
TEST(ColumnSelections, WithoutAColumnGiveEmptyLinesAndObjects)
{
    const QString noModel;
    const std::vector<std::string_view> nothing;
    QByteArray bytes;
    positions::CsvWriter csv(printer, false, fields("nothing"));
    EXPECT_EQ(csv.begin({}), QByteArray());
    csv.write(bytes, {"A", Location(), noModel, nothing});
    positions::JsonWriter json(printer, fields("nothing"));
    json.begin({});
    json.write(bytes, {"A", Location(), noModel, nothing});
    EXPECT_EQ(bytes, QByteArray("\n{}\n"));
}

} // namespace
} // namespace KelStd
