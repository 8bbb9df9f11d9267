// What Qt's lupdate finds for the translators of an application: every fixed text of the library,
// in the context that the library asks for.

#include "house/SourceFiles.h"
#include "support/Printers.h"

#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>
#include <QtCore/QXmlStreamReader>

#include <gtest/gtest.h>

namespace KelStd {
namespace {

struct Extracted
{
    QStringList contexts;
    QStringList texts; ///< in alphabetical order
};

Extracted extractedFrom(const QStringList &folders)
{
    const QTemporaryDir directory;
    const QString catalogue = directory.filePath(QStringLiteral("texts.ts"));
    QProcess lupdate;
    lupdate.setWorkingDirectory(QStringLiteral(KELSTD_TEST_SOURCE_DIR));
    lupdate.start(QStringLiteral(KELSTD_LUPDATE),
                  folders + QStringList{QStringLiteral("-ts"), catalogue});
    EXPECT_TRUE(lupdate.waitForFinished(60000));
    EXPECT_EQ(lupdate.exitCode(), 0) << lupdate.readAllStandardError().constData();

    QFile file(catalogue);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    QXmlStreamReader reader(&file);
    Extracted extracted;
    while (!reader.atEnd()) {
        reader.readNext();
        if (!reader.isStartElement())
            continue;
        if (reader.name() == QLatin1String("name"))
            extracted.contexts += reader.readElementText();
        else if (reader.name() == QLatin1String("source"))
            extracted.texts += reader.readElementText();
    }
    EXPECT_FALSE(reader.hasError()) << reader.errorString();
    extracted.texts.sort();
    return extracted;
}

QStringList sorted(const QList<const char *> &texts)
{
    QStringList list;
    for (const char *text : texts)
        list += QString::fromLatin1(text);
    list.sort();
    return list;
}

/// Symbols and descriptions of units, descriptions of the other enumerations, flags, and the words
/// of intervals and GPS weeks ("mSec" is for the translators alone).
QStringList textsOfValues()
{
    return sorted({// symbols of units
                   "m", "mm", "ft", "U.S ft", "bar", "par", "mbar", "mmHg", "inHg", "K",
                   // units; the bar is described by its symbol
                   "meter", "milli meter", "Foot", "US Foot", "Pascal", "milli bar", "mm Hg",
                   "inch Hg", "Celsius", "Fahrenheit", "Kelvin", "Degree", "Second",
                   // kinds of values
                   "None", "String", "Int32", "Int64", "Double", "Boolean", "Distance", "Height",
                   "Angle", "Pressure", "Temprature", "Longitude", "Latitude", "EarthHeight", "X",
                   "Y", "ElevationHeight", "LocationZeroType", "WhichHalfEarth",
                   "EllipsoidDirection", "Proj4_Param_Bool",
                   // styles; degree and second stand above
                   "North East Height", "East North Height", "Degree Minute Second", "Radian",
                   "UTC", "Local", "GPST", "GPSW",
                   // the other enumerations; none stands above
                   "X_Y_ElevationHeight", "Lat_Long_EarthHeight", "Equator_Zero",
                   "Central_Meridian_Zero", "N", "S", "ENU", "WSU", "ESU", "WNU", "Three", "Seven",
                   "XYZ", "BLH", "Four", "Fixed", "Plane", "Curve",
                   // flags
                   "true", "false", "Yes", "No",
                   // times
                   "day", "hour", "minute", "sec", "mSec", "week"});
}

QStringList messages()
{
    return sorted({"No proj library.", "Find proj library failed, can not do any point convert.",
                   "Convert point by proj library failed, create project failed", "From", "To",
                   "Error format.", "Geoid model file is empty.", "Create proj geoid model failed.",
                   "Calc geoid failed", "Format error, element", "not found"});
}

TEST(ExtractedTexts, AreThoseOfUnitsEnumerationsFlagsAndTimes)
{
    const QStringList expected = textsOfValues();
    ASSERT_EQ(expected.size(), 80);
    const Extracted extracted =
        extractedFrom({QStringLiteral("KelStd/text"), QStringLiteral("KelStd/display"),
                       QStringLiteral("KelStd/time")});
    EXPECT_EQ(extracted.texts, expected);
    EXPECT_EQ(extracted.contexts, QStringList{QStringLiteral("QObject")});
}

TEST(ExtractedTexts, OfTheWholeLibraryHaveTheMessagesToo)
{
    const Extracted extracted = extractedFrom({QStringLiteral("KelStd")});
    const QStringList expected = textsOfValues() + messages();
    ASSERT_EQ(expected.size(), 91);
    for (const QString &text : expected)
        EXPECT_TRUE(extracted.texts.contains(text)) << text;
    EXPECT_EQ(extracted.contexts, QStringList{QStringLiteral("QObject")});
}

} // namespace
} // namespace KelStd
