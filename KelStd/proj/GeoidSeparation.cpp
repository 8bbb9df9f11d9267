#include <KelStd/proj/ProjLib.h>

#include <KelStd/proj/FixedBuffer.h>
#include <KelStd/proj/LoadedProj.h>
#include <KelStd/proj/Messages.h>
#include <KelStd/proj/TransformationResult.h>
#include <KelStd/proj/WorkingDirectoryScope.h>

#include <QtCore/QByteArray>
#include <QtCore/QDir>

#include <algorithm>
#include <limits>
#include <optional>
#include <string_view>

namespace KelStd {

namespace {

using proj::LoadedProj;

enum class Direction
{
    ToGeoid,
    ToEllipsoid
};

/// Geoid computations are logged less severely than point conversions: without a model a height
/// above the ellipsoid is left.
bool failWith(const QString &text, QString *error)
{
    proj::logFailure(text, LogType_Warning);
    return proj::fail(error, text);
}

/// The vertical shift by a grid, or null when PROJ cannot use the file.
proj::ProjObject createShift(const QString &gridFile, Direction direction)
{
    constexpr std::string_view head = "+proj=vgridshift +grids=\"";
    const std::string_view tail = direction == Direction::ToGeoid ? "\"" : "\" +inv";
    const QByteArray path = gridFile.toUtf8();
    const auto length = static_cast<std::size_t>(path.size());
    // A quotation mark would end the path, and what follows it would be PROJ parameters.
    if (path.contains('"') || path.contains('\0')
        || head.size() + length + tail.size() >= proj::geoidDefinitionSize)
        return nullptr;

    // Put together without a detour by texts: creating the shift is cheap enough to notice them.
    char definition[proj::geoidDefinitionSize] = {};
    char *end = std::copy(head.cbegin(), head.cend(), definition);
    end = std::copy(path.cbegin(), path.cend(), end);
    std::copy(tail.cbegin(), tail.cend(), end);
    return proj::ProjObject(
        LoadedProj::instance().functions().proj_create(proj::defaultContext, definition));
}

bool calculate(double latitude, double longitude, double height, const QString &gridFile,
               Direction direction, double &diff, QString *error)
{
    if (!LoadedProj::instance().isLoaded()) {
        proj::logFailure(proj::noLibraryLogText(), LogType_Warning);
        return proj::fail(error, proj::noLibraryText());
    }
    if (gridFile.isEmpty())
        return failWith(QObject::tr("Geoid model file is empty."), error);

    // The private directory is where a relative name is found. An absolute path needs no current
    // directory, and changing it there and back costs a tenth of all that PROJ does here.
    std::optional<proj::WorkingDirectoryScope> scope;
    if (QDir::isRelativePath(gridFile))
        scope.emplace();
    const proj::ProjObject shift = createShift(gridFile, direction);
    if (shift == nullptr)
        return failWith(QObject::tr("Create proj geoid model failed."), error);

    const proj::ProjFunctions &functions = LoadedProj::instance().functions();
    const PJ_COORD point{{functions.proj_torad(longitude), functions.proj_torad(latitude), height,
                          std::numeric_limits<double>::infinity()}}; // at no time in particular
    const double shifted = functions.proj_trans(shift.get(), PJ_FWD, point).v[2];
    if (!proj::isResult(shifted)) {
        const QString text = proj::failureText(shift.get());
        proj::logFailure(QObject::tr("Calc geoid failed") + QLatin1String(": ") + text,
                         LogType_Warning);
        return proj::fail(error, text);
    }
    diff = shifted - height;
    return true;
}

} // namespace

bool ProjLib::Calc_geoid_diff(double latitude, double longitude, double height,
                              const QString &gridFile, double &diff, QString *error)
{
    return calculate(latitude, longitude, height, gridFile, Direction::ToGeoid, diff, error);
}

bool ProjLib::Calc_geoid_diff_inverse(double latitude, double longitude, double height,
                                      const QString &gridFile, double &diff, QString *error)
{
    return calculate(latitude, longitude, height, gridFile, Direction::ToEllipsoid, diff, error);
}

} // namespace KelStd
