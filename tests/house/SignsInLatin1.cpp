// The signs of angles and temperatures, compiled with Latin-1 as the character set of plain
// literals: a "\u00B0" there is one byte, which is no UTF-8.

#include <KelStd/text/CoordStringHelper.h>

#include <cstdio>
#include <cstdlib>

static_assert(sizeof "\u00B0" == 2, "this is about a compiler with another character set");

int main()
{
    using Helper = KelStd::CoordStringHelper;
    struct Row
    {
        QString shown;
        QString expected;
    };
    const QChar degree(0x00B0);
    const Row rows[] = {
        {Helper::SpecialSymbol_Degree(), QString(degree)},
        {Helper::SpecialSymbol_Minute(), QString(QChar(0x2032))},
        {Helper::SpecialSymbol_Second(), QString(QChar(0x2033))},
        {Helper::SpecialSymbol_Celsius(), QString(degree) + QLatin1Char('C')},
        {Helper::SpecialSymbol_Fahrenheit(), QString(degree) + QLatin1Char('F')},
    };
    for (const Row &row : rows) {
        if (row.shown == row.expected)
            continue;
        std::printf("%s instead of %s\n", qUtf8Printable(row.shown), qUtf8Printable(row.expected));
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
