// The examples in comments of public headers that use PROJ or write files, as they stand there.

#include "support/Printers.h"
#include "support/ProjTest.h"
#include "support/TemporaryHome.h"

#include <KelStd/KelStd.h>

#include <QtCore/QDebug>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QTemporaryDir>

namespace KelStd {
namespace {

/// What the examples do with their results.
struct Desk
{
    QStringList said;

    QString show(const QString &text)
    {
        said += text;
        return text;
    }
    void report(const QString &, const QString &text) { said += text; }
    void report(qint64 line, const QString &text) { said += QString::number(line) + text; }
    void report(const QString &text) { said += text; }
};

/// With a directory of their own for the files that they write.
class CommentExamples : public test::ProjTest
{
protected:
    void SetUp() override
    {
        test::ProjTest::SetUp();
        m_before = QDir::currentPath();
        QDir::setCurrent(m_directory.path());
        const QDir examples(QStringLiteral(KELSTD_TEST_SOURCE_DIR "/examples"));
        ASSERT_TRUE(Coord_IO::xml_read(examples.filePath(QStringLiteral("rd_new.xml")), system));
    }
    void TearDown() override
    {
        QDir::setCurrent(m_before);
        test::ProjTest::TearDown();
    }

    Coord system;
    QTemporaryDir m_directory;
    QString m_before;
};

QString shownGrids(Desk &desk)
{
    int grids = 0;
    const auto show = [&](auto &&...values) {
        if constexpr (sizeof...(values) == 1)
            return desk.show(values...);
        else
            ++grids;
    };
    ShiftGridFile file;
    if (const GridFailure failure = file.open("BETA2007.gsb"))
        return show(failure.text);
    for (const GridNodes &grid : file.grids())
        show(grid.latitude, grid.longitudeOf(grid.columns - 1));
    return QString::number(grids);
}

QString addedGrid(Desk &desk)
{
    const auto show = [&desk](const QString &text) { return desk.show(text); };
    if (const ShiftGridFailure failure = ShiftGrids::add("/media/usb/BETA2007.gsb"))
        return show(failure.text);
    return {};
}

TEST_F(CommentExamples, GridsThatAreNotThere)
{
    Desk desk;
    EXPECT_FALSE(shownGrids(desk).isEmpty());
    EXPECT_FALSE(addedGrid(desk).isEmpty());
    EXPECT_EQ(desk.said.size(), 2);
}

TEST_F(CommentExamples, ALocation)
{
    ASSERT_TRUE(Coord_IO::xml_write(system, "utm31.xml", nullptr));
    Coord utm31;
    Coord_IO::xml_read("utm31.xml", utm31, nullptr);
    Location location;
    QString error;
    if (Coord::MakeLocation_byWGS84LatLongH(Pos::fromLongLatH(3.5, 52.0, 45.0), location, nullptr,
                                            &utm31, &error))
        qInfo() << location.get_NEH_E() << location.get_NEH_N();
    EXPECT_EQ(error, QString());
    EXPECT_EQ(location.get_WGS84_LLH_Long(), 3.5);
}

TEST_F(CommentExamples, DocumentsThatAreReadAndReviewed)
{
    Desk desk;
    const auto report = [&desk](auto &&...values) { desk.report(values...); };
    const QString fileName = "missing.xml";
    Coord coord;
    io::DocumentFailure failure;
    if (!Coord_IO::xml_read(fileName, coord, failure))
        report(fileName, io::describedFailure(failure));
    EXPECT_EQ(desk.said.size(), 1);
    bool isUsed = false;
    const auto use = [&isUsed](const Coord &) { isUsed = true; };
    QString error;
    QList<io::DocumentFinding> findings;
    if (io::reviewCoord(fileName, coord, findings, &error) && findings.isEmpty())
        use(coord);
    EXPECT_FALSE(isUsed);
}

TEST_F(CommentExamples, ManyLocations)
{
    const std::vector<Pos> positions(3, Pos::fromLongLatH(5.5, 52.0, 0.0));
    LocationBuilder builder(system);
    std::vector<Location> locations(positions.size());
    std::vector<LocationBuilder::Outcome> outcomes(positions.size());
    builder.make(LocationBuilder::Frame::Wgs84Geographic, positions.data(), positions.size(),
                 locations.data(), outcomes.data());
    EXPECT_TRUE(outcomes.back().isMade);
    EXPECT_EQ(locations.front(), locations.back());
}

TEST_F(CommentExamples, AnAreaAndFactors)
{
    const AreaOfUse area{3.2, 50.75, 7.22, 53.7};
    const auto frame = LocationBuilder::Frame::Wgs84Geographic;
    const Pos position = Pos::fromLongLatH(52.0, 5.5, 0.0);
    LocationBuilder builder(system);
    Location location;
    PositionMistake mistake = PositionMistake::None;
    const auto warn = [&mistake](PositionMistake found) { mistake = found; };
    AreaCheck check(system, area);
    if (builder.make(frame, position, location) && !check.isInside(location))
        warn(check.mistakeIn(frame, position));
    EXPECT_EQ(mistake, PositionMistake::Swapped);
    ASSERT_TRUE(builder.make(frame, Pos::fromLongLatH(5.387, 52.155, 0.0), location));
    const double horizontalDistanceOnTheGround = 100.0;
    double planeDistance = 0.0;
    GridFactors factors(system);
    const GridFactors::Values values = factors.at(location);
    if (values.combinedFactor)
        planeDistance = horizontalDistanceOnTheGround * *values.combinedFactor;
    EXPECT_NEAR(planeDistance, 99.99, 0.01); // k_0 is 0.9999079
}

TEST_F(CommentExamples, AFileOfPositions)
{
    using namespace positions;
    const std::vector<Location> locations(2);
    const QString noModel;
    CsvWriter writer(ValuePrinter({}, ValuePrinter::Output::Csv), true);
    writePositionFile("site.csv", writer, {}, [&](const WritePosition &write) {
        for (const Location &location : locations)
            write({{}, location, noModel, {}});
        return true;
    });
    EXPECT_EQ(test::readFile("site.csv").count('\n'), 3);
}

/// Lines of a list, one after the other.
struct LineReader
{
    QList<std::string_view> lines;

