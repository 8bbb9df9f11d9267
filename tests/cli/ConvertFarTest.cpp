// Positions that PROJ has coordinates for, which are those of another place.

#include "cli/ProgramRun.h"
#include "support/Printers.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

namespace KelStd {
namespace {

using test::Mentions;
using test::ProgramResult;
using test::ProgramRun;

const char *const reason = "outside where the projection is one-to-one";

struct FarLine
{
    const char *name;
    const char *system;
    const char *frame;
    QByteArray line; ///< after a good one, before another
    QByteArray good;

    friend void PrintTo(const FarLine &row, std::ostream *out) { *out << row.name; }
};

const char *const lambertNord = "NTF (Paris) / Lambert Nord France";
const char *const newZealand = "NZGD49 / New Zealand Map Grid";
const char *const utm31 = "WGS 84 / UTM zone 31N";

class ConvertFar : public testing::TestWithParam<FarLine>
{
protected:
    ProgramResult convert(const QStringList &more) const
    {
        const FarLine &row = GetParam();
        return program.run(QStringList{QStringLiteral("convert"), QStringLiteral("--system"),
                                       QString::fromUtf8(row.system), QStringLiteral("--from"),
                                       QString::fromUtf8(row.frame)}
                               + more,
                           row.good + '\n' + row.line + '\n' + row.good + '\n');
    }

    static void expectOneFailure(const ProgramResult &result)
    {
        EXPECT_EQ(result.status, 1);
        EXPECT_THAT(result.err, Mentions((std::string("<stdin>:2: ") + reason).c_str()));
        EXPECT_THAT(result.err, Mentions("1 of 3 positions failed"));
    }

    ProgramRun program;
};

TEST_P(ConvertFar, FailAlone)
{
    const QString rejects = program.home().path(QStringLiteral("rejects.csv"));
    const auto csv = convert({QStringLiteral("--csv"), QStringLiteral("--rejects"), rejects});
    expectOneFailure(csv);
    ASSERT_EQ(csv.outLines().size(), 3); // the headings and the good ones
    EXPECT_EQ(csv.outLines()[1], csv.outLines()[2]);
    EXPECT_EQ(test::readFile(rejects), GetParam().line + '\n');

    const auto json = convert({QStringLiteral("--json")});
    expectOneFailure(json);
    ASSERT_EQ(json.outLines().size(), 2);
    for (const QString &line : json.outLines())
        EXPECT_TRUE(QJsonDocument::fromJson(line.toUtf8()).isObject());

    const auto geoJson = convert({QStringLiteral("--geojson")});
    expectOneFailure(geoJson);
    const QJsonDocument document = QJsonDocument::fromJson(geoJson.out.toUtf8());
    EXPECT_EQ(document.object().value(QStringLiteral("features")).toArray().size(), 2);
}

INSTANTIATE_TEST_SUITE_P(Lines, ConvertFar,
                         testing::Values(FarLine{"BeyondTheConesApex", lambertNord, "local-neh",
                                                 "6000000,600000,100", "200000,600000,100"},
                                         FarLine{"NewZealandsSeriesInEurope", newZealand,
                                                 "wgs84-llh", "10.5,50.5,0", "172.5,-41.25,10.5"},
                                         FarLine{"MiddleOfTheEarth", utm31, "wgs84-xyz", "0,0,0",
                                                 "3904046.1,368161.3,5013449.4"},
                                         FarLine{"Centimetres", utm31, "wgs84-xyz",
                                                 "390404610,36816130,501344940",
                                                 "3904046.1,368161.3,5013449.4"}),
                         [](const auto &row) { return std::string(row.param.name); });

/// Higher than satellites, deeper than boreholes, at a place of the zone: the projection is not at
/// fault. Far from the islands it is, whatever the height.
TEST(ConvertFarHeights, AreNamedAsTheReason)
{
    struct Row
    {
        const char *system;
        QStringList options;
        QByteArray line;
        const char *behind;
    };
    const Row rows[] = {
        {utm31,
         {},
         "3.5,50.5,1e9",
         ": the height, 1000000000 m, is no position's (at 0 m there is one)"},
        {utm31, {"--height=1e9"}, "3.5,50.5", ": the height, 1000000000 m, is no position's"},
        {utm31, {}, "3.5,50.5,-30000", ": the height, -30000 m, is no position's"},
        {utm31,
         {"--from=local-neh", "--columns=1,2,3"},
         "5000000,500000,6e7",
         ": the height, 60000000 m, is no position's (at 0 m there is one)"},
        {newZealand, {}, "10.5,50.5,5", "\n"},
        {utm31, {"--from=wgs84-xyz"}, "0,0,0", "\n"},
    };
    const ProgramRun program;
    for (const Row &row : rows) {
        const auto result =
            program.run(QStringList{QStringLiteral("convert"), QStringLiteral("--system"),
                                    QString::fromUtf8(row.system)}
                            + row.options,
                        row.line + '\n');
        EXPECT_EQ(result.status, 1) << row.line.constData();
        EXPECT_THAT(result.err,
                    Mentions((std::string("<stdin>:1: ") + reason + row.behind).c_str()));
    }
}

} // namespace
} // namespace KelStd
