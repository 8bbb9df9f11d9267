#include "support/Printers.h"

#include <KelStd/text/CoordStringHelper.h>

#include <gtest/gtest.h>

namespace KelStd {
namespace {

using Helper = CoordStringHelper;

TEST(SpecialSymbols, HaveTheirCodePoints)
{
    EXPECT_EQ(Helper::SpecialSymbol_Degree(), QString(QChar(0x00B0)));
    EXPECT_EQ(Helper::SpecialSymbol_Minute(), QString(QChar(0x2032)));
    EXPECT_EQ(Helper::SpecialSymbol_Second(), QString(QChar(0x2033)));
    EXPECT_EQ(Helper::SpecialSymbol_Celsius(), QString(QChar(0x00B0)) + QLatin1Char('C'));
    EXPECT_EQ(Helper::SpecialSymbol_Fahrenheit(), QString(QChar(0x00B0)) + QLatin1Char('F'));
}

TEST(SpecialSymbols, MembersHoldThemAfterTheFirstUse)
{
    const QString degree = Helper::SpecialSymbol_Degree();
    const QString minute = Helper::SpecialSymbol_Minute();
    const QString second = Helper::SpecialSymbol_Second();
    const QString celsius = Helper::SpecialSymbol_Celsius();
    const QString fahrenheit = Helper::SpecialSymbol_Fahrenheit();
    EXPECT_EQ(Helper::s_specialSymbol_degree, degree);
    EXPECT_EQ(Helper::s_specialSymbol_Minute, minute);
    EXPECT_EQ(Helper::s_specialSymbol_Second, second);
    EXPECT_EQ(Helper::s_specialSymbol_Celsius, celsius);
    EXPECT_EQ(Helper::s_specialSymbol_Fahrenheit, fahrenheit);
}

TEST(SpecialSymbols, AccessorsReturnCopies)
{
    QString mine = Helper::SpecialSymbol_Degree();
    mine += QStringLiteral("C");
    EXPECT_EQ(Helper::SpecialSymbol_Degree(), QString(QChar(0x00B0)));
    EXPECT_EQ(Helper::SpecialSymbol_Celsius(), mine);
}

TEST(SpecialSymbols, AreTheSymbolsOfTheirUnits)
{
    EXPECT_EQ(Helper::Unit_to_String(Unit_Degree), Helper::SpecialSymbol_Degree());
    EXPECT_EQ(Helper::Unit_to_String(Unit_Second), Helper::SpecialSymbol_Second());
    EXPECT_EQ(Helper::Unit_to_String(Unit_Celsius), Helper::SpecialSymbol_Celsius());
    EXPECT_EQ(Helper::Unit_to_String(Unit_Fahrenheit), Helper::SpecialSymbol_Fahrenheit());
}

} // namespace
} // namespace KelStd
