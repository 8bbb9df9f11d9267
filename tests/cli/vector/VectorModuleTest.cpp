// The module of vector files, whose PROJ is not the program's.

#include <cli/vector/VectorModule.h>

#include <KelStd/catalogue/Catalogue.h>
#include <KelStd/location/LocationBuilder.h>
#include <KelStd/proj/ProjLib.h>

#include "cli/vector/VectorRun.h"
#include "support/Printers.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QSet>

namespace KelStd {
namespace {

using namespace cli::vector;

/// The files of PROJ's library that this process has mapped.
QSet<QString> mappedProj()
{
    QFile maps(QStringLiteral("/proc/self/maps"));
    EXPECT_TRUE(maps.open(QIODevice::ReadOnly));
    QSet<QString> files;
    for (const QByteArray &line : maps.readAll().split('\n')) {
        const int place = line.indexOf('/');
        const QString file = QFile::decodeName(place < 0 ? QByteArray() : line.mid(place));
        if (QFileInfo(file).fileName().startsWith(QLatin1String("libproj")))
            files += file;
    }
    return files;
}

/// The last bits of what a system of seven parameters makes of a position.
QList<double> someBits()
{
    catalogue::Catalogue catalogue;
    const auto imported = catalogue.importSystem("EPSG:28992");
    EXPECT_TRUE(imported.system) << imported.refusal.text;
    LocationBuilder builder(*imported.system);
    Location location;
    LocationBuilder::Outcome outcome;
    QList<double> bits;
    for (double longitude = 3.5; longitude < 7.0; longitude += 0.37) {
        EXPECT_TRUE(builder.make(LocationBuilder::Frame::Wgs84Geographic,
                                 Pos::fromLongLatH(longitude, 51.0 + longitude / 5.0, 43.1),
                                 location, outcome))
            << outcome.reason;
        bits << location.get_NEH_N() << location.get_NEH_E() << location.get_NEH_H()
             << location.get_Local_LLH_Lat() << location.get_WGS84_XYZ_X();
    }
    return bits;
}

TEST(VectorModule, LeavesTheProgramItsOwnProj)
{
    const test::TemporaryHome home(test::TemporaryHome::Empty); // PROJ is unpacked, not linked to
    ASSERT_TRUE(ProjLib::___InitializeEnviroment());
    const QList<double> before = someBits();
    ProjLib::___unloadEnviroment();

    // A process of its own for the other order: the module first, as the program does it.
    const QString self = QFileInfo(QStringLiteral("/proc/self/exe")).canonicalFilePath();
    const QString printed = test::toolOutput(
        self, {QStringLiteral("--gtest_filter=VectorModule.StandsBesideTheProjOfTheProgram")});
    QStringList bits;
    for (const double number : before)
        bits += QString::number(number, 'g', 17);
    EXPECT_TRUE(printed.contains(QLatin1String("bits ") + bits.join(QLatin1Char(' ')))) << printed;
}

// Also started by the test above, for what it prints.
TEST(VectorModule, StandsBesideTheProjOfTheProgram)
{
    const test::TemporaryHome home(test::TemporaryHome::Empty);
    QString reason;
    VectorFiles *const files = vectorFiles(reason);
    ASSERT_NE(files, nullptr) << reason;
    const QSet<QString> ofModule = mappedProj();
    ASSERT_EQ(ofModule.size(), 1);
    ASSERT_TRUE(ProjLib::___InitializeEnviroment());
    const QSet<QString> ofBoth = mappedProj();
    EXPECT_EQ(ofBoth.size(), 2);
    for (const QString &file : ofBoth - ofModule)
        EXPECT_TRUE(file.startsWith(QDir(home.path()).canonicalPath())) << file;
    EXPECT_FALSE(QString::fromStdString(files->projFile()).startsWith(home.path()));

    QStringList bits;
    for (const double number : someBits())
        bits += QString::number(number, 'g', 17);
    printf("bits %s\n", bits.join(QLatin1Char(' ')).toUtf8().constData());
    // The module's PROJ works on beside it, whatever directory is the current one.
    Reference reference;
    std::string error;
    EXPECT_TRUE(files->describe("EPSG:28992", reference, error)) << error;
    EXPECT_EQ(reference.datum, "Amersfoort");
}

TEST(VectorModule, IsRefusedBehindProj)
{
    const test::TemporaryHome home(test::TemporaryHome::Empty);
    ASSERT_TRUE(ProjLib::___InitializeEnviroment());
    QString reason;
    EXPECT_EQ(vectorFiles(reason), nullptr);
    EXPECT_TRUE(reason.contains(QLatin1String("behind PROJ"))) << reason;
    ProjLib::___unloadEnviroment();
}

TEST(VectorModule, KnowsItsRelease)
{
    EXPECT_EQ(
        gdalRelease(),
        test::toolOutput(QStringLiteral("gdal-config"), {QStringLiteral("--version")}).trimmed());
}

TEST(VectorModule, TakesADefinitionForNeitherAFileNorAnAddress)
{
    QString reason;
    VectorFiles *const files = vectorFiles(reason);
    ASSERT_NE(files, nullptr) << reason;
    for (const char *text : {"/etc/passwd", "http://localhost/epsg", "nonsense", ""}) {
        Reference reference;
        std::string error;
        EXPECT_FALSE(files->describe(text, reference, error)) << text;
        EXPECT_NE(error, "");
    }
}

TEST(VectorModule, IsLoadedOnlyWhereItIsNeeded)
{
    const test::ProgramRun program;
    for (const char *file : {"points.csv", "points.geojson"}) {
        SCOPED_TRACE(file);
        const QString points =
            program.file(QString::fromLatin1(file), QString::fromLatin1(file).endsWith("csv")
                                                        ? QByteArray("lon,lat,h\n5.387,52.155,0\n")
                                                        : test::somePoints());
        auto process =
            program.process({QStringLiteral("convert"), QStringLiteral("--system"),
                             QStringLiteral("EPSG:32631"), QStringLiteral("--csv"), points});
        auto environment = process->processEnvironment();
        environment.insert(QStringLiteral("LD_DEBUG"), QStringLiteral("files"));
        process->setProcessEnvironment(environment);
        process->start();
        ASSERT_TRUE(process->waitForFinished(60000));
        EXPECT_EQ(process->exitCode(), 0);
        EXPECT_EQ(process->readAllStandardError().contains("libgdal"),
                  QString::fromLatin1(file).endsWith("json"));
    }
}

TEST(Formats, AreListed)
{
    const test::ProgramRun program;
    const auto result = program.run({QStringLiteral("formats")});
    EXPECT_EQ(result.status, 0);
    for (const char *word : {"GDAL: 3", "GPKG", "ESRI Shapefile", "GPX", "KML", "DXF", "GeoJSON",
                             "Written: .csv .json .geojson .gpkg .shp .kml .gpx .dxf"})
        EXPECT_TRUE(result.out.contains(QLatin1String(word))) << word << '\n' << result.out;
}

} // namespace
} // namespace KelStd
