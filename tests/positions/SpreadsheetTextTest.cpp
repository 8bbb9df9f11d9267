// What a spreadsheet would make of texts, and how they are kept from it.

#include <KelStd/positions/LineSplitter.h>
#include <KelStd/positions/SpreadsheetText.h>
#include <KelStd/positions/SpreadsheetWriter.h>

#include "support/Printers.h"

#include <gtest/gtest.h>

namespace KelStd {
namespace {

using positions::SpreadsheetDialect;

SpreadsheetDialect dialect(const char *locale)
{
    return SpreadsheetDialect(QLocale(QLatin1String(locale)));
}

struct Dialect
{
    const char *locale;
    char separator;
    char decimalPoint;
};

TEST(SpreadsheetDialects, HaveTheListSeparatorOfTheLocale)
{
    const Dialect dialects[] = {
        {"C", ',', '.'},     {"en_US", ',', '.'}, {"en_GB", ',', '.'}, {"ja_JP", ',', '.'},
        {"de_DE", ';', ','}, {"tr_TR", ';', ','}, {"fr_FR", ';', ','}, {"pl_PL", ';', ','},
        {"de_CH", ';', '.'}, {"de_LI", ';', '.'}, {"nl_NL", ';', ','},
    };
    for (const Dialect &row : dialects) {
        EXPECT_EQ(dialect(row.locale).separator(), row.separator) << row.locale;
        EXPECT_EQ(dialect(row.locale).decimalPoint(), row.decimalPoint) << row.locale;
    }
}

// Each is changed by the opening of a file in a spreadsheet, or computed.
TEST(SpreadsheetDialects, DoNotKeepWhatWouldBecomeAnotherValue)
{
    for (const char *text : {"00123",
                             "1E5",
                             "3/4",
                             "3-4",
                             "1.5",
                             "1,5",
                             "-5",
                             "+49",
                             "=1+1",
                             "@x",
                             "10:30",
                             "5%",
                             "$5",
                             "(5)",
                             "TRUE",
                             "false",
                             "Wahr",
                             "MAR1",
                             "mar 1",
                             "Sept2",
                             "DEC-5",
                             "June 4",
                             "=cmd|' /C calc'!A0",
                             "\"x\"",
                             "'x",
                             "\t=1+1",
                             " 5",
                             "123456789012",
                             "2026-11-23",
                             "#1",
                             ".5",
                             "-",
                             "\xEF\xBC\x9D"
                             "1+1"}) {
        const QString field = QString::fromUtf8(text);
        EXPECT_FALSE(dialect("en_US").keeps(field)) << text;
        EXPECT_FALSE(dialect("en_US").keepsName(field)) << text;
    }
    EXPECT_FALSE(dialect("de_DE").keeps(QStringLiteral("Okt5")));
    EXPECT_FALSE(dialect("de_DE").keeps(QStringLiteral("m\u00E4rz 3")));
    EXPECT_FALSE(dialect("tr_TR").keeps(QStringLiteral("\u015Eub2")));
    EXPECT_FALSE(dialect("ja_JP").keeps(QStringLiteral("H30.1.1")));
    EXPECT_FALSE(dialect("ja_JP").keeps(QStringLiteral("\u5E73\u621030\u5E741\u67081\u65E5")));
    EXPECT_FALSE(dialect("en_US").keeps(QStringLiteral("101"))) << "a carried field is a text";
}

TEST(SpreadsheetDialects, KeepWordsAndTheNamesOfPoints)
{
    for (const char *text : {"", "P1001", "BM 12", "Haus 3", "TP-1.1", "Marker 7", "ellipsoid",
                             "geoid egm96_15", "a+b", "M\xC3\xBChle", "E5", "R1", "H30.1.1"})
        EXPECT_TRUE(dialect("en_US").keeps(QString::fromUtf8(text))) << text;
    for (const char *name : {"0", "101", "12345678901", "P1"})
        EXPECT_TRUE(dialect("de_DE").keepsName(QString::fromUtf8(name))) << name;
}

TEST(SpreadsheetTexts, AreTheValuesOfFormulas)
{
    using positions::asSpreadsheetText;
    EXPECT_EQ(asSpreadsheetText(QStringLiteral("00123")), QStringLiteral("=\"00123\""));
    EXPECT_EQ(asSpreadsheetText(QStringLiteral("=1+1")), QStringLiteral("=\"=1+1\""));
    EXPECT_EQ(asSpreadsheetText(QStringLiteral("3\" pipe")), QStringLiteral("=\"3\"\" pipe\""));
    EXPECT_EQ(asSpreadsheetText(QStringLiteral("\"&HYPERLINK(\"x\")&\"")),
              QStringLiteral("=\"\"\"&HYPERLINK(\"\"x\"\")&\"\"\""));
    const QString wide = asSpreadsheetText(QString(300, QLatin1Char('1')));
    EXPECT_EQ(wide, QLatin1String("=\"") + QString(250, QLatin1Char('1')) + QLatin1String("\"&\"")
                        + QString(50, QLatin1Char('1')) + QLatin1Char('"'));
    EXPECT_TRUE(asSpreadsheetText(QString(8001, QLatin1Char('='))).startsWith(QLatin1String("'=")));
}

TEST(SpreadsheetTexts, ComeBack)
{
    const QString ten = QStringLiteral("\"quoted\" ab");
    for (const QString &text : {QStringLiteral("00123"), QStringLiteral("=1+1"),
                                QStringLiteral("\""), QStringLiteral("&"), QStringLiteral("\"&\""),
                                QStringLiteral("a\"&\"b"), QString(), ten.repeated(100)})
        EXPECT_EQ(positions::fromSpreadsheetText(positions::asSpreadsheetText(text)), text);
}

TEST(SpreadsheetTexts, LeaveOtherFieldsAsTheyStand)
{
    for (const char *field : {"", "=", "=\"", "=\"a", "=1+1", "=\"a\"&", "=\"a\"b", "=\"a\"&1",
                              "=\"a\"+\"b\"", "\"a\"", "=a\"b\""}) {
        const QString text = QString::fromUtf8(field);
        EXPECT_EQ(positions::fromSpreadsheetText(text), text);
    }
}

TEST(SpreadsheetTexts, AreReadFromALine)
{
    const auto split = positions::splitLine(
        QStringLiteral("\"=\"\"00123\"\"\";5,25;52,5;1;=\"3/4\";\"=\"\"a;b\"\"\""));
    EXPECT_EQ(split.fields,
              (QStringList{QStringLiteral("00123"), QStringLiteral("5,25"), QStringLiteral("52,5"),
                           QStringLiteral("1"), QStringLiteral("3/4"), QStringLiteral("a;b")}));
}

TEST(SpreadsheetWriter, WritesForItsDialect)
{
    const QString noModel;
    positions::ColumnSelection selection;
    QString mistake;
    ASSERT_TRUE(positions::readFields(
        QStringLiteral("point,local_easting,local_height_reference,point_scale,hdop,utc,code"),
        selection.fields, mistake))
        << mistake;
    positions::InputColumns columns;
    columns.hasNames = true;
    columns.carried = QStringList{QStringLiteral("code")};
    columns.extras = {{QStringLiteral("utc"), positions::ExtraColumn::Kind::Text},
                      {QStringLiteral("hdop"), positions::ExtraColumn::Kind::Number}};
    const positions::ValuePrinter printer({}, positions::ValuePrinter::Output::Csv);
    Location location;
    location.localNEH = Pos::fromENU(-1234.5, 2.0, 3.0);
    GridFactors::Values factors;
    factors.pointScale = 0.9996;
    const std::vector<std::string_view> carried{"7"};
    const std::vector<std::string_view> extras{"2026-11-23T00:00:00Z", "0.9"};

    positions::SpreadsheetWriter german(printer, dialect("de_DE"), true, selection);
    QByteArray bytes = german.begin(columns);
    german.write(bytes, {"00123", location, noModel, carried, extras, &factors});
    EXPECT_EQ(bytes, QByteArray("\xEF\xBB\xBFpoint;local_easting_m;local_height_reference;"
                                "point_scale;hdop;utc;code\r\n"
                                "\"=\"\"00123\"\"\";-1234,50000;ellipsoid;0,999600000;0,9;"
                                "\"=\"\"2026-11-23T00:00:00Z\"\"\";\"=\"\"7\"\"\"\r\n"));

    positions::SpreadsheetWriter english(printer, dialect("en_US"), false, selection);
    bytes = english.begin(columns);
    english.write(bytes, {"17", location, noModel, carried, extras, nullptr});
    EXPECT_EQ(bytes, QByteArray("\xEF\xBB\xBF"
                                "17,-1234.50000,ellipsoid,,0.9,"
                                "\"=\"\"2026-11-23T00:00:00Z\"\"\",\"=\"\"7\"\"\"\r\n"));
}

} // namespace
} // namespace KelStd
