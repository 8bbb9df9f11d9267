// The origin of a system in its document: read, written, reviewed, and passed over by the readers
// of the records.

#include "io/CompleteSystem.h"
#include "io/ReviewedDocument.h"
#include "support/FullDisk.h"

#include <KelStd/io/SystemDocument.h>

#include <QtCore/QFile>

#include <limits>
#include <ostream>

namespace KelStd::test {
namespace {

using Kind = io::FindingKind;

/// Behind the records of the Dutch grid, whose last element stands in line 41.
QByteArray dutchGridWithOrigin(const QByteArray &origin)
{
    return dutchGridWith("</Coord>", origin + "\n</Coord>");
}

const QByteArray wholeOrigin =
    "<Origin ver=\"1\" authority=\"EPSG\" code=\"28992\" database=\"EPSG v10.076\">\n"
    "<Operation code=\"EPSG:4833\" name=\"Amersfoort to WGS 84 (4)\" accuracy_m=\"0.25\"/>\n"
    "<Area west=\"3.2\" south=\"50.75\" east=\"7.24\" north=\"53.7\" name=\"Netherlands.\"/>\n"
    "<Country name=\"Netherlands\"/>\n"
    "<Country name=\"Holland\"/>\n"
    "<Plane_Unit name=\"US survey foot\" metres=\"0.304800609601219\"/>\n"
    "</Origin>";

SystemOrigin wholeSystemOrigin()
{
    SystemOrigin origin;
    origin.authority = QStringLiteral("EPSG");
    origin.code = QStringLiteral("28992");
    origin.databaseVersion = QStringLiteral("EPSG v10.076");
    origin.operation = SystemOrigin::Operation{QStringLiteral("EPSG:4833"),
                                               QStringLiteral("Amersfoort to WGS 84 (4)"), 0.25};
    origin.area = AreaOfUse{3.2, 50.75, 7.24, 53.7};
    origin.areaName = QStringLiteral("Netherlands.");
    origin.countries = QStringList{QStringLiteral("Netherlands"), QStringLiteral("Holland")};
    origin.planeUnit = SystemOrigin::PlaneUnit{QStringLiteral("US survey foot"), 0.304800609601219};
    return origin;
}

class SystemDocument : public ReviewTest
{
protected:
    SystemOrigin originIn(const QByteArray &document) const
    {
        writeFile(path(), document);
        SystemOrigin origin;
        origin.code = QStringLiteral("what was there before");
        io::DocumentFailure failure;
        EXPECT_TRUE(io::readOrigin(path(), origin, failure)) << failure.text;
        EXPECT_FALSE(failure);
        return origin;
    }
};

TEST_F(SystemDocument, HasTheOriginInAnElementOfItsOwn)
{
    EXPECT_TRUE(originIn(dutchGridWithOrigin(wholeOrigin)) == wholeSystemOrigin());
    EXPECT_TRUE(originIn(dutchGridWithOrigin("<Origin ver=\"1\"/>")).isEmpty());
    EXPECT_TRUE(originIn(dutchGridWithOrigin({})).isEmpty());
}

TEST_F(SystemDocument, IsReadBitForBitAlikeWithTheOriginAndWithout)
{
    Coord without;
    Coord with;
    ASSERT_TRUE(read(dutchGridWithOrigin({}), without));
    ASSERT_TRUE(read(dutchGridWithOrigin(wholeOrigin), with));
    expectSameSystem(with, without);
    EXPECT_EQ(written(with), written(without));

    // Wherever it stands, whatever is in it, and however often.
    for (const QByteArray &origin :
         {wholeOrigin, wholeOrigin + wholeOrigin, QByteArray("<Origin ver=\"2\"/>"),
          QByteArray("<Origin><Projection ver=\"9\"/><Ellpsoid/></Origin>")}) {
        Coord first;
        ASSERT_TRUE(read(dutchGridWith("<Ellpsoid", origin + "<Ellpsoid"), first));
        expectSameSystem(first, without);
    }
}

TEST_F(SystemDocument, IsReadWithItsOriginFromOneFile)
{
    writeFile(path(), dutchGridWithOrigin(wholeOrigin));
    Coord coord;
    Coord expected;
    SystemOrigin origin;
    io::DocumentFailure failure;
    ASSERT_TRUE(io::readSystem(path(), coord, origin, failure));
    ASSERT_TRUE(Coord_IO::xml_read(path(), expected));
    expectSameSystem(coord, expected);
    EXPECT_TRUE(origin == wholeSystemOrigin());
    EXPECT_FALSE(failure);
}

TEST_F(SystemDocument, ThatCannotBeReadLeavesTheOrigin)
{
    SystemOrigin origin = wholeSystemOrigin();
    Coord coord;
    io::DocumentFailure failure;
    writeFile(path(), "<Coord");
    EXPECT_FALSE(io::readOrigin(path(), origin, failure));
    EXPECT_EQ(failure.kind, io::DocumentFault::NotWellFormed);
    EXPECT_FALSE(io::readSystem(path(), coord, origin, failure));
    EXPECT_EQ(failure.kind, io::DocumentFault::NotWellFormed);
    writeFile(path(), "<Coord ver=\"2\"><Origin ver=\"1\" code=\"1\"/></Coord>");
    EXPECT_FALSE(io::readOrigin(path(), origin, failure));
    EXPECT_EQ(failure.kind, io::DocumentFault::OtherVersion);
    EXPECT_FALSE(io::readOrigin(path(QStringLiteral("none.xml")), origin, failure));
    EXPECT_EQ(failure.kind, io::DocumentFault::CannotBeOpened);
    EXPECT_TRUE(origin == wholeSystemOrigin());

    // The origin alone does not need the records.
    writeFile(path(), "<Coord ver=\"1\"><Origin ver=\"1\" code=\"1\"/></Coord>");
    EXPECT_TRUE(io::readOrigin(path(), origin, failure));
    EXPECT_EQ(origin.code, QStringLiteral("1"));
    EXPECT_FALSE(io::readSystem(path(), coord, origin, failure));
    EXPECT_EQ(failure.kind, io::DocumentFault::MissingElement);
}

TEST_F(SystemDocument, WithoutAnOriginIsWhatTheContractWrites)
{
    const Coord coord = completeSystem();
    const QByteArray contract = written(coord);
    io::DocumentFailure failure;
    const QString other = path(QStringLiteral("other.xml"));
    ASSERT_TRUE(io::writeSystem(coord, {}, other, failure));
    EXPECT_EQ(readFile(other), contract);
}

TEST_F(SystemDocument, KeepsWhatIsWritten)
{
    SystemOrigin edges = wholeSystemOrigin();
    edges.area = AreaOfUse{176.81, -20.81, -178.15, 0.1 + 0.2};
    edges.operation->accuracyM = 0.1 + 0.7;
    edges.planeUnit->metres = 12.0 / 39.37 / 12.0 * 12.0;
    edges.areaName = QString::fromUtf8("R\xC3\xA9union & <\"\xE2\x82\xAC\">\n\ttwo");
    SystemOrigin nameAlone;
    nameAlone.areaName = QStringLiteral("World");
    SystemOrigin emptyOperation;
    emptyOperation.operation.emplace();
    for (const SystemOrigin &origin : {wholeSystemOrigin(), edges, nameAlone, emptyOperation}) {
        const Coord coord = completeSystem();
        Coord readCoord;
        SystemOrigin readOrigin;
        io::DocumentFailure failure;
        ASSERT_TRUE(io::writeSystem(coord, origin, path(), failure)) << failure.text;
        ASSERT_TRUE(io::readSystem(path(), readCoord, readOrigin, failure)) << failure.text;
        EXPECT_TRUE(readOrigin == origin) << readFile(path()).right(500).toStdString();
        expectSameSystem(readCoord, throughFile(coord));
    }
}

TEST_F(SystemDocument, IsTheSameInMemory)
{
    QByteArray bytes("before");
    io::DocumentFailure failure;
    ASSERT_TRUE(io::writeSystem(completeSystem(), wholeSystemOrigin(), path(), failure));
    ASSERT_TRUE(io::systemDocument(completeSystem(), wholeSystemOrigin(), bytes, failure));
    SystemOrigin origin = originIn(bytes);
    EXPECT_TRUE(origin == wholeSystemOrigin());

    origin.areaName = QChar(0xFFFE);
    bytes = "before";
    EXPECT_FALSE(io::systemDocument(completeSystem(), origin, bytes, failure));
    EXPECT_EQ(failure.kind, io::DocumentFault::ForeignText);
    EXPECT_EQ(bytes, "before");
}

TEST_F(SystemDocument, IsReplacedWholeOrNotAtAll)
{
    writeFile(path(), "old content");
    SystemOrigin origin = wholeSystemOrigin();
    io::DocumentFailure failure;
    {
        const FullDisk disk(100);
        EXPECT_FALSE(io::writeSystem(completeSystem(), origin, path(), failure));
    }
    EXPECT_EQ(failure.kind, io::DocumentFault::CannotBeWritten);
    origin.code = QChar(0xD800); // half of a pair
    EXPECT_FALSE(io::writeSystem(completeSystem(), origin, path(), failure));
    EXPECT_EQ(failure.kind, io::DocumentFault::ForeignText);
    EXPECT_EQ(readFile(path()), "old content");
    EXPECT_EQ(entries(), QStringList{QStringLiteral("system.xml")});
}

TEST_F(SystemDocument, IsNotGivenWhatReadingWouldNotTakeOver)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    SystemOrigin origin;
    origin.code = QStringLiteral("1");
    const SystemOrigin kept = origin;
    origin.area = AreaOfUse{0.0, 50.0, 1.0, 40.0};
    origin.planeUnit = SystemOrigin::PlaneUnit{QStringLiteral("none"), 0.0};
    origin.countries = QStringList{QString()};
    io::DocumentFailure failure;
    for (const double number : {nan, -1.0}) {
        origin.planeUnit->metres = number;
        origin.area->west = number;
        ASSERT_TRUE(io::writeSystem(Coord(), origin, path(), failure));
        EXPECT_TRUE(originIn(readFile(path())) == kept) << readFile(path()).toStdString();
    }
}

TEST_F(SystemDocument, WithAnOriginHasNoFindings)
{
    EXPECT_TRUE(reviewed(dutchGridWithOrigin(wholeOrigin)).isEmpty());
    EXPECT_TRUE(reviewed(dutchGridWithOrigin("<Origin ver=\"1\"/>")).isEmpty());
    EXPECT_TRUE(reviewed(dutchGridWithOrigin("<Origin ver=\"1\"><Area name=\"World\"/></Origin>"))
                    .isEmpty());
    // Across the meridian of 180 degrees.
    QByteArray pacific = wholeOrigin;
    pacific.replace("west=\"3.2\"", "west=\"176.5\"").replace("east=\"7.24\"", "east=\"-178\"");
    EXPECT_TRUE(reviewed(dutchGridWithOrigin(pacific)).isEmpty());
}

struct Row
{
    const char *name;
    const char *from;
    const char *to;
    Kind kind;
    const char *element;
    int line;
    const char *written;
};

void PrintTo(const Row &row, std::ostream *out)
{
    *out << row.name;
}

std::string nameOf(const testing::TestParamInfo<Row> &info)
{
    return info.param.name;
}

class OriginReview : public ReviewTest, public testing::WithParamInterface<Row>
{};

TEST_P(OriginReview, FindsIt)
{
    const Row &row = GetParam();
    ASSERT_TRUE(wholeOrigin.contains(row.from));
    const auto findings =
        reviewed(dutchGridWithOrigin(QByteArray(wholeOrigin).replace(row.from, row.to)));
    ASSERT_EQ(findings.size(), 1) << testing::PrintToString(findings);
    EXPECT_EQ(findings.first().kind, row.kind) << testing::PrintToString(findings);
    EXPECT_EQ(findings.first().element, QString::fromUtf8(row.element));
    EXPECT_EQ(findings.first().line, row.line);
    EXPECT_EQ(findings.first().written, QString::fromUtf8(row.written));
}

constexpr const char *originPath = "Coord/Origin";
constexpr const char *operationPath = "Coord/Origin/Operation[Amersfoort to WGS 84 (4)]";
constexpr const char *areaPath = "Coord/Origin/Area[Netherlands.]";
constexpr const char *unitPath = "Coord/Origin/Plane_Unit[US survey foot]";

const Row rows[] = {
    {"OtherVersion", "Origin ver=\"1\"", "Origin ver=\"2\"", Kind::WrongVersion, originPath, 42,
     "ver=\"2\""},
    {"NoVersion", "Origin ver=\"1\"", "Origin", Kind::WrongVersion, originPath, 42, "<Origin>"},
    {"UnknownAttribute", "database=", "version=", Kind::UnknownAttribute, originPath, 42,
     "version=\"EPSG v10.076\""},
    {"UnknownElement", "<Country name=\"Holland\"/>", "<Land name=\"Holland\"/>",
     Kind::UnknownElement, "Coord/Origin/Land[Holland]", 46, "<Land>"},
    {"SecondArea", "<Country name=\"Holland\"/>", "<Area name=\"World\"/>", Kind::Repeated,
     "Coord/Origin/Area[World]", 46, "<Area>"},
    {"Text", "<Country name=\"Holland\"/>", "Holland", Kind::StrayText, originPath, 42, "Holland"},
    {"Accuracy", "accuracy_m=\"0.25\"", "accuracy_m=\"0.25 m\"", Kind::NotANumber, operationPath,
     43, "accuracy_m=\"0.25 m\""},
    {"NegativeAccuracy", "accuracy_m=\"0.25\"", "accuracy_m=\"-1\"", Kind::Implausible,
     operationPath, 43, "accuracy_m=\"-1\""},
    {"DecimalComma", "west=\"3.2\"", "west=\"3,2\"", Kind::NotANumber, areaPath, 44,
     "west=\"3,2\""},
    {"NotANumber", "north=\"53.7\"", "north=\"nan\"", Kind::NotANumber, areaPath, 44,
     "north=\"nan\""},
    {"NoSide", "west=\"3.2\" ", "", Kind::MissingAttribute, areaPath, 44, "west"},
    {"BeyondThePole", "north=\"53.7\"", "north=\"537\"", Kind::Implausible, areaPath, 44,
     "north=\"537\""},
    {"BeyondTheDateLine", "east=\"7.24\"", "east=\"190\"", Kind::Implausible, areaPath, 44,
     "east=\"190\""},
    {"UpsideDown", "south=\"50.75\"", "south=\"60\"", Kind::Implausible, areaPath, 44,
     "south=\"60\""},
    {"NamelessCountry", "<Country name=\"Holland\"/>", "<Country/>", Kind::MissingAttribute,
     "Coord/Origin/Country", 46, "name"},
    {"NamelessUnit", "name=\"US survey foot\" ", "", Kind::MissingAttribute,
     "Coord/Origin/Plane_Unit", 47, "name"},
    {"UnitWithoutLength", " metres=\"0.304800609601219\"", "", Kind::MissingAttribute, unitPath, 47,
     "metres"},
    {"UnitWithComma", "0.304800609601219", "0,304800609601219", Kind::NotANumber, unitPath, 47,
     "metres=\"0,304800609601219\""},
    {"UnitOfNothing", "0.304800609601219", "0", Kind::Implausible, unitPath, 47, "metres=\"0\""},
    {"NegativeUnit", "0.304800609601219", "-0.3048", Kind::Implausible, unitPath, 47,
     "metres=\"-0.3048\""},
};

INSTANTIATE_TEST_SUITE_P(Origin, OriginReview, testing::ValuesIn(rows), nameOf);

// EPSG Dataset: unit 9003 is 1200/3937 m, 9002 is 0.3048 m. They are read as they stand.
const Row unitRows[] = {
    {"UnitOfAnotherFoot", "0.304800609601219", "0.3048", Kind::WrongUnitSize, unitPath, 47,
     "metres=\"0.3048\""},
    {"FootOfTheSurvey", "\"US survey foot\"", "\"foot\"", Kind::WrongUnitSize,
     "Coord/Origin/Plane_Unit[foot]", 47, "metres=\"0.304800609601219\""},
    {"UnitOfAnAngle", "\"US survey foot\"", "\"degree\"", Kind::Implausible,
     "Coord/Origin/Plane_Unit[degree]", 47, "name=\"degree\""},
};

INSTANTIATE_TEST_SUITE_P(UnitName, OriginReview, testing::ValuesIn(unitRows), nameOf);

TEST_F(SystemDocument, WithASecondOriginIsReadByItsFirst)
{
    const QByteArray second = "<Origin ver=\"1\" code=\"4326\"/>";
    const auto findings = reviewed(dutchGridWithOrigin(wholeOrigin + "\n" + second));
    ASSERT_EQ(findings.size(), 1);
    EXPECT_EQ(findings.first().kind, Kind::Repeated);
    EXPECT_TRUE(originIn(dutchGridWithOrigin(wholeOrigin + second)) == wholeSystemOrigin());
}

// What is wrong in the origin is not known; a zero would be a number that looks right.
TEST_F(SystemDocument, IsNotGuessedAt)
{
    for (const Row &row : rows) {
        SCOPED_TRACE(row.name);
        const SystemOrigin read =
            originIn(dutchGridWithOrigin(QByteArray(wholeOrigin).replace(row.from, row.to)));
        SystemOrigin known = wholeSystemOrigin();
        if (row.kind == Kind::WrongVersion)
            known = {};
        if (row.line == 43)
            known.operation->accuracyM.reset();
        if (row.line == 44)
            known.area.reset();
        if (row.line == 47 && qstrcmp(row.element, unitPath) == 0)
            known.planeUnit.reset();
        EXPECT_TRUE(read.operation == known.operation);
        EXPECT_TRUE(read.area == known.area);
        if (row.line == 47 && qstrcmp(row.element, unitPath) != 0)
            known.planeUnit->name.clear();
        EXPECT_TRUE(read.planeUnit == known.planeUnit);
    }
}

TEST_F(SystemDocument, KeepsOfAnOriginWhatStillHolds)
{
    const Coord before = completeSystem();
    const SystemOrigin origin = wholeSystemOrigin();
    SystemOrigin withoutOperation = origin;
    withoutOperation.operation.reset();
    struct Change
    {
        const char *name;
        void (*apply)(Coord &);
        SystemOrigin kept;
    };
    const Change changes[] = {
        {"nothing", [](Coord &) {}, origin},
        {"names",
         [](Coord &c) {
             c.coord_name = QStringLiteral("other");
             c.ellipsoid.ellipsoid_name = QStringLiteral("other");
             c.projection.projection_name = QStringLiteral("other");
         },
         origin},
        {"geoid model", [](Coord &c) { c.geoidModel.modelFileName = QStringLiteral("egm96"); },
         origin},
        {"planar transformation", [](Coord &c) { c.planeTransform.north_translate.value = 4711.0; },
         origin},
        {"datum shift", [](Coord &c) { c.ellipsoidTransform.x_translate.value = 4711.0; },
         withoutOperation},
        {"ellipsoid", [](Coord &c) { c.ellipsoid.reciprocal = 299.0; }, {}},
        {"projection", [](Coord &c) { c.projection.param.first().value = 4711.0; }, {}},
    };
    for (const Change &change : changes) {
        SCOPED_TRACE(change.name);
        Coord after = before;
        change.apply(after);
        EXPECT_TRUE(io::keptOrigin(origin, before, after) == change.kept);
    }
}

} // namespace
} // namespace KelStd::test
