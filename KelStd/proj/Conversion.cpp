#include <KelStd/proj/ProjLib.h>

#include <KelStd/proj/FixedBuffer.h>
#include <KelStd/proj/LoadedProj.h>
#include <KelStd/proj/Messages.h>
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

/// The transformation between two definitions, or null when PROJ refuses them.
proj::ProjObject createTransformation(const QString &from, const QString &to)
{
    char source[proj::definitionSize] = {};
    char target[proj::definitionSize] = {};
    if (!proj::copyToBuffer(from, source, sizeof source)
        || !proj::copyToBuffer(to, target, sizeof target))
        return nullptr;
    return proj::ProjObject(LoadedProj::instance().functions().proj_create_crs_to_crs(
        proj::defaultContext, source, target, nullptr));
}

/// Transforms the positions of a range in place until one fails.
template <typename Iterator>
bool convert(const QString &from, const QString &to, Iterator first, Iterator last,
             ProjLib::EConvertType type, QString *error)
{
    if (!LoadedProj::instance().isLoaded()) {
        proj::logFailure(proj::noLibraryLogText(), LogType_Error);
        return fail(error, proj::noLibraryText());
    }

    const proj::WorkingDirectoryScope scope;
    const proj::ProjObject transformation = createTransformation(from, to);
    if (transformation == nullptr) {
        proj::logFailure(QObject::tr("Convert point by proj library failed, create project failed")
                             + QLatin1String(":\n") + QObject::tr("From") + QLatin1Char('[') + from
                             + QLatin1String("]\n") + QObject::tr("To") + QLatin1Char('[') + to
                             + QLatin1Char(']'),
                         LogType_Error);
        return fail(error, proj::errorFormatText());
    }
    if (!isFrameStep(type))
        return true;

    const auto transform = LoadedProj::instance().functions().proj_trans;
    for (; first != last; ++first) {
        // The three readings of a position share their storage: one of them serves every type.
        const stXYZ &in = first->getXYZ();
        const PJ_COORD out =
            transform(transformation.get(), PJ_FWD, PJ_COORD{{in.x, in.y, in.z, 0.0}});
        if (!proj::isResult(out.v[0]) || !proj::isResult(out.v[1]) || !proj::isResult(out.v[2]))
            return fail(error, proj::failureText(transformation.get()));
        first->setXYZ(out.v[0], out.v[1], out.v[2]);
    }
    return true;
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
