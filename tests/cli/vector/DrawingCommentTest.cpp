// What a drawing of the program says of its system and its heights, held against those of the run;
// and what layers say of their heights without a field for it.

#include "cli/vector/VectorRun.h"
#include "support/GridFiles.h"
#include "support/Printers.h"

#include <cli/vector/DrawingComment.h>

#include <QtCore/QDir>
#include <QtCore/QFile>

#include <ostream>

namespace KelStd {
namespace {

using cli::vector::DrawingComment;
using cli::vector::drawingComment;
using test::csvRows;
using test::mentionsAll;
using test::numberIn;
using test::ProgramResult;
using test::ProgramRun;
using test::words;

QByteArray drawingWith(const QByteArray &comments, const QByteArray &header = {})
{
    return comments
           + (header.isEmpty() ? QByteArray() : "0\nSECTION\n2\nHEADER\n" + header + "0\nENDSEC\n")
           + "0\nSECTION\n2\nENTITIES\n0\nPOINT\n8\nPOINTS\n10\n155000.0\n20\n463000.0\n30\n10.0\n"
             "0\nENDSEC\n0\nEOF\n";
}

TEST(DrawingComments, AreReadAsTheyAreWritten)
{
    const struct
    {
        const char *system;
        const char *unit;
        const char *heights;
        const char *text;
    } rows[] = {
        {"EPSG:28992 Amersfoort / RD New", "m", "ellipsoid",
         "EPSG:28992 Amersfoort / RD New: easting, northing, ellipsoidal height in m"},
        {"Harbour: new, above", "US survey foot", "geoid small.gtx",
         "Harbour: new, above: easting, northing, geoid height in US survey foot, above geoid "
         "small.gtx"},
        {"", "m", "ellipsoid", ": easting, northing, ellipsoidal height in m"},
    };
    const ProgramRun program;
    for (const auto &row : rows) {
        SCOPED_TRACE(row.text);
        const DrawingComment written{QString::fromLatin1(row.system), QString::fromLatin1(row.unit),
                                     QString::fromLatin1(row.heights)};
        EXPECT_EQ(written.text().toStdString(), row.text);
        for (const char *const end : {"\n", "\r\n"}) {
            const auto read = drawingComment(program.file(
                QStringLiteral("d.dxf"), QByteArray("999") + end + row.text + end + "  0" + end));
            ASSERT_TRUE(read);
            EXPECT_EQ(read->system.toStdString(), row.system);
            EXPECT_EQ(read->unit.toStdString(), row.unit);
            EXPECT_EQ(read->heightReference.toStdString(), row.heights);
        }
    }
}

TEST(DrawingComments, InPiecesAndWithEscapesAreOne)
{
    const ProgramRun program;
    const auto read = drawingComment(
        program.file(QStringLiteral("d.dxf"), "999\nH\\U+00E4fen\\U+D83D\\U+DE00 \n999\n"
                                              "\\U+0020n: easting, northing, geoid height in m\n"
                                              "999\n1 unit = 1 m\n999\nanother remark\n  0\n"));
    ASSERT_TRUE(read);
    EXPECT_EQ(read->system.toStdString(), "H\u00e4fen\U0001F600 n");
    EXPECT_EQ(read->heightReference, QStringLiteral("geoid"));
}

TEST(DrawingComments, OfOthersAreNone)
{
    const ProgramRun program;
    for (const char *const bytes : {"", "999", "999\n", "999\nmade by hand\n  0\n", "0\nSECTION\n",
                                    "999\nX: easting, northing, some height in m\n  0\n",
                                    "999\nheights: easting, northing in m\n  0\n"})
        EXPECT_FALSE(drawingComment(program.file(QStringLiteral("d.dxf"), bytes))) << bytes;
    EXPECT_FALSE(drawingComment(program.home().path(QStringLiteral("none.dxf"))));
}

class DrawnSystems : public testing::Test
{
protected:
    DrawnSystems()
    {
        m_program.file(QStringLiteral("geoid_model_list/small.gtx"),
                       test::gtxBytes(test::slopingGrid()));
        m_program.file(QStringLiteral("geoid_model_list/other.gtx"),
                       test::gtxBytes(test::slopingGrid()));
    }

