#pragma once

#include <KelStd/catalogue/Catalogue.h>

namespace KelStd::cli {

/// Whose messages name the options of 'system import' and the other commands about systems.
enum class CatalogueUse
{
    OfImport, ///< the options are those of the command that runs
    OfOthers  ///< they are those of another one, which is named with them
};

/// The catalogue of systems as the program uses it.
catalogue::Catalogue programCatalogue(CatalogueUse use);

} // namespace KelStd::cli
