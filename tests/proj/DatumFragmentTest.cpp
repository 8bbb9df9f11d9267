#include "support/Printers.h"

#include <KelStd/coord/Coord.h>
#include <KelStd/proj/ProjLib.h>

#include <QtCore/QStringList>

#include <gtest/gtest.h>

#include <array>
#include <climits>

namespace KelStd {
namespace {

/// The "+towgs84" list of a text that has exactly one.
QString shiftIn(const char *definition)
{
    const QStringList pieces = QString::fromUtf8(definition).split(' ').filter("+towgs84=");
    EXPECT_EQ(pieces.size(), 1) << definition;
    return pieces.value(0).section('=', 1);
}

/// The list of both local definitions of the chain, which is one.
QString chainShift(const stEllipsoinTransform &transform)
{
    Coord coord;
    coord.ellipsoidTransform = transform;
    std::array<std::array<char, 512>, 4> buffers{};
    Coord::__MakeCoordStrings(nullptr, &coord, buffers[0].data(), buffers[1].data(),
                              buffers[2].data(), buffers[3].data());
    const QString shift = shiftIn(buffers[2].data());
    EXPECT_EQ(shiftIn(buffers[3].data()), shift);
    return shift;
}

/// The list of the single definition.
QString singleShift(const stEllipsoinTransform &transform)
{
    Coord coord;
    coord.ellipsoidTransform = transform;
    std::array<char, 1000> buffer{};
    ProjLib::CoordToProjString(&coord, buffer.data(), QString());
    return shiftIn(buffer.data());
}

/// The switches are the process's; each test gives them back.
class DatumFragment : public testing::Test
{
protected:
    void TearDown() override
    {
        Coord::s_invertParamsFunctionSwitch = m_functionSwitch;
        Coord::s_invertParamsUseMinusNotMatrix = m_minusSwitch;
    }

    static stEllipsoinTransform threeParameters(double x, double y, double z)
    {
        stEllipsoinTransform transform;
        transform.fuction = EllipsoinTransformFunction_Three;
        transform.x_translate = Param(ValueType_Distance, Unit_Meter, x);
        transform.y_translate = Param(ValueType_Distance, Unit_Meter, y);
        transform.z_translate = Param(ValueType_Distance, Unit_Meter, z);
        return transform;
    }

