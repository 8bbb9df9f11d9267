// What static objects of a host may do in their destructors: when `main` has returned, and whether
// they were made before or after the library was first used.

#include "support/TemporaryHome.h"

#include <KelStd/KelStd.h>

#include <QtCore/QDir>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <optional>

namespace {

using namespace KelStd;
using Helper = CoordStringHelper;

int logEntries = 0;

void expect(bool holds, const char *what)
{
    if (holds)
        return;
    std::fprintf(stderr, "does not hold: %s\n", what);
    std::fflush(stderr);
    std::_Exit(EXIT_FAILURE); // the exit status was decided when `main` returned
}

#define EXPECT_HERE(condition) expect(condition, #condition)

QString latin(const char *text)
{
    return QString::fromLatin1(text);
}

void lookUpWords()
{
    EXPECT_HERE(Helper::ForCoordIO_Unit_to_DescriptionAsciiString(Unit_USFoot) == latin("US Foot"));
    EXPECT_HERE(Helper::ForCoordIO_Unit_from_DescriptionAsciiString(latin("US Foot"))
                == Unit_USFoot);
    EXPECT_HERE(Helper::ForCoordIO_ValueType_to_AsciiString(ValueType_TimeSpan)
                == latin("TimeSpan"));
    EXPECT_HERE(Helper::ForCoordIO_ValueType_from_AsciiString(latin("Proj4_Param_Bool"))
                == ValueType_Proj4_Param_Bool);
    EXPECT_HERE(Helper::ForCoordIO_Format_to_AsciiString(Format_GPSW) == latin("GPSW"));
    EXPECT_HERE(Helper::ForCoordIO_Format_from_AsciiString(latin("Degree Minute Second"))
                == Format_DegreeMinuteSecond);
    EXPECT_HERE(Helper::ForCoordIO_ELocationType_from_AsciiString(latin("Lat_Long_EarthHeight"))
                == LocationType_Lat_Long_EarthHeight);
    EXPECT_HERE(
        Helper::ForCoordIO_ELocationZeroType_from_AsciiString(latin("Central_Meridian_Zero"))
        == LocationZeroType_Central_Meridian_Zero);
    EXPECT_HERE(Helper::ForCoordIO_EWhichHalfEarth_from_AsciiString(latin("S"))
                == WhichHalfEarth_South);
    EXPECT_HERE(Helper::ForCoordIO_EEllipsoidDirection_from_AsciiString(latin("WNU"))
                == EllipsoidDirection_WNU);
    EXPECT_HERE(Helper::ForCoordIO_EEllipsoinTransformFunction_from_AsciiString(latin("Seven"))
                == EllipsoinTransformFunction_Seven);
    EXPECT_HERE(Helper::ForCoordIO_EEllipsoinTransition_from_AsciiString(latin("BLH"))
                == EllipsoinTransition_BLH);
    EXPECT_HERE(Helper::ForCoordIO_EPlaneTransformFunction_from_AsciiString(latin("Four"))
                == PlaneTransformFunction_Four);
    EXPECT_HERE(Helper::ForCoordIO_EElevationFittingFunction_from_AsciiString(latin("Curve"))
                == ElevationFittingFunction_Curve);
    EXPECT_HERE(Helper::ForCoordIO_Unit_from_DescriptionAsciiString(latin("Cubit")) == Unit_None);
    EXPECT_HERE(Helper::Unit_to_DescriptionString(Unit_InHg) == latin("inch Hg"));
    EXPECT_HERE(Helper::Unit_to_String(Unit_Second) == QString(QChar(0x2033)));
}

/// No document: Qt's codecs and patterns are gone.
void printAndParse()
{
    EXPECT_HERE(Helper::GetFormatString(ValueType_Angle, 30.5, Unit_Degree, Unit_Degree,
                                        Format_Degree, 1, false)
                == latin("30.5") + QChar(0x00B0));
    EXPECT_HERE(TimeGpsW(2300, 345600).toString() == latin("2300week 345600sec"));
    // As the display configuration has it, when the registry is gone.
    EXPECT_HERE(Helper::GetFormatString(ValueType_Distance, 1.5, Unit_Meter) == latin("1.5"));
    QVariant value;
    EXPECT_HERE(Helper::GetValueFromString(
        ValueType_Angle, Unit_Degree, latin("30") + QChar(0x00B0) + latin("15") + QChar(0x2032),
        value));
    EXPECT_HERE(value.toDouble() == 30.25);
}

/// Asks for the host's places and logs; PROJ is not loaded.
void failToConvert()
{
    const int before = logEntries;
    Coord coord;
    Location location;
    QString error;
    EXPECT_HERE(!Coord::MakeLocation_byWGS84LatLongH(Pos::fromLongLatH(5.0, 52.0, 0.0), location,
                                                     nullptr, &coord, &error));
    EXPECT_HERE(error == latin("No proj library."));
    EXPECT_HERE(logEntries > before);
    EXPECT_HERE(!AppConfig::getInstance().homeDir().path().isEmpty());
}

void useEverything()
{
    lookUpWords();
    printAndParse();
    failToConvert();
}

/// A static object of the host.
class LastWords
{
public:
    ~LastWords()
    {
        if (m_speak != nullptr)
            m_speak();
    }

