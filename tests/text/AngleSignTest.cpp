#include <KelStd/text/AngleSigns.h>

#include "support/Printers.h"

#include <KelStd/text/CoordStringHelper.h>
#include <KelStd/text/TypedAngle.h>

#include <QtCore/QRegularExpression>

#include <gtest/gtest.h>

namespace KelStd {
namespace {

TEST(AngleSigns, PrintedAreTheSymbolsOfTheHelper)
{
    const auto printed = [](AngleSign sign) { return QString(QChar(printedAngleSign(sign))); };
    EXPECT_EQ(printed(AngleSign::Degree), CoordStringHelper::SpecialSymbol_Degree());
    EXPECT_EQ(printed(AngleSign::Minute), CoordStringHelper::SpecialSymbol_Minute());
    EXPECT_EQ(printed(AngleSign::Second), CoordStringHelper::SpecialSymbol_Second());
    EXPECT_EQ(printedAngleSign(AngleSign::None), u'\0');
}

TEST(AngleSigns, HaveOneKindEach)
{
    EXPECT_EQ(angleSigns(AngleSign::Degree), QStringLiteral("\u00B0\u00BA\u02DAdD"));
    EXPECT_EQ(angleSigns(AngleSign::Minute), QStringLiteral("\u2032'\u2019"));
    EXPECT_EQ(angleSigns(AngleSign::Second), QStringLiteral("\u2033\"\u201D"));
    EXPECT_EQ(angleSigns(AngleSign::Colon), QStringLiteral(":"));
    EXPECT_EQ(angleSigns(AngleSign::None), QString());
    for (const QChar c : angleSigns())
        EXPECT_EQ(angleSigns().count(c), 1) << c.unicode();
    EXPECT_EQ(angleSignOf(u'm'), AngleSign::None);
    EXPECT_EQ(angleSignOf(u'\''), AngleSign::Minute);
}

TEST(AngleSigns, HaveNoMeaningInAPattern)
{
    const QRegularExpression pattern(QStringLiteral("\\A[%1]*\\z").arg(angleSigns()));
    ASSERT_TRUE(pattern.isValid());
    EXPECT_TRUE(pattern.match(angleSigns()).hasMatch());
    for (const char *other : {"-", "^", "]", "\\", "5", "e", " "})
        EXPECT_FALSE(pattern.match(QString::fromLatin1(other)).hasMatch()) << other;
}

TEST(AngleSigns, AreAllReadInAnAngle)
{
    for (const AngleSignRow &row : angleSignRows) {
        const QChar c(row.character);
        // 6 deg, 5 deg 6', 5 deg 0' 6"
        const QString text = row.sign == AngleSign::Degree   ? QStringLiteral("6%1").arg(c)
                             : row.sign == AngleSign::Minute ? QStringLiteral("5d6%1").arg(c)
                             : row.sign == AngleSign::Second
                                 ? QStringLiteral("5d0'6%1").arg(c)
                                 : QStringLiteral("5%1").arg(c) + QLatin1Char('6');
        const double expected = row.sign == AngleSign::Degree   ? 6.0
                                : row.sign == AngleSign::Second ? 5.0016666666666667
                                                                : 5.1;
        QString reason;
        EXPECT_EQ(readTypedAngle(text, AngleSense::Plain, DecimalMark::Point, reason), expected)
            << text << reason;
        EXPECT_EQ(hasAngleSigns(text), text != QLatin1String("6d") && text != QLatin1String("6D"));
    }
}

} // namespace
} // namespace KelStd
