#pragma once

#include <KelStd/coord/Coord.h>
#include <KelStd/coord/Ellipsoid.h>
#include <KelStd/coord/Projection.h>
#include <KelStd/library/LibraryDirectory.h>

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <optional>
#include <variant>

namespace KelStd::cli {

/// The records of a library, kind by kind, in the order in which they are listed and looked up.
enum class RecordKind
{
    Custom,
    Standard,
    Ellipsoid,
    Projection
};

inline constexpr RecordKind recordKinds[] = {RecordKind::Custom, RecordKind::Standard,
                                             RecordKind::Ellipsoid, RecordKind::Projection};

using Record = std::variant<Coord, Ellipsoid, Projection>;

/// "custom system", "ellipsoid"
QString titleOf(RecordKind kind);
/// "custom", "ellipsoid": the kind in a list
QString wordOf(RecordKind kind);
/// "a custom system", "an ellipsoid"
QString withArticle(RecordKind kind);

LibraryPlace placeOf(RecordKind kind);

/// The kinds that a value of --kind means: "systems" are custom and standard ones. Singular or
/// plural; empty for another word.
QList<RecordKind> kindsNamed(const QString &word);

/// `name` without byte order marks, which a text that was copied from a file may begin with and
/// nobody sees: they are no part of it.
QString withoutMarks(const QString &name);

QString nameOf(const Record &record);
void rename(Record &record, const QString &name);

// --- The registry as it is loaded ----------------------------------------------------------------

QStringList namesOf(RecordKind kind);
/// The entry of this name, whatever byte order marks it has in its document; one that has none goes
/// before.
std::optional<Record> find(RecordKind kind, const QString &name);
/// The name under which the registry has that entry; null for none.
QString keyOf(RecordKind kind, const QString &name);

/// The systems that are offered when a project is created.
QStringList offeredNames();

/// The registry's own operations. None is there for standard systems.
bool addRecord(const QString &name, const Record &record);
bool replaceRecord(const QString &name, const Record &record);
bool removeRecord(RecordKind kind, const QString &name);

/// Names of `names` that somebody who typed `name` may have meant, the likeliest first.
QStringList nearNames(const QString &name, const QStringList &names);

} // namespace KelStd::cli
