#include <KelStd/proj/ProjLib.h>

#include <KelStd/proj/LoadedProj.h>
#include <KelStd/proj/Messages.h>
#include <KelStd/proj/Transformation.h>
#include <KelStd/proj/TransformationResult.h>
#include <KelStd/proj/WorkingDirectoryScope.h>

namespace KelStd {

namespace {

using proj::fail;
using proj::LoadedProj;

bool isFrameStep(ProjLib::EConvertType type)
{
    return type >= ProjLib::WGS84LatLongH_to_WGS84XYZ && type <= ProjLib::LocalNEH_to_LocalLatLongH;
}

enum class Result
{
    Converted,
    Refused, ///< there is no transformation
    Failed   ///< at a position, with the `error`
};

/// Transforms the positions of a range in place until one fails.
template <typename Iterator>
Result convertInPrivateDirectory(const QString &from, const QString &to, Iterator first,
                                 Iterator last, ProjLib::EConvertType type,
                                 proj::ProjMessages &messages, QString *error)
{
    const proj::WorkingDirectoryScope scope;
    const proj::ProjObject conversion =
        proj::createConversion(proj::defaultContext, from, to, messages);
    if (conversion == nullptr)
        return Result::Refused;
    if (!isFrameStep(type))
        return Result::Converted;

    const proj::ProjFunctions &functions = LoadedProj::instance().functions();
    for (; first != last; ++first) {
        if (!proj::transform(functions, conversion.get(), *first, *first)) {
            fail(error, proj::failureText(conversion.get()));
            return Result::Failed;
        }
    }
    return Result::Converted;
}

template <typename Iterator>
bool convert(const QString &from, const QString &to, Iterator first, Iterator last,
             ProjLib::EConvertType type, QString *error)
{
    if (!LoadedProj::instance().isLoaded()) {
        proj::logFailure(proj::noLibraryLogText(), LogType_Error);
        return fail(error, proj::noLibraryText());
    }
    proj::ProjMessages messages;
    const Result result = convertInPrivateDirectory(from, to, first, last, type, messages, error);
    if (result == Result::Refused) {
        proj::logFailure(QObject::tr("Convert point by proj library failed, create project failed")
                             + QLatin1String(":\n") + QObject::tr("From") + QLatin1Char('[') + from
                             + QLatin1String("]\n") + QObject::tr("To") + QLatin1Char('[') + to
                             + QLatin1Char(']'),
                         LogType_Error);
        fail(error, proj::errorFormatText());
    }
    messages.log();
    return result == Result::Converted;
}

} // namespace

bool ProjLib::ConvertPosList(const QString &from, const QString &to, QList<Pos> &positions,
                             EConvertType type, QString *error)
{
    return convert(from, to, positions.begin(), positions.end(), type, error);
}

bool ProjLib::ConvertPosList(const QString &from, const QString &to, Pos &position,
                             EConvertType type, QString *error)
{
    return convert(from, to, &position, &position + 1, type, error);
}

} // namespace KelStd
