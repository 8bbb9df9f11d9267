#include <KelStd/library/StandardLibrary.h>

namespace KelStd {

namespace {

template <typename Record>
const Record *find(const QMap<QString, Record> &records, const QString &name)
{
    const auto found = records.constFind(name);
    return found == records.constEnd() ? nullptr : &found.value();
}

template <typename Record>
void addAll(const QMap<QString, Record> &records, QMap<QString, const Record *> &out)
{
    for (auto record = records.constBegin(); record != records.constEnd(); ++record)
        out[record.key()] = &record.value();
}

} // namespace

const Coord *StandardLibrary::getBaseCoord() const
{
    return &baseCoord;
}

const Ellipsoid *StandardLibrary::getEllipsoidFromLibrary(const QString &name) const
{
    return find(ellipsoidLibrary, name);
}

const Projection *StandardLibrary::getProjectionFromLibrary(const QString &name) const
{
    return find(projectionLibrary, name);
}

const Coord *StandardLibrary::getCoordFromStandardLibrary(const QString &name) const
{
    return find(standardCoordLibrary, name);
}

const Coord *StandardLibrary::getCoordFromCustomLibrary(const QString &name) const
{
    return find(customCoordLibrary, name);
}

const SystemOrigin *StandardLibrary::getOriginFromStandardLibrary(const QString &name) const
{
    return find(standardOrigins, name);
}

const SystemOrigin *StandardLibrary::getOriginFromCustomLibrary(const QString &name) const
{
    return find(customOrigins, name);
}

void StandardLibrary::getEllipsoidLibrary(QMap<QString, const Ellipsoid *> &out) const
{
    addAll(ellipsoidLibrary, out);
}

void StandardLibrary::getProjectionLibrary(QMap<QString, const Projection *> &out) const
{
    addAll(projectionLibrary, out);
}

void StandardLibrary::getStandardCoordLibrary(QMap<QString, const Coord *> &out) const
{
    addAll(standardCoordLibrary, out);
}

void StandardLibrary::getCustomCoordLibrary(QMap<QString, const Coord *> &out) const
{
    addAll(customCoordLibrary, out);
}

void StandardLibrary::getShowInCreateProjectCoords(QList<QPair<QString, QString>> &out) const
{
    out = showInCreateProjectCoords;
}

const stShowConfig *StandardLibrary::getShowConfig() const
{
    return &showConfig;
}

const LibraryFailure &StandardLibrary::lastFailure() const
{
    return failure;
}

bool StandardLibrary::hasCoord(const QString &name) const
{
    return customCoordLibrary.contains(name) || standardCoordLibrary.contains(name);
}

} // namespace KelStd
