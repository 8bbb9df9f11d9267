#include <KelStd/proj/ProjLib.h>

#include <KelStd/proj/LoadedProj.h>
#include <KelStd/proj/Messages.h>
#include <KelStd/proj/Transformation.h>
#include <KelStd/proj/TransformationResult.h>
#include <KelStd/proj/WorkingDirectoryScope.h>

#include <QtCore/QDir>

#include <optional>

namespace KelStd {

namespace {

using proj::LoadedProj;
using proj::ShiftDirection;

/// Geoid computations are logged less severely than point conversions: without a model a height
/// above the ellipsoid is left.
bool failWith(const QString &text, QString *error)
{
    proj::logFailure(text, LogType_Warning);
    return proj::fail(error, text);
}

bool calculate(double latitude, double longitude, double height, const QString &gridFile,
               ShiftDirection direction, double &diff, QString *error)
{
    if (!LoadedProj::instance().isLoaded()) {
        proj::logFailure(proj::noLibraryLogText(), LogType_Warning);
        return proj::fail(error, proj::noLibraryText());
    }
    if (gridFile.isEmpty())
        return failWith(proj::noGridFileText(), error);

    // The private directory is where a relative name is found. An absolute path needs no current
    // directory, and changing it there and back costs a tenth of all that PROJ does here.
    std::optional<proj::WorkingDirectoryScope> scope;
    if (QDir::isRelativePath(gridFile))
        scope.emplace();
    const proj::ProjObject shift = proj::createShift(proj::defaultContext, gridFile, direction);
    if (shift == nullptr)
        return failWith(proj::geoidModelFailedText(), error);
    if (!proj::separation(LoadedProj::instance().functions(), shift.get(),
                          {longitude, latitude, height}, diff)) {
        const QString text = proj::failureText(shift.get());
        proj::logFailure(QObject::tr("Calc geoid failed") + QLatin1String(": ") + text,
                         LogType_Warning);
        return proj::fail(error, text);
    }
    return true;
}

} // namespace

bool ProjLib::Calc_geoid_diff(double latitude, double longitude, double height,
                              const QString &gridFile, double &diff, QString *error)
{
    return calculate(latitude, longitude, height, gridFile, ShiftDirection::ToGeoid, diff, error);
}

bool ProjLib::Calc_geoid_diff_inverse(double latitude, double longitude, double height,
                                      const QString &gridFile, double &diff, QString *error)
{
    return calculate(latitude, longitude, height, gridFile, ShiftDirection::ToEllipsoid, diff,
                     error);
}

} // namespace KelStd
