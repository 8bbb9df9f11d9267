#include "io/CompleteSystem.h"
#include "io/DocumentTest.h"

namespace KelStd::test {
namespace {

/// What a document does not mention, read into a system that has values already.
class KeptValues : public DocumentTest
{
protected:
    Coord coord = completeSystem();
};

TEST_F(KeptValues, MissingNamesAndFlatteningBecomeEmpty)
{
    DocumentPieces pieces;
    pieces.rootAttributes = R"(ver="1")";
    pieces.geoid = R"(<Geoid_Model ver="1"/>)";
    ASSERT_TRUE(read(pieces.bytes(), coord));
    EXPECT_TRUE(coord.coord_name.isEmpty());
    EXPECT_TRUE(coord.ellipsoid.ellipsoid_name.isEmpty());
    EXPECT_TRUE(coord.ellipsoid.proj4EllpsName.isEmpty());
    EXPECT_EQ(coord.ellipsoid.reciprocal, 0.0);
    EXPECT_TRUE(coord.projection.projection_name.isEmpty());
    EXPECT_TRUE(coord.projection.proj4Projection.isEmpty());
    EXPECT_TRUE(coord.geoidModel.modelFileName.isEmpty());
}

TEST_F(KeptValues, MissingOrEmptyWordsAndAxisStay)
{
    for (const bool empty : {false, true}) {
        SCOPED_TRACE(empty ? "empty" : "missing");
        coord = completeSystem();
        DocumentPieces pieces;
        if (empty) {
            pieces.ellipsoid = R"(<Ellpsoid ver="1" biggerHalfAxle="" positiveDir=""/>)";
            pieces.projection = R"(<Projection ver="1" locationType="" loc_or_height_unit=""/>)";
            pieces.datum = R"(<Ellipsoid_Transform ver="1" fuction="" nofuction_transtion=""/>)";
            pieces.plane = R"(<Plane_Transform ver="1" fuction=""/>)";
            pieces.fitting = R"(<Elevation_Fitting ver="1" function=""/>)";
        }
        ASSERT_TRUE(read(pieces.bytes(), coord));
        const Coord before = completeSystem();
        EXPECT_TRUE(coord.ellipsoid.biggerHalfAxle == before.ellipsoid.biggerHalfAxle);
        EXPECT_EQ(coord.ellipsoid.positiveDir, EllipsoidDirection_WNU);
        EXPECT_EQ(coord.projection.locationType, LocationType_Lat_Long_EarthHeight);
        EXPECT_EQ(coord.projection.loc_or_height_unit, Unit_USFoot);
        EXPECT_TRUE(coord.ellipsoidTransform == before.ellipsoidTransform);
        EXPECT_TRUE(coord.planeTransform == before.planeTransform);
        EXPECT_TRUE(coord.elevationFitting == before.elevationFitting);
    }
}

TEST_F(KeptValues, AxisKeepsItsTypeAndUnit)
{
    coord.ellipsoid.biggerHalfAxle.valType = ValueType_Height;
    coord.ellipsoid.biggerHalfAxle.unit = Unit_Foot;
    DocumentPieces pieces;
    pieces.ellipsoid = R"(<Ellpsoid ver="1" biggerHalfAxle="20925832.164"/>)";
    ASSERT_TRUE(read(pieces.bytes(), coord));
    expectSameParam(coord.ellipsoid.biggerHalfAxle,
                    Param(ValueType_Height, Unit_Foot, 20925832.164));
}

TEST_F(KeptValues, AxisAndFlatteningThatAreNoNumbersBecomeZero)
{
    DocumentPieces pieces;
    pieces.ellipsoid = R"(<Ellpsoid ver="1" biggerHalfAxle="6378 km" reciprocal="1,5"/>)";
    ASSERT_TRUE(read(pieces.bytes(), coord));
    EXPECT_STREQ(coord.ellipsoid.biggerHalfAxle.value.typeName(), "double");
    EXPECT_EQ(coord.ellipsoid.biggerHalfAxle.value.toDouble(), 0.0);
    EXPECT_EQ(coord.ellipsoid.reciprocal, 0.0);
}

TEST_F(KeptValues, WithoutAGeoidModelTheFileNameStays)
{
    ASSERT_TRUE(read(DocumentPieces().bytes(), coord));
    EXPECT_EQ(coord.geoidModel.modelFileName, QStringLiteral("egm96_15.gtx"));
}

TEST_F(KeptValues, ProjectionParametersThatAreNotMentionedStay)
{
    ASSERT_TRUE(
        read(documentWithProjection(R"(<param name="new" ver="1" valType="Double">1</param>)"
                                    R"(<param name="azimuth" ver="1" valType="Double">2</param>)"
                                    R"(<paramProj4 name="azimuth" proj4Param="gamma"/>)"),
             coord));
    const Projection before = completeSystem().projection;
    EXPECT_EQ(coord.projection.param.size(), before.param.size() + 1);
    EXPECT_TRUE(coord.projection.param[QStringLiteral("FalseEast")]
                == before.param[QStringLiteral("FalseEast")]);
    expectSameParam(coord.projection.param[QStringLiteral("azimuth")],
                    Param(ValueType_Double, Unit_None, 2.0));
    EXPECT_EQ(coord.projection.paramProj4.size(), before.paramProj4.size());
    EXPECT_EQ(coord.projection.paramProj4[QStringLiteral("azimuth")], QStringLiteral("gamma"));
    EXPECT_EQ(coord.projection.paramProj4[QStringLiteral("FalseEast")], QStringLiteral("x_0"));
}

TEST_F(KeptValues, ReplacedProjectionParameterIsReadIntoAFreshOne)
{
    ASSERT_TRUE(read(documentWithProjection(R"(<param name="choice" ver="1"/>)"), coord));
    Param fresh;
    fresh.valType = ValueType_None; // the word is missing
    expectSameParam(coord.projection.param[QStringLiteral("choice")], fresh);
}

TEST_F(KeptValues, MissingRotationStaysAndTheRestIsRead)
{
    QByteArray document = storedDocument("complete.xml");
    const int start = document.indexOf("<x_rotate");
    document.remove(start, document.indexOf("<y_rotate") - start);
    document.replace(">-0.3597<", ">-0.5<");
    coord.ellipsoidTransform.x_rotate = Param(ValueType_Angle, Unit_Degree, 7.5);
    ASSERT_TRUE(read(document, coord));
    expectSameParam(coord.ellipsoidTransform.x_rotate, Param(ValueType_Angle, Unit_Degree, 7.5));
    EXPECT_EQ(coord.ellipsoidTransform.y_rotate.value.toDouble(), -0.5);
}

TEST_F(KeptValues, ParameterWithoutAttributesLosesItsTypeAndUnitOnly)
{
    Param &param = coord.ellipsoidTransform.x_translate;
    param.isDictionary = true;
    param.dictionarySelKey = QStringLiteral("s");
    param.dictionaryBindParamName = QStringLiteral("b");
    param.dictionaryValues[QStringLiteral("k")] = 1.5;
    ASSERT_TRUE(read(documentWithDatum(R"(<x_translate ver="1"/>)"), coord));
    EXPECT_EQ(param.valType, ValueType_None);
    EXPECT_EQ(param.unit, Unit_None);
    EXPECT_FALSE(param.isDictionary);
    EXPECT_EQ(param.value.toDouble(), -679.5);
    EXPECT_EQ(param.dictionarySelKey, QStringLiteral("s"));
    EXPECT_EQ(param.dictionaryBindParamName, QStringLiteral("b"));
    EXPECT_EQ(param.dictionaryValues.size(), 1);
}

TEST_F(KeptValues, DictionaryWithoutItsAttributesLosesItsKeyAndBinding)
{
    Param &param = coord.ellipsoidTransform.x_translate;
    param.dictionarySelKey = QStringLiteral("s");
    param.dictionaryBindParamName = QStringLiteral("b");
    ASSERT_TRUE(read(documentWithDatum(R"(<x_translate ver="1" isDictionary="true"/>)"), coord));
    EXPECT_TRUE(param.isDictionary);
    EXPECT_TRUE(param.dictionarySelKey.isEmpty());
    EXPECT_TRUE(param.dictionaryBindParamName.isEmpty());
}

TEST_F(KeptValues, UnknownWordsBecomeTheFirstOfTheirKind)
{
    DocumentPieces pieces;
    pieces.ellipsoid = R"(<Ellpsoid ver="1" positiveDir="enu"/>)";
    pieces.projection = R"(<Projection ver="1" locationType="x" loc_or_height_unit="meter"/>)";
    pieces.datum = R"(<Ellipsoid_Transform ver="1" fuction="three" nofuction_transtion="blh">)"
                   R"(<x_translate ver="1" unit="meter" valType="distance">5</x_translate>)"
                   R"(</Ellipsoid_Transform>)";
    pieces.plane = R"(<Plane_Transform ver="1" fuction=" Four"/>)";
    pieces.fitting = R"(<Elevation_Fitting ver="1" function="Curved"/>)";
    ASSERT_TRUE(read(pieces.bytes(), coord));
    EXPECT_EQ(coord.ellipsoid.positiveDir, EllipsoidDirection_ENU);
    EXPECT_EQ(coord.projection.locationType, LocationType_X_Y_ElevationHeight);
    EXPECT_EQ(coord.projection.loc_or_height_unit, Unit_None);
    EXPECT_EQ(coord.ellipsoidTransform.fuction, EllipsoinTransformFunction_None);
    EXPECT_EQ(coord.ellipsoidTransform.nofuction_transtion, EllipsoinTransition_XYZ);
    EXPECT_EQ(coord.planeTransform.fuction, PlaneTransformFunction_None);
    EXPECT_EQ(coord.elevationFitting.function, ElevationFittingFunction_None);
    expectSameParam(coord.ellipsoidTransform.x_translate,
                    Param(ValueType_None, Unit_None, QStringLiteral("5")));
}

TEST_F(KeptValues, EachDirectionWordIsRead)
{
    struct
    {
        const char *word;
        EEllipsoidDirection direction;
    } const rows[] = {
        {"ENU", EllipsoidDirection_ENU},
        {"WSU", EllipsoidDirection_WSU},
        {"ESU", EllipsoidDirection_ESU},
        {"WNU", EllipsoidDirection_WNU},
        // The first release's words are in no table.
        {"EEllipsoidHeadDirection_ENU", EllipsoidDirection_ENU},
        {"EEllipsoidHeadDirection_WSU", EllipsoidDirection_ENU},
        {"EEllipsoidHeadDirection_ESU", EllipsoidDirection_ENU},
        {"EllipsoidHeadDirection_WSU", EllipsoidDirection_ENU},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.word);
        coord.ellipsoid.positiveDir = row.direction == EllipsoidDirection_WSU
                                          ? EllipsoidDirection_ENU
                                          : EllipsoidDirection_WSU;
        DocumentPieces pieces;
        pieces.ellipsoid = QByteArray(R"(<Ellpsoid ver="1" positiveDir=")") + row.word + R"("/>)";
        ASSERT_TRUE(read(pieces.bytes(), coord));
        EXPECT_EQ(coord.ellipsoid.positiveDir, row.direction);
    }
}

} // namespace
} // namespace KelStd::test
