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
    EXPECT_EQ(angleSigns(),
              QString::fromUtf16(u"\u00B0\u00BA\u02DAdD\u2032'\u2019\u2033\"\u201D:"));
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
    struct Row
    {
        const char16_t *text;
        double degrees;
        bool hasSigns; ///< other than the letter d
    };
    const Row rows[] = {
        {u"6\u00B0", 6.0, true},
        {u"6\u00BA", 6.0, true},
        {u"6\u02DA", 6.0, true},
        {u"6d", 6.0, false},
        {u"6D", 6.0, false},
        {u"5d6\u2032", 5.1, true},
        {u"5d6'", 5.1, true},
        {u"5d6\u2019", 5.1, true},
        {u"5d0'6\u2033", 5.0016666666666667, true},
        {u"5d0'6\"", 5.0016666666666667, true},
        {u"5d0'6\u201D", 5.0016666666666667, true},
        {u"5:6", 5.1, true},
    };
    for (const Row &row : rows) {
        const QString text = QString::fromUtf16(row.text);
        TypedValueFailure failure;
        EXPECT_EQ(readTypedAngle(text, AngleSense::Plain, DecimalMark::Point, failure), row.degrees)
            << text << failure.text;
        EXPECT_EQ(hasAngleSigns(text), row.hasSigns) << text;
    }
}

} // namespace
} // namespace KelStd
