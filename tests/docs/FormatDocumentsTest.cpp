// The documents and words that the pages of the formats show.

#include "docs/PageTables.h"
#include "house/SourceFiles.h"
#include "support/Printers.h"
#include "support/TemporaryHome.h"

#include <KelStd/KelStd.h>

#include <QtCore/QRegularExpression>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

#include <ostream>

namespace KelStd {
namespace {

using Words = CoordStringHelper;

QString page(const char *name)
{
    return test::sourceText(QStringLiteral("docs/formats/") + QString::fromLatin1(name));
}

/// A document with the attributes of each element in their order, which is of no meaning.
QString ordered(const QString &xml)
{
    static const QRegularExpression attribute(QStringLiteral(" (\\w+=\"[^\"]*\")"));
    QStringList lines = xml.split(QLatin1Char('\n'));
    for (QString &line : lines) {
        QStringList found;
        auto attributes = attribute.globalMatch(line);
        while (attributes.hasNext())
            found += attributes.next().captured(1);
        found.sort();
        line = line.remove(attribute) + found.join(QLatin1Char(' '));
    }
    return lines.join(QLatin1Char('\n'));
}

TEST(FormatDocuments, TheWholeOneIsReadAndWrittenToTheSame)
{
    const QString shown = test::blocksOf(page("documents.md"), QStringLiteral("xml")).value(0);
    const QTemporaryDir directory;
    const QString file = directory.filePath(QStringLiteral("system.xml"));
    test::writeFile(file, shown.toUtf8());
    Coord system;
    QList<io::DocumentFinding> findings;
    io::DocumentFailure failure;
    ASSERT_TRUE(io::reviewCoord(file, system, findings, failure)) << failure.text;
    for (const auto &finding : qAsConst(findings))
        ADD_FAILURE() << io::describedFinding(finding).toStdString();
    EXPECT_EQ(system.coord_name, QStringLiteral("Bessel / Gauss 3 degrees, zone 3"));
    EXPECT_EQ(system.ellipsoid.biggerHalfAxle.value.toDouble(), 6377397.155);
    EXPECT_EQ(system.projection.param.value(QStringLiteral("lon_0")).value.toDouble(), 9.0);
    EXPECT_EQ(system.ellipsoidTransform.fuction, EllipsoinTransformFunction_Seven);
    EXPECT_EQ(system.ellipsoidTransform.z_rotate.value.toDouble(), 2.455);
    EXPECT_EQ(system.geoidModel.modelFileName, QStringLiteral("egm96_15.gtx"));
    const QString again = directory.filePath(QStringLiteral("again.xml"));
    ASSERT_TRUE(Coord_IO::xml_write(system, again, nullptr));
    EXPECT_EQ(ordered(QString::fromUtf8(test::readFile(again))), ordered(shown));
}

TEST(FormatLists, TheyAreRead)
{
    const QStringList shown = test::blocksOf(page("lists.md"), QStringLiteral("xml"));
    ASSERT_EQ(shown.size(), 4);
    const QTemporaryDir directory;
    const QString file = directory.filePath(QStringLiteral("list.xml"));
    QString error;
    QList<Ellipsoid> ellipsoids;
    QList<io::DocumentFinding> findings;
    test::writeFile(file, shown.at(0).toUtf8());
    ASSERT_TRUE(io::reviewEllipsoidList(file, ellipsoids, findings, &error)) << error;
    ASSERT_EQ(ellipsoids.size(), 2);
    EXPECT_EQ(ellipsoids.at(1).ellipsoid_name, QStringLiteral("GRS 1980"));
    EXPECT_EQ(ellipsoids.at(1).reciprocal, 298.257222101);
    QList<Projection> projections;
    test::writeFile(file, shown.at(1).toUtf8());
    ASSERT_TRUE(io::reviewProjectionList(file, projections, findings, &error)) << error;
    ASSERT_EQ(projections.size(), 1);
    EXPECT_TRUE(projections.at(0).param.value(QStringLiteral("South")).value.toBool());
    EXPECT_EQ(projections.at(0).paramProj4.value(QStringLiteral("Zone")), QStringLiteral("zone"));
    EXPECT_TRUE(findings.isEmpty());
    // The dictionary, as a parameter of a projection.
    const QString opening =
        QStringLiteral("<Projection_List ver=\"1\"><Projection ver=\"1\" projection_name=\"x\" "
                       "proj4Projection=\"tmerc\" locationType=\"X_Y_ElevationHeight\" "
                       "loc_or_height_unit=\"Meter\">");
    const QString closing = QStringLiteral("</Projection></Projection_List>");
    test::writeFile(file, (opening + shown.at(2) + closing).toUtf8());
    projections.clear();
    ASSERT_TRUE(io::readProjectionList(file, projections, &error)) << error;
    const Param scale = projections.value(0).param.value(QStringLiteral("Scale"));
    EXPECT_TRUE(scale.isDictionary);
    EXPECT_EQ(scale.dictionarySelKey, QStringLiteral("UTM"));
    EXPECT_EQ(scale.dictionaryValues.value(QStringLiteral("UTM")).toDouble(), 0.9996);
    EXPECT_EQ(scale.dictionaryValues.value(QStringLiteral("Gauss")).toDouble(), 1.0);
}

TEST(FormatLists, ThePlacesOfALibraryAreThoseOfTheTable)
{
    const auto rows =
        test::tableBelow(page("lists.md"), QStringLiteral("The library as a directory"));
    QStringList shown;
    for (const QStringList &row : rows)
        shown += QString(row.at(0)).remove(QLatin1Char('`')).remove(QStringLiteral("/*.xml"));
    QStringList places = library::placeNames();
    shown.sort();
    places.sort();
    EXPECT_EQ(shown, places);
}

TEST(FormatLists, OfferedSystemsAreThoseOfTheLibrary)
{
    const QString shown = test::blocksOf(page("lists.md"), QStringLiteral("xml")).value(3);
    const QTemporaryDir directory;
    const LibraryDirectory library(directory.path());
    ASSERT_FALSE(library::createPlaces(library));
    Coord system;
    Coord::CreateDefaultTMercCoordination(system);
    system.coord_name = QStringLiteral("Amersfoort / RD New");
    const QString custom = library.path(LibraryPlace::Custom) + QStringLiteral("/rd.xml");
    ASSERT_TRUE(Coord_IO::xml_write(system, custom, nullptr));
    test::writeFile(library.path(LibraryPlace::Offered), shown.toUtf8());
    ASSERT_FALSE(library::loadPlaces(library, {LibraryPlace::Custom, LibraryPlace::Offered}));
    QList<QPair<QString, QString>> offered;
    StandardLibrary::getInstance().getShowInCreateProjectCoords(offered);
    EXPECT_EQ(offered, (QList<QPair<QString, QString>>{
                           {system.coord_name, QStringLiteral("RD (Netherlands)")}}));
}

/// What stands in front of a row's words, and the library's own words.
template <typename Type>
QMap<int, QString> numbered(const QMap<Type, QString> &words)
{
    QMap<int, QString> numbers;
    for (auto row = words.begin(); row != words.end(); ++row)
        numbers.insert(row.key(), row.value());
    return numbers;
}

TEST(FormatDocuments, WordsAreThoseOfTheTable)
{
    const QMap<int, QString> words[] = {
        numbered(Words::s_forCoordIO_valTypeAsciiStrings),
        numbered(Words::s_forCoordIO_unitDescriptionAsciiStrings),
        numbered(Words::s_forCoordIO_ELocationType_asciiStrings),
        numbered(Words::s_forCoordIO_EEllipsoidDirection_asciiStrings),
        numbered(Words::s_forCoordIO_EEllipsoinTransformFunction_asciiStrings),
        numbered(Words::s_forCoordIO_EEllipsoinTransition_asciiStrings),
        numbered(Words::s_forCoordIO_EPlaneTransformFunction_asciiStrings),
        numbered(Words::s_forCoordIO_EElevationFittingFunction_asciiStrings),
        numbered(Words::s_forCoordIO_ELocationZeroType_asciiStrings),
        numbered(Words::s_forCoordIO_EWhichHalfEarth_asciiStrings),
    };
    const auto rows = test::tableBelow(page("documents.md"), QStringLiteral("Words"));
    ASSERT_EQ(static_cast<std::size_t>(rows.size()), std::size(words));
    const QRegularExpression word(QStringLiteral("(\\d+) `([^`]+)`"));
    for (int i = 0; i < rows.size(); ++i) {
        QMap<int, QString> shown;
        auto found = word.globalMatch(rows.at(i).at(1));
        while (found.hasNext()) {
            const auto match = found.next();
            shown.insert(match.captured(1).toInt(), match.captured(2));
        }
        EXPECT_EQ(shown, words[i]) << rows.at(i).at(0);
    }
}

} // namespace
} // namespace KelStd
