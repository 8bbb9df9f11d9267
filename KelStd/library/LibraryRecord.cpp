#include <KelStd/library/LibraryRecord.h>

#include <KelStd/library/RecordNames.h>
#include <KelStd/library/StandardLibrary.h>

#include <algorithm>
#include <iterator>

namespace KelStd::library {

namespace {

StandardLibrary &registry()
{
    return StandardLibrary::getInstance();
}

template <typename Found>
QStringList keysOf(void (StandardLibrary::*get)(QMap<QString, const Found *> &) const)
{
    QMap<QString, const Found *> records;
    (registry().*get)(records);
    return records.keys();
}

template <typename Found>
std::optional<LibraryRecord> copied(const Found *record)
{
    return record != nullptr ? std::optional<LibraryRecord>(*record) : std::nullopt;
}

struct KindRow
{
    RecordKind kind;
    const char *word;
    const char *title;
    LibraryPlace place;
    QStringList (*names)();
    std::optional<LibraryRecord> (*find)(const QString &);
    bool (*remove)(const QString &); ///< null where nothing is removed
};

const KindRow kindRows[] = {
    {RecordKind::Custom, "custom", "custom system", LibraryPlace::Custom,
     [] { return keysOf(&StandardLibrary::getCustomCoordLibrary); },
     [](const QString &name) { return copied(registry().getCoordFromCustomLibrary(name)); },
     [](const QString &name) { return registry().removeCoordFromCustomLibrary(name); }},
    {RecordKind::Standard, "standard", "standard system", LibraryPlace::Standard,
     [] { return keysOf(&StandardLibrary::getStandardCoordLibrary); },
     [](const QString &name) { return copied(registry().getCoordFromStandardLibrary(name)); },
     nullptr},
    {RecordKind::Ellipsoid, "ellipsoid", "ellipsoid", LibraryPlace::Ellipsoids,
     [] { return keysOf(&StandardLibrary::getEllipsoidLibrary); },
     [](const QString &name) { return copied(registry().getEllipsoidFromLibrary(name)); },
     [](const QString &name) { return registry().removeEllipsoidFromLibrary(name); }},
    {RecordKind::Projection, "projection", "projection", LibraryPlace::Projections,
     [] { return keysOf(&StandardLibrary::getProjectionLibrary); },
     [](const QString &name) { return copied(registry().getProjectionFromLibrary(name)); },
     [](const QString &name) { return registry().removeProjectionFromLibrary(name); }},
};

const KindRow &rowOf(RecordKind kind)
{
    return *std::find_if(std::begin(kindRows), std::end(kindRows),
                         [kind](const KindRow &row) { return row.kind == kind; });
}

/// One operation of each kind of record.
template <typename OfCoord, typename OfEllipsoid, typename OfProjection>
struct Operations
{
    OfCoord ofCoord;
    OfEllipsoid ofEllipsoid;
    OfProjection ofProjection;
    const QString &name;

