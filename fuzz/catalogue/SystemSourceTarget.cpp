// What a surveyor hands in as a coordinate system: a code, a name, WKT, PROJJSON, a PROJ string.

#include "FuzzTarget.h"

#include <KelStd/catalogue/Catalogue.h>
#include <KelStd/platform/AppConfig.h>
#include <KelStd/platform/LogLibrary.h>
#include <KelStd/proj/ProjLib.h>

#include <QtCore/QDir>
#include <QtCore/QTemporaryDir>

#include <cmath>

namespace {

using namespace KelStd;
using fuzz::require;

/// PROJ, prepared in a home directory of its own. It stays loaded: at the end of the process its
/// own objects may be gone before this one.
class Home
{
public:
    Home()
    {
        fuzz::silenceQt();
        AppConfig::setBinDir(QDir(QStringLiteral(KELSTD_FUZZ_BIN_DIR)));
        AppConfig::setHomeDir(QDir(m_directory.path()));
        LogLibrary::setSink([](const QString &, const QString &, ELogType, bool) {});
        require(ProjLib::___InitializeEnviroment(), "PROJ is ready");
    }

private:
    const QTemporaryDir m_directory;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const Home &home = *new Home;
    static_cast<void>(home);
    static catalogue::Catalogue &catalogue = *new catalogue::Catalogue;
    const QByteArray source(reinterpret_cast<const char *>(data), static_cast<int>(size));
    catalogue::ImportOptions options;
    options.takeAsWgs84 = size % 2 != 0;
    const catalogue::ImportedSystem imported = catalogue.importSystem(source, options);
    require(imported.system.has_value() == !imported.refusal, "imported or refused");
    if (!imported.system) {
        require(!imported.refusal.text.isEmpty(), "a refusal has a reason");
        require(!catalogue::refusalWord(imported.refusal.kind).isEmpty(), "and a word");
        return 0;
    }
    require(std::isfinite(imported.report.difference), "the difference is a number");
    catalogue.exportSystem(*imported.system, catalogue::ExportForm::Wkt2, imported.report.code);
    return 0;
}
