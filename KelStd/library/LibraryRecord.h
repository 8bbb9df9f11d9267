#pragma once

#include <KelStd/Export.h>
#include <KelStd/coord/Coord.h>
#include <KelStd/coord/Ellipsoid.h>
#include <KelStd/coord/Projection.h>
#include <KelStd/coord/SystemOrigin.h>
#include <KelStd/library/LibraryDirectory.h>

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <optional>
#include <variant>

namespace KelStd {

/// The records of a library, kind by kind, in the order in which they are listed and looked up. One
/// row each in LibraryRecord.cpp.
enum class RecordKind
{
    Custom,    ///< a system of the user's
    Standard,  ///< a system that is delivered
    Ellipsoid, ///< an ellipsoid
    Projection ///< a projection
};

/// A record of any kind; custom and standard systems are both a `Coord`.
using LibraryRecord = std::variant<Coord, Ellipsoid, Projection>;

/// The records of the registry (`StandardLibrary`) by their kind, on the thread that it belongs to.
namespace library {

/// All kinds, in their order.
inline constexpr RecordKind recordKinds[] = {RecordKind::Custom, RecordKind::Standard,
                                             RecordKind::Ellipsoid, RecordKind::Projection};

/// "custom system", "ellipsoid": English.
KELSTD_EXPORT QString titleOf(RecordKind kind);
/// "custom", "ellipsoid": the kind in a list.
KELSTD_EXPORT QString wordOf(RecordKind kind);
/// "a custom system", "an ellipsoid".
KELSTD_EXPORT QString withArticle(RecordKind kind);

/// The directory that holds the documents of a kind.
KELSTD_EXPORT LibraryPlace placeOf(RecordKind kind);

/// `name` without byte order marks, which a text that was copied from a file may begin with and
/// nobody sees: they are no part of it.
KELSTD_EXPORT QString withoutMarks(const QString &name);

/// The record's own name.
KELSTD_EXPORT QString nameOf(const LibraryRecord &record);
/// Gives the record this name of its own.
KELSTD_EXPORT void rename(LibraryRecord &record, const QString &name);

/// The names under which the registry has records of a kind, in their order there.
KELSTD_EXPORT QStringList namesOf(RecordKind kind);
/// A copy of the registry's entry of this name, whatever byte order marks it has in its document;
/// an entry without marks goes first. Nothing for none.
KELSTD_EXPORT std::optional<LibraryRecord> find(RecordKind kind, const QString &name);
/// The name under which the registry has that entry; null for none.
KELSTD_EXPORT QString keyOf(RecordKind kind, const QString &name);

/// A record of the registry by its kind and the name that it has there.
struct RecordKey
{
    RecordKind kind; ///< in which part of the registry it is
    QString name;    ///< that it has there
};

/// The entry of the registry that keeps a name from being added, byte order marks aside
/// (`isTakenBy`): one of the kind, or, for a custom system, a standard one.
///
/// \return nothing when the name is free
KELSTD_EXPORT std::optional<RecordKey> keyTaking(RecordKind kind, const QString &name);

/// The kinds among `kinds`, in their order, in which `find` finds an entry of this name.
KELSTD_EXPORT QList<RecordKind> kindsHolding(const QString &name, const QList<RecordKind> &kinds);

/// Where the entry of this name came from, as its document has it; empty for an entry that is no
/// system, and for none.
KELSTD_EXPORT SystemOrigin originOf(RecordKind kind, const QString &name);
/// The names of the systems of a kind whose origin has this code: "EPSG:28992", in any case.
KELSTD_EXPORT QStringList namesOfCode(RecordKind kind, const QString &code);

/// The names of the systems that are offered when a project is created.
KELSTD_EXPORT QStringList offeredNames();

/// The registry's own operations, with their results; `StandardLibrary::lastFailure` says why one
/// failed. A `Coord` is added, or replaced, as a custom system.
KELSTD_EXPORT bool addRecord(const QString &name, const LibraryRecord &record);
/// Replaces the record of exactly this name.
KELSTD_EXPORT bool replaceRecord(const QString &name, const LibraryRecord &record);
/// As above; the document keeps the origin of a system beside it. Where `origin` is empty,
/// replacing keeps what still holds of the present one.
KELSTD_EXPORT bool addRecord(const QString &name, const LibraryRecord &record,
                             const SystemOrigin &origin);
/// Replaces the record of exactly this name, and its origin.
KELSTD_EXPORT bool replaceRecord(const QString &name, const LibraryRecord &record,
                                 const SystemOrigin &origin);
/// False for standard systems, which the registry does not remove; no failure is told of that.
KELSTD_EXPORT bool removeRecord(RecordKind kind, const QString &name);

} // namespace library

} // namespace KelStd
