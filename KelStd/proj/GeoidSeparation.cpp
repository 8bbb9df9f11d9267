#include <KelStd/proj/ProjLib.h>

#include <KelStd/proj/LoadedProj.h>
#include <KelStd/proj/Messages.h>
#include <KelStd/proj/Transformation.h>
#include <KelStd/proj/TransformationResult.h>
#include <KelStd/proj/WorkingDirectoryScope.h>

namespace KelStd {

namespace {

using proj::LoadedProj;
using proj::ShiftDirection;

/// Geoid computations are logged less severely than point conversions: without a model a height
/// above the ellipsoid is left.
bool failWith(const QString &logged, const QString &text, QString *error)
{
    proj::logFailure(logged, LogType_Warning);
    return proj::fail(error, text);
}

enum class Result
{
    Calculated,
    NoGrid, ///< PROJ cannot use the file
    NoValue ///< for the point, with PROJ's `text`
};

Result calculateInPrivateDirectory(const stLongLatH &point, const QString &gridFile,
                                   ShiftDirection direction, double &diff,
                                   proj::ProjMessages &messages, QString &text)
{
    const proj::WorkingDirectoryScope scope;
    const proj::ProjObject shift =
        proj::createShift(proj::defaultContext, gridFile, direction, messages);
    if (shift == nullptr)
        return Result::NoGrid;
    if (proj::separation(LoadedProj::instance().functions(), shift.get(), point, diff))
        return Result::Calculated;
    text = proj::failureText(shift.get());
    return Result::NoValue;
}

bool calculate(double latitude, double longitude, double height, const QString &gridFile,
               ShiftDirection direction, double &diff, QString *error)
{
    if (!LoadedProj::instance().isLoaded())
        return failWith(proj::noLibraryLogText(), proj::noLibraryText(), error);
    if (gridFile.isEmpty())
        return failWith(proj::noGridFileText(), proj::noGridFileText(), error);

    QString text;
    proj::ProjMessages messages;
    const Result result = calculateInPrivateDirectory({longitude, latitude, height}, gridFile,
                                                      direction, diff, messages, text);
    if (result == Result::NoGrid)
        failWith(proj::geoidModelFailedText(), proj::geoidModelFailedText(), error);
    else if (result == Result::NoValue)
        failWith(QObject::tr("Calc geoid failed") + QLatin1String(": ") + text, text, error);
    messages.log();
    return result == Result::Calculated;
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
