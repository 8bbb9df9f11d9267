#include "support/Printers.h"
#include "support/ProjTest.h"

#include <KelStd/location/SystemNotes.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace KelStd {
namespace {

/// The default system, which has no peculiarity.
Coord plainSystem()
{
    Coord coord;
    Coord::CreateDefaultTMercCoordination(coord);
    return coord;
}

void addParameter(Coord &coord, const char *projName, const Param &param)
{
    coord.projection.param.insert(QStringLiteral("extra"), param);
    coord.projection.paramProj4.insert(QStringLiteral("extra"), QString::fromLatin1(projName));
}

/// The one note on a system.
QString noteOn(const Coord &coord)
{
    const QStringList notes = location::notesOn(coord);
    EXPECT_EQ(notes.size(), 1) << notes.join(QLatin1Char('\n'));
    return notes.value(0);
}

TEST(SystemNotes, ThereAreNoneOnAPlainSystem)
{
    EXPECT_EQ(location::notesOn(plainSystem()), QStringList());
}

TEST(SystemNotes, AParameterThatOverrulesTheSystem)
{
    const struct
    {
        const char *name;
        const char *overruled;
    } rows[] = {
        {"units", "the metre of all northings and eastings"},
        {"vunits", "the metre of all heights"},
        {"vto_meter", "the metre of all heights"},
        {"geoidgrids", "the geoid model: heights are those above this grid"},
        {"geoid_crs", "the geoid model: heights may be above a grid"},
        {"axis", "the directions and the order of the axes"},
        {"towgs84", "the datum shift"},
        {"nadgrids", "the datum shift: this grid takes its place"},
        {"geoc", "the datum shift: there is none with it"},
        {"datum", "the ellipsoid and the datum shift"},
        {"ellps", "the ellipsoid"},
        {"a", "the semi-major axis"},
        {"b", "the flattening"},
        {"rf", "the flattening"},
        {"R", "the ellipsoid"},
        {"pm", "the prime meridian of Greenwich"},
    };
    for (const auto &row : rows) {
        Coord coord = plainSystem();
        addParameter(coord, row.name, Param(ValueType_Double, Unit_None, 1.0));
        EXPECT_EQ(noteOn(coord),
                  QStringLiteral("The parameter \"extra\" is PROJ's \"%1\": it comes "
                                 "first and wins over %2.")
                      .arg(QString::fromLatin1(row.name), QString::fromLatin1(row.overruled)));
    }
}

TEST(SystemNotes, AProjectionThatProjComputesOnASphere)
{
    Coord coord = plainSystem();
    coord.ellipsoid.reciprocal = 298.257223563;
    coord.projection.proj4Projection = QStringLiteral("eqc");
    EXPECT_EQ(noteOn(coord), QStringLiteral("PROJ computes the projection \"eqc\" on a sphere: "
                                            "northings differ by up to 25 km from those on the "
                                            "ellipsoid."));
    coord.ellipsoid.reciprocal = 0.0;
    EXPECT_EQ(location::notesOn(coord), QStringList());
}

TEST(SystemNotes, AnyOtherParameterOverrulesNothing)
{
    for (const char *name : {"lat_1", "alpha", "gamma", "k_0", "zone", "A", "r", "to_meter", "f"}) {
        Coord coord = plainSystem();
        addParameter(coord, name, Param(ValueType_Double, Unit_None, 1.0));
        EXPECT_EQ(location::notesOn(coord), QStringList()) << name;
    }
}

class NotesByPosition : public test::ProjTest
{};

TEST_F(NotesByPosition, AreOfWhatChangesThePosition)
{
    const Pos place = Pos::fromLongLatH(30.0, 40.0, 50.0);
    const struct
    {
        const char *name;
        double value;
    } rows[] = {{"to_meter", 0.3048}, {"f", 0.01},  {"b", 6.3e6}, {"rf", 200.0},
                {"a", 6.4e6},         {"R", 6.4e6}, {"pm", 5.0},  {"vto_meter", 0.3048}};
    for (const bool hasName : {true, false}) {
        for (const auto &row : rows) {
            SCOPED_TRACE(testing::Message() << row.name << ' ' << hasName);
            Coord coord = plainSystem();
            if (!hasName)
                coord.ellipsoid.proj4EllpsName.clear();
            Location without;
            ASSERT_TRUE(Coord::MakeLocation_byWGS84LatLongH(place, without, nullptr, &coord));
            addParameter(coord, row.name, Param(ValueType_Double, Unit_None, row.value));
            Location with;
            ASSERT_TRUE(Coord::MakeLocation_byWGS84LatLongH(place, with, nullptr, &coord));
            EXPECT_EQ(with.localNEH == without.localNEH, location::notesOn(coord).isEmpty());
        }
    }
}

TEST(SystemNotes, AParameterWithoutAValueIsZero)
{
    Coord coord = plainSystem();
    coord.projection.paramProj4.insert(QStringLiteral("extra"), QStringLiteral("lat_1"));
    EXPECT_EQ(noteOn(coord),
              QStringLiteral("The parameter \"extra\" has no value: PROJ is given lat_1=0."));
}

TEST(SystemNotes, ATextParameterLosesItsText)
{
    Coord coord = plainSystem();
    addParameter(coord, "mode", Param(ValueType_String, Unit_None, 0));
    EXPECT_EQ(noteOn(coord),
              QStringLiteral("The parameter \"extra\" is a text, which coordinate-system documents "
                             "do not carry: PROJ is given mode=0."));
}

TEST(SystemNotes, AThreeParameterShiftThatReadsZInTheUnitOfY)
{
    Coord coord = plainSystem();
    coord.ellipsoidTransform.z_translate.unit = Unit_MilliMeter;
    for (const auto function :
         {EllipsoinTransformFunction_None, EllipsoinTransformFunction_Seven}) {
        coord.ellipsoidTransform.fuction = function;
        EXPECT_EQ(location::notesOn(coord), QStringList());
    }
    coord.ellipsoidTransform.fuction = EllipsoinTransformFunction_Three;
    EXPECT_EQ(noteOn(coord), QStringLiteral("The z translation is stored in milli meter, but a "
                                            "three-parameter shift reads it in the unit of y, "
                                            "meter."));
    coord.ellipsoidTransform.y_translate.unit = Unit_MilliMeter;
    EXPECT_EQ(location::notesOn(coord), QStringList());
}

TEST(SystemNotes, AnAxisThatIsNotStoredInMetres)
{
    Coord coord = plainSystem();
    coord.ellipsoid.biggerHalfAxle.unit = Unit_USFoot;
    EXPECT_EQ(location::notesOn(coord), QStringList()) << "the name is used, the number is not";
    coord.ellipsoid.proj4EllpsName.clear();
    EXPECT_THAT(noteOn(coord).toStdString(),
                testing::HasSubstr("The semi-major axis is stored in US Foot"));
}

TEST(SystemNotes, ASystemInAnotherUnitIsComputedInMetres)
{
    Coord coord = plainSystem();
    coord.projection.loc_or_height_unit = Unit_USFoot;
    EXPECT_EQ(noteOn(coord), QStringLiteral("The system's own unit is US Foot; its positions are "
                                            "computed in metres."));
    coord.projection.loc_or_height_unit = Unit_Yard;
    EXPECT_THAT(noteOn(coord).toStdString(), testing::HasSubstr("a unit without a name"));
}

TEST(SystemNotes, AxesThatPointElsewhere)
{
    struct Row
    {
        EEllipsoidDirection direction;
        const char *words;
    };
    const Row rows[] = {{EllipsoidDirection_WSU, "west and south"},
                        {EllipsoidDirection_ESU, "east and south"},
                        {EllipsoidDirection_WNU, "west and north"}};
    for (const Row &row : rows) {
        Coord coord = plainSystem();
        coord.ellipsoid.positiveDir = row.direction;
        EXPECT_EQ(location::unusualAxes(coord.ellipsoid), QString::fromLatin1(row.words));
        EXPECT_THAT(noteOn(coord).toStdString(), testing::HasSubstr(row.words));
    }
}

TEST(SystemNotes, WhatIsNotAppliedToTheFrames)
{
    Coord coord = plainSystem();
    coord.planeTransform.fuction = PlaneTransformFunction_Four;
    coord.elevationFitting.function = ElevationFittingFunction_Curve;
    const QStringList notes = location::notesOn(coord);
    ASSERT_EQ(notes.size(), 2);
    EXPECT_THAT(notes.at(0).toStdString(),
                testing::HasSubstr("planar transformation is not applied"));
    EXPECT_THAT(notes.at(1).toStdString(), testing::HasSubstr("height fitting is not applied"));
}

} // namespace
} // namespace KelStd
