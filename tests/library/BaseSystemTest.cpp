// The built-in base system, which nothing in the library asks for.

#include "library/LibraryTest.h"

namespace KelStd::test {
namespace {

using MakeBaseSystem = void (StandardLibrary::*)();
MakeBaseSystem makeBaseSystem();

/// An explicit instantiation may name a private member; that is how this test reaches it.
template <MakeBaseSystem member>
struct Reach
{
    friend MakeBaseSystem makeBaseSystem() { return member; }
};
template struct Reach<&StandardLibrary::genBaseCoord>;

class BaseSystem : public LibraryTest
{
protected:
    static void makeBase() { (library().*makeBaseSystem())(); }
};

TEST_F(BaseSystem, IsGeographicWgs84)
{
    makeBase();
    const Coord &base = *library().getBaseCoord();
    const QString datum = QStringLiteral("datum");
    EXPECT_EQ(base.coord_name, QStringLiteral("application_base"));
    EXPECT_EQ(base.ellipsoid.ellipsoid_name, QString());
    EXPECT_EQ(base.projection.projection_name, QStringLiteral("application_base_projection"));
    EXPECT_EQ(base.projection.proj4Projection, QStringLiteral("longlat"));
    EXPECT_EQ(base.projection.param.value(datum).valType, 1);
    EXPECT_EQ(base.projection.param.value(datum).value, QVariant(QStringLiteral("WGS84")));
    EXPECT_EQ(base.projection.paramProj4.value(datum), datum);
}

TEST_F(BaseSystem, LeavesEverythingElse)
{
    write("base.xml", "<Coord ver='1' coord_name='before'>"
                      "<Ellpsoid ver='1' ellipsoid_name='e' biggerHalfAxle='6378388'"
                      " reciprocal='297' positiveDir='WNU' proj4EllpsName='intl'/>"
                      "<Projection ver='1' projection_name='p' proj4Projection='merc'"
                      " loc_or_height_unit='Foot'>"
                      "<param name='k' ver='1' valType='Double'>0.9996</param>"
                      "<param name='datum' ver='1' unit='Foot' valType='Double'"
                      " isDictionary='true'>7</param>"
                      "<paramProj4 name='k' proj4Param='k_0'/>"
                      "<paramProj4 name='datum' proj4Param='other'/></Projection>"
                      "<Ellipsoid_Transform ver='1'/><Plane_Transform ver='1'/>"
                      "<Elevation_Fitting ver='1'/>"
                      "<Geoid_Model ver='1' modelFileName='g'/></Coord>");
    library().loadLibrary();
    const Coord before = *library().getBaseCoord();
    ASSERT_EQ(before.coord_name, QStringLiteral("before"));
    makeBase();
    const Coord &base = *library().getBaseCoord();
    EXPECT_TRUE(base.ellipsoid == before.ellipsoid);
    EXPECT_EQ(base.ellipsoid.proj4EllpsName, QStringLiteral("intl"));
    EXPECT_EQ(base.projection.loc_or_height_unit, Unit_Foot);
    EXPECT_EQ(QStringList(base.projection.param.keys()),
              (QStringList{QStringLiteral("datum"), QStringLiteral("k")}));
    const Param expected(ValueType_String, Unit_None, QStringLiteral("WGS84"));
    EXPECT_TRUE(base.projection.param.value(QStringLiteral("datum")) == expected);
    EXPECT_EQ(base.projection.param.value(QStringLiteral("k")).value, QVariant(0.9996));
    EXPECT_EQ(base.projection.paramProj4.value(QStringLiteral("k")), QStringLiteral("k_0"));
    EXPECT_EQ(base.projection.paramProj4.value(QStringLiteral("datum")), QStringLiteral("datum"));
    EXPECT_TRUE(base.ellipsoidTransform == before.ellipsoidTransform);
    EXPECT_TRUE(base.planeTransform == before.planeTransform);
    EXPECT_TRUE(base.elevationFitting == before.elevationFitting);
    EXPECT_EQ(base.geoidModel.modelFileName, QStringLiteral("g"));
}

} // namespace
} // namespace KelStd::test
