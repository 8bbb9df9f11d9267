// Every sign of angles is known to whatever looks at a field.

#include "support/Printers.h"

#include <KelStd/positions/Headings.h>
#include <KelStd/positions/LineDoubts.h>
#include <KelStd/positions/OrderSearch.h>
#include <KelStd/text/AngleSigns.h>

#include <gtest/gtest.h>

namespace KelStd {
namespace {

TEST(AngleFields, AreValuesWithEverySign)
{
    for (const QChar sign : angleSigns()) {
        EXPECT_TRUE(positions::isValue(QStringLiteral("52%1").arg(sign))) << sign.unicode();
        EXPECT_TRUE(positions::isValue(QStringLiteral("N52%1").arg(sign) + QLatin1String("30.5")));
    }
    EXPECT_FALSE(positions::isValue(QStringLiteral("52m")));
    EXPECT_FALSE(positions::isValue(QStringLiteral("lat")));
}

/// "52° 30": one angle, or a longitude and a latitude.
TEST(AngleFields, MayGoOnBehindEverySignOfDegreesAndMinutes)
{
    for (const AngleSignRow &row : angleSignRows) {
        positions::SplitLine line;
        line.fields = QStringList{QStringLiteral("52%1").arg(QChar(row.character)),
                                  QStringLiteral("30"), QStringLiteral("5")};
        line.isQuoted = {false, false, false};
        line.byBlanks = true;
        const bool goesOn = row.sign == AngleSign::Degree || row.sign == AngleSign::Minute;
        EXPECT_EQ(
            !positions::tornAngle(line, positions::plainOrder(3), positions::Frame::Wgs84Geographic)
                 .isEmpty(),
            goesOn)
            << line.fields.first();
    }
}

/// "5° 30 52.5 100": the longitude 30 of the point "5°", or the longitude 5°30'.
TEST(AngleFields, InTheColumnOfNamesMayBePiecesWithEverySignOfDegrees)
{
    for (const QChar sign : angleSigns(AngleSign::Degree)) {
        positions::SplitLine line;
        line.fields = QStringList{QStringLiteral("5%1").arg(sign), QStringLiteral("30"),
                                  QStringLiteral("52.5"), QStringLiteral("100")};
        line.isQuoted = {false, false, false, false};
        line.byBlanks = true;
        EXPECT_NE(
            positions::tornAngle(line, positions::plainOrder(4), positions::Frame::Wgs84Geographic),
            QString())
            << line.fields.first();
        line.fields[0] = QStringLiteral("P5");
        EXPECT_EQ(
            positions::tornAngle(line, positions::plainOrder(4), positions::Frame::Wgs84Geographic),
            QString());
    }
}

TEST(AngleFields, HeadingsHaveEverySignOfMinutesAndSecondsForAUnit)
{
    for (const AngleSignRow &row : angleSignRows) {
        const positions::Heading heading =
            positions::headingOf(QStringLiteral("h [%1]").arg(QChar(row.character)));
        const bool isPart = row.sign == AngleSign::Minute || row.sign == AngleSign::Second;
        EXPECT_EQ(heading.unit != nullptr && heading.unit->isPartOfDegree, isPart) << heading.text;
    }
}

} // namespace
} // namespace KelStd
