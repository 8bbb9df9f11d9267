// Positions: converted, reduced, read from a list, heard from a receiver.

#include "support/Printers.h"
#include "support/ProjTest.h"

#include <KelStd/KelStd.h>

#include <QtCore/QDir>

namespace KelStd {
namespace {

/// RD New's test point TM08 and its published coordinates, to the centimetres of the degrees that
/// are given here (README.md has the same).
constexpr double tm08East = 183928.88;
constexpr double tm08North = 465682.96;

class PositionExamples : public test::ProjTest
{
protected:
    void SetUp() override
    {
        test::ProjTest::SetUp();
        const QDir examples(QStringLiteral(KELSTD_TEST_SOURCE_DIR "/examples"));
        QString error;
        ASSERT_TRUE(
            Coord_IO::xml_read(examples.filePath(QStringLiteral("rd_new.xml")), rdNew, &error));
    }

    Coord rdNew;
};

TEST_F(PositionExamples, ABuilderMakesALocation)
{
    //! [builder]
    KelStd::LocationBuilder builder(rdNew);
    builder.requireOneToOne(); // refuses what lies far outside the projection's area
    KelStd::Location point;
    KelStd::LocationBuilder::Outcome outcome;
    if (!builder.make(KelStd::LocationBuilder::Frame::Wgs84Geographic,
                      KelStd::Pos::fromLongLatH(5.81015219, 52.17852792, 90.865), point, outcome))
        qWarning("%s", qPrintable(outcome.reason));
    //! [builder]
    ASSERT_TRUE(outcome.isMade);
    EXPECT_NEAR(point.get_NEH_E(), tm08East, 0.01);
    EXPECT_NEAR(point.get_NEH_N(), tm08North, 0.01);
    EXPECT_EQ(outcome.projectedHeight, LocationBuilder::Height::Ellipsoidal);
}

TEST_F(PositionExamples, APositionOfThePlaneIsTakenBack)
{
    Location location;
    QString error;
    //! [back]
    const Pos plane = Pos::fromENU(155000.0, 463000.0, 0.0); // east before north [m]
    const bool isMade = Coord::MakeLocation_byLocalNEH(plane, location, nullptr, &rdNew, &error);
    //! [back]
    ASSERT_TRUE(isMade) << error;
    // The origin of RD New is the tower of Amersfoort, of which EPSG has longitude and latitude.
    EXPECT_NEAR(location.get_Local_LLH_Long(), 5.387638888888889, 1e-11);
    EXPECT_NEAR(location.get_Local_LLH_Lat(), 52.156160555555556, 1e-11);
}

TEST_F(PositionExamples, ADistanceIsReduced)
{
    Location location;
    ASSERT_TRUE(Coord::MakeLocation_byLocalNEH(Pos::fromENU(155000.0, 463000.0, 0.0), location,
                                               nullptr, &rdNew, nullptr));
    //! [factors]
    GridFactors factors(rdNew);
    const GridFactors::Values values = factors.at(location);
    const double onTheGround = 100.0; // [m], horizontal
    const double inThePlane = values.combinedFactor ? onTheGround * *values.combinedFactor : 0.0;
    //! [factors]
    // At its origin, at a height of 0, the scale of the projection is k_0.
    EXPECT_NEAR(inThePlane, 99.99079, 1e-6);
}

TEST_F(PositionExamples, AListIsReadAndWritten)
{
    const QList<QByteArray> lines = {"name;N [m];E [m];H [m]", "A;463000;155000;1,5", "B;x;y;z"};
    QByteArray printed;
    QStringList reasons;
    //! [list]
    using namespace positions;
    LocationBuilder builder(rdNew);
    PositionParser parser(Frame::LocalProjected);
    CsvWriter writer{LocationPrinter(ValuePrinter(PrintOptions(), ValuePrinter::Output::Csv)),
                     true};
    qint64 number = 0;
    bool hasBegun = false;
    for (const QByteArray &line : lines) {
        const std::string_view text(line.constData(), static_cast<std::size_t>(line.size()));
        const auto result = parser.parse(text, ++number);
        if (result == PositionParser::Result::BadHeader
            || result == PositionParser::Result::BadLine)
            reasons += QStringLiteral("%1: %2").arg(number).arg(parser.reason());
        if (result != PositionParser::Result::Position)
            continue;
        if (!hasBegun)
            printed += writer.begin({parser.hasNames(), parser.carriedHeadings(), {}});
        hasBegun = true;
        Location location;
        LocationBuilder::Outcome outcome;
        if (builder.make(Frame::LocalProjected, parser.position(), location, outcome))
            writer.write(printed, {parser.name(), location, QString(), parser.carried()});
        else
            reasons += QStringLiteral("%1: %2").arg(number).arg(outcome.reason);
    }
    //! [list]
    ASSERT_EQ(reasons.size(), 1);
    EXPECT_TRUE(reasons.first().startsWith(QStringLiteral("3: "))) << reasons.first();
    const QList<QByteArray> out = printed.trimmed().split('\n');
    ASSERT_EQ(out.size(), 2);
    EXPECT_TRUE(out.at(0).startsWith("point,wgs84_longitude_deg,"));
    EXPECT_TRUE(out.at(1).startsWith("A,5.38720"));
    EXPECT_TRUE(out.at(1).endsWith("463000.00000,155000.00000,1.50000,ellipsoid"));
}

TEST(ReceiverExamples, SentencesBecomeEpochs)
{
    // The example of a GGA sentence that NMEA 0183 manuals print, with its checksum.
    const std::string_view bytes =
        "$GPGGA,123519,4807.038,N,01131.000,E,1,08,0.9,545.4,M,46.9,M,,*47\r\n";
    QList<double> heights;
    //! [receiver]
    nmea::EpochCombiner combiner;
    combiner.feed(bytes); // as they come, cut anywhere
    combiner.finish();
    while (const auto epoch = combiner.next()) {
        const nmea::Message &position = epoch->position;
        if (position.hasFix() && position.height && position.undulation)
            heights += position.height->value + position.undulation->value; // ellipsoidal [m]
    }
    //! [receiver]
    ASSERT_EQ(heights.size(), 1);
    EXPECT_DOUBLE_EQ(heights.first(), 545.4 + 46.9);
}

QString heightAbove(const QString &gridFile, double &height)
{
    //! [geoid]
    double difference = 0.0; // to be added to an ellipsoidal height
    QString error;
    if (!ProjLib::Calc_geoid_diff(52.5, 5.25, 40.0, gridFile, difference, &error))
        return error;
    const double aboveGeoid = 40.0 + difference;
    //! [geoid]
    height = aboveGeoid;
    return {};
}

TEST_F(PositionExamples, AHeightIsTakenToTheGeoid)
{
    double height = 0.0;
    const QString grid = QStringLiteral(KELSTD_TEST_BIN_DIR "/geoid_model_list/egm96_15.gtx");
    EXPECT_EQ(heightAbove(grid, height), QString());
    // What PROJ's own program cct prints of the same grid.
    EXPECT_NEAR(height, -2.74798, 0.00001);
    EXPECT_FALSE(heightAbove(QString(), height).isEmpty());
}

TEST(GridExamples, AGridIsLookedAt)
{
    //! [grid]
    GridFile grid;
    GridFailure failure =
        grid.open(QStringLiteral(KELSTD_TEST_BIN_DIR "/geoid_model_list/egm96_15.gtx"));
    GridFile::Values values;
    if (!failure)
        failure = grid.readValues(values);
    const double southernmost = grid.nodes().latitudeOf(0); // [deg]
    //! [grid]
    EXPECT_FALSE(failure) << failure.text;
    EXPECT_EQ(southernmost, -90.0);
    // The extremes of EGM96, south of India and in New Guinea (NASA/TP-1998-206861).
    EXPECT_NEAR(values.lowest.value, -106.99, 0.05);
    EXPECT_NEAR(values.highest.value, 85.39, 0.05);
}

} // namespace
} // namespace KelStd
