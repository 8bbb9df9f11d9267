// Every sign of angles is known to whatever looks at a field.

#include "support/Printers.h"

#include <KelStd/positions/Headings.h>
#include <KelStd/positions/LineDoubts.h>
#include <KelStd/positions/LineShape.h>
#include <KelStd/positions/PositionHeader.h>
#include <KelStd/text/AngleSigns.h>

#include <gtest/gtest.h>

#include <iterator>

namespace KelStd {
namespace {

enum class Sign
{
    Degree,
    Minute,
    Second,
    Colon
};

/// The signs that the page on values promises, written out: another list than that of the library.
struct Row
{
    char16_t character;
    Sign sign;
};

constexpr Row rows[] = {
    {u'\u00B0', Sign::Degree}, // degree sign
    {u'\u00BA', Sign::Degree}, // masculine ordinal indicator
    {u'\u02DA', Sign::Degree}, // ring above
    {u'd', Sign::Degree},      //
    {u'D', Sign::Degree},      //
    {u'\u2032', Sign::Minute}, // prime
    {u'\'', Sign::Minute},     //
    {u'\u2019', Sign::Minute}, // right single quotation mark
    {u'\u2033', Sign::Second}, // double prime
    {u'"', Sign::Second},      //
    {u'\u201D', Sign::Second}, // right double quotation mark
    {u':', Sign::Colon},
};

positions::SplitLine splitByBlanks(const QStringList &fields)
{
    positions::SplitLine line;
    line.fields = fields;
    for (int i = 0; i < fields.size(); ++i)
        line.isQuoted += false;
    line.byBlanks = true;
    return line;
}

bool isTorn(const QStringList &fields)
{
    return !positions::tornAngle(splitByBlanks(fields), positions::plainOrder(fields.size()),
                                 positions::Frame::Wgs84Geographic)
                .isEmpty();
}

TEST(AngleFields, HaveARowHereForEverySign)
{
    EXPECT_EQ(std::size(angleSignRows), std::size(rows));
}

TEST(AngleFields, AreValuesWithEverySign)
{
    for (const Row &row : rows) {
        const QChar sign(row.character);
        EXPECT_TRUE(positions::isValue(QStringLiteral("52%1").arg(sign))) << sign.unicode();
        EXPECT_TRUE(positions::isValue(QStringLiteral("N52%1").arg(sign) + QLatin1String("30.5")));
    }
    EXPECT_FALSE(positions::isValue(QStringLiteral("52m")));
    EXPECT_FALSE(positions::isValue(QStringLiteral("lat")));
}

/// "52° 30": one angle, or a longitude and a latitude.
TEST(AngleFields, MayGoOnBehindEverySignOfDegreesAndMinutes)
{
    for (const Row &row : rows) {
        const QString angle = QStringLiteral("52%1").arg(QChar(row.character));
        EXPECT_EQ(isTorn({angle, QStringLiteral("30"), QStringLiteral("5")}),
                  row.sign == Sign::Degree || row.sign == Sign::Minute)
            << angle;
    }
}

/// "5° 30 52.5 100": the longitude 30 of the point "5°", or the longitude 5°30'.
TEST(AngleFields, InTheColumnOfNamesMayBePiecesWithEverySignOfDegrees)
{
    const QStringList position = {QStringLiteral("30"), QStringLiteral("52.5"),
                                  QStringLiteral("100")};
    for (const Row &row : rows) {
        if (row.sign != Sign::Degree)
            continue;
        const QString name = QStringLiteral("5%1").arg(QChar(row.character));
        EXPECT_TRUE(isTorn(QStringList(name) + position)) << name;
    }
    EXPECT_FALSE(isTorn(QStringList(QStringLiteral("P5")) + position));
}

TEST(AngleFields, HeadingsHaveEverySignOfMinutesAndSecondsForAUnit)
{
    for (const Row &row : rows) {
        const positions::Heading heading =
            positions::headingOf(QStringLiteral("h [%1]").arg(QChar(row.character)));
        EXPECT_EQ(heading.unit != nullptr && heading.unit->isPartOfDegree,
                  row.sign == Sign::Minute || row.sign == Sign::Second)
            << heading.text;
    }
}

} // namespace
} // namespace KelStd
