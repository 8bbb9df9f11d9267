// Every projected system of PROJ's database.

#include "catalogue/DatabaseTest.h"
#include "support/Printers.h"

#include <KelStd/location/LocationBuilder.h>

#include <map>

namespace KelStd::catalogue {
namespace {

using test::BareProj;

class WholeDatabase : public test::DatabaseTest
{};

TEST_F(WholeDatabase, ImportsOrIsRefusedWithItsReason)
{
    const BareProj proj;
    ImportOptions consent;
    consent.takeAsWgs84 = true;
    const std::vector<FoundSystem> all = systems();
    std::map<QString, int> words;
    int imported = 0;
    int large = 0;
    int compared = 0;
    std::size_t index = 0;
    for (const FoundSystem &system : all) {
        const std::string code = system.code.toStdString();
        ImportedSystem result = catalogue().importSystem(system.code.toUtf8());
        ++index;
        if (!result.system) {
            EXPECT_FALSE(result.refusal.text.isEmpty()) << code;
            const QString word = refusalWord(result.refusal.kind);
            ++words[word];
            // Consent helps all but those whose projection PROJ does not have.
            const ImportedSystem taken = catalogue().importSystem(system.code.toUtf8(), consent);
            EXPECT_EQ(!taken.system.has_value(), word == QLatin1String("no-projection"))
                << code << ' ' << taken.refusal.text.toStdString();
            continue;
        }
        ++imported;
        if (result.report.difference > 0.001) {
            // Explained: by the full rotation matrix, and said.
            ++large;
            EXPECT_TRUE(result.report.warnings.join(QLatin1Char(' '))
                            .contains(QLatin1String("full rotation matrix")))
                << code;
        }
        // Another way to the same operation, through the system's own axes and units.
        // PROJ leaves out what Belgium's own method has (PublishedPointsTest.cpp holds it).
        if (index % 6 != 0 || system.code == QLatin1String("EPSG:31300"))
            continue;
        LocationBuilder builder(*result.system);
        const GroundPoint at = result.report.area.centre();
        Location location;
        double e = 0.0;
        double n = 0.0;
        if (!builder.make(LocationBuilder::Frame::Wgs84Geographic,
                          Pos::fromLongLatH(at.longitude, at.latitude, 0.0), location)
            || !proj.project(system.code, result.report.shift.name, at, e, n))
            continue;
        ++compared;
        const double differs = std::hypot(location.get_NEH_E() - e, location.get_NEH_N() - n);
        // To the middle of the area, while the report's difference is that of other places.
        EXPECT_LE(differs, result.report.difference + 0.0005)
            << code << ' ' << result.report.shift.name.toStdString();
    }
    EXPECT_EQ(words[QStringLiteral("own-check")], 0);
    EXPECT_EQ(words[QStringLiteral("not-understood")], 0);
    EXPECT_EQ(words[QStringLiteral("not-projected")], 0);
    if (KELSTD_DATABASE_STEP == 1) {
        EXPECT_EQ(all.size(), 5500U);
        EXPECT_GE(imported, 4820);
        // 33 of methods that PROJ does not have; two whose scale factor the database has as a
        // millionth of what is meant (EPSG:6996 and 6997, "1.000007" parts per million).
        EXPECT_EQ(words[QStringLiteral("no-projection")], 35);
        EXPECT_LE(large, 112);
        EXPECT_GT(compared, 700);
    }
}

} // namespace
} // namespace KelStd::catalogue
