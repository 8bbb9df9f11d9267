// The control points of a site in its document.

#include "io/CompleteSystem.h"
#include "io/ReviewedDocument.h"

#include <KelStd/io/SystemDocument.h>

#include <limits>

namespace KelStd::test {
namespace {

using Kind = io::FindingKind;

/// Behind the records of the Dutch grid, whose last element stands in line 41.
QByteArray dutchGridWithControl(const QByteArray &points)
{
    return dutchGridWith("</Coord>",
                         "<Control_Points ver=\"1\">\n" + points + "</Control_Points>\n</Coord>");
}

const QByteArray wholePoint =
    "<Point name=\"A&amp;1\" longitude=\"9.1\" latitude=\"-47.25\" height=\"512.5\" "
    "north=\"1000\" east=\"-5000.125\" site_height=\"463\" use=\"h\" sigma_h=\"0.01\" "
    "sigma_v=\"0.02\"/>\n";
const QByteArray leastPoint = "<Point name=\"B\" longitude=\"0\" latitude=\"0\" height=\"0\" "
                              "north=\"0\" east=\"0\" use=\"hv\"/>\n";

ControlPoints bothPoints()
{
    ControlPoint whole;
    whole.name = QStringLiteral("A&1");
    whole.wgs84 = Pos::fromLongLatH(9.1, -47.25, 512.5);
    whole.north = 1000.0;
    whole.east = -5000.125;
    whole.height = 463.0;
    whole.isUsedInHeight = false;
    whole.sigmaH = 0.01;
    whole.sigmaV = 0.02;
    ControlPoint least;
    least.name = QStringLiteral("B");
    return {whole, least};
}

class ControlElement : public ReviewTest
{
protected:
    ControlPoints pointsIn(const QByteArray &document) const
    {
        writeFile(path(), document);
        Coord coord;
        SystemOrigin origin;
        io::DocumentFailure failure;
        EXPECT_TRUE(io::readSystem(path(), coord, origin, failure)) << failure.text;
        return origin.control;
    }
};

TEST_F(ControlElement, HasThePointsOfASite)
{
    EXPECT_TRUE(pointsIn(dutchGridWithControl(wholePoint + leastPoint)) == bothPoints());
    EXPECT_TRUE(pointsIn(dutchGridWithControl({})).isEmpty());
    EXPECT_TRUE(reviewed(dutchGridWithControl(wholePoint + leastPoint)).isEmpty());
}

TEST_F(ControlElement, ReadersOfRecordsPassOverIt)
{
    Coord without;
    Coord with;
    ASSERT_TRUE(read(dutchGridWith("</Coord>", "</Coord>"), without));
    ASSERT_TRUE(read(dutchGridWithControl(wholePoint), with));
    expectSameSystem(with, without);
}

TEST_F(ControlElement, IsKeptToTheLastBit)
{
    SystemOrigin origin;
    origin.control = bothPoints();
    origin.control[0].east = 0.1 + 0.2;
    origin.control[1].wgs84 = Pos::fromLongLatH(1.0 / 3.0, 2.0 / 3.0, 1e-12);
    io::DocumentFailure failure;
    ASSERT_TRUE(io::writeSystem(completeSystem(), origin, path(), failure)) << failure.text;
    EXPECT_FALSE(readFile(path()).contains("<Origin"));
    Coord coord;
    SystemOrigin found;
    ASSERT_TRUE(io::readSystem(path(), coord, found, failure)) << failure.text;
    EXPECT_TRUE(found == origin);
}

TEST_F(ControlElement, IsNotGivenWhatReadingWouldNotTakeOver)
{
    SystemOrigin origin;
    origin.control = bothPoints();
    origin.control[0].name.clear();
    origin.control[1].sigmaV = std::numeric_limits<double>::quiet_NaN();
    ControlPoint endless = bothPoints().last();
    endless.north = std::numeric_limits<double>::infinity();
    origin.control += endless;
    io::DocumentFailure failure;
    ASSERT_TRUE(io::writeSystem(completeSystem(), origin, path(), failure));
    EXPECT_TRUE(pointsIn(readFile(path())) == ControlPoints{bothPoints().last()});
    for (const io::DocumentFinding &finding : reviewed(readFile(path())))
        EXPECT_FALSE(finding.element.contains(QStringLiteral("Control_Points")));
}

struct Row
{
    const char *title;
    QByteArray from;
    QByteArray to;
    Kind kind;
    int points; ///< that are still read
};

TEST_F(ControlElement, IsReviewed)
{
    const Row rows[] = {
        {"an unknown attribute", "height=\"512.5\"", "height=\"512.5\" code=\"7\"",
         Kind::UnknownAttribute, 2},
        {"no number", "north=\"1000\"", "north=\"1OOO\"", Kind::NotANumber, 1},
        {"no northing", "north=\"1000\"", "", Kind::MissingAttribute, 1},
        {"no name", "name=\"A&amp;1\"", "", Kind::MissingAttribute, 1},
        {"another use", "use=\"h\"", "use=\"both\"", Kind::UnknownWord, 1},
        {"no use", "use=\"h\"", "", Kind::MissingAttribute, 1},
        {"a height that is none", "site_height=\"463\"", "site_height=\"high\"", Kind::NotANumber,
         2},
        {"another element", "<Point name=\"B\"", "<Punkt name=\"B\"", Kind::UnknownElement, 1},
        {"another version", "<Control_Points ver=\"1\"", "<Control_Points ver=\"2\"",
         Kind::WrongVersion, 0},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.title);
        QByteArray document = dutchGridWithControl(wholePoint + leastPoint);
        ASSERT_TRUE(document.contains(row.from));
        document.replace(row.from, row.to);
        const auto findings = reviewed(document);
        ASSERT_EQ(findings.size(), 1);
        EXPECT_EQ(findings.first().kind, row.kind);
        EXPECT_EQ(pointsIn(document).size(), row.points);
    }
}

TEST_F(ControlElement, BelongsToAllRecordsTogether)
{
    SystemOrigin origin;
    origin.control = bothPoints();
    origin.areaName = QStringLiteral("a site");
    const Coord before = completeSystem();
    Coord after = before;
    after.coord_name = QStringLiteral("another name");
    EXPECT_TRUE(io::keptOrigin(origin, before, after) == origin);
    after.planeTransform.ratio.value = 2.0;
    const SystemOrigin kept = io::keptOrigin(origin, before, after);
    EXPECT_TRUE(kept.control.isEmpty());
    EXPECT_EQ(kept.areaName, origin.areaName);
}

TEST(ControlPointUse, HasAWordForEach)
{
    for (const char *word : {"hv", "h", "v", "-"}) {
        ControlPoint point;
        EXPECT_TRUE(point.setUse(QString::fromLatin1(word).toUpper()));
        EXPECT_EQ(point.useWord(), QLatin1String(word));
    }
    ControlPoint point;
    EXPECT_FALSE(point.setUse(QStringLiteral("x")));
    EXPECT_FALSE(point.setUse(QString()));
    EXPECT_EQ(point.useWord(), QStringLiteral("hv"));
}

} // namespace
} // namespace KelStd::test
