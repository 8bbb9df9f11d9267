// Coordinate systems: read, found, written.

#include "support/Printers.h"
#include "support/ProjTest.h"
#include "support/TemporaryHome.h"

#include <KelStd/KelStd.h>

#include <QtCore/QDataStream>
#include <QtCore/QDir>
#include <QtCore/QTemporaryDir>

namespace KelStd {
namespace {

class SystemExamples : public test::ProjTest
{};

QString exampleFile(const char *name)
{
    return QDir(QStringLiteral(KELSTD_TEST_SOURCE_DIR)).filePath(QString::fromLatin1(name));
}

QString reviewed(const QString &fileName)
{
    //! [review]
    Coord system;
    SystemOrigin origin;
    QList<io::DocumentFinding> findings;
    io::DocumentFailure failure;
    if (!io::reviewSystem(fileName, system, origin, findings, failure))
        return failure.text;
    if (!findings.isEmpty())
        return io::describedFinding(findings.first());
    //! [review]
    return system.coord_name;
}

TEST(DocumentExamples, ADocumentIsReviewedBeforeItIsUsed)
{
    EXPECT_EQ(reviewed(exampleFile("examples/rd_new.xml")), QStringLiteral("Amersfoort / RD New"));
    const QTemporaryDir directory;
    const QString misspelt = directory.filePath(QStringLiteral("misspelt.xml"));
    test::writeFile(misspelt, test::readFile(exampleFile("examples/rd_new.xml"))
                                  .replace("fuction=\"Seven\"", "fuction=\"seven\""));
    EXPECT_TRUE(reviewed(misspelt).contains(QStringLiteral("fuction=\"seven\"")));
}

QString importedName()
{
    //! [import]
    catalogue::Catalogue catalogue;
    const catalogue::ImportedSystem imported = catalogue.importSystem("EPSG:28992");
    if (!imported.system)
        return imported.refusal.text; // says what to do
    //! [import]
    return imported.system->coord_name;
}

TEST_F(SystemExamples, ASystemOfTheDatabaseIsImported)
{
    EXPECT_EQ(importedName(), QStringLiteral("Amersfoort / RD New"));
}

TEST(SystemValues, ASystemIsMadeFromItsRecords)
{
    //! [records]
    Coord system; // transverse Mercator about 9 degrees east, on an ellipsoid that PROJ knows
    system.coord_name = QStringLiteral("Gauss 9");
    system.ellipsoid.proj4EllpsName = QStringLiteral("bessel");
    system.projection.proj4Projection = QStringLiteral("tmerc");
    const QString meridian = QStringLiteral("central meridian"); // a key of our own
    system.projection.param[meridian] = Param(ValueType_Longitude, Unit_Degree, 9.0);
    system.projection.paramProj4[meridian] = QStringLiteral("lon_0"); // PROJ's name of it
    const auto definitions = location::definitionsOf(system);
    //! [records]
    EXPECT_TRUE(definitions->localProjected.startsWith(
        QStringLiteral("+proj=tmerc +lon_0=9 +ellps=bessel")))
        << definitions->localProjected;
}

TEST(LibraryExamples, ARecordIsAddedUnderALock)
{
    const QTemporaryDir home;
    Coord system;
    Coord::CreateDefaultTMercCoordination(system);
    QString shown;
    const auto show = [&shown](const QString &text) { shown += text; };
    //! [library]
    const LibraryDirectory directory(home.path() + QStringLiteral("/library"));
    if (const LibraryFailure failure = library::createPlaces(directory))
        show(failure.text);
    LibraryLock lock(directory); // other programs wait until it is gone
    if (const LibraryFailure failure = lock.acquire())
        show(failure.text);
    if (const LibraryFailure failure =
            library::loadPlaces(directory, {LibraryPlace::Custom, LibraryPlace::Standard}))
        show(failure.text);
    StandardLibrary &registry = StandardLibrary::getInstance();
    if (!registry.addCoordToCustomLibrary(QStringLiteral("Harbour"), &system))
        show(registry.lastFailure().text);
    //! [library]
    EXPECT_EQ(shown, QString());
    EXPECT_NE(registry.getCoordFromCustomLibrary(QStringLiteral("Harbour")), nullptr);
    EXPECT_TRUE(QFile::exists(home.path() + QStringLiteral("/library/custom/Harbour.xml")));
}

TEST(StreamExamples, AValueIsWrittenAndReadAgain)
{
    //! [stream]
    const Param length(ValueType_Distance, Unit_Meter, 1.5);
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out.setVersion(QDataStream::Qt_5_15);
    length.save(out);
    QDataStream in(bytes);
    in.setVersion(QDataStream::Qt_5_15);
    Param read;
    const bool isRead = read.load(in) && in.status() == QDataStream::Ok;
    //! [stream]
    EXPECT_TRUE(isRead);
    EXPECT_EQ(read, length);
}

} // namespace
} // namespace KelStd
