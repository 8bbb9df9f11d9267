#include "catalogue/CatalogueTest.h"
#include "support/Printers.h"

#include <algorithm>
#include <cmath>

namespace KelStd::catalogue {
namespace {

using test::CatalogueTest;

class SystemSearch : public CatalogueTest
{
protected:
    QStringList codes(const SystemQuery &query)
    {
        QStringList codes;
        for (const FoundSystem &system : catalogue().search(query))
            codes += system.code;
        return codes;
    }

    QStringList codes(const QString &words)
    {
        SystemQuery query;
        query.words = words;
        return codes(query);
    }
};

/// Words and the code that has to be the first one; the codes are those of the EPSG Dataset.
struct SearchRow
{
    const char *words;
    const char *code;
};

TEST_F(SystemSearch, FindsSystemsByTheirWords)
{
    constexpr SearchRow rows[] = {
        {"EPSG:28992", "EPSG:28992"},
        {"epsg:28992", "EPSG:28992"},
        {"28992", "EPSG:28992"},
        {"Amersfoort / RD New", "EPSG:28992"},
        {"new rd amersfoort", "EPSG:28992"},
        {"lambert 93", "EPSG:2154"},
        {"fiji map grid", "EPSG:3460"},
        {"gda2020 mga 55", "EPSG:7855"},
        {"gda94 mga55", "EPSG:28355"},
        {"bogota urban", "EPSG:6247"},
        {"utm 31", "EPSG:32631"},
        {"wgs84 utm 31n", "EPSG:32631"},
        {"utm zone 31 wgs 84 north", "EPSG:32631"},
    };
    for (const SearchRow &row : rows) {
        const QStringList found = codes(QString::fromUtf8(row.words));
        ASSERT_FALSE(found.isEmpty()) << row.words;
        EXPECT_EQ(found.front(), QLatin1String(row.code)) << row.words;
    }
}

TEST_F(SystemSearch, TakesANumberForAWholeOne)
{
    for (const QString &code : codes(QStringLiteral("gda94 mga zone 5")))
        ADD_FAILURE() << code.toStdString();
    const QStringList mga = codes(QStringLiteral("MGA 55"));
    EXPECT_TRUE(mga.contains(QStringLiteral("EPSG:28355")));
    EXPECT_TRUE(mga.contains(QStringLiteral("EPSG:7855")));
    EXPECT_EQ(mga.size(), 2);
    // Nord Sahara has no zone 31 in its name, but for UTM.
    SystemQuery query;
    query.words = QStringLiteral("utm 31");
    for (const FoundSystem &system : catalogue().search(query))
        EXPECT_TRUE(system.name.contains(QLatin1String("31"))) << system.name.toStdString();
}

TEST_F(SystemSearch, KnowsCountriesAndPassesOverAccents)
{
    EXPECT_TRUE(codes(QStringLiteral("netherlands rd")).contains(QStringLiteral("EPSG:28992")));
    EXPECT_EQ(codes(QStringLiteral("reunion utm")), codes(QString::fromUtf8("R\xc3\xa9union utm")));
    EXPECT_FALSE(codes(QStringLiteral("reunion utm")).isEmpty());
    EXPECT_TRUE(codes(QStringLiteral("austria gk east")).contains(QStringLiteral("EPSG:31256")));
}

TEST_F(SystemSearch, FindsAreasAcross180Degrees)
{
    SystemQuery query;
    query.at = GroundPoint{178.4, -18.1}; // Suva
    EXPECT_TRUE(codes(query).contains(QStringLiteral("EPSG:3460")));
    query.at = GroundPoint{-179.5, -17.5}; // Lau Islands
    query.words = QStringLiteral("fiji map grid");
    EXPECT_TRUE(codes(query).contains(QStringLiteral("EPSG:3460")));
    query.at = GroundPoint{5.0, 52.0};
    EXPECT_FALSE(codes(query).contains(QStringLiteral("EPSG:3460")));
}

TEST_F(SystemSearch, FindsTheSystemsOfABox)
{
    SystemQuery query;
    query.words = QStringLiteral("rd new");
    query.box = SystemArea();
    query.box->isKnown = true;
    query.box->west = 7.0;
    query.box->east = 8.0;
    query.box->south = 53.0;
    query.box->north = 54.0;
    EXPECT_TRUE(codes(query).contains(QStringLiteral("EPSG:28992")));
    query.box->west = 7.5;
    EXPECT_FALSE(codes(query).contains(QStringLiteral("EPSG:28992")));
}

TEST_F(SystemSearch, ListsEachSystemOnceAndDeprecatedOnesOnRequest)
{
    SystemQuery query;
    query.withDeprecated = true;
    QStringList all = codes(query);
    EXPECT_GT(all.size(), 10'000);
    EXPECT_EQ(all.removeDuplicates(), 0);
    EXPECT_TRUE(all.contains(QStringLiteral("EPSG:2400"))); // RT90 2.5 gon W
    query.withDeprecated = false;
    EXPECT_FALSE(codes(query).contains(QStringLiteral("EPSG:2400")));
}

TEST_F(SystemSearch, NamesTheKindsOfSystems)
{
    struct Row
    {
        const char *code;
        SystemKind kind;
    };
    constexpr Row rows[] = {
        {"EPSG:28992", SystemKind::Projected}, {"EPSG:7415", SystemKind::Compound},
        {"EPSG:4326", SystemKind::Geographic}, {"EPSG:4979", SystemKind::Geographic},
        {"EPSG:4978", SystemKind::Geocentric}, {"EPSG:5773", SystemKind::Vertical},
    };
    for (const Row &row : rows) {
        SystemQuery query;
        query.words = QString::fromLatin1(row.code);
        const auto found = catalogue().search(query);
        ASSERT_FALSE(found.empty()) << row.code;
        EXPECT_EQ(found.front().code, QLatin1String(row.code));
        EXPECT_EQ(found.front().kind, row.kind) << row.code;
    }
}

TEST_F(SystemSearch, FindsNothingWithoutAFailure)
{
    CatalogueFailure failure;
    SystemQuery query;
    query.words = QStringLiteral("nosuchword");
    EXPECT_TRUE(catalogue().search(query, &failure).empty());
    EXPECT_FALSE(failure);
}

TEST(CatalogueWithoutProj, SaysSo)
{
    Catalogue catalogue;
    CatalogueFailure failure;
    EXPECT_TRUE(catalogue.search({}, &failure).empty());
    EXPECT_EQ(failure.kind, CatalogueFailureKind::NotLoaded);
    EXPECT_EQ(catalogue.importSystem("EPSG:28992").refusal.kind, CatalogueFailureKind::NotLoaded);
    EXPECT_FALSE(catalogue.datumShifts("EPSG:28992", std::nullopt, &failure));
    EXPECT_FALSE(catalogue.exportSystem(Coord(), ExportForm::Wkt2, {}, &failure));
}

} // namespace
} // namespace KelStd::catalogue
