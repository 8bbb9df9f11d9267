// What a spreadsheet opens by a double click, and what comes back from it.

#include "cli/ProgramRun.h"
#include "support/Printers.h"

#include <ostream>

namespace KelStd {
namespace {

using test::Mentions;
using test::ProgramRun;

const QString system = QStringLiteral("rd_new.xml");

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

test::ProgramResult convertIn(const char *locale, const QByteArray &input,
                              const QStringList &options)
{
    ProgramRun program;
    for (const char *variable : {"LC_ALL", "LC_NUMERIC", "LANG"})
        program.setVariable(text(variable), text(locale));
    return program.convert(system, input, options);
}

const QStringList fields{QStringLiteral("--excel"),
                         QStringLiteral("--fields=point,wgs84_longitude,wgs84_height")};

TEST(ConvertExcel, FollowsTheLocale)
{
    const QByteArray point = "00123,5.25,52.5,-1.5\n";
    EXPECT_EQ(convertIn("de_DE.UTF-8", point, fields).out,
              text("\uFEFFpoint;wgs84_longitude_deg;wgs84_height_m\r\n"
                   "\"=\"\"00123\"\"\";5,25000000000;-1,50000\r\n"));
    EXPECT_EQ(convertIn("en_US.UTF-8", point, fields).out,
              text("\uFEFFpoint,wgs84_longitude_deg,wgs84_height_m\r\n"
                   "\"=\"\"00123\"\"\",5.25000000000,-1.50000\r\n"));
    EXPECT_EQ(convertIn("C", point, fields + QStringList{text("--no-header")}).out,
              text("\uFEFF\"=\"\"00123\"\"\",5.25000000000,-1.50000\r\n"));
}

TEST(ConvertExcel, IsReadBack)
{
    const QByteArray input = "id,lon,lat,h,code\n"
                             "00123,5.25,52.5,-1.5,=1+1\n"
                             "1E5,5.5,52.25,2,3/4\n"
                             "P1,5.75,52,3,\"a;b, \"\"c\"\"\"\n"
                             "-5,5.125,52.125,4,12.50\n"
                             "@x,5.0,52.0,5,M\xC3\xBChle\n";
    const QStringList columns{text("--columns=point,wgs84_longitude_deg,wgs84_latitude_deg,"
                                   "wgs84_height_m"),
                              text("--fields=point,wgs84_longitude,wgs84_latitude,wgs84_height,"
                                   "code")};
    const QStringList first{text("--columns=id,lon,lat,h"), columns.at(1)};
    const auto plain = ProgramRun().convert(system, input, first);
    ASSERT_EQ(plain.status, 0) << plain.err;
    for (const char *locale : {"de_DE.UTF-8", "tr_TR.UTF-8", "en_GB.UTF-8", "de_CH.UTF-8"}) {
        const auto sheet = convertIn(locale, input, first + QStringList{text("--excel")});
        ASSERT_EQ(sheet.status, 0) << sheet.err;
        const auto back = ProgramRun().convert(system, sheet.out.toUtf8(), columns);
        EXPECT_EQ(back.status, 0) << locale << ' ' << back.err;
        EXPECT_EQ(back.out, plain.out) << locale;
    }
}

struct SheetRow
{
    const char *locale;
    const char *style;
};

void PrintTo(const SheetRow &row, std::ostream *out)
{
    *out << row.locale << ' ' << row.style;
}

class AnglesOfSheets : public testing::TestWithParam<SheetRow>
{};

// Signs of degrees with a decimal point beside a height with a comma would be in doubt.
TEST_P(AnglesOfSheets, AreReadBack)
{
    const QByteArray input = "P1,-5.25,52.125,43.75\n";
    const QStringList angle{text("--excel"), text("--angle"), text(GetParam().style)};
    const auto sheet = convertIn(GetParam().locale, input, angle);
    ASSERT_EQ(sheet.status, 0) << sheet.err;
    for (const char *frame : {"wgs84-llh", "local-llh", "local-neh", "wgs84-xyz"}) {
        SCOPED_TRACE(frame);
        const auto back = ProgramRun().convert(
            system, sheet.out.toUtf8(),
            {text("--from"), text(frame),
             text("--fields=point,wgs84_longitude,wgs84_latitude,wgs84_height")});
        ASSERT_EQ(back.status, 0) << back.err;
        const auto row = test::csvRows(back.out).value(0);
        EXPECT_NEAR(test::numberIn(row, text("wgs84_longitude_deg")), -5.25, 1e-8);
        EXPECT_NEAR(test::numberIn(row, text("wgs84_latitude_deg")), 52.125, 1e-8);
        EXPECT_NEAR(test::numberIn(row, text("wgs84_height_m")), 43.75, 1e-3);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Locales, AnglesOfSheets,
    testing::Values(SheetRow{"de_DE.UTF-8", "dms"}, SheetRow{"de_DE.UTF-8", "degree"},
                    SheetRow{"de_DE.UTF-8", "second"}, SheetRow{"de_DE.UTF-8", "radian"},
                    SheetRow{"tr_TR.UTF-8", "dms"}, SheetRow{"de_CH.UTF-8", "dms"},
                    SheetRow{"en_US.UTF-8", "dms"}));

TEST(ConvertExcel, ExcludesOtherForms)
{
    const auto result = ProgramRun().convert(system, "1,2,3\n", {text("--excel"), text("--csv")});
    EXPECT_EQ(result.status, 2);
    EXPECT_THAT(result.err, Mentions("--csv and --excel exclude each other"));
}

} // namespace
} // namespace KelStd
