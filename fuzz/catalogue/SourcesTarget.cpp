// A source of the catalogue of systems: a code, a name or a definition that somebody sent.

#include "FuzzTarget.h"

#include <KelStd/catalogue/Catalogue.h>
#include <KelStd/io/DocumentReview.h>
#include <KelStd/location/LocationBuilder.h>
#include <KelStd/platform/AppConfig.h>
#include <KelStd/platform/LogLibrary.h>
#include <KelStd/proj/ProjLib.h>

#include <QtCore/QDir>
#include <QtCore/QTemporaryDir>

#include <cmath>

namespace {

using namespace KelStd;
using namespace KelStd::catalogue;
using fuzz::require;

/// PROJ, prepared in a home directory of its own. It stays loaded: at the end of the process its
/// own objects may be gone before this one.
class Home
{
public:
    Home()
    {
        AppConfig::setBinDir(QDir(QStringLiteral(KELSTD_FUZZ_BIN_DIR)));
        AppConfig::setHomeDir(QDir(m_directory.path()));
        LogLibrary::setSink([](const QString &, const QString &, ELogType, bool) {});
        qputenv("PROJ_DEBUG", "0");
        require(ProjLib::___InitializeEnviroment(), "PROJ is ready");
    }

private:
    const QTemporaryDir m_directory;
};

void requireFinite(const Pos &pos)
{
    const stXYZ &xyz = pos.getXYZ();
    require(std::isfinite(xyz.x) && std::isfinite(xyz.y) && std::isfinite(xyz.z),
            "a location that was made has numbers");
}

/// An imported system can be kept in a document, converts without harm, and can be exported or is
/// refused with a reason.
void use(const ImportedSystem &imported, Catalogue &catalogue)
{
    const Coord &coord = *imported.system;
    const ImportReport &report = imported.report;
    constexpr double unexplained = 0.001; // [m]
    require(std::isfinite(report.difference) && report.difference >= 0.0, "a difference is a size");
    require(report.difference <= unexplained || !report.warnings.isEmpty(),
            "a difference that is not small is explained");
    require(report.metresPerUnit > 0.0, "a unit is a length");

    Coord read;
    require(io::readBackFromMemory(coord, read), "a document can hold the system");

    const GroundPoint place = report.area.isKnown ? report.area.centre() : GroundPoint{};
    const Pos pos = Pos::fromLongLatH(place.longitude, place.latitude, 0.0);
    Location location;
    LocationBuilder::Outcome outcome;
    LocationBuilder(coord).make(LocationBuilder::Frame::Wgs84Geographic, &pos, 1, &location,
                                &outcome);
    if (outcome.isMade) {
        requireFinite(location.localLLH);
        requireFinite(location.localNEH);
    }

    for (const ExportForm form :
         {ExportForm::Wkt2, ExportForm::ProjJson, ExportForm::Proj, ExportForm::Esri}) {
        CatalogueFailure failure;
        const auto exported = catalogue.exportSystem(coord, form, report.code, &failure);
        require(exported.has_value() != static_cast<bool>(failure), "an export has a text or not");
        require(!exported || !exported->text.isEmpty(), "an export says something");
        require(exported || !failure.text.isEmpty(), "a refusal has a reason");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const bool silent = (fuzz::silenceQt(), true);
    Q_UNUSED(silent)
    static const Home home;
    static Catalogue &catalogue = *new Catalogue; // which outlives what PROJ destroys at the end
    const QByteArray source(reinterpret_cast<const char *>(data), static_cast<int>(size));

    CatalogueFailure failure;
    const auto shifts = catalogue.datumShifts(source, std::nullopt, &failure);
    require(shifts.has_value() != static_cast<bool>(failure), "there is a list or a reason");

    ImportOptions options;
    options.takeAsWgs84 = size % 2 == 1;
    options.fit = size % 4 > 1;
    const ImportedSystem imported = catalogue.importSystem(source, options);
    require(imported.system.has_value() != static_cast<bool>(imported.refusal),
            "a source is imported or refused");
    if (imported.system) {
        use(imported, catalogue);
    } else {
        require(!refusalWord(imported.refusal.kind).isEmpty(), "a refusal has a word");
        require(!imported.refusal.text.isEmpty(), "and a reason");
    }
    return 0;
}