    static stEllipsoinTransform sevenParameters()
    {
        stEllipsoinTransform transform = threeParameters(446.448, -125.157, 542.06);
        transform.fuction = EllipsoinTransformFunction_Seven;
        transform.x_rotate = Param(ValueType_Angle, Unit_Second, 0.15);
        transform.y_rotate = Param(ValueType_Angle, Unit_Second, -0.247);
        transform.z_rotate = Param(ValueType_Angle, Unit_Second, 0.8421);
        transform.ratio_ppm = Param(ValueType_Double, Unit_None, 1.5);
        return transform;
    }

private:
    bool m_functionSwitch = Coord::s_invertParamsFunctionSwitch;
    bool m_minusSwitch = Coord::s_invertParamsUseMinusNotMatrix;
};

TEST_F(DatumFragment, SwitchesStartFalseAndTrue)
{
    EXPECT_FALSE(Coord::s_invertParamsFunctionSwitch);
    EXPECT_TRUE(Coord::s_invertParamsUseMinusNotMatrix);
}

TEST_F(DatumFragment, ThreeParameterSignsFollowTheSwitchInTheChainOnly)
{
    const stEllipsoinTransform transform = threeParameters(100.0, -20.0, 5.0);
    EXPECT_EQ(chainShift(transform), "-100,20,-5");
    EXPECT_EQ(singleShift(transform), "100,-20,5");
    Coord::s_invertParamsFunctionSwitch = true;
    EXPECT_EQ(chainShift(transform), "100,-20,5");
    EXPECT_EQ(singleShift(transform), "100,-20,5");
}

TEST_F(DatumFragment, SevenParameterSignsFollowTheSwitchInTheChainOnly)
{
    const stEllipsoinTransform transform = sevenParameters();
    EXPECT_EQ(chainShift(transform), "-446.448,125.157,-542.06,0.15,-0.247,0.8421,-1.5");
    EXPECT_EQ(singleShift(transform), "446.448,-125.157,542.06,0.15,-0.247,0.8421,-1.5");
    Coord::s_invertParamsFunctionSwitch = true;
    EXPECT_EQ(chainShift(transform), "446.448,-125.157,542.06,0.15,-0.247,0.8421,1.5");
    EXPECT_EQ(singleShift(transform), "446.448,-125.157,542.06,0.15,-0.247,0.8421,-1.5");
}

TEST_F(DatumFragment, OtherSwitchIsNotRead)
{
    const stEllipsoinTransform transform = sevenParameters();
    const QString chain = chainShift(transform);
    const QString single = singleShift(transform);
    Coord::s_invertParamsUseMinusNotMatrix = false;
    EXPECT_EQ(chainShift(transform), chain);
    EXPECT_EQ(singleShift(transform), single);
}

TEST_F(DatumFragment, OtherFunctionsShiftNothing)
{
    for (const int function : {0, 3, -1, 100, INT_MAX, INT_MIN}) {
        stEllipsoinTransform transform = sevenParameters();
        transform.fuction = static_cast<EEllipsoinTransformFunction>(function);
        transform.x_translate.unit = Unit_None; // is not looked at
        EXPECT_EQ(chainShift(transform), "0,0,0") << function;
        EXPECT_EQ(singleShift(transform), "0,0,0") << function;
    }
}

/// Deliberate: existing systems depend on it.
TEST_F(DatumFragment, ThreeParameterZUsesUnitOfY)
{
    stEllipsoinTransform transform = threeParameters(100.0, 20.0, 5.0);
    transform.z_translate.unit = Unit_MilliMeter;
    EXPECT_EQ(chainShift(transform), "-100,-20,-5");
    EXPECT_EQ(singleShift(transform), "100,20,5");

    transform.y_translate.unit = Unit_MilliMeter;
    transform.z_translate.unit = Unit_Meter;
    EXPECT_EQ(chainShift(transform), "-100,-0.02,-0.005");
    EXPECT_EQ(singleShift(transform), "100,0.02,0.005");

    // Nor does a unit of z that cannot be converted matter.
    transform.z_translate.unit = Unit_Degree;
    EXPECT_EQ(singleShift(transform), "100,0.02,0.005");
}

TEST_F(DatumFragment, ThreeParameterXUsesItsOwnUnit)
{
    stEllipsoinTransform transform = threeParameters(1000.0, 20.0, 5.0);
    transform.x_translate.unit = Unit_Foot;
    EXPECT_EQ(chainShift(transform), "-304.8,-20,-5");
    EXPECT_EQ(singleShift(transform), "304.8,20,5");
}

TEST_F(DatumFragment, SevenParameterTranslationsUseTheirOwnUnits)
{
    stEllipsoinTransform transform = sevenParameters();
    transform.x_translate = Param(ValueType_Distance, Unit_MilliMeter, 2500.0);
    transform.y_translate = Param(ValueType_Distance, Unit_Foot, 100.0);
    transform.z_translate = Param(ValueType_Distance, Unit_USFoot, 3937.0);
    EXPECT_EQ(chainShift(transform), "-2.5,-30.48,-1200,0.15,-0.247,0.8421,-1.5");
    EXPECT_EQ(singleShift(transform), "2.5,30.48,1200,0.15,-0.247,0.8421,-1.5");
}

TEST_F(DatumFragment, RotationsAreInArcSeconds)
{
    stEllipsoinTransform transform = sevenParameters();
    transform.x_rotate = Param(ValueType_Angle, Unit_Degree, 0.25);
    transform.y_rotate = Param(ValueType_Angle, Unit_Degree, -0.001953125); // 2 to the power -9
    transform.z_rotate = Param(ValueType_Angle, Unit_None, 3.0);            // as it stands
    EXPECT_EQ(chainShift(transform), "-446.448,125.157,-542.06,900,-7.03125,3,-1.5");
    EXPECT_EQ(singleShift(transform), "446.448,-125.157,542.06,900,-7.03125,3,-1.5");
}

TEST_F(DatumFragment, ScaleHasNoUnit)
{
    stEllipsoinTransform transform = sevenParameters();
    transform.ratio_ppm.unit = Unit_Degree;
    EXPECT_TRUE(chainShift(transform).endsWith(",-1.5"));
    EXPECT_TRUE(singleShift(transform).endsWith(",-1.5"));
}

TEST_F(DatumFragment, ThreeParametersHaveSixDecimals)
{
    const stEllipsoinTransform transform = threeParameters(0.1234567891234, 1e-7, 100.0000004);
    EXPECT_EQ(singleShift(transform), "0.123457,0,100");
}

TEST_F(DatumFragment, SevenParametersHaveTwelveDecimals)
{
    stEllipsoinTransform transform;
    transform.fuction = EllipsoinTransformFunction_Seven;
    transform.x_translate.value = 0.12345678912345;
    transform.y_translate.value = 1e-13;
    transform.z_translate.value = 0.1;
    transform.x_rotate.value = 0.98765432198765;
    transform.y_rotate.value = 1e-13;
    transform.z_rotate.value = 0.1;
    transform.ratio_ppm.value = -0.55555555555555;
    EXPECT_EQ(singleShift(transform), "0.123456789123,0,0.1,0.987654321988,0,0.1,0.555555555556");
}

TEST_F(DatumFragment, TrailingZerosAreStripped)
{
    EXPECT_EQ(singleShift(threeParameters(100.0, 120.5, 1000000.0)), "100,120.5,1000000");
}

TEST_F(DatumFragment, NoTranslationIsZeroWithEitherSign)
{
    for (const bool inverted : {false, true}) {
        Coord::s_invertParamsFunctionSwitch = inverted;
        for (const QString &number : chainShift(threeParameters(0.0, 0.0, 0.0)).split(',')) {
            bool isNumber = false;
            EXPECT_EQ(number.toDouble(&isNumber), 0.0);
            EXPECT_TRUE(isNumber) << number;
        }
    }
}

TEST_F(DatumFragment, TextValuesAreReadAsNumbers)
{
    stEllipsoinTransform transform = threeParameters(0.0, 0.0, 0.0);
    transform.x_translate.value = QString("12.5");
    transform.y_translate.value = 7;
    EXPECT_EQ(singleShift(transform), "12.5,7,0");
}

} // namespace
} // namespace KelStd
