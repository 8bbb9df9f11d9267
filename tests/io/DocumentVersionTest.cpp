#include "io/CompleteSystem.h"
#include "io/DocumentTest.h"

namespace KelStd::test {
namespace {

class DocumentVersion : public DocumentTest
{
protected:
    /// Reading fails and says nothing.
    void expectSilentFailure(const QByteArray &document, Coord &coord) const
    {
        QString error = QStringLiteral("untouched");
        EXPECT_FALSE(read(document, coord, &error));
        EXPECT_EQ(error, QStringLiteral("untouched"));
    }

    void expectSilentFailure(const QByteArray &document) const
    {
        Coord coord;
        expectSilentFailure(document, coord);
    }
};

TEST_F(DocumentVersion, RootOfAnotherVersionIsRejectedWithoutAMessage)
{
    for (const char *attributes : {"", R"(ver="")", R"(ver="0")", R"(ver="2")", R"(ver="-1")",
                                   R"(ver="1.0")", R"(ver="one")", R"(ver="0x1")", R"(Ver="1")"}) {
        SCOPED_TRACE(attributes);
        DocumentPieces pieces;
        pieces.rootAttributes = QByteArray(attributes) + R"( coord_name="read")";
        Coord coord;
        coord.coord_name = QStringLiteral("former");
        expectSilentFailure(pieces.bytes(), coord);
        EXPECT_EQ(coord.coord_name, QStringLiteral("former"));
    }
}

TEST_F(DocumentVersion, VersionIsReadAsADecimalInteger)
{
    for (const char *version : {"1", "01", "+1", " 1 "}) {
        SCOPED_TRACE(version);
        DocumentPieces pieces;
        pieces.rootAttributes = QByteArray("ver=\"") + version + '"';
        Coord coord;
        EXPECT_TRUE(read(pieces.bytes(), coord));
    }
}

TEST_F(DocumentVersion, RecordOfAnotherVersionIsRejectedWithoutAMessage)
{
    QByteArray DocumentPieces::*const records[] = {
        &DocumentPieces::ellipsoid, &DocumentPieces::projection, &DocumentPieces::datum,
        &DocumentPieces::plane,     &DocumentPieces::fitting,
    };
    for (const auto record : records) {
        for (const char *version : {R"(ver="2")", R"(ver="")", ""}) {
            DocumentPieces pieces;
            (pieces.*record).replace(R"(ver="1")", version);
            SCOPED_TRACE((pieces.*record).toStdString());
            expectSilentFailure(pieces.bytes());
        }
    }
}

TEST_F(DocumentVersion, GeoidModelOfAnotherVersionIsRejectedWithoutAMessage)
{
    for (const char *geoid : {R"(<Geoid_Model ver="2" modelFileName="read"/>)",
                              R"(<Geoid_Model modelFileName="read"/>)"}) {
        DocumentPieces pieces;
        pieces.geoid = geoid;
        Coord coord;
        coord.geoidModel.modelFileName = QStringLiteral("former");
        expectSilentFailure(pieces.bytes(), coord);
        EXPECT_EQ(coord.geoidModel.modelFileName, QStringLiteral("former"));
    }
}

TEST_F(DocumentVersion, ProjectionParameterOfAnotherVersionFailsTheDocument)
{
    Coord coord;
    coord.projection.param[QStringLiteral("second")] = Param(ValueType_Double, Unit_None, 7.0);
    expectSilentFailure(
        documentWithProjection(R"(<param name="first" ver="1" valType="Double">1</param>)"
                               R"(<param name="second" ver="2" valType="Double">2</param>)"
                               R"(<param name="third" ver="1" valType="Double">3</param>)"
                               R"(<paramProj4 name="first" proj4Param="x_0"/>)"),
        coord);
    EXPECT_EQ(coord.projection.param.value(QStringLiteral("first")).value.toDouble(), 1.0);
    EXPECT_EQ(coord.projection.param.value(QStringLiteral("second")).value.toDouble(), 7.0);
    EXPECT_FALSE(coord.projection.param.contains(QStringLiteral("third")));
    EXPECT_TRUE(coord.projection.paramProj4.isEmpty());
}

TEST_F(DocumentVersion, RecordParameterOfAnotherVersionIsLeftAlone)
{
    for (const char *version : {R"( ver="2")", ""}) {
        DocumentPieces pieces;
        pieces.datum = QByteArray("<Ellipsoid_Transform ver=\"1\" fuction=\"Three\">")
                       + "<x_translate" + version + " valType=\"Double\">5</x_translate>"
                       + "<y_translate ver=\"1\" valType=\"Double\">6</y_translate>"
                       + "</Ellipsoid_Transform>";
        pieces.plane = QByteArray("<Plane_Transform ver=\"1\"><ratio") + version
                       + " valType=\"String\">5</ratio></Plane_Transform>";
        pieces.fitting = QByteArray("<Elevation_Fitting ver=\"1\"><a") + version
                         + " valType=\"String\">5</a></Elevation_Fitting>";
        Coord coord;
        EXPECT_TRUE(read(pieces.bytes(), coord));
        EXPECT_TRUE(coord.ellipsoidTransform.x_translate == stEllipsoinTransform().x_translate);
        EXPECT_EQ(coord.ellipsoidTransform.y_translate.value.toDouble(), 6.0);
        EXPECT_TRUE(coord.planeTransform == stPlaneTransform());
        EXPECT_TRUE(coord.elevationFitting == stElevationFitting());
    }
}

TEST_F(DocumentVersion, ProjNamesAndDictionaryEntriesHaveNoVersion)
{
    Coord coord;
    ASSERT_TRUE(read(
        documentWithProjection(R"(<param name="p" ver="1" valType="Double" isDictionary="true">)"
                               R"(<key key_name="k" ver="9">5</key></param>)"
                               R"(<paramProj4 name="p" proj4Param="x_0" ver="9"/>)"),
        coord));
    EXPECT_EQ(coord.projection.paramProj4.value(QStringLiteral("p")), QStringLiteral("x_0"));
    EXPECT_EQ(coord.projection.param.value(QStringLiteral("p")).dictionaryValues.size(), 1);
}

TEST_F(DocumentVersion, RecordsBeforeAFailureKeepTheirNewValues)
{
    DocumentPieces pieces;
    pieces.rootAttributes = R"(ver="1" coord_name="new")";
    pieces.ellipsoid = R"(<Ellpsoid ver="1" reciprocal="300"/>)";
    pieces.projection = R"(<Projection ver="1" proj4Projection="new"/>)";
    pieces.datum = R"(<Ellipsoid_Transform ver="1" fuction="Three"/>)";
    pieces.plane = R"(<Plane_Transform ver="2" fuction="None"/>)";
    pieces.fitting = R"(<Elevation_Fitting ver="1" function="None"/>)";
    pieces.geoid = R"(<Geoid_Model ver="1" modelFileName="new"/>)";
    Coord coord = completeSystem();
    expectSilentFailure(pieces.bytes(), coord);
    EXPECT_EQ(coord.coord_name, QStringLiteral("new"));
    EXPECT_EQ(coord.ellipsoid.reciprocal, 300.0);
    EXPECT_EQ(coord.projection.proj4Projection, QStringLiteral("new"));
    EXPECT_EQ(coord.ellipsoidTransform.fuction, EllipsoinTransformFunction_Three);
    EXPECT_TRUE(coord.planeTransform == completeSystem().planeTransform);
    EXPECT_TRUE(coord.elevationFitting == completeSystem().elevationFitting);
    EXPECT_EQ(coord.geoidModel.modelFileName, QStringLiteral("egm96_15.gtx"));
}

} // namespace
} // namespace KelStd::test