    void speakAtTheEnd(void (*speak)() = &useEverything) { m_speak = speak; }

private:
    void (*m_speak)() = nullptr;
};

std::unique_ptr<LocationBuilder> heldBuilder;
LastWords madeFirst;

void convertWith(LocationBuilder &builder)
{
    Location location;
    EXPECT_HERE(builder.make(LocationBuilder::Frame::Wgs84Geographic,
                             Pos::fromLongLatH(5.387638889, 52.155172897, 43.0), location));
    // The origin of the Dutch grid, whose false northing is 463 km.
    EXPECT_HERE(std::abs(location.localNEH.getENU().n - 463000.0) < 200.0);
}

void holdABuilder()
{
    Coord coord;
    EXPECT_HERE(Coord_IO::xml_read(latin(KELSTD_TEST_DATA_DIR "/systems/rd_new.xml"), coord));
    EXPECT_HERE(ProjLib::___InitializeEnviroment());
    heldBuilder = std::make_unique<LocationBuilder>(coord);
    convertWith(*heldBuilder);
}

/// PROJ is loaded still, but its own static objects are gone, which were made later.
void useItWithoutProj()
{
    useEverything();
    LocationBuilder builder{Coord()};
    Location location;
    EXPECT_HERE(!builder.make(LocationBuilder::Frame::Wgs84Geographic, Pos(), location));
    double diff = 0.0;
    QString error;
    EXPECT_HERE(!ProjLib::Calc_geoid_diff(52.0, 5.0, 0.0, latin("/a.gtx"), diff, &error));
    EXPECT_HERE(error == latin("No proj library."));
    EXPECT_HERE(!ProjLib::___InitializeEnviroment());
    EXPECT_HERE(ProjLib::initializationFailure().kind
                == InitializationFailureKind::LibraryNotLoadable);
    convertWith(*heldBuilder); // has its transformations
    ProjLib::___unloadEnviroment();
}

bool isCalled(const char *name, const char *wanted)
{
    return std::strcmp(name, wanted) == 0;
}

} // namespace

int main(int argc, char **argv)
{
    const char *const name = argc == 2 ? argv[1] : "";
    const test::TemporaryHome home(test::TemporaryHome::PreparedProj);
    LogLibrary::setSink([](const QString &, const QString &, ELogType, bool) { ++logEntries; });
    if (isCalled(name, "MadeBeforeTheFirstUse")) {
        madeFirst.speakAtTheEnd();
        useEverything();
    } else if (isCalled(name, "MadeAfterTheFirstUse")) {
        useEverything();
        static LastWords madeLast;
        madeLast.speakAtTheEnd();
    } else if (isCalled(name, "UsedOnlyThen")) {
        madeFirst.speakAtTheEnd();
    } else if (isCalled(name, "HoldsABuilder")) {
        holdABuilder();
    } else if (isCalled(name, "UnloadsProj")) {
        madeFirst.speakAtTheEnd(&ProjLib::___unloadEnviroment);
        holdABuilder();
    } else if (isCalled(name, "UsesItBehindProj")) {
        madeFirst.speakAtTheEnd(&useItWithoutProj);
        holdABuilder();
    } else {
        std::fprintf(stderr, "no test is called \"%s\"\n", name);
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
