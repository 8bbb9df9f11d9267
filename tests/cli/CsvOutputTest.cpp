#include "cli/ProgramRun.h"
#include "support/Printers.h"

#include <QtCore/QRegularExpression>

namespace KelStd {
namespace {

using test::Mentions;
using test::ProgramRun;

const QString system = QStringLiteral("rd_new.xml");
const QByteArray twoPoints = "A,5.25,52.5,-4.125\n\"B, b\",-170.5,-12.5,100\n";

TEST(CsvOutput, TheHeaderNamesEveryColumnWithItsUnit)
{
    const auto result = ProgramRun().convert(system, {});
    EXPECT_EQ(result.outLines().value(0),
              QStringLiteral("point,wgs84_longitude_deg,wgs84_latitude_deg,wgs84_height_m,"
                             "wgs84_x_m,wgs84_y_m,wgs84_z_m,local_longitude_deg,"
                             "local_latitude_deg,local_ellipsoidal_height_m,local_northing_m,"
                             "local_easting_m,local_height_m,local_height_reference"));
}

TEST(CsvOutput, DegreesHaveElevenDecimalsAndMetresFive)
{
    const auto result = ProgramRun().convert(system, twoPoints);
    ASSERT_EQ(result.status, 0) << result.err;
    const QString degrees = QStringLiteral("-?[0-9]+\\.[0-9]{11}");
    const QString metres = QStringLiteral("-?[0-9]+\\.[0-9]{5}");
    const QRegularExpression line(
        QStringLiteral("\\A(A|\"B, b\")(,%1){2},%2(,%2){3}(,%1){2},%2(,%2){3},ellipsoid\\z")
            .arg(degrees, metres));
    ASSERT_EQ(result.outLines().size(), 3);
    EXPECT_TRUE(line.match(result.outLines().at(1)).hasMatch()) << result.outLines().at(1);
    EXPECT_TRUE(line.match(result.outLines().at(2)).hasMatch()) << result.outLines().at(2);
}

TEST(CsvOutput, IsTheDefaultIntoAPipeAndTheSameAsWithTheOption)
{
    const ProgramRun program;
    const auto result = program.convert(system, twoPoints);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(program.convert(system, twoPoints, {QStringLiteral("--csv")}).out, result.out);
}

TEST(CsvOutput, HasLineFeedsOnlyAndEndsWithOne)
{
    const auto result = ProgramRun().convert(system, twoPoints);
    EXPECT_FALSE(result.out.contains(QLatin1Char('\r')));
    EXPECT_TRUE(result.out.endsWith(QLatin1Char('\n')));
}

TEST(CsvOutput, IsByteIdenticalInEveryLocale)
{
    ProgramRun program;
    const auto plain = program.convert(system, twoPoints + "\xC3\xA9,5.25,52.5,1\n");
    ASSERT_EQ(plain.status, 0) << plain.err;
    for (const char *locale : {"C", "POSIX", "C.UTF-8", "de_DE.UTF-8", "de_DE", "ar_EG.UTF-8",
                               "fa_IR", "hi_IN.UTF-8", "no such locale"}) {
        SCOPED_TRACE(locale);
        for (const char *variable : {"LC_ALL", "LC_NUMERIC", "LANG"})
            program.setVariable(QString::fromLatin1(variable), QString::fromLatin1(locale));
        const auto result = program.convert(system, twoPoints + "\xC3\xA9,5.25,52.5,1\n");
        EXPECT_EQ(result.status, 0) << result.err;
        EXPECT_EQ(result.out, plain.out);
        // Input numbers do not follow the locale either.
        EXPECT_EQ(program.convert(system, "5,25;52,5;1\n").out,
                  program.convert(system, "5.25;52.5;1\n").out);
        EXPECT_EQ(program.convert(system, "1;5.25;52.500,5;1\n").status, 1);
    }
}

TEST(CsvOutput, TableAndCsvExcludeEachOther)
{
    const auto result = ProgramRun().convert(system, twoPoints,
                                             {QStringLiteral("--table"), QStringLiteral("--csv")});
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.out, QString());
    EXPECT_THAT(result.err, Mentions("--table and --csv exclude each other"));
}

} // namespace
} // namespace KelStd
