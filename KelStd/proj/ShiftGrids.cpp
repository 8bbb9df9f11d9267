#include <KelStd/proj/ShiftGrids.h>

#include <KelStd/grid/GridHeader.h>
#include <KelStd/platform/AppConfig.h>
#include <KelStd/proj/PrivateDirectory.h>

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QObject>
#include <QtCore/QSaveFile>

#include <algorithm>
#include <cmath>

namespace KelStd {

namespace {

using Kind = ShiftGridFailureKind;

constexpr qint64 pieceSize = 1 << 20;

std::filesystem::path pathOf(const QString &file)
{
#if defined(Q_OS_WIN)
    return file.toStdWString();
#else
    return QFile::encodeName(file).toStdString();
#endif
}

/// The same longitude from -180 to 180 [deg].
double withinOneTurn(double longitude)
{
    constexpr double half = 180.0;
    return longitude > half || longitude < -half ? std::remainder(longitude, 2.0 * half)
                                                 : longitude;
}

/// The box around all grids; nothing for none.
std::optional<AreaOfUse> boxAround(const QList<GridNodes> &grids)
{
    if (grids.isEmpty())
        return std::nullopt;
    double west = grids.constFirst().longitude;
    double east = west;
    double south = grids.constFirst().latitude;
    double north = south;
    for (const GridNodes &grid : grids) {
        west = std::min(west, grid.longitude);
        east = std::max(east, grid.longitudeOf(grid.columns - 1));
        south = std::min(south, grid.latitude);
        north = std::max(north, grid.latitudeOf(grid.rows - 1));
    }
    constexpr double wholeTurn = 360.0;
    constexpr double pole = 90.0;
    AreaOfUse area;
    const bool isRoundTheEarth = east - west >= wholeTurn;
    area.west = isRoundTheEarth ? -wholeTurn / 2.0 : withinOneTurn(west);
    area.east = isRoundTheEarth ? wholeTurn / 2.0 : withinOneTurn(east);
    area.south = std::max(south, -pole);
    area.north = std::min(north, pole);
    return area;
}

/// Whether a definition can hold the name: "+nadgrids=" takes several with commas, and "@" before
/// one that need not be there.
bool isNameForDefinitions(const QString &name)
{
    return !name.startsWith(QLatin1Char('.'))
           && std::all_of(name.cbegin(), name.cend(), [](QChar c) {
                  return c.isPrint() && !c.isSpace() && !QStringLiteral("+=,;#\"@\\/:").contains(c);
              });
}

bool haveSameBytes(QFile &one, QFile &other)
{
    if (one.size() != other.size())
        return false;
    while (!one.atEnd()) {
        const QByteArray piece = one.read(pieceSize);
        if (piece.isEmpty() || other.read(pieceSize) != piece)
            return false;
    }
    return true;
}

ShiftGridFailure copy(QFile &from, const QString &to)
{
    const auto notWritable = [&to](const QString &reason) {
        return ShiftGridFailure{Kind::NotWritable,
                                QObject::tr("cannot write %1: %2").arg(to, reason)};
    };
    QSaveFile file(to);
    if (!file.open(QIODevice::WriteOnly))
        return notWritable(file.errorString());
    const qint64 size = from.size();
    qint64 copied = 0;
    while (copied < size) {
        const QByteArray piece = from.read(std::min(pieceSize, size - copied));
        if (piece.isEmpty())
            return notWritable(QObject::tr("the grid cannot be read to its end"));
        if (file.write(piece) != piece.size())
            return notWritable(file.errorString());
        copied += piece.size();
    }
    // What is still buffered may fail, too, and `commit` does not say so.
    if (!file.flush() || !file.commit())
        return notWritable(file.errorString());
    return {};
}

} // namespace

QDir ShiftGrids::directory()
{
    const QDir home(AppConfig::getInstance().homeDir().absolutePath());
    return QDir(
        QDir(home.filePath(proj::privateDirectoryName())).filePath(proj::resourceDirectoryName()));
}

ShiftGrids::File ShiftGrids::examine(const QString &path)
{
    ShiftGridFile grid;
    File file;
    file.path = path;
    file.name = QFileInfo(path).fileName();
    file.failure = grid.open(path);
    file.size = grid.size();
    file.format = grid.format();
    file.area = boxAround(grid.grids());
    file.fromSystem = grid.fromSystem();
    file.toSystem = grid.toSystem();
    if (!file.failure && !kelstd_grid::isForProj(pathOf(path))) {
        file.failure = {GridFailureKind::CutShort, QObject::tr("it is not what its header says")};
    }
    return file;
}

QList<ShiftGrids::File> ShiftGrids::files()
{
    QList<File> files;
    const QDir directory = ShiftGrids::directory();
    for (const QString &name : directory.entryList(QDir::Files, QDir::Name)) {
        const QString path = directory.filePath(name);
        ShiftGridFile grid;
        const GridFailure failure = grid.open(path);
        if (grid.format() != ShiftGridFile::Format::None && (failure || grid.valuesPerNode() != 1))
            files += examine(path);
    }
    return files;
}

ShiftGridFailure ShiftGrids::add(const QString &path, Existing existing)
{
    const File given = examine(path);
    if (given.failure)
        return {Kind::BadGrid, given.failure.text};
    ShiftGridFile grid;
    if (grid.open(path) || grid.valuesPerNode() < 2) {
        return {Kind::NotAShift, QObject::tr("it has one value a node, as a geoid model has; the "
                                             "folder of the geoid models is for those")};
    }
    if (!isNameForDefinitions(given.name)) {
        return {Kind::BadName, QObject::tr("the name \"%1\" has a blank or a sign that no PROJ "
                                           "definition can hold in a name")
                                   .arg(given.name)};
    }
    const QDir directory = ShiftGrids::directory();
    if (!directory.exists()) {
        return {Kind::NotReady,
                QObject::tr("the directory %1 is not there").arg(directory.absolutePath())};
    }
    const QString target = directory.filePath(given.name);
    QFile source(path);
    if (!source.open(QIODevice::ReadOnly))
        return {Kind::BadGrid, source.errorString()};
    if (QFileInfo::exists(target) || QFileInfo(target).isSymLink()) {
        QFile present(target);
        if (QFileInfo(target).isFile() && present.open(QIODevice::ReadOnly)
            && haveSameBytes(source, present))
            return {};
        if (existing == Existing::IsKept) {
            return {Kind::NameTaken,
                    QObject::tr("another file of this name is there: %1").arg(target)};
        }
        source.seek(0);
    }
    return copy(source, target);
}

} // namespace KelStd
