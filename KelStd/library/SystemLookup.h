#pragma once

#include <KelStd/Export.h>
#include <KelStd/library/LibraryDirectory.h>
#include <KelStd/library/LibraryFailure.h>
#include <KelStd/library/LibraryRecord.h>

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <optional>

/// Which system of a library a text means: one that is called so, or one that has the code.
///
/// Whoever takes both asks for the code first where the text has the form of one (`codeOfForm`): a
/// system that is merely called so comes last. The kinds are loaded as far as they are needed, a
/// custom system goes before a standard one. Everything here belongs to the thread of the registry.
namespace KelStd::library {

/// The kinds of records that are systems, in the order in which they are looked up.
KELSTD_EXPORT const QList<RecordKind> &systemKinds();

/// The code that a text means: "EPSG:28992" of itself, of its URN and of "28992", which is the same
/// to PROJ. Empty for none.
KELSTD_EXPORT QString codeMeantBy(const QString &text);

/// A system of the loaded registry, which one document holds.
struct SystemMatch
{
    RecordKind kind = RecordKind::Standard; ///< custom or standard
    QString name;                           ///< of the record
    /// Custom systems that have the code, too: several, so that the delivered one is taken.
    QStringList copies;
};

/// What a library has for a text: neither a match nor a failure where it has nothing.
struct SystemLookup
{
    std::optional<SystemMatch> match; ///< the system
    LibraryFailure failure;           ///< why there is none although there may be one
    QString subject;                  ///< what the failure is about: a name, a code or the text
};

/// The system of exactly this name.
///
/// \return `SeveralFiles` as a failure where nobody can tell which of several records is meant, and
///         those of `loadPlaces`
KELSTD_EXPORT SystemLookup systemOfName(const LibraryDirectory &library, const QString &name);

/// The system that has the code which the text means. Of several custom ones it is the one that is
/// called so; where none is, the delivered one, if it is there as it was delivered.
///
/// \return besides the failures of `systemOfName`, `SeveralSystems`
KELSTD_EXPORT SystemLookup systemOfCode(const LibraryDirectory &library, const QString &text);

/// What has to be known before the system that was found by a code is used: one of the user's own
/// may have another datum shift than the code's, or be fitted to a site. Empty for nothing.
KELSTD_EXPORT QString remarkOn(const SystemMatch &match, const QString &text);

} // namespace KelStd::library
