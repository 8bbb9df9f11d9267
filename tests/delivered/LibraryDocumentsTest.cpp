#include "delivered/DeliveredDocuments.h"
#include "delivered/EpsgReference.h"
#include "io/XmlTree.h"
#include "support/Printers.h"
#include "support/TemporaryHome.h"

#include <KelStd/io/Coord_IO.h>
#include <KelStd/io/SystemDocument.h>

#include <QtCore/QDir>
#include <QtCore/QRegularExpression>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

#include <set>

namespace KelStd {
namespace {

/// The name of a system's document: what is neither letter, digit, full stop nor plus sign becomes
/// an underscore, several in a row become one.
QString fileNameOf(const QString &system)
{
    QString name = system;
    name.replace(QRegularExpression(QStringLiteral("[^A-Za-z0-9+.]+")), QStringLiteral("_"));
    while (name.endsWith(QLatin1Char('_')))
        name.chop(1);
    return name + QStringLiteral(".xml");
}

QByteArray withoutComments(const QByteArray &document)
{
    QString text = QString::fromUtf8(document);
    text.remove(QRegularExpression(QStringLiteral("<!--[^>]*-->\n")));
    return text.toUtf8();
}

QByteArray written(const Coord &coord, const SystemOrigin &origin)
{
    const QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("system.xml"));
    io::DocumentFailure failure;
    EXPECT_TRUE(io::writeSystem(coord, origin, path, failure)) << failure.text;
    return test::readFile(path);
}

TEST(DeliveredLibrary, HasItsFoldersAndNoOthers)
{
    EXPECT_EQ(QDir(test::deliveredPath(QString()))
                  .entryList(QDir::AllEntries | QDir::NoDotAndDotDot, QDir::Name),
              (QStringList{QStringLiteral("SOURCES.md"), QStringLiteral("base.xml"),
                           QStringLiteral("ellipsoids"), QStringLiteral("projections"),
                           QStringLiteral("standard")}));
}

TEST(DeliveredLibrary, HasEveryDocumentOfTheSources)
{
    for (const char *folder : {"ellipsoids", "projections", "standard"}) {
        const QString name = QString::fromLatin1(folder);
        const QDir source(QStringLiteral(KELSTD_TEST_SOURCE_DIR "/data/library/") + name);
        for (const QString &document : source.entryList(QDir::Files)) {
            EXPECT_EQ(test::readFile(test::deliveredPath(name + QLatin1Char('/') + document)),
                      test::readFile(source.filePath(document)))
                << document;
        }
    }
    EXPECT_GE(test::nationalSystems().size(), 12U);
    EXPECT_EQ(test::deliveredFiles(QStringLiteral("standard")).size(),
              test::nationalSystems().size() + 120);
}

TEST(DeliveredLibrary, SystemsHaveNamesOfTheirOwn)
{
    std::set<QString> names;
    for (const std::string &fileName : test::deliveredFiles(QStringLiteral("standard"))) {
        const QString name = test::deliveredSystem(fileName).coord_name;
        EXPECT_EQ(name, name.trimmed());
        EXPECT_TRUE(names.insert(name.toCaseFolded()).second) << name;
        EXPECT_EQ(fileNameOf(name).toStdString(), fileName);
    }
}

TEST(DeliveredLibrary, ListsEveryNationalSystemWithItsCodes)
{
    const QString sources =
        QString::fromUtf8(test::readFile(test::deliveredPath(QStringLiteral("SOURCES.md"))));
    int rows = 0;
    for (const QString &line : sources.split(QLatin1Char('\n')))
        rows += QRegularExpression(QStringLiteral("\\| \\d+ \\|")).match(line).hasMatch() ? 1 : 0;
    EXPECT_EQ(rows, static_cast<int>(test::nationalSystems().size()));
    for (const std::string &fileName : test::nationalSystems()) {
        const test::Citation citation = test::citationOf(fileName);
        const QString shift =
            citation.shift.isEmpty() ? QStringLiteral("none") : citation.shift.mid(5);
        EXPECT_TRUE(sources.contains(QStringLiteral("| %1 | %2 | %3 |")
                                         .arg(test::deliveredSystem(fileName).coord_name,
                                              citation.parameters.mid(5), shift)))
            << fileName;
    }
}

TEST(DeliveredLibrary, BaseSystemIsGeographicWgs84)
{
    Coord base;
    ASSERT_TRUE(Coord_IO::xml_read(test::deliveredPath(QStringLiteral("base.xml")), base));
    EXPECT_EQ(base.coord_name, QStringLiteral("application_base"));
    EXPECT_EQ(base.ellipsoid.ellipsoid_name, QString());
    EXPECT_EQ(base.ellipsoid.proj4EllpsName, QStringLiteral("WGS84"));
    EXPECT_EQ(base.ellipsoid.reciprocal, 298.257223563);
    EXPECT_EQ(base.projection.projection_name, QStringLiteral("application_base_projection"));
    EXPECT_EQ(base.projection.proj4Projection, QStringLiteral("longlat"));
    EXPECT_EQ(base.projection.locationType, LocationType_Lat_Long_EarthHeight);
    ASSERT_EQ(base.projection.param.keys(), QStringList{QStringLiteral("datum")});
    const Param &datum = base.projection.param.first();
    EXPECT_EQ(datum.valType, ValueType_String);
    EXPECT_EQ(datum.value.toString(), QStringLiteral("WGS84"));
    EXPECT_EQ(base.projection.paramProj4.value(QStringLiteral("datum")), QStringLiteral("datum"));
    EXPECT_TRUE(Coord().ellipsoidTransform == base.ellipsoidTransform);
}

/// An unknown word, a missing element or a number with too many digits would come back changed.
TEST(DeliveredLibrary, SystemsAreWrittenBackAsTheyAre)
{
    for (const std::string &fileName : test::deliveredFiles(QStringLiteral("standard"))) {
        const Coord coord = test::deliveredSystem(fileName);
        const QByteArray delivered = withoutComments(test::readFile(
            test::deliveredPath(QStringLiteral("standard/") + QString::fromStdString(fileName))));
        EXPECT_EQ(test::withSortedAttributes(written(coord, test::deliveredOrigin(fileName)))
                      .toStdString(),
                  test::withSortedAttributes(delivered).toStdString())
            << fileName;
    }
}

/// PROJ's own ellipsoids keep the definitions free of the display configuration. Its modified Airy
/// is not that of the EPSG Dataset.
TEST(DeliveredLibrary, SystemsNameTheirEllipsoidsAndProjections)
{
    for (const std::string &fileName : test::deliveredFiles(QStringLiteral("standard"))) {
        const Coord coord = test::deliveredSystem(fileName);
        EXPECT_EQ(coord.ellipsoid.proj4EllpsName.isEmpty(),
                  coord.ellipsoid.ellipsoid_name == QStringLiteral("Airy Modified 1849"))
            << fileName;
        EXPECT_TRUE(QFile::exists(test::deliveredPath(
            QStringLiteral("ellipsoids/%1.xml").arg(coord.ellipsoid.ellipsoid_name))))
            << fileName;
        EXPECT_FALSE(coord.projection.projection_name.isEmpty()) << fileName;
        EXPECT_EQ(coord.projection.param.keys(), coord.projection.paramProj4.keys()) << fileName;
    }
}

TEST(DeliveredLibrary, SystemsCiteTheCodeOfTheirName)
{
    for (const std::string &fileName : test::nationalSystems()) {
        const QString code = test::citationOf(fileName).parameters;
        const QString official =
            test::nameAfter(QStringLiteral("PROJCRS"), test::epsgText(QStringLiteral("crs"), code));
        const QString name = test::deliveredSystem(fileName).coord_name;
        EXPECT_TRUE(name.startsWith(official) || official.startsWith(name))
            << name << " is not " << official;
    }
}

} // namespace
} // namespace KelStd