    QString path(const char *name) const { return m_program.home().path(QLatin1String(name)); }

    /// The plane of RD New under another name, with this geoid model.
    QString system(const char *name, const char *model = "") const
    {
        return m_program.file(
            QStringLiteral("%1%2.xml").arg(QString::fromUtf8(name), QLatin1String(model)),
            test::editedSystem(
                QStringLiteral("rd_new.xml"),
                {{QStringLiteral("coord_name=\"Amersfoort / RD New\""),
                  QStringLiteral("coord_name=\"%1\"").arg(QString::fromUtf8(name))},
                 {QStringLiteral("modelFileName=\"\""),
                  QStringLiteral("modelFileName=\"%1\"").arg(QLatin1String(model))}}));
    }

    ProgramResult convert(const QString &system, const QString &file,
                          const char *options = "") const
    {
        return m_program.run(QStringList{QStringLiteral("convert"), QStringLiteral("--csv"),
                                         QStringLiteral("--system"), system}
                             + words(QLatin1String(options)) + QStringList{file});
    }

    /// One point at 52.5 N 3.5 E with the ellipsoidal height 100, where the geoid is at 42.55 m.
    ProgramResult write(const QString &system, const QString &file, const char *options = "") const
    {
        return m_program.run(QStringList{QStringLiteral("convert"), QStringLiteral("--system"),
                                         system, QStringLiteral("-o"), file}
                                 + words(QLatin1String(options)),
                             "A,3.5,52.5,100\n");
    }

