#include "delivered/DeliveredDocuments.h"
#include "delivered/EpsgReference.h"
#include "io/XmlTree.h"
#include "support/Printers.h"
#include "support/ProjTest.h"
#include "support/TemporaryHome.h"

#include <KelStd/io/Coord_IO.h>
#include <KelStd/proj/ProjLib.h>

#include <QtCore/QRegularExpression>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

namespace KelStd {
namespace {

QByteArray listDocument(const std::string &folder, const std::string &fileName)
{
    return test::readFile(test::deliveredPath(QString::fromStdString(folder + '/' + fileName)));
}

/// The lines of a list document's one record, as they stand in a system's document.
QByteArray recordOf(const QByteArray &list, const QByteArray &element)
{
    const int begin = list.indexOf("    <" + element);
    const int end = list.lastIndexOf("</");
    return begin < 0 ? QByteArray() : list.mid(begin, end - begin);
}

/// A delivered system with its ellipsoid or its projection replaced by a list document's record.
struct SystemWithRecord
{
    Coord coord;
    QByteArray document;
    QByteArray writtenBack;
};

SystemWithRecord systemWith(const QByteArray &record, const char *from, const char *to)
{
    SystemWithRecord result;
    result.document =
        test::readFile(test::deliveredPath(QStringLiteral("standard/WGS_84_UTM_zone_32N.xml")));
    const int begin = result.document.indexOf(from);
    result.document.replace(begin, result.document.indexOf(to) - begin,
                            record.trimmed() + "\n    ");
    const int comment = result.document.indexOf("<!--");
    result.document.remove(comment, result.document.indexOf("<Coord") - comment);
    // The origin is that of the zone, and no part of a system with another record.
    const int origin = result.document.indexOf("    <Origin");
    result.document.remove(origin, result.document.indexOf("</Coord>") - origin);

    const QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("system.xml"));
    test::writeFile(path, result.document);
    EXPECT_TRUE(Coord_IO::xml_read(path, result.coord));
    EXPECT_TRUE(Coord_IO::xml_write(result.coord, path, nullptr));
    result.writtenBack = test::readFile(path);
    return result;
}

/// A record that is replaced or removed in the registry has its file replaced or removed: the file
/// is the one of the record's name, and the record is alone in it.
void expectOneRecord(const QByteArray &list, const char *root, const char *element,
                     const char *nameAttribute, const std::string &fileName)
{
    const test::XmlElement document = test::parsed(list);
    EXPECT_EQ(document.name, QString::fromLatin1(root));
    EXPECT_EQ(document.attributes,
              (QMap<QString, QString>{{QStringLiteral("ver"), QStringLiteral("1")}}));
    ASSERT_EQ(document.childNames(), QStringList{QString::fromLatin1(element)});
    EXPECT_EQ(document.children.first().attribute(nameAttribute).toStdString() + ".xml", fileName);
}

std::string listTestName(const testing::TestParamInfo<std::string> &row)
{
    QString name = QString::fromStdString(row.param);
    name.replace(QRegularExpression(QStringLiteral("[^A-Za-z0-9]+")), QStringLiteral("_"));
    return name.toStdString();
}

class DeliveredEllipsoid : public test::ProjTest, public testing::WithParamInterface<std::string>
{};

TEST_P(DeliveredEllipsoid, IsAloneInAFileOfItsName)
{
    expectOneRecord(listDocument("ellipsoids", GetParam()), "Ellipsoid_List", "Ellpsoid",
                    "ellipsoid_name", GetParam());
}

TEST_P(DeliveredEllipsoid, HasTheNumbersOfTheEpsgDatabase)
{
    const QByteArray list = listDocument("ellipsoids", GetParam());
    const QRegularExpressionMatch code =
        QRegularExpression(QStringLiteral("<!-- (EPSG:\\d+) -->")).match(QString::fromUtf8(list));
    ASSERT_TRUE(code.hasMatch());
    const QString epsg = test::epsgText(QStringLiteral("ellipsoid"), code.captured(1));
    const QRegularExpressionMatch numbers =
        QRegularExpression(QStringLiteral("\\[\"([^\"]*)\",([0-9.]+),([0-9.]+),")).match(epsg);
    ASSERT_TRUE(numbers.hasMatch()) << epsg;

    const SystemWithRecord system =
        systemWith(recordOf(list, "Ellpsoid"), "<Ellpsoid", "<Projection");
    EXPECT_EQ(test::withSortedAttributes(system.writtenBack).toStdString(),
              test::withSortedAttributes(system.document).toStdString());
    const Ellipsoid &ellipsoid = system.coord.ellipsoid;
    EXPECT_EQ(ellipsoid.ellipsoid_name, numbers.captured(1));
    EXPECT_EQ(ellipsoid.biggerHalfAxle.value.toDouble(), numbers.captured(2).toDouble());
    // The database gives some reciprocals to fewer digits than their second axis would.
    EXPECT_NEAR(ellipsoid.reciprocal, numbers.captured(3).toDouble(), 1e-9);
}

/// Where a PROJ name stands, PROJ's axes are the numbers beside it.
TEST_P(DeliveredEllipsoid, IsTheEllipsoidOfItsProjName)
{
    const SystemWithRecord system = systemWith(
        recordOf(listDocument("ellipsoids", GetParam()), "Ellpsoid"), "<Ellpsoid", "<Projection");
    const Ellipsoid &byName = system.coord.ellipsoid;
    Ellipsoid byNumbers = byName;
    byNumbers.proj4EllpsName.clear();
    QString named;
    QString spelledOut;
    QString error;
    Projection geocentric;
    geocentric.proj4Projection = QStringLiteral("cart");
    ASSERT_TRUE(ProjLib::GetProjectionString_proj4(&geocentric, &byName, named, &error)) << error;
    ASSERT_TRUE(ProjLib::GetProjectionString_proj4(&geocentric, &byNumbers, spelledOut, &error))
        << error;
    const auto poleRadius = [](const QString &definition) {
        const QString longLat =
            QString(definition)
                .replace(QStringLiteral("+proj=cart"), QStringLiteral("+proj=longlat"));
        const QString cart =
            QStringLiteral("+proj=cart") + definition.mid(QStringLiteral("+proj=cart").size());
        QList<Pos> pole{Pos::fromLongLatH(0.0, 90.0, 0.0)};
        QString message;
        EXPECT_TRUE(ProjLib::ConvertPosList(longLat, cart, pole, ProjLib::WGS84LatLongH_to_WGS84XYZ,
                                            &message))
            << message;
        return pole.first().getXYZ().z;
    };
    constexpr double tolerance = 1e-5;
    EXPECT_NEAR(poleRadius(named), poleRadius(spelledOut), tolerance);
}

INSTANTIATE_TEST_SUITE_P(Lists, DeliveredEllipsoid,
                         testing::ValuesIn(test::deliveredFiles(QStringLiteral("ellipsoids"))),
                         listTestName);

class DeliveredProjection : public test::ProjTest, public testing::WithParamInterface<std::string>
{};

TEST_P(DeliveredProjection, IsAloneInAFileOfItsName)
{
    expectOneRecord(listDocument("projections", GetParam()), "Projection_List", "Projection",
                    "projection_name", GetParam());
}

TEST_P(DeliveredProjection, IsWrittenBackAsItIsAndAcceptedByProj)
{
    const SystemWithRecord system =
        systemWith(recordOf(listDocument("projections", GetParam()), "Projection"), "<Projection",
                   "<Ellipsoid_Transform");
    EXPECT_EQ(test::withSortedAttributes(system.writtenBack).toStdString(),
              test::withSortedAttributes(system.document).toStdString());
    const Projection &projection = system.coord.projection;
    EXPECT_EQ(projection.param.keys(), projection.paramProj4.keys());
    QString definition;
    QString error;
    EXPECT_TRUE(ProjLib::GetProjectionString_proj4(&projection, &system.coord.ellipsoid, definition,
                                                   &error))
        << error;
}

INSTANTIATE_TEST_SUITE_P(Lists, DeliveredProjection,
                         testing::ValuesIn(test::deliveredFiles(QStringLiteral("projections"))),
                         listTestName);

} // namespace
} // namespace KelStd
