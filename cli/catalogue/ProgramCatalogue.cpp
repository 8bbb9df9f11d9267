#include <cli/catalogue/ProgramCatalogue.h>

namespace KelStd::cli {

catalogue::Catalogue programCatalogue(CatalogueUse use)
{
    const QString before =
        use == CatalogueUse::OfImport ? QString() : QStringLiteral("kelstd system import ");
    catalogue::CatalogueWords words;
    words.place = before + QStringLiteral("--at");
    words.shift = before + QStringLiteral("--shift");
    words.consent = before + QStringLiteral("--take-as-wgs84");
    words.fit = before + QStringLiteral("--fit");
    words.search = QStringLiteral("'kelstd system search'");
    words.shifts = QStringLiteral("'kelstd system shifts'");
    return catalogue::Catalogue(words);
}

} // namespace KelStd::cli