    bool operator()(const Coord &record) const { return (registry().*ofCoord)(name, &record); }
    bool operator()(const Ellipsoid &record) const
    {
        return (registry().*ofEllipsoid)(name, &record);
    }
    bool operator()(const Projection &record) const
    {
        return (registry().*ofProjection)(name, &record);
    }
};

template <typename OfCoord, typename OfEllipsoid, typename OfProjection>
bool apply(OfCoord ofCoord, OfEllipsoid ofEllipsoid, OfProjection ofProjection, const QString &name,
           const LibraryRecord &record)
{
    return std::visit(
        Operations<OfCoord, OfEllipsoid, OfProjection>{ofCoord, ofEllipsoid, ofProjection, name},
        record);
}

QString &ownName(Coord &record)
{
    return record.coord_name;
}

QString &ownName(Ellipsoid &record)
{
    return record.ellipsoid_name;
}

QString &ownName(Projection &record)
{
    return record.projection_name;
}

} // namespace

QString titleOf(RecordKind kind)
{
    return QString::fromLatin1(rowOf(kind).title);
}

QString wordOf(RecordKind kind)
{
    return QString::fromLatin1(rowOf(kind).word);
}

QString withArticle(RecordKind kind)
{
    return (kind == RecordKind::Ellipsoid ? QStringLiteral("an ") : QStringLiteral("a "))
           + titleOf(kind);
}

LibraryPlace placeOf(RecordKind kind)
{
    return rowOf(kind).place;
}

QString withoutMarks(const QString &name)
{
    return QString(name).remove(QChar(QChar::ByteOrderMark));
}

QString nameOf(const LibraryRecord &record)
{
    LibraryRecord copy = record;
    return std::visit([](auto &named) { return ownName(named); }, copy);
}

void rename(LibraryRecord &record, const QString &name)
{
    std::visit([&name](auto &named) { ownName(named) = name; }, record);
}

QStringList namesOf(RecordKind kind)
{
    return rowOf(kind).names();
}

std::optional<LibraryRecord> find(RecordKind kind, const QString &name)
{
    if (auto record = rowOf(kind).find(name))
        return record;
    const QString key = keyOf(kind, name);
    return key.isNull() ? std::nullopt : rowOf(kind).find(key);
}

QString keyOf(RecordKind kind, const QString &name)
{
    const QStringList names = namesOf(kind);
    if (names.contains(name))
        return name;
    const QString wanted = withoutMarks(name);
    const auto found = std::find_if(names.begin(), names.end(), [&wanted](const QString &present) {
        return withoutMarks(present) == wanted;
    });
    return found != names.end() ? *found : QString();
}

std::optional<RecordKey> keyTaking(RecordKind kind, const QString &name)
{
    QList<RecordKind> kinds = {kind};
    if (kind == RecordKind::Custom)
        kinds += RecordKind::Standard;
    for (const RecordKind each : kinds) {
        for (const QString &present : namesOf(each)) {
            if (isTakenBy(withoutMarks(name), withoutMarks(present)))
                return RecordKey{each, present};
        }
    }
    return std::nullopt;
}

QList<RecordKind> kindsHolding(const QString &name, const QList<RecordKind> &kinds)
{
    QList<RecordKind> holding;
    std::copy_if(kinds.begin(), kinds.end(), std::back_inserter(holding),
                 [&name](RecordKind kind) { return find(kind, name).has_value(); });
    return holding;
}

SystemOrigin originOf(RecordKind kind, const QString &name)
{
    if (kind != RecordKind::Custom && kind != RecordKind::Standard)
        return {};
    const bool isCustom = kind == RecordKind::Custom;
    const auto find = [isCustom](const QString &key) {
        return isCustom ? registry().getOriginFromCustomLibrary(key)
                        : registry().getOriginFromStandardLibrary(key);
    };
    const bool isKey = isCustom ? registry().getCoordFromCustomLibrary(name) != nullptr
                                : registry().getCoordFromStandardLibrary(name) != nullptr;
    const SystemOrigin *const origin = find(isKey ? name : keyOf(kind, name));
    return origin != nullptr ? *origin : SystemOrigin();
}

QStringList namesOfCode(RecordKind kind, const QString &code)
{
    QStringList names;
    for (const QString &name : namesOf(kind)) {
        const QString own = originOf(kind, name).fullCode();
        if (!own.isEmpty() && own.compare(code, Qt::CaseInsensitive) == 0)
            names += name;
    }
    return names;
}

QStringList offeredNames()
{
    QList<QPair<QString, QString>> offered;
    registry().getShowInCreateProjectCoords(offered);
    QStringList names;
    for (const auto &pair : offered)
        names += pair.first;
    return names;
}

bool addRecord(const QString &name, const LibraryRecord &record)
{
    return apply(&StandardLibrary::addCoordToCustomLibrary, &StandardLibrary::addEllipsoidToLibrary,
                 &StandardLibrary::addProjectionToLibrary, name, record);
}

bool replaceRecord(const QString &name, const LibraryRecord &record)
{
    return apply(&StandardLibrary::setCoordInCustomLibrary, &StandardLibrary::setEllipsoidInLibrary,
                 &StandardLibrary::setProjectionInLibrary, name, record);
}

bool addRecord(const QString &name, const LibraryRecord &record, const SystemOrigin &origin)
{
    const auto *const coord = std::get_if<Coord>(&record);
    return coord != nullptr ? registry().addCoordWithOrigin(name, coord, origin)
                            : addRecord(name, record);
}

bool replaceRecord(const QString &name, const LibraryRecord &record, const SystemOrigin &origin)
{
    const auto *const coord = std::get_if<Coord>(&record);
    return coord != nullptr && !origin.isEmpty()
               ? registry().setCoordWithOrigin(name, coord, origin)
               : replaceRecord(name, record);
}

bool removeRecord(RecordKind kind, const QString &name)
{
    const auto remove = rowOf(kind).remove;
    return remove != nullptr && remove(name);
}

} // namespace KelStd::library