    bool next(std::string_view &line)
    {
        if (lines.isEmpty())
            return false;
        line = lines.takeFirst();
        return true;
    }
};

TEST_F(CommentExamples, ALists)
{
    using namespace positions;
    struct Refused
    {
        explicit Refused(const QString &) {}
    };
    Desk desk;
    const auto report = [&desk](auto &&...values) { desk.report(values...); };
    QStringList names;
    const auto use = [&names](const Pos &, std::string_view name) {
        names += QString::fromUtf8(name.data(), static_cast<int>(name.size()));
    };
    LineReader reader{{"name,northing,easting,height", "A,463000,155000,1", "B,1,2"}};
    std::string_view line;
    PositionParser parser(Frame::LocalProjected);
    for (qint64 number = 1; reader.next(line); ++number) {
        switch (parser.parse(line, number)) {
        case PositionParser::Result::Position: use(parser.position(), parser.name()); break;
        case PositionParser::Result::Nothing: break;
        case PositionParser::Result::BadLine: report(number, parser.reason()); break;
        case PositionParser::Result::BadHeader: throw Refused(parser.reason());
        }
    }
    if (!parser.finish())
        throw Refused(parser.reason());
    EXPECT_EQ(names, QStringList("A"));
    ASSERT_EQ(desk.said.size(), 1);
    EXPECT_TRUE(desk.said.first().startsWith('3'));
}

TEST_F(CommentExamples, ASystemOfTheDatabase)
{
    using namespace catalogue;
    Catalogue catalogue;
    const ImportedSystem imported = catalogue.importSystem("EPSG:28992");
    if (imported.system)
        Coord_IO::xml_write(*imported.system, "rd_new.xml", nullptr);
    else
        qWarning() << imported.refusal.text;
    EXPECT_TRUE(QFile::exists("rd_new.xml"));
}

stENU transformed(const Coord &system, const Location &location)
{
    using namespace calibration;
    stENU atSite{};
    const auto site = SiteTransform::of(system);
    if (site && site->hasSite())
        atSite = site->toSite(location.localNEH.getENU());
    return atSite;
}

bool mayHaveAnotherHeight(const calibration::SiteTransform &site, const SystemOrigin &origin,
                          const stENU &atSite)
{
    using namespace calibration;
    const SiteExtent extent(site, origin.control);
    if ((extent.outside(atSite.n, atSite.e) & SiteExtent::heights) != 0)
        return true;
    return false;
}

TEST_F(CommentExamples, ASite)
{
    using namespace calibration;
    system.planeTransform.fuction = PlaneTransformFunction_Four;
    system.planeTransform.east_translate.value = -100000.0;
    system.planeTransform.ratio.value = 1.0;
    const Pos position = Pos::fromLongLatH(5.387, 52.155, 0.0);
    const Pos staked = Pos::fromENU(55000.0, 463000.0, 0.0);
    SiteFailure failure;
    auto builder = SiteBuilder::of(system, &failure);
    Location location;
    Pos atSite;
    LocationBuilder::Outcome outcome;
    builder->make(LocationBuilder::Frame::Wgs84Geographic, position, location, atSite, outcome);
    builder->makeFromSite(staked, location, outcome);
    EXPECT_TRUE(outcome.isMade);
    EXPECT_NEAR(location.get_NEH_E(), 155000.0, 1e-6);
    EXPECT_NEAR(transformed(system, location).e, 55000.0, 1e-6);

    // A single control point, near which the fit is taken to hold.
    ControlPoint point;
    point.north = 463000.0;
    point.east = 55000.0;
    point.isUsedInPlan = true;
    SystemOrigin origin;
    origin.control = {point};
    const SiteTransform site = builder->site();
    EXPECT_FALSE(mayHaveAnotherHeight(site, origin, {55050.0, 463000.0, 0.0}));
    EXPECT_TRUE(mayHaveAnotherHeight(site, origin, {56000.0, 463000.0, 0.0}));
}

QString locked(const LibraryDirectory &directory, Desk &desk)
{
    const auto show = [&desk](const QString &text) { return desk.show(text); };
    LibraryLock lock(directory);
    if (const LibraryFailure failure = lock.acquire())
        return show(failure.text);
    library::loadPlaces(directory, {LibraryPlace::Custom, LibraryPlace::Standard});
    // look, and change; then let the lock go
    return {};
}

TEST_F(CommentExamples, ALibrary)
{
    Desk desk;
    const auto report = [&desk](auto &&...values) { desk.report(values...); };
    const LibraryDirectory directory(m_directory.filePath("library"));
    ASSERT_FALSE(library::createPlaces(directory));
    // A program with a delivered library of one system.
    const QString delivered = m_directory.filePath("program/library/standard/Rd.xml");
    ASSERT_TRUE(QDir().mkpath(QFileInfo(delivered).path()));
    ASSERT_TRUE(Coord_IO::xml_write(system, delivered, nullptr));
    AppConfig::setBinDir(m_directory.filePath("program"));
    EXPECT_EQ(locked(directory, desk), QString());
    {
        QString fileName;
        const LibraryLock lock(directory); // and load the registry
        for (const DeliveredRecord &record :
             library::deliveredRecords(LibraryDirectory::delivered()))
            if (library::deliveredState(directory, record) == DeliveredState::Missing)
                library::restoreRecord(directory, record, fileName);
    }
    AppConfig::setBinDir(QStringLiteral(KELSTD_TEST_BIN_DIR));
    const QDir standard(directory.path(LibraryPlace::Standard));
    EXPECT_EQ(standard.entryList({"*.xml"}), QStringList("Rd.xml"));
    ASSERT_TRUE(StandardLibrary::getInstance().addCoordToCustomLibrary("Harbour", &system));
    const RecordKind kind = RecordKind::Custom;
    const QString name = "Harbour";
    const LibraryFailure failure = library::ownershipFailure(directory, kind, name);
    if (failure)
        report(failure.text);
    else
        library::removeRecord(kind, name);
    EXPECT_EQ(desk.said, QStringList());
    EXPECT_EQ(StandardLibrary::getInstance().getCoordFromCustomLibrary("Harbour"), nullptr);
}

QString added(const Coord &harbour, Desk &desk)
{
    const auto show = [&desk](const QString &text) { return desk.show(text); };
    StandardLibrary &library = StandardLibrary::getInstance();
    library.setCustomCoordPath("/home/surveyor/systems"); // and the six other places
    library.loadLibrary();
    if (!library.addCoordToCustomLibrary("Harbour", &harbour))
        return show(library.lastFailure().text); // and nothing has changed
    const Coord *coord = library.getCoordFromCustomLibrary("Harbour");
    return coord->coord_name;
}

TEST_F(CommentExamples, ARecordThatCannotBeWritten)
{
    Desk desk;
    ASSERT_FALSE(QFile::exists("/home/surveyor/systems"));
    EXPECT_FALSE(added(system, desk).isEmpty());
    EXPECT_EQ(desk.said.size(), 1);
}

} // namespace
} // namespace KelStd
