// Every sign of angles is known to whatever looks at a field.

#include "support/Printers.h"

#include <cli/positions/Headings.h>
#include <cli/positions/LineDoubts.h>
#include <cli/positions/OrderSearch.h>

#include <KelStd/text/AngleSigns.h>

#include <gtest/gtest.h>

namespace KelStd {
namespace {

TEST(AngleFields, AreValuesWithEverySign)
{
    for (const QChar sign : angleSigns()) {
        EXPECT_TRUE(cli::isValue(QStringLiteral("52%1").arg(sign))) << sign.unicode();
        EXPECT_TRUE(cli::isValue(QStringLiteral("N52%1").arg(sign) + QLatin1String("30.5")));
    }
    EXPECT_FALSE(cli::isValue(QStringLiteral("52m")));
    EXPECT_FALSE(cli::isValue(QStringLiteral("lat")));
}

/// "52° 30": one angle, or a longitude and a latitude.
TEST(AngleFields, MayGoOnBehindEverySignOfDegreesAndMinutes)
{
    for (const AngleSignRow &row : angleSignRows) {
        cli::SplitLine line;
        line.fields = QStringList{QStringLiteral("52%1").arg(QChar(row.character)),
                                  QStringLiteral("30"), QStringLiteral("5")};
        line.isQuoted = {false, false, false};
        line.byBlanks = true;
        const bool goesOn = row.sign == AngleSign::Degree || row.sign == AngleSign::Minute;
        EXPECT_EQ(!cli::tornAngle(line, cli::plainOrder(3), cli::Frame::Wgs84LLH).isEmpty(), goesOn)
            << line.fields.first();
    }
}

/// "5° 30 52.5 100": the longitude 30 of the point "5°", or the longitude 5°30'.
TEST(AngleFields, InTheColumnOfNamesMayBePiecesWithEverySignOfDegrees)
{
    for (const QChar sign : angleSigns(AngleSign::Degree)) {
        cli::SplitLine line;
        line.fields = QStringList{QStringLiteral("5%1").arg(sign), QStringLiteral("30"),
                                  QStringLiteral("52.5"), QStringLiteral("100")};
        line.isQuoted = {false, false, false, false};
        line.byBlanks = true;
        EXPECT_NE(cli::tornAngle(line, cli::plainOrder(4), cli::Frame::Wgs84LLH), QString())
            << line.fields.first();
        line.fields[0] = QStringLiteral("P5");
        EXPECT_EQ(cli::tornAngle(line, cli::plainOrder(4), cli::Frame::Wgs84LLH), QString());
    }
}

TEST(AngleFields, HeadingsHaveEverySignOfMinutesAndSecondsForAUnit)
{
    for (const AngleSignRow &row : angleSignRows) {
        const cli::Heading heading =
            cli::headingOf(QStringLiteral("h [%1]").arg(QChar(row.character)));
        const bool isPart = row.sign == AngleSign::Minute || row.sign == AngleSign::Second;
        EXPECT_EQ(heading.unit != nullptr && heading.unit->isPartOfDegree, isPart) << heading.text;
    }
}

} // namespace
} // namespace KelStd