    ProgramRun m_program;
};

TEST_F(DrawnSystems, WithoutACodeAreKnownByTheirNames)
{
    const QString file = path("gg.dxf");
    ASSERT_EQ(write(system("Harbour"), file).status, 0);
    EXPECT_TRUE(test::readFile(file).startsWith(
        "999\nHarbour: easting, northing, ellipsoidal height in m\n999\n1 unit = 1 m\n"));
    for (const char *const options : {"", "--from local-neh", "--length-unit m"}) {
        SCOPED_TRACE(options);
        const ProgramResult same = convert(system("Harbour"), file, options);
        ASSERT_EQ(same.status, 0) << same.err;
        EXPECT_FALSE(same.err.contains(QLatin1String("names no coordinate"))) << same.err;
        const auto row = csvRows(same.out).value(0);
        EXPECT_NEAR(numberIn(row, QStringLiteral("wgs84_longitude_deg")), 3.5, 1e-9);
        EXPECT_NEAR(numberIn(row, QStringLiteral("wgs84_latitude_deg")), 52.5, 1e-9);
        EXPECT_NEAR(numberIn(row, QStringLiteral("wgs84_height_m")), 100.0, 2e-5);
    }
    for (const char *const options : {"", "--from local-neh", "--length-unit m"}) {
        for (const QString &other :
             {system("Haven"), QStringLiteral("EPSG:32632"), QStringLiteral("EPSG:28992")}) {
            SCOPED_TRACE(other.toStdString() + options);
            const ProgramResult result = convert(other, file, options);
            EXPECT_EQ(result.status, 2);
            EXPECT_EQ(result.out, QString());
            EXPECT_TRUE(mentionsAll(result.err, {"the drawing is of the system \"Harbour\""}))
                << result.err;
        }
    }
    const ProgramResult angles = convert(system("Harbour"), file, "--from wgs84-llh");
    EXPECT_EQ(angles.status, 2);
    EXPECT_TRUE(mentionsAll(angles.err, {"easting and northing of \"Harbour\", not wgs84-llh"}))
        << angles.err;
}

// A drawing says its name in characters of its own, and a long one in pieces.
TEST_F(DrawnSystems, HaveNamesOfAnyCharactersAndLength)
{
    const QByteArray names[] = {"\u00c7e\u015fme \u0130skele",
                                QByteArray("a long name ").repeated(25)};
    for (const QByteArray &name : names) {
        SCOPED_TRACE(name.constData());
        const QString document = m_program.file(
            QStringLiteral("named.xml"),
            test::editedSystem(
                QStringLiteral("rd_new.xml"),
                {{QStringLiteral("coord_name=\"Amersfoort / RD New\""),
                  QStringLiteral("coord_name=\"%1\"").arg(QString::fromUtf8(name.trimmed()))}}));
        const QString file = path("n.dxf");
        const ProgramResult written = write(document, file, "--force");
        ASSERT_EQ(written.status, 0) << written.err;
        const ProgramResult same = convert(document, file);
        EXPECT_EQ(same.status, 0) << same.err;
        EXPECT_EQ(convert(system("Haven"), file, "--from local-neh").status, 2);
    }
}

// The code says more than the name does, where it is one that is known.
TEST_F(DrawnSystems, WithACodeNobodyKnowsAreKnownByBoth)
{
    const QString file =
        m_program.file(QStringLiteral("d.dxf"),
                       drawingWith("999\nNOBODY:1 Harbour: easting, northing, ellipsoidal height "
                                   "in m\n999\n1 unit = 1 m\n"));
    const ProgramResult result = convert(system("Harbour"), file, "--from local-neh");
    EXPECT_EQ(result.status, 2) << result.err;
    EXPECT_TRUE(mentionsAll(result.err, {"NOBODY:1 Harbour"})) << result.err;
}

struct Heights
{
    const char *written; ///< the geoid model of the system that wrote, or none
    const char *read;    ///< that of the system that reads
    bool areSame;
};

void PrintTo(const Heights &row, std::ostream *out)
{
    *out << '"' << row.written << "\" as \"" << row.read << '"';
}

class SaidHeights : public DrawnSystems, public testing::WithParamInterface<Heights>
{};

// Files whose fields say nothing of heights, by what they say beside their fields.
TEST_P(SaidHeights, AreHeldAgainstTheSystemWithoutAField)
{
    const Heights &row = GetParam();
    const QString wrote = system("Harbour", row.written);
    const QString reads = system("Harbour", row.read);
    for (const char *const name : {"h.dxf", "h.gpkg"}) {
        for (const char *const options : {"--fields point", "--frames wgs84-llh", ""}) {
            SCOPED_TRACE(std::string(name) + ' ' + options);
            const QString file = path(name);
            const ProgramResult written =
                write(wrote, file, (QByteArray("--force ") + options).constData());
            ASSERT_EQ(written.status, 0) << written.err;
            const ProgramResult result = convert(reads, file, "--from local-neh");
            if (row.areSame) {
                EXPECT_EQ(result.status, 0) << result.err;
                EXPECT_NEAR(
                    numberIn(csvRows(result.out).value(0), QStringLiteral("wgs84_height_m")), 100.0,
                    0.001);
                EXPECT_FALSE(result.err.contains(QLatin1String("does not say"))) << result.err;
                continue;
            }
            EXPECT_EQ(result.status, 1) << result.err;
            EXPECT_EQ(result.outLines().size(), 1) << "the headings alone";
            EXPECT_TRUE(mentionsAll(result.err, {"the height is above \"", "would be read as"}))
                << result.err;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Models, SaidHeights,
                         testing::Values(Heights{"", "", true}, Heights{"", "small.gtx", false},
                                         Heights{"small.gtx", "", false},
                                         Heights{"small.gtx", "small.gtx", true},
                                         Heights{"small.gtx", "other.gtx", false}));

// Drawings did not always say which model it is.
TEST_F(DrawnSystems, AboveSomeGeoidNeedOne)
{
    const QString file = m_program.file(
        QStringLiteral("d.dxf"), drawingWith("999\nHarbour: easting, northing, geoid height in m\n"
                                             "999\n1 unit = 1 m\n"));
    const ProgramResult without = convert(system("Harbour"), file);
    EXPECT_EQ(without.status, 1) << without.err;
    EXPECT_TRUE(mentionsAll(
        without.err, {"the height is above \"geoid\", as the first line of the drawing says"}))
        << without.err;
    EXPECT_EQ(convert(system("Harbour", "small.gtx"), file).status, 0);
}

// What is kept of those that failed says it, too.
TEST_F(DrawnSystems, StayRejectedWhenTheRejectsAreRead)
{
    const QString file = path("h.gpkg");
    ASSERT_EQ(write(system("Harbour", "small.gtx"), file, "--fields point").status, 0);
    const QString rejects = path("rejects.csv");
    const ProgramResult first =
        convert(system("Harbour"), file, ("--rejects " + rejects.toLatin1()).constData());
    EXPECT_EQ(first.status, 1);
    EXPECT_TRUE(mentionsAll(first.err, {"as the description of the layer says"})) << first.err;
    const ProgramResult again = convert(system("Harbour"), rejects, "--from local-neh");
    EXPECT_EQ(again.status, 1) << again.err;
    EXPECT_TRUE(mentionsAll(again.err, {"the height is above \"geoid small.gtx\""})) << again.err;
}

// A Shapefile holds nothing but its fields: whoever leaves that one out is told.
TEST_F(DrawnSystems, InShapefilesWarnWhereNothingSaysWhatHeightsAreAbove)
{
    const QByteArray warning = "says that its heights are above the geoid small.gtx";
    const struct
    {
        const char *model;
        const char *options;
        bool isWarned;
    } rows[] = {{"small.gtx", "--fields point", true},
                {"small.gtx", "--frames wgs84-llh", true},
                {"small.gtx", "--fields point,local_height_reference", false},
                {"small.gtx", "--frames local-neh", false},
                {"small.gtx", "", false},
                {"", "--fields point", false}};
    for (const auto &row : rows) {
        SCOPED_TRACE(std::string(row.model) + ' ' + row.options);
        const ProgramResult result = write(system("Harbour", row.model), path("h.shp"),
                                           (QByteArray("--force ") + row.options).constData());
        EXPECT_EQ(result.status, 0) << result.err;
        EXPECT_EQ(result.err.contains(QLatin1String(warning)), row.isWarned) << result.err;
    }
    // Read by a system with a geoid, the last one may be anything.
    const ProgramResult result = convert(system("Harbour", "small.gtx"), path("h.shp"));
    EXPECT_TRUE(mentionsAll(result.err, {"note: ", "heights are taken as those above the geoid "
                                                   "small.gtx; the layer does not say"}))
        << result.err;
}

// 2 are feet, 6 metres, 21 US survey feet; 1 and 4, inches and millimetres, are what templates
// say, and 0 is none.
TEST_F(DrawnSystems, OfOthersAreInTheUnitOfThePlaneOrOfTheOption)
{
    const struct
    {
        const char *code; ///< of $INSUNITS
        const char *system;
        const char *options;
        int status;
        bool isRemarked;
    } rows[] = {
        {"6", "EPSG:28992", "", 0, false},
        {"2", "EPSG:28992", "", 2, true},
        {"21", "EPSG:28992", "", 2, true},
        {"5", "EPSG:28992", "", 2, true},
        {"1", "EPSG:28992", "", 0, true},
        {"4", "EPSG:28992", "", 0, true},
        {"0", "EPSG:28992", "", 0, false},
        {"6", "EPSG:2263", "", 2, true},
        {"6", "EPSG:2263", "--length-unit m", 0, false},
        {"6", "EPSG:2263", "--length-unit us-ft", 0, true},
        {"2", "EPSG:28992", "--length-unit m", 0, true},
        {"2", "EPSG:2263", "", 0, false},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(std::string(row.code) + ' ' + row.system + ' ' + row.options);
        const QString file =
            m_program.file(QStringLiteral("u.dxf"),
                           drawingWith({}, "9\n$INSUNITS\n70\n" + QByteArray(row.code) + "\n"));
        const ProgramResult result =
            convert(QString::fromLatin1(row.system), file,
                    (QByteArray("--from local-neh ") + row.options).constData());
        EXPECT_EQ(result.status, row.status) << result.err;
        EXPECT_EQ(result.err.contains(QLatin1String("the drawing says that its unit is")),
                  row.isRemarked)
            << result.err;
        if (row.status != 0) {
            EXPECT_EQ(result.out, QString());
            EXPECT_TRUE(mentionsAll(result.err, {"--length-unit says which it is"})) << result.err;
        }
    }
}

} // namespace
} // namespace KelStd
