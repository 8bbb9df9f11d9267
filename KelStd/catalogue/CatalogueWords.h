#pragma once

#include <QtCore/QString>

namespace KelStd::catalogue {

/// What messages call the settings and lists that help further, so that they name what the user of
/// a program knows: its options and commands, or the parts of its window. Each stands in sentences
/// like the one beside it.
struct CatalogueWords
{
    /// `ImportOptions::at`: "a place says where the system is used".
    QString place = QStringLiteral("a place");

    /// `ImportOptions::shift`: "asking for EPSG:4833 takes it".
    QString shift = QStringLiteral("asking for");

    /// `ImportOptions::takeAsWgs84`: "use an import with consent, which takes its positions ...".
    QString consent = QStringLiteral("an import with consent");

    /// `ImportOptions::fit`: "a fit makes up for it".
    QString fit = QStringLiteral("a fit");

    /// `Catalogue::search`: "a search finds them".
    QString search = QStringLiteral("a search");

    /// `Catalogue::datumShifts`: "a list of its shifts shows them".
    QString shifts = QStringLiteral("a list of its shifts");
};

} // namespace KelStd::catalogue
