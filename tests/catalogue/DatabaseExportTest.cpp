// Exports of every projected system of PROJ's database that is imported, read back by PROJ.

#include "catalogue/DatabaseTest.h"
#include "support/Printers.h"

#include <KelStd/location/LocationBuilder.h>

#include <memory>

namespace KelStd::catalogue {
namespace {

using test::BareProj;

constexpr int shards = 12;

/// The systems are dealt out to several tests.
class DatabaseExport : public test::DatabaseTest, public testing::WithParamInterface<int>
{
protected:
    void SetUp() override
    {
        DatabaseTest::SetUp();
        m_proj = std::make_unique<BareProj>(); // which looks for PROJ in the prepared home
    }

    struct Count
    {
        int systems = 0;
        int texts = 0;
        int published = 0; ///< texts beside PROJ's result by the published operation
    };

    /// Whether PROJ's operation is one of the database as it stands, whose numbers are stored.
    static bool isSingle(const ImportReport::Shift &shift)
    {
        return !shift.code.isEmpty() && shift.kind != ShiftKind::Grid
               && !shift.name.contains(QLatin1String(" + "))
               && !shift.name.startsWith(QLatin1String("Inverse of"));
    }

    void check(const FoundSystem &system, Count &count)
    {
        // PROJ leaves out what Belgium's own method has (PublishedPointsTest.cpp holds it).
        if (system.code == QLatin1String("EPSG:31300"))
            return;
        const ImportedSystem imported = catalogue().importSystem(system.code.toUtf8());
        if (!imported.system)
            return;
        ++count.systems;
        const GroundPoint at = imported.report.area.centre();
        Location own;
        LocationBuilder builder(*imported.system);
        const bool isMade = builder.make(LocationBuilder::Frame::Wgs84Geographic,
                                         Pos::fromLongLatH(at.longitude, at.latitude, 0.0), own);
        double e = 0.0;
        double n = 0.0;
        const bool isPublished =
            isSingle(imported.report.shift)
            && m_proj->project(system.code, imported.report.shift.name, at, e, n);
        for (const ExportForm form : {ExportForm::Wkt2, ExportForm::ProjJson}) {
            const std::string label = system.code.toStdString() + ' '
                                      + imported.report.shift.name.toStdString()
                                      + (form == ExportForm::Wkt2 ? " WKT 2" : " PROJJSON");
            CatalogueFailure failure;
            const auto text =
                catalogue().exportSystem(*imported.system, form, system.code, &failure);
            ASSERT_TRUE(text) << label << ' ' << failure.text.toStdString();
            double backE = 0.0;
            double backN = 0.0;
            if (!m_proj->project(text->text, QString(), at, backE, backN)) {
                EXPECT_FALSE(isMade) << label;
                continue;
            }
            ++count.texts;
            if (isPublished) {
                ++count.published;
                EXPECT_LE(std::hypot(backE - e, backN - n), 1e-6) << label;
            }
            if (isMade) {
                // The reported difference is that of other places, where the shift is meant for.
                // Operations that lead the other way, and chains of several, stand in a text as
                // seven parameters, which PROJ applies linearly; the export says so.
                EXPECT_LE(std::hypot(backE - own.get_NEH_E(), backN - own.get_NEH_N()),
                          1.1 * imported.report.difference + (isPublished ? 2e-4 : 5e-4))
                    << label;
            }
        }
    }

    std::unique_ptr<const BareProj> m_proj;
};

TEST_P(DatabaseExport, IsReadBackWithTheSameResult)
{
    Count count;
    const std::vector<FoundSystem> all = systems();
    for (std::size_t index = static_cast<std::size_t>(GetParam()); index < all.size();
         index += shards)
        check(all[index], count);
    if (KELSTD_DATABASE_STEP == 1) {
        EXPECT_GE(count.systems, 4820 / shards - 20);
        EXPECT_GE(count.texts, 2 * count.systems - 10);
        EXPECT_GE(count.published, 8400 / shards - 20);
    }
}

INSTANTIATE_TEST_SUITE_P(Shard, DatabaseExport, testing::Range(0, shards));

} // namespace
} // namespace KelStd::catalogue
